// The workstation on an office's shared database: the refresh command, the refresh that another
// workstation's commit brings, and the office on a PostgreSQL server named with --db.
#include "controls/criteria/ctlgeneralinfo.h"
#include "formdescription.h"
#include "contracts/runtime.h"
#include "officefile.h"
#include "officesettingsdialog.h"
#include "pgserver.h"
#include "platform/checkbox.h"
#include "rawdatabase.h"
#include "sampleoffice/sampleoffice.h"
#include "store/store.h"
#include "store/storejob.h"
#include "store/storesubmittal.h"
#include "support/workbenchtesting.h"
#include "workstation.h"

#include <QAction>
#include <QApplication>
#include <QDirIterator>
#include <QPlainTextEdit>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
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
#include <QLabel>
#include <QScopeGuard>
#include <QSettings>

#include <array>

using ZebObjects::ErrorInfo;
using ZebObjects::Store;

namespace {

QAbstractButton* bomBox(Workstation& window)
{
    auto* panel = window.findChild<ZebSubCtl::ctlGeneralInfo*>(QStringLiteral("ctlGeneralInfo"));
    return panel ? panel->findChild<QAbstractButton*>(QStringLiteral("chkBOM")) : nullptr;
}

std::unique_ptr<Workstation> workstation(const std::shared_ptr<Store>& store)
{
    auto window = ZebTest::openWorkstation(store);
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
    void initTestCase() { ZebTest::useScratchHome(m_home, true); }

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

    void twoOpenWorkstationsLeftAloneCommitAlmostNothing()
    {
        if (!server().isRunning())
            QFAIL(qPrintable(server().error()));
        const QString database = server().newDatabaseName();
        const QString location = server().location(database);
        OfficeFile::resetSample(location);
        RawDatabase stats(server().port(), QStringLiteral("postgres"));
        const auto backends = [&] {
            return stats
                .value(QStringLiteral("SELECT COUNT(*) FROM pg_stat_activity WHERE datname = '%1'")
                           .arg(database))
                .toInt();
        };
        QTRY_COMPARE_WITH_TIMEOUT(backends(), 0, 10000);

        std::array<QProcess, 2> workstations;
        for (QProcess& w : workstations) {
            w.setProcessChannelMode(QProcess::MergedChannels);
            w.start(ZebTest::workbenchProgram(), {QStringLiteral("--db"), location});
        }
        const auto stop = qScopeGuard([&] {
            for (QProcess& w : workstations) {
                w.kill();
                w.waitForFinished();
            }
        });
        QTRY_COMPARE_WITH_TIMEOUT(backends(), 2, 60000);
        // Both have opened the job and gone quiet; the server counts what a session did at the
        // latest ten seconds after it went quiet, so the count starts once that has passed.
        const auto quietFor = [&] {
            return stats
                .value(QStringLiteral("SELECT CASE WHEN COUNT(*) = 2 THEN MIN(EXTRACT(EPOCH FROM "
                                      "now() - state_change)) ELSE 0 END FROM pg_stat_activity "
                                      "WHERE datname = '%1' AND state = 'idle'")
                           .arg(database))
                .toDouble();
        };
        QTRY_VERIFY_WITH_TIMEOUT(quietFor() > 10.5, 60000);
        const auto commits = [&] {
            stats.exec(QStringLiteral("SELECT pg_stat_clear_snapshot()"));
            return stats
                .value(
                    QStringLiteral("SELECT xact_commit FROM pg_stat_database WHERE datname = '%1'")
                        .arg(database))
                .toLongLong();
        };
        const qint64 before = commits();
        QTest::qWait(10000);
        const qint64 after = commits();
        qInfo("two idle workstations: %lld commits in 10 s", after - before);
        QVERIFY2(after - before < 10, qPrintable(QStringLiteral("%1 commits").arg(after - before)));
        for (QProcess& w : workstations)
            QCOMPARE(w.state(), QProcess::Running);
    }

    void aFailedWriteOnTheServerShowsNotSavedUntilALaterWriteSucceeds()
    {
        if (!server().isRunning())
            QFAIL(qPrintable(server().error()));
        const QString database = server().newDatabaseName();
        const QString location = server().location(database);
        auto window = workstation(OfficeFile::resetSample(location));
        const QString saved = QStringLiteral("All changes saved to %1").arg(location);
        QCOMPARE(window->saveStatus(), saved);
        auto submittal = window->job()->submittal();
        submittal->IssuedBy();

        // Another workstation's change of the issuer: the box of the control says only what
        // the plain variant says; the status bar says what happened, in words.
        const auto other = OfficeFile::open(location, false);
        other->openJob(window->job()->id())
            ->submittal()
            ->setIssuedBy(QStringLiteral("Avery Lindqvist"));
        const ErrorInfo conflict = [&] {
            try {
                submittal->setIssuedBy(QStringLiteral("Dana Whitcomb-Reyes"));
            } catch (const ZebObjects::Failure& f) {
                return f.info();
            }
            return ErrorInfo{};
        }();
        QCOMPARE(conflict.Number, 3197);
        QCOMPARE(window->saveStatus(), QStringLiteral("Not saved: ") + conflict.Description);
        QVERIFY(window->saveStatus().startsWith(QStringLiteral(
            "Not saved: Another workstation changed the issuer to \"Avery Lindqvist\"")));

        // The office's write lock held too long by another: not saved, and said so until a
        // later write is saved.
        RawDatabase holder(server().port(), database);
        QVERIFY(holder.exec(QStringLiteral("BEGIN")));
        QVERIFY(
            holder.exec(QStringLiteral("SELECT pg_advisory_xact_lock(%1)").arg(0x5A45425354LL)));
        const bool bom = submittal->IncludeBOM();
        try {
            submittal->setIncludeBOM(!bom);
            QFAIL("the write was not refused");
        } catch (const ZebObjects::Failure& f) {
            QCOMPARE(f.Number(), 70);
            QCOMPARE(window->saveStatus(), QStringLiteral("Not saved: ") + f.Description());
        }
        QVERIFY(holder.exec(QStringLiteral("ROLLBACK")));
        // Writing what is stored is no save: the failure still shows.
        submittal->setIncludeBOM(bom);
        QVERIFY(window->saveStatus().startsWith(QStringLiteral("Not saved: ")));
        submittal->setIncludeBOM(!bom);
        QCOMPARE(window->saveStatus(), saved);
    }

    void thePasswordOfTheLocationIsNeverShownLoggedOrKept()
    {
        if (!server().isRunning())
            QFAIL(qPrintable(server().error()));
        const QString secret = QStringLiteral("Zq9-s#cr/t");
        RawDatabase admin(server().port(), QStringLiteral("postgres"));
        admin.exec(QStringLiteral("CREATE ROLE zeb_password NOLOGIN"));
        QVERIFY(
            admin.exec(QStringLiteral("CREATE ROLE marta LOGIN PASSWORD '%1' IN ROLE zeb_password")
                           .arg(secret)));
        const QString database = server().newDatabaseName();
        const QString empty = server().newDatabaseName();
        for (const QString& d : {database, empty})
            QVERIFY(admin.exec(QStringLiteral("CREATE DATABASE %1 OWNER marta").arg(d)));
        const auto at = [&](const QString& userInfo, const QString& db, const QString& query = {}) {
            return QStringLiteral("postgresql://%1@127.0.0.1:%2/%3%4")
                .arg(userInfo, QString::number(server().port()), db, query);
        };
        // Unencoded, percent-encoded, and as a parameter.
        const QString plain = at(QStringLiteral("marta:") + secret, database);
        const QString encoded = at(QStringLiteral("marta:Zq9-s%23cr%2Ft"), database);
        const QString parameter =
            at(QStringLiteral("marta"), database, QStringLiteral("?password=Zq9-s%23cr%2Ft"));
        const QString shown = at(QStringLiteral("marta"), database);
        QCOMPARE(shown, QStringLiteral("postgresql://marta@127.0.0.1:%1/%2")
                            .arg(server().port())
                            .arg(database));
        const QString logs = m_home.filePath(QStringLiteral("password-logs"));
        QVERIFY(QDir().mkpath(logs));

        QStringList said;
        // All it said, on both channels.
        ZebTest::ProgramOptions both;
        both.mergeChannels = true;
        const auto run = [&](const QStringList& args, int exitCode, const QString& expected) {
            const auto r = ZebTest::runWorkbench(args, both);
            said << r.out;
            QCOMPARE(r.code, exitCode);
            QVERIFY2(r.out.contains(expected), qPrintable(r.out));
        };
        run({QStringLiteral("--db"), plain, QStringLiteral("--reset-sample"),
             QStringLiteral("--export"), m_home.filePath(QStringLiteral("password.pdf")),
             QStringLiteral("--log"), logs + QStringLiteral("/1.log")},
            0, QStringLiteral("pages"));
        run({QStringLiteral("--db"), encoded, QStringLiteral("--job"), QStringLiteral("99-9999"),
             QStringLiteral("--log"), logs + QStringLiteral("/2.log")},
            1,
            QStringLiteral("zeb-workbench: the office \"%1\" has no job numbered \"99-9999\"")
                .arg(shown));
        run({QStringLiteral("--db"), at(QStringLiteral("marta:") + secret, empty),
             QStringLiteral("--export"), m_home.filePath(QStringLiteral("none.pdf"))},
            1,
            QStringLiteral("zeb-workbench: the office \"%1\" has no job")
                .arg(QStringLiteral("postgresql://marta@127.0.0.1:%1/%2")
                         .arg(server().port())
                         .arg(empty)));
        run({QStringLiteral("--db"), parameter, QStringLiteral("--screenshot"),
             m_home.filePath(QStringLiteral("password.png")), QStringLiteral("--log"),
             logs + QStringLiteral("/3.log")},
            0, QString());
        run({QStringLiteral("--db"), at(QStringLiteral("marta:Wrong-") + secret, database),
             QStringLiteral("--job"), QStringLiteral("25-0009")},
            1,
            QStringLiteral(
                "zeb-workbench: The database server of \"%1\" refused the user \"marta\": the "
                "password is wrong or missing.")
                .arg(shown));

        // The window: its title, status bar and log, after a refresh, and the office kept for
        // the next start.
        for (const QString& location : {plain, parameter}) {
            const auto store = OfficeFile::open(location, false);
            auto window = workstation(store);
            window->show();
            QVERIFY(QTest::qWaitForWindowExposed(window.get()));
            QCOMPARE(window->saveStatus(), QStringLiteral("All changes saved to %1").arg(shown));
            QVERIFY(window->refresh());
            said << window->windowTitle() << window->saveStatus() << window->jobStatus()
                 << window->statusBar()->currentMessage() << window->logView()->toPlainText();
            for (auto* label : window->statusBar()->findChildren<QLabel*>())
                said << label->text();
            QTimer::singleShot(0, this, [&] {
                auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
                QVERIFY(dialog);
                said << dialog->findChild<QLineEdit*>(QStringLiteral("txtUser"))->text()
                     << dialog->findChild<QLineEdit*>(QStringLiteral("txtHost"))->text();
                QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("cmdOK")),
                                  Qt::LeftButton);
            });
            window->findChild<QAction*>(QStringLiteral("actOfficeDatabase"))->trigger();
            said << window->statusBar()->currentMessage();
            QCOMPARE(OfficeSettingsDialog::savedLocation(), shown);
            QSettings().sync();
        }
        // Everything written where the tests write: settings, logs, the user's data.
        QDirIterator files(m_home.path(), QDir::Files, QDirIterator::Subdirectories);
        int read = 0;
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.fileName().endsWith(QLatin1String(".pdf"))
                || file.fileName().endsWith(QLatin1String(".png")))
                continue;
            QVERIFY(file.open(QIODevice::ReadOnly));
            said << QString::fromUtf8(file.readAll());
            ++read;
        }
        QVERIFY(read >= 4);
        QVERIFY(said.join(QLatin1Char('\n')).contains(shown));
        for (const QString& text : said) {
            QVERIFY2(!text.contains(QStringLiteral("Zq9")), qPrintable(text));
        }
        OfficeSettingsDialog::saveLocation(QString());
    }

    void theWorkbenchOpensAnOfficeOnTheServer()
    {
        if (!server().isRunning())
            QFAIL(qPrintable(server().error()));
        const QString location = server().location(server().newDatabaseName());
        auto r = ZebTest::runWorkbench(
            {QStringLiteral("--db"), location, QStringLiteral("--reset-sample"),
             QStringLiteral("--export"), m_home.filePath(QStringLiteral("package.pdf"))});
        QCOMPARE(r.code, 0);
        QVERIFY(QFile::exists(m_home.filePath(QStringLiteral("package.pdf"))));
        // The office on the server is never replaced from a workstation.
        r = ZebTest::runWorkbench({QStringLiteral("--db"), location,
                                   QStringLiteral("--reset-sample"), QStringLiteral("--export"),
                                   m_home.filePath(QStringLiteral("again.pdf"))});
        QCOMPARE(r.code, 1);
        const QStringList said =
            r.err.split(QLatin1Char('\n')).filter(QStringLiteral("zeb-workbench: "));
        QCOMPARE(said,
                 QStringList{
                     QStringLiteral("zeb-workbench: Cannot load the sample office into \"%1\": the "
                                    "database already holds an office")
                         .arg(location)});
    }
};

QTEST_MAIN(TestWorkstationServer)
#include "tst_workstationserver.moc"
