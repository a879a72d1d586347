// The workstation on an office's shared database: the refresh command, the refresh that another
// workstation's commit brings, and the office on a PostgreSQL server named with --db.
#include "controls/criteria/ctlgeneralinfo.h"
#include "formdescription.h"
#include "objects/runtime.h"
#include "officefile.h"
#include "officesettingsdialog.h"
#include "pgserver.h"
#include "platform/checkbox.h"
#include "store/sampleoffice.h"
#include "store/store.h"
#include "store/storejob.h"
#include "store/storesubmittal.h"
#include "workstation.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QProcess>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using ZebObjects::Store;

namespace {

FormDescription shippedForm()
{
    return FormDescription::fromFile(QStringLiteral(":/forms/workbench.json"));
}

QAbstractButton* bomBox(Workstation& window)
{
    auto* panel = window.findChild<ZebSubCtl::ctlGeneralInfo*>(QStringLiteral("ctlGeneralInfo"));
    return panel ? panel->findChild<QAbstractButton*>(QStringLiteral("chkBOM")) : nullptr;
}

std::unique_ptr<Workstation> workstation(const std::shared_ptr<Store>& store)
{
    ZebObjects::Runtime::setApplicationServices(store->applicationServices());
    Workstation::Options options;
    options.remember = false;
    auto window = std::make_unique<Workstation>(shippedForm(), store, options);
    window->openJob(window->startingJob());
    return window;
}

}  // namespace

class TestWorkstationServer : public QObject {
    Q_OBJECT

    QTemporaryDir m_home;
    std::unique_ptr<PgServer> m_server;

    PgServer& server()
    {
        if (!m_server)
            m_server = std::make_unique<PgServer>();
        return *m_server;
    }

private slots:
    void initTestCase()
    {
        qputenv("XDG_DATA_HOME", m_home.filePath(QStringLiteral("data")).toUtf8());
        qputenv("XDG_CONFIG_HOME", m_home.filePath(QStringLiteral("config")).toUtf8());
        QCoreApplication::setOrganizationName(QStringLiteral("ZebSubmittalControls"));
        QCoreApplication::setApplicationName(QStringLiteral("zeb-workbench"));
    }

    void cleanup() { ZebObjects::Runtime::setApplicationServices(nullptr); }

    void cleanupTestCase() { m_server.reset(); }

    void refreshShowsWhatAnotherProgramWroteToTheFile()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("office.sqlite"));
        const auto store = OfficeFile::resetSample(file);
        auto window = workstation(store);
        auto* refresh = window->findChild<QAction*>(QStringLiteral("actRefresh"));
        QVERIFY(refresh);
        QCOMPARE(refresh->text(), QStringLiteral("&Refresh"));
        QCOMPARE(refresh->shortcut(), QKeySequence(Qt::Key_F5));
        QAbstractButton* bom = bomBox(*window);
        QVERIFY(bom);
        const bool before = bom->isChecked();

        const auto other = Store::open(file, Store::OpenMode::OpenExisting);
        other->openJob(window->job()->id())->submittal()->setIncludeBOM(!before);
        // A file does not tell: the page shows the change once refreshed.
        QTest::qWait(100);
        QCOMPARE(bomBox(*window)->isChecked(), before);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QTest::keyClick(window.get(), Qt::Key_F5);
        QCOMPARE(bomBox(*window)->isChecked(), !before);
        QVERIFY(window->statusBar()->currentMessage().startsWith(QStringLiteral("Refreshed at ")));
        QCOMPARE(window->automaticRefreshes(), 0);
    }

    void anotherWorkstationsCommitRefreshesTheOpenJob()
    {
        if (!server().isRunning())
            QFAIL(qPrintable(QStringLiteral("The workstation on PostgreSQL cannot be tested: ")
                             + server().error()));
        const QString location = server().location(server().newDatabaseName());
        const auto store = OfficeFile::resetSample(location);
        QCOMPARE(store->jobs().size(), 4);
        auto window = workstation(store);
        QCOMPARE(window->saveStatus(), QStringLiteral("All changes saved to %1").arg(location));
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        const bool before = bomBox(*window)->isChecked();

        const auto other = OfficeFile::open(location, false);
        QElapsedTimer clock;
        clock.start();
        other->openJob(window->job()->id())->submittal()->setIncludeBOM(!before);
        QTRY_COMPARE_WITH_TIMEOUT(bomBox(*window)->isChecked(), !before, 5000);
        qInfo("another workstation's commit shown on this one after %lld ms", clock.elapsed());
        QCOMPARE(window->automaticRefreshes(), 1);

        // This workstation's own writes do not refresh it.
        bomBox(*window)->click();
        QTest::qWait(300);
        QCOMPARE(window->automaticRefreshes(), 1);
        QCOMPARE(other->openJob(window->job()->id())->submittal()->IncludeBOM(), before);
    }

    void aRefreshWaitsWhileAMessageBoxIsOpen()
    {
        if (!server().isRunning())
            QFAIL(qPrintable(server().error()));
        const QString location = server().location(server().newDatabaseName());
        const auto store = OfficeFile::resetSample(location);
        auto window = workstation(store);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        const bool before = bomBox(*window)->isChecked();
        const auto other = OfficeFile::open(location, false);
        bool heldDuringBox = false;
        QTimer::singleShot(0, window.get(), [&] {
            QMessageBox box(window.get());
            box.setText(QStringLiteral("A box of a control's error path"));
            QTimer::singleShot(0, &box, [&] {
                other->openJob(window->job()->id())->submittal()->setIncludeBOM(!before);
                QTimer::singleShot(500, &box, [&] {
                    heldDuringBox = bomBox(*window)->isChecked() == before;
                    box.accept();
                });
            });
            box.exec();
        });
        QTRY_COMPARE_WITH_TIMEOUT(bomBox(*window)->isChecked(), !before, 5000);
        QVERIFY(heldDuringBox);
    }

    void theOfficeDatabaseDialogKeepsTheServerForTheNextStart()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("office.sqlite"));
        auto window = workstation(OfficeFile::resetSample(file));
        auto* action = window->findChild<QAction*>(QStringLiteral("actOfficeDatabase"));
        QVERIFY(action);
        QCOMPARE(action->text(), QStringLiteral("Office &Database..."));
        QString shownPath;
        bool serverFieldsOffAtFirst = false;
        QTimer::singleShot(0, this, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            QCOMPARE(dialog->windowTitle(), QStringLiteral("Office Database"));
            shownPath = dialog->findChild<QLineEdit*>(QStringLiteral("txtPath"))->text();
            auto* host = dialog->findChild<QLineEdit*>(QStringLiteral("txtHost"));
            serverFieldsOffAtFirst = !host->isEnabled();
            QVERIFY(QTest::qWaitForWindowExposed(dialog));
            auto* server = dialog->findChild<QRadioButton*>(QStringLiteral("optServer"));
            // On the button's circle, as a user clicks it.
            QTest::mouseClick(server, Qt::LeftButton, {}, QPoint(6, server->height() / 2));
            QVERIFY(server->isChecked());
            QVERIFY(host->isEnabled());
            host->clear();
            QTest::keyClicks(host, QStringLiteral("officeserver"));
            dialog->findChild<QSpinBox*>(QStringLiteral("txtPort"))->setValue(5433);
            auto* database = dialog->findChild<QLineEdit*>(QStringLiteral("txtDatabase"));
            database->clear();
            QTest::keyClicks(database, QStringLiteral("riverside"));
            auto* user = dialog->findChild<QLineEdit*>(QStringLiteral("txtUser"));
            user->clear();
            QTest::keyClicks(user, QStringLiteral("marta"));
            QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("cmdOK")),
                              Qt::LeftButton);
        });
        action->trigger();
        QCOMPARE(shownPath, file);
        QVERIFY(serverFieldsOffAtFirst);
        QCOMPARE(OfficeSettingsDialog::savedLocation(),
                 QStringLiteral("postgresql://marta@officeserver:5433/riverside"));
        OfficeSettingsDialog::saveLocation(QString());
    }

    void theWorkbenchOpensAnOfficeOnTheServer()
    {
        if (!server().isRunning())
            QFAIL(qPrintable(server().error()));
        const QString location = server().location(server().newDatabaseName());
        QProcess exe;
        exe.start(QStringLiteral(ZEB_WORKBENCH_EXE),
                  {QStringLiteral("--db"), location, QStringLiteral("--reset-sample"),
                   QStringLiteral("--export"), m_home.filePath(QStringLiteral("package.pdf"))});
        QVERIFY(exe.waitForFinished(120000));
        QCOMPARE(exe.exitCode(), 0);
        QVERIFY(QFile::exists(m_home.filePath(QStringLiteral("package.pdf"))));
        // The office on the server is never replaced from a workstation.
        exe.start(QStringLiteral(ZEB_WORKBENCH_EXE),
                  {QStringLiteral("--db"), location, QStringLiteral("--reset-sample"),
                   QStringLiteral("--export"), m_home.filePath(QStringLiteral("again.pdf"))});
        QVERIFY(exe.waitForFinished(120000));
        QCOMPARE(exe.exitCode(), 1);
        const QStringList said = QString::fromLocal8Bit(exe.readAllStandardError())
                                     .split(QLatin1Char('\n'))
                                     .filter(QStringLiteral("zeb-workbench: "));
        QCOMPARE(said,
                 QStringList{QStringLiteral("zeb-workbench: Cannot load the sample office into \"%1\": the "
                                "database already holds an office")
                                 .arg(location)});
    }
};

QTEST_MAIN(TestWorkstationServer)
#include "tst_workstationserver.moc"
