// Before a package goes out: what it lacks is listed, in the window's dialog (go on or go back)
// and on the command line (a non-zero exit unless --force).

#include "contracts/customer.h"
#include "contracts/customers.h"
#include "contracts/lineitem.h"
#include "contracts/lineitems.h"
#include "contracts/recipients.h"
#include "exportcheckdialog.h"
#include "formdescription.h"
#include "contracts/runtime.h"
#include "officefile.h"
#include "store/store.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storelineitems.h"
#include "store/storesubmittal.h"
#include "support/testsupport.h"
#include "support/workbenchtesting.h"
#include "userinput.h"
#include "workstation.h"

#include <QAbstractButton>
#include <QFileInfo>
#include <QListWidget>
#include <QPushButton>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using ZebObjects::Store;

namespace {

const QStringList kRiversideGaps = {
    QStringLiteral("The submittal has no date."),
    QStringLiteral("The submittal has no recipients, so no cover letter is printed."),
    QStringLiteral("No line item is ticked, so the bill of materials lists no lines."),
    QStringLiteral("No customer is included, so no labels are printed."),
};

using Run = ZebTest::ProgramRun;

Run run(const QStringList& args)
{
    return ZebTest::runWorkbench(args);
}

}  // namespace

class tst_ExportCheck : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void aCompletePackageGoesOutWithoutAQuestion();
    void commandLineListsWhatIsMissingAndExitsNonZero();
    void commandLineForceWritesTheIncompletePackage();
    void windowListsWhatIsMissingAndGoBackWritesNothing();
    void windowExportAnywayWritesThePackage();

private:
    // Takes from the sample's Riverside job its date, recipients, ticked lines and included
    // customers, and includes its labels.
    void emptyRiverside();
    std::unique_ptr<Workstation> openWorkstation();

    QTemporaryDir m_home;
    std::unique_ptr<QTemporaryDir> m_scratch;
    QString m_db;
    std::shared_ptr<Store> m_store;
};

void tst_ExportCheck::initTestCase()
{
    QVERIFY(m_home.isValid());
    ZebTest::useScratchHome(m_home, true);
}

void tst_ExportCheck::init()
{
    m_scratch = std::make_unique<QTemporaryDir>();
    m_db = m_scratch->filePath(QStringLiteral("office.sqlite"));
    m_store = OfficeFile::resetSample(m_db);
}

void tst_ExportCheck::cleanup()
{
    ZebObjects::Runtime::setApplicationServices(nullptr);
    m_store.reset();
    m_scratch.reset();
}

void tst_ExportCheck::emptyRiverside()
{
    const auto job = m_store->openJob(Workstation::defaultJob(*m_store));
    const auto submittal = job->submittal();
    submittal->setSubmittalDate(QString());
    submittal->setIncludeLabels(true);
    auto recipients = submittal->storeRecipients();
    while (recipients->Count() > 0)
        recipients->Remove(1);
    for (const auto& line : job->lineItems()->Enumerate())
        line->setSelected(false);
    for (const auto& customer : job->customers()->Enumerate())
        customer->setIncluded(false);
}

std::unique_ptr<Workstation> tst_ExportCheck::openWorkstation()
{
    auto window = ZebTest::openWorkstation(m_store);
    window->openJob(Workstation::defaultJob(*m_store));
    window->show();
    return window;
}

void tst_ExportCheck::aCompletePackageGoesOutWithoutAQuestion()
{
    auto window = openWorkstation();
    ZebTest::WhenModal<QDialog> anyDialog([](QDialog& d) { d.reject(); });
    const QString pdf = m_scratch->filePath(QStringLiteral("complete.pdf"));
    QVERIFY(window->exportPackage(pdf));
    QVERIFY(!anyDialog.answered());
    QVERIFY(QFileInfo(pdf).size() > 0);
    const Run r = run({QStringLiteral("--db"), m_db, QStringLiteral("--export"),
                       m_scratch->filePath(QStringLiteral("cli.pdf"))});
    QCOMPARE(r.code, 0);
    QCOMPARE(r.err, QString());
}

void tst_ExportCheck::commandLineListsWhatIsMissingAndExitsNonZero()
{
    emptyRiverside();
    m_store.reset();
    const QString pdf = m_scratch->filePath(QStringLiteral("incomplete.pdf"));
    const Run r = run({QStringLiteral("--db"), m_db, QStringLiteral("--export"), pdf});
    QCOMPARE(r.code, 2);
    QStringList expected{QStringLiteral(
        "zeb-workbench: the package of job 24-0131 is incomplete (--force writes it anyway):")};
    for (const QString& gap : kRiversideGaps)
        expected << QStringLiteral("  - ") + gap;
    QCOMPARE(r.err, expected.join(QLatin1Char('\n')));
    QCOMPARE(r.out, QString());
    QVERIFY(!QFileInfo::exists(pdf));
}

void tst_ExportCheck::commandLineForceWritesTheIncompletePackage()
{
    emptyRiverside();
    m_store.reset();
    const QString pdf = m_scratch->filePath(QStringLiteral("forced.pdf"));
    const Run r = run(
        {QStringLiteral("--db"), m_db, QStringLiteral("--export"), pdf, QStringLiteral("--force")});
    QCOMPARE(r.code, 0);
    QVERIFY(QFileInfo(pdf).size() > 0);
    QVERIFY(r.out.startsWith(pdf + QStringLiteral(": ")));
}

void tst_ExportCheck::windowListsWhatIsMissingAndGoBackWritesNothing()
{
    emptyRiverside();
    auto window = openWorkstation();
    QStringList listed;
    QString title;
    bool backIsDefault = false;
    ZebTest::WhenModal<ExportCheckDialog> answer([&](ExportCheckDialog& d) {
        title = d.windowTitle();
        auto* list = d.findChild<QListWidget*>(QStringLiteral("lstMissing"));
        for (int i = 0; list && i < list->count(); ++i)
            listed << list->item(i)->text();
        auto* back = d.findChild<QPushButton*>(QStringLiteral("btnGoBack"));
        backIsDefault = back && back->isDefault();
        // Kept for a look when asked for.
        const QByteArray keep = qgetenv("ZEB_EXPORTCHECK_KEEP");
        if (!keep.isEmpty())
            d.grab().save(QString::fromLocal8Bit(keep));
        // Enter answers with the default: go back.
        QTest::keyClick(&d, Qt::Key_Return);
    });
    const QString pdf = m_scratch->filePath(QStringLiteral("back.pdf"));
    QVERIFY(!window->exportPackage(pdf));
    QVERIFY(answer.answered());
    QVERIFY(!answer.leftOpen());
    QCOMPARE(title, QStringLiteral("Export Package"));
    QCOMPARE(listed, kRiversideGaps);
    QVERIFY(backIsDefault);
    QVERIFY(!QFileInfo::exists(pdf));
}

void tst_ExportCheck::windowExportAnywayWritesThePackage()
{
    emptyRiverside();
    auto window = openWorkstation();
    ZebTest::WhenModal<ExportCheckDialog> answer([&](ExportCheckDialog& d) {
        QTest::mouseClick(d.findChild<QAbstractButton*>(QStringLiteral("btnExportAnyway")),
                          Qt::LeftButton);
    });
    const QString pdf = m_scratch->filePath(QStringLiteral("anyway.pdf"));
    QVERIFY(window->exportPackage(pdf));
    QVERIFY(answer.answered());
    QVERIFY(QFileInfo(pdf).size() > 0);
}

QTEST_MAIN(tst_ExportCheck)
#include "tst_exportcheck.moc"
