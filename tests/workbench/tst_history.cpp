// What was sent and what came back, through the workstation's real widgets: issuing the sample
// job, recording the review, resubmitting the line to revise as the next revision, and the first
// revision written again byte for byte after the job changed; the same from the command line.

#include "formdescription.h"
#include "historypage.h"
#include "contracts/runtime.h"
#include "officefile.h"
#include "reviewdialog.h"
#include "store/store.h"
#include "store/storehistory.h"
#include "store/storejob.h"
#include "store/storesubmittal.h"
#include "support/testsupport.h"
#include "support/workbenchtesting.h"
#include "userinput.h"
#include "workstation.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QCryptographicHash>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPdfDocument>
#include <QPdfView>
#include <QProcess>
#include <QPushButton>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

using ZebObjects::Store;

namespace {

QString sha256Of(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLatin1(
        QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256).toHex());
}

// The package's pages as pdftotext lays them out.
QStringList pagesOf(const QString& pdf)
{
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), QStringLiteral("-enc"),
                                          QStringLiteral("UTF-8"), pdf, QStringLiteral("-")});
    if (!p.waitForFinished(60000) || p.exitCode() != 0)
        return {};
    QStringList pages = QString::fromUtf8(p.readAllStandardOutput()).split(QLatin1Char('\f'));
    if (!pages.isEmpty() && pages.last().trimmed().isEmpty())
        pages.removeLast();
    return pages;
}

QStringList pagesWith(const QStringList& pages, const QString& text)
{
    QStringList out;
    for (const QString& page : pages)
        if (page.contains(text))
            out << page;
    return out;
}

QStringList linesWith(const QStringList& pages, const QString& text)
{
    QStringList out;
    for (const QString& page : pages)
        for (const QString& line : page.split(QLatin1Char('\n')))
            if (line.contains(text))
                out << line.simplified();
    return out;
}

QTreeWidgetItem* rowOf(QTreeWidget* list, int revision)
{
    for (int i = 0; i < list->topLevelItemCount(); ++i)
        if (list->topLevelItem(i)->text(0) == QString::number(revision))
            return list->topLevelItem(i);
    return nullptr;
}

using Run = ZebTest::ProgramRun;

}  // namespace

class tst_History : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void issueReviewResubmitAndReopenTheFirstRevisionUnchanged();
    void commandLineIssuesExportsAgainAndPrintsTheHistory();
    void theHistoryPageAndReviewDialogNameEveryElement();

private:
    std::unique_ptr<Workstation> openWorkstation();
    void clickTab(Workstation& window, const QString& title);

    QTemporaryDir m_home;
    std::unique_ptr<QTemporaryDir> m_scratch;
    QString m_db;
    std::shared_ptr<Store> m_store;
    // What the save dialogs answer, in turn.
    QStringList m_saveAnswers;
};

void tst_History::initTestCase()
{
    QVERIFY(m_home.isValid());
    ZebTest::useScratchHome(m_home, true);
}

void tst_History::init()
{
    m_scratch = std::make_unique<QTemporaryDir>();
    m_db = m_scratch->filePath(QStringLiteral("office.sqlite"));
    m_store = OfficeFile::resetSample(m_db);
    m_saveAnswers.clear();
}

void tst_History::cleanup()
{
    // The preview's viewer lets go of its scroller and render thread through the event loop.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ZebObjects::Runtime::setApplicationServices(nullptr);
    m_store.reset();
    m_scratch.reset();
}

std::unique_ptr<Workstation> tst_History::openWorkstation()
{
    auto options = ZebTest::workstationOptions();
    options.openFile = [](const QString&) { return false; };
    options.saveFile = [this](const QString&, const QString&, const QString&) {
        return m_saveAnswers.isEmpty() ? QString() : m_saveAnswers.takeFirst();
    };
    auto window = ZebTest::openWorkstation(m_store, options);
    window->openJob(Workstation::defaultJob(*m_store));
    window->show();
    window->activateWindow();
    return window;
}

void tst_History::clickTab(Workstation& window, const QString& title)
{
    auto* tabs = window.findChild<QTabWidget*>();
    QVERIFY(tabs);
    const int index = window.pageTitles().indexOf(title);
    QVERIFY(index >= 0);
    QTabBar* bar = tabs->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(index).center());
    QCOMPARE(tabs->currentIndex(), index);
}

void tst_History::issueReviewResubmitAndReopenTheFirstRevisionUnchanged()
{
    auto window = openWorkstation();
    const auto job = window->job();
    const auto history = job->history();

    // Revision 0: File > Issue Package... by its shortcut.
    const QString rev0 = m_scratch->filePath(QStringLiteral("rev0.pdf"));
    m_saveAnswers << rev0;
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    QWidget* focus = QApplication::focusWidget();
    QVERIFY(focus);
    QTest::keyClick(focus, Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(m_saveAnswers.isEmpty());
    const QString rev0Sha = sha256Of(rev0);
    QVERIFY(!rev0Sha.isEmpty());
    QCOMPARE(history->revision(0).sha256, rev0Sha);
    QCOMPARE(history->revision(0).status, ZebObjects::IssuedRevision::Status::Sent);
    QVERIFY(linesWith(pagesOf(rev0), QStringLiteral("Revision")).isEmpty());

    clickTab(*window, QStringLiteral("History"));
    HistoryPage* page = window->historyPage();
    auto* list = page->findChild<QTreeWidget*>(QStringLiteral("lsvRevisions"));
    QCOMPARE(list->topLevelItemCount(), 1);
    QCOMPARE(rowOf(list, 0)->text(1), QStringLiteral("Sent"));
    // The revision shows as it was sent.
    QCOMPARE(page->findChild<QPdfView*>()->document()->status(), QPdfDocument::Status::Ready);
    QVERIFY(page->findChild<QPdfView*>()->document()->pageCount() > 1);

    // The review: every line approved, then one line to revise, with its note.
    const QList<ZebObjects::IssuedLine> printed = history->lines(0);
    QVERIFY(printed.size() >= 2);
    const ZebObjects::IssuedLine toRevise = printed[1];
    ZebTest::WhenModal<ReviewDialog> review([&](ReviewDialog& dialog) {
        auto* type = dialog.findChild<QComboBox*>(QStringLiteral("cmbReviewType"));
        QCOMPARE(type->currentText(), QStringLiteral("All Types"));
        auto* typeAction = dialog.findChild<QComboBox*>(QStringLiteral("cmbTypeAction"));
        typeAction->setFocus();
        QTest::keyClick(typeAction, Qt::Key_Home);
        QCOMPARE(typeAction->currentText(), QStringLiteral("Approved"));
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdApplyToType")),
                          Qt::LeftButton);
        QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("lblVerdict"))->text(),
                 QStringLiteral("Approved"));
        auto* action =
            dialog.findChild<QComboBox*>(QStringLiteral("cmbAction%1").arg(toRevise.number));
        action->setFocus();
        QTest::keyClicks(action, QStringLiteral("Revise"));
        QCOMPARE(action->currentText(), QStringLiteral("Revise And Resubmit"));
        QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("lblVerdict"))->text(),
                 QStringLiteral("Revise And Resubmit"));
        QTest::keyClicks(
            dialog.findChild<QLineEdit*>(QStringLiteral("txtNote%1").arg(toRevise.number)),
            QStringLiteral("Provide 3500K"));
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdRecord")),
                          Qt::LeftButton);
    });
    QTest::mouseClick(page->findChild<QPushButton*>(QStringLiteral("cmdRecordReview")),
                      Qt::LeftButton);
    QVERIFY(review.answered());
    QVERIFY(!review.leftOpen());
    QCOMPARE(rowOf(list, 0)->text(1), QStringLiteral("Returned"));
    QCOMPARE(rowOf(list, 0)->text(4), QStringLiteral("0 days"));
    QCOMPARE(rowOf(list, 0)->text(5), QStringLiteral("Revise And Resubmit"));
    QCOMPARE(history->lines(0)[1].note, QStringLiteral("Provide 3500K"));

    // The office changes the fixture the reviewer asked to revise, as another program would.
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("edit"));
        db.setDatabaseName(m_db);
        QVERIFY(db.open());
        QSqlQuery q(db);
        QVERIFY(q.exec(
            QStringLiteral("UPDATE line_items SET catalog_number = 'RX-3500K-REV' WHERE id = %1")
                .arg(toRevise.lineItemId)));
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("edit"));

    // Resubmit: the job is prepared for revision 1 and every page shows it.
    QPointer<HistoryPage> before = page;
    QTest::mouseClick(page->findChild<QPushButton*>(QStringLiteral("cmdResubmit")), Qt::LeftButton);
    QTRY_VERIFY(!before);
    page = window->historyPage();
    QVERIFY(page);
    QCOMPARE(job->submittal()->SubmittalPurposeIndex(), qint16(4));
    QCOMPARE(window->job()->submittal()->SubmittalPurpose(),
             QStringLiteral("Resubmittal For Approval"));
    bool shown = false;
    // The pages not shown since are read as they will show.
    window->bindAllPages();
    for (auto* option : window->findChildren<QAbstractButton*>())
        if (option->text() == QStringLiteral("Resubmittal For Approval"))
            shown = option->isChecked();
    QVERIFY(shown);
    const QList<ZebObjects::IssuedLine> ticked = window->job()->history()->currentLines();
    QCOMPARE(ticked.size(), 1);
    QCOMPARE(ticked[0].lineItemId, toRevise.lineItemId);

    // Revision 1 from the History page's own button.
    const QString rev1 = m_scratch->filePath(QStringLiteral("rev1.pdf"));
    m_saveAnswers << rev1;
    QTest::mouseClick(page->findChild<QPushButton*>(QStringLiteral("cmdIssuePackage")),
                      Qt::LeftButton);
    QVERIFY(m_saveAnswers.isEmpty());
    list = page->findChild<QTreeWidget*>(QStringLiteral("lsvRevisions"));
    QCOMPARE(list->topLevelItemCount(), 2);
    QCOMPARE(rowOf(list, 0)->text(1), QStringLiteral("Closed"));
    QCOMPARE(rowOf(list, 1)->text(1), QStringLiteral("Sent"));
    QCOMPARE(window->job()->history()->revision(1).sha256, sha256Of(rev1));

    const QStringList pages = pagesOf(rev1);
    const QStringList letters = pagesWith(pages, QStringLiteral("Sincerely,"));
    QVERIFY(!letters.isEmpty());
    for (const QString& letter : letters)
        QVERIFY(letter.contains(QStringLiteral("Revision 1")));
    QVERIFY(pages.first().contains(QStringLiteral("Revision 1")));
    QVERIFY(pages.first().contains(QStringLiteral("Purpose: Resubmittal For Approval")));
    const QStringList bom = pagesWith(pages, QStringLiteral("Bill of Materials"));
    QVERIFY(!linesWith(bom, QStringLiteral("Rev")).isEmpty());
    const QStringList marked = linesWith(bom, QStringLiteral("\u0394"));
    QCOMPARE(marked.size(), 1);
    QVERIFY(marked[0].startsWith(QStringLiteral("\u0394 %1 ").arg(toRevise.number)));
    QVERIFY(marked[0].contains(QStringLiteral("RX-3500K-REV")));

    // Revision 0, reopened after all of that: the same bytes as were sent.
    rowOf(list, 0)->setSelected(true);
    list->setCurrentItem(rowOf(list, 0));
    QCOMPARE(page->selectedRevision(), 0);
    const QString again = m_scratch->filePath(QStringLiteral("rev0-again.pdf"));
    m_saveAnswers << again;
    QTest::mouseClick(page->findChild<QPushButton*>(QStringLiteral("cmdExportRevision")),
                      Qt::LeftButton);
    QCOMPARE(sha256Of(again), rev0Sha);
    QCOMPARE(window->job()->history()->revision(0).sha256, rev0Sha);

    // The log for the office's own reports.
    const QString log = m_scratch->filePath(QStringLiteral("log.csv"));
    m_saveAnswers << log;
    QTest::mouseClick(page->findChild<QPushButton*>(QStringLiteral("cmdExportLog")),
                      Qt::LeftButton);
    QFile csv(log);
    QVERIFY(csv.open(QIODevice::ReadOnly));
    QCOMPARE(csv.readAll(), window->job()->history()->csv());
}

void tst_History::commandLineIssuesExportsAgainAndPrintsTheHistory()
{
    const QString number = m_store->openJob(Workstation::defaultJob(*m_store))->number();
    m_store.reset();
    const QString rev0 = m_scratch->filePath(QStringLiteral("cli0.pdf"));
    Run r = ZebTest::runWorkbench({QStringLiteral("--db"), m_db, QStringLiteral("--job"), number,
                                   QStringLiteral("--issue-package"), rev0});
    QCOMPARE(r.err, QString());
    QCOMPARE(r.code, 0);
    const QString sha = sha256Of(rev0);
    QCOMPARE(r.out, QStringLiteral("Revision: 0\nSHA-256: %1\n").arg(sha));

    // The job changes; revision 0 does not.
    {
        const auto store = Store::open(m_db);
        store->openJob(Workstation::jobByNumber(*store, number))
            ->submittal()
            ->setIssuedBy(QStringLiteral("Someone Else"));
    }
    const QString again = m_scratch->filePath(QStringLiteral("cli0-again.pdf"));
    r = ZebTest::runWorkbench({QStringLiteral("--db"), m_db, QStringLiteral("--job"), number,
                               QStringLiteral("--revision"), QStringLiteral("0"),
                               QStringLiteral("--export"), again});
    QCOMPARE(r.code, 0);
    QCOMPARE(sha256Of(again), sha);

    r = ZebTest::runWorkbench({QStringLiteral("--db"), m_db, QStringLiteral("--job"), number,
                               QStringLiteral("--revision"), QStringLiteral("3"),
                               QStringLiteral("--export"), again});
    QCOMPARE(r.code, 1);
    QCOMPARE(r.err, QStringLiteral("zeb-workbench: Element not found: the job has no revision 3"));

    r = ZebTest::runWorkbench({QStringLiteral("--db"), m_db, QStringLiteral("--job"), number,
                               QStringLiteral("--issue-package"),
                               m_scratch->filePath(QStringLiteral("cli1.pdf"))});
    QCOMPARE(r.code, 0);
    QVERIFY(r.out.startsWith(QStringLiteral("Revision: 1\n")));

    r = ZebTest::runWorkbench({QStringLiteral("--db"), m_db, QStringLiteral("--job"), number,
                               QStringLiteral("--history")});
    QCOMPARE(r.code, 0);
    const QStringList lines = r.out.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3);
    QCOMPARE(
        lines[0],
        QStringLiteral(
            "\"Revision\",\"Sent\",\"Issued By\",\"Purpose\",\"Recipients\",\"Lines\",\"Status\","
            "\"Returned\",\"Review Days\",\"Verdict\",\"SHA-256\""));
    QVERIFY(lines[1].startsWith(QStringLiteral("\"0\",")));
    QVERIFY(lines[1].endsWith(QStringLiteral(",\"%1\"").arg(sha)));
    QVERIFY(lines[2].startsWith(QStringLiteral("\"1\",")));
    QVERIFY(lines[2].contains(QStringLiteral("\"Someone Else\"")));
}

void tst_History::theHistoryPageAndReviewDialogNameEveryElement()
{
    auto window = openWorkstation();
    window->historyPage()->issue(m_scratch->filePath(QStringLiteral("a.pdf")));
    clickTab(*window, QStringLiteral("History"));
    QCOMPARE(ZebTest::unnamedAccessibleElements(window->historyPage()).join(QStringLiteral(", ")),
             QString());
    const auto history = window->job()->history();
    ReviewDialog dialog(history->revision(0), history->lines(0), window.get());
    dialog.show();
    QCOMPARE(ZebTest::unnamedAccessibleElements(&dialog).join(QStringLiteral(", ")), QString());
}

QTEST_MAIN(tst_History)
#include "tst_history.moc"
