#include "customerchooser.h"
#include "objects/customerdirectory.h"
#include "objects/sampledata.h"
#include "objects/standaloneapplicationservices.h"
#include "objects/standalonecustomerfinder.h"
#include "objects/standalonecustomersearchcontext.h"
#include "objects/standalonecustomersearchresult.h"
#include "rules/customerchoice.h"

#include "contracts/customer.h"
#include "contracts/customersearchcontext.h"

#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <functional>

using namespace ZebObjects;

namespace {

StandaloneCustomer::Data record(const char* key, const char* name, const char* account,
                                const char* city, const char* state, bool active = true)
{
    StandaloneCustomer::Data d;
    d.key = QString::fromLatin1(key);
    d.name = QString::fromLatin1(name);
    d.accountNumber = QString::fromLatin1(account);
    d.city = QString::fromLatin1(city);
    d.state = QString::fromLatin1(state);
    d.displayText = d.name;
    d.active = active;
    return d;
}

std::shared_ptr<CustomerDirectory> directory()
{
    auto d = std::make_shared<CustomerDirectory>();
    auto a = record("K1", "Rose City Electric", "300", "Portland", "OR");
    a.zip = QStringLiteral("97211");
    a.phone = QStringLiteral("(503) 555-0110");
    a.type = QStringLiteral("Contractor");
    a.category = QStringLiteral("Electrical");
    d->Add(a);
    auto b = record("K2", "Columbia Electric Supply", "100", "Vancouver", "WA");
    b.zip = QStringLiteral("98660");
    b.phone = QStringLiteral("360-555-0101");
    b.type = QStringLiteral("Distributor");
    b.category = QStringLiteral("Wholesale");
    d->Add(b);
    d->Add(record("K3", "Bridgetown Electric", "200", "Portland", "OR", false));
    d->Add(record("K4", "Cedar Ridge Architects", "400", "Portland", "OR"));
    d->Add(record("K5", "electric avenue lighting", "500", "Salem", "OR"));
    return d;
}

QStringList keys(const QList<StandaloneCustomer::Data>& records)
{
    QStringList out;
    for (const auto& r : records)
        out << r.key;
    return out;
}

CustomerDirectory::Query keyword(const QString& k)
{
    CustomerDirectory::Query q;
    q.keyword = k;
    return q;
}

// Notices (and closes) any modal dialog that comes up while it lives: for searches that must
// answer without asking the user.
class DialogWatch {
public:
    DialogWatch()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            if (QWidget* modal = QApplication::activeModalWidget()) {
                m_asked = true;
                modal->close();
            }
        });
        m_timer.start(0);
    }
    bool asked() const { return m_asked; }

private:
    QTimer m_timer;
    bool m_asked = false;
};

// Answers the next modal dialog the way a user would, once it is up.
void whenModalShows(std::function<void(QWidget*)> answer)
{
    auto* timer = new QTimer;
    timer->setInterval(5);
    QObject::connect(timer, &QTimer::timeout, [timer, answer] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal || !modal->isVisible())
            return;
        timer->stop();
        timer->deleteLater();
        answer(modal);
        // A dialog the answer did not close would hold the test forever: turn that into a
        // failure of the test instead.
        QTimer::singleShot(2000, [dialog = QPointer<QWidget>(modal)] {
            if (auto* d = qobject_cast<QDialog*>(dialog.data()); d && d->isVisible()) {
                qWarning("the dialog was still open after the answer");
                d->reject();
            }
        });
    });
    timer->start();
}

QTreeWidget* matchesOf(QWidget* dialog)
{
    return dialog->findChild<QTreeWidget*>(QStringLiteral("lsvMatches"));
}

void clickRow(QWidget* dialog, int row)
{
    QTreeWidget* list = matchesOf(dialog);
    const QRect rect = list->visualItemRect(list->topLevelItem(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, rect.center());
}

void clickButton(QWidget* dialog, const char* name)
{
    auto* button = dialog->findChild<QPushButton*>(QString::fromLatin1(name));
    QVERIFY(button);
    QTest::mouseClick(button, Qt::LeftButton);
}

std::shared_ptr<CustomerSearchResult> search(CustomerFinder& finder, const QString& kw,
                                             const QString& account = {}, bool interactive = true)
{
    return finder.Search(false, interactive, false, false, false, QVariant(QStringLiteral("ctx")),
                         kw, account, {}, {}, {}, {}, {}, {}, 0);
}

}  // namespace

class TestCustomerFinder : public QObject {
    Q_OBJECT
private slots:
    // The tests play a host that shows the workstation's chooser.
    void initTestCase() { CustomerChooser::install(); }

    // The directory's search rules.

    void keywordMatchesPartOfTheNameIgnoringCase()
    {
        const auto d = directory();
        QCOMPARE(keys(d->Search(keyword(QStringLiteral("ELECTRIC")))),
                 (QStringList{QStringLiteral("K2"), QStringLiteral("K5"), QStringLiteral("K1")}));
        QCOMPARE(keys(d->Search(keyword(QStringLiteral("ridge")))),
                 QStringList{QStringLiteral("K4")});
    }

    void accountNumberMatchesExactly()
    {
        const auto d = directory();
        CustomerDirectory::Query q;
        q.accountNumber = QStringLiteral("300");
        QCOMPARE(keys(d->Search(q)), QStringList{QStringLiteral("K1")});
        q.accountNumber = QStringLiteral("30");
        QVERIFY(d->Search(q).isEmpty());
        q.accountNumber = QStringLiteral("3000");
        QVERIFY(d->Search(q).isEmpty());
    }

    void criteriaAreComparedWithoutSurroundingBlanks()
    {
        const auto d = directory();
        CustomerDirectory::Query q;
        q.accountNumber = QStringLiteral(" 300 ");
        QCOMPARE(keys(d->Search(q)), QStringList{QStringLiteral("K1")});
        QCOMPARE(keys(d->Search(keyword(QStringLiteral("  cedar ")))),
                 QStringList{QStringLiteral("K4")});
    }

    void allGivenCriteriaMustMatchUnlessMatchAny()
    {
        const auto d = directory();
        CustomerDirectory::Query q = keyword(QStringLiteral("electric"));
        q.accountNumber = QStringLiteral("100");
        QCOMPARE(keys(d->Search(q)), QStringList{QStringLiteral("K2")});
        q.accountNumber = QStringLiteral("400");
        QVERIFY(d->Search(q).isEmpty());
        q.matchAny = true;
        QCOMPARE(keys(d->Search(q)), (QStringList{QStringLiteral("K4"), QStringLiteral("K2"),
                                                  QStringLiteral("K5"), QStringLiteral("K1")}));
    }

    void exactNameWantsTheWholeName()
    {
        const auto d = directory();
        CustomerDirectory::Query q = keyword(QStringLiteral("rose city electric"));
        q.exactName = true;
        QCOMPARE(keys(d->Search(q)), QStringList{QStringLiteral("K1")});
        q.keyword = QStringLiteral("electric");
        QVERIFY(d->Search(q).isEmpty());
    }

    void closedAccountsAreFoundOnlyWhenAskedFor()
    {
        const auto d = directory();
        CustomerDirectory::Query q = keyword(QStringLiteral("bridgetown"));
        QVERIFY(d->Search(q).isEmpty());
        q.includeInactive = true;
        QCOMPARE(keys(d->Search(q)), QStringList{QStringLiteral("K3")});
    }

    void matchesComeInNameOrderOrAccountOrder()
    {
        const auto d = directory();
        CustomerDirectory::Query q = keyword(QStringLiteral("e"));
        QCOMPARE(keys(d->Search(q)), (QStringList{QStringLiteral("K4"), QStringLiteral("K2"),
                                                  QStringLiteral("K5"), QStringLiteral("K1")}));
        q.sortByAccountNumber = true;
        QCOMPARE(keys(d->Search(q)), (QStringList{QStringLiteral("K2"), QStringLiteral("K1"),
                                                  QStringLiteral("K4"), QStringLiteral("K5")}));
    }

    void maximumResultsLimitsTheMatchesAndANegativeOneFails()
    {
        const auto d = directory();
        CustomerDirectory::Query q = keyword(QStringLiteral("e"));
        q.maximumResults = 2;
        QCOMPARE(keys(d->Search(q)), (QStringList{QStringLiteral("K4"), QStringLiteral("K2")}));
        q.maximumResults = -1;
        try {
            d->Search(q);
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 5);
            QCOMPARE(f.Description(),
                     QStringLiteral("Invalid procedure call or argument: at most -1 results"));
        }
    }

    void aQueryWithoutCriteriaMatchesNothing()
    {
        const auto d = directory();
        QVERIFY(d->Search({}).isEmpty());
        QVERIFY(d->Search(keyword(QStringLiteral("   "))).isEmpty());
    }

    void theOtherCriteriaFollowTheirRules()
    {
        const auto d = directory();
        CustomerDirectory::Query q;
        q.city = QStringLiteral("portland");
        QCOMPARE(keys(d->Search(q)), (QStringList{QStringLiteral("K4"), QStringLiteral("K1")}));
        q.city = QStringLiteral("Port");
        QVERIFY(d->Search(q).isEmpty());
        q = {};
        q.state = QStringLiteral("wa");
        QCOMPARE(keys(d->Search(q)), QStringList{QStringLiteral("K2")});
        q = {};
        q.zip = QStringLiteral("972");
        QCOMPARE(keys(d->Search(q)), QStringList{QStringLiteral("K1")});
        q.zip = QStringLiteral("211");
        QVERIFY(d->Search(q).isEmpty());
        q = {};
        q.phone = QStringLiteral("555.0101");
        QCOMPARE(keys(d->Search(q)), QStringList{QStringLiteral("K2")});
        q.phone = QStringLiteral("no digits");
        QVERIFY(d->Search(q).isEmpty());
        q = {};
        q.type = QStringLiteral("DISTRIBUTOR");
        QCOMPARE(keys(d->Search(q)), QStringList{QStringLiteral("K2")});
        q = {};
        q.category = QStringLiteral("electrical");
        QCOMPARE(keys(d->Search(q)), QStringList{QStringLiteral("K1")});
    }

    void directoryRefusesADuplicateKey()
    {
        const auto d = directory();
        QVERIFY_THROWS_EXCEPTION(Failure, d->Add(record("K1", "x", "9", "y", "z")));
        QCOMPARE(d->Count(), 5);
        QCOMPARE(d->Records().size(), 5);
    }

    // The finder and its chooser.

    void oneMatchAnswersThatCustomerWithoutAsking()
    {
        StandaloneCustomerFinder finder(directory());
        DialogWatch watch;
        const auto result = search(finder, QStringLiteral("rose"));
        QVERIFY(!watch.asked());
        QVERIFY(result != nullptr);
        const auto c = result->ChosenCustomer();
        QCOMPARE(c->Key(), QStringLiteral("K1"));
        QCOMPARE(c->Name(), QStringLiteral("Rose City Electric"));
        QCOMPARE(c->AccountNumber(), QStringLiteral("300"));
        QCOMPARE(c->Included(), false);
        QCOMPARE(std::static_pointer_cast<StandaloneCustomerSearchResult>(result)->matchCount(), 1);
    }

    void searchByAccountNumberAlone()
    {
        StandaloneCustomerFinder finder(directory());
        const auto result = search(finder, {}, QStringLiteral("400"));
        QVERIFY(result);
        QCOMPARE(result->ChosenCustomer()->Key(), QStringLiteral("K4"));
    }

    void noMatchAnswersNothing()
    {
        StandaloneCustomerFinder finder(directory());
        QVERIFY(search(finder, QStringLiteral("zzz")) == nullptr);
        QVERIFY(search(finder, {}) == nullptr);
    }

    void screenReadersHearTheChoosersListByNameAndASearchFindingNobody()
    {
        StandaloneCustomerFinder finder(directory());
        QString listName;
        QString labelledBy;
        whenModalShows([&](QWidget* dialog) {
            QAccessibleInterface* list = QAccessible::queryAccessibleInterface(matchesOf(dialog));
            listName = list->text(QAccessible::Name);
            // The prompt is the list's label.
            auto* prompt = dialog->findChild<QLabel*>(QStringLiteral("lblPrompt"));
            const auto labels =
                QAccessible::queryAccessibleInterface(prompt)->relations(QAccessible::Labelled);
            if (labels.size() == 1 && labels.front().first->object() == matchesOf(dialog))
                labelledBy = prompt->text();
            clickButton(dialog, "cmdCancel");
        });
        QVERIFY(search(finder, QStringLiteral("electric")) == nullptr);
        QCOMPARE(listName, QStringLiteral("Matching customers"));
        QCOMPARE(labelledBy,
                 QStringLiteral("More than one customer matches your search. Choose one:"));

        // Told, a user hears that nobody matched; an unattended search is never stopped.
        CustomerChooser::setTellsWhenNothingFound(true);
        const auto off = qScopeGuard([] { CustomerChooser::setTellsWhenNothingFound(false); });
        QString said;
        QString title;
        QString name;
        whenModalShows([&](QWidget* box) {
            name = box->objectName();
            title = box->windowTitle();
            said = qobject_cast<QMessageBox*>(box)->text();
            QTest::keyClick(box, Qt::Key_Return);
        });
        QVERIFY(search(finder, QStringLiteral("zzz")) == nullptr);
        QCOMPARE(name, QStringLiteral("frmNoCustomer"));
        QCOMPARE(title, QStringLiteral("Customer Search"));
        QCOMPARE(said, QStringLiteral("No customer matches your search."));
        DialogWatch watch;
        QVERIFY(search(finder, QStringLiteral("zzz"), {}, false) == nullptr);
        QVERIFY(!watch.asked());
    }

    void eachSearchAnswersANewCustomerObject()
    {
        StandaloneCustomerFinder finder(directory());
        const auto first = search(finder, QStringLiteral("rose"))->ChosenCustomer();
        first->setIncluded(true);
        const auto second = search(finder, QStringLiteral("rose"))->ChosenCustomer();
        QVERIFY(first != second);
        QCOMPARE(second->Included(), false);
    }

    void severalMatchesShowTheChooserWithNameAccountCityState()
    {
        StandaloneCustomerFinder finder(directory());
        QStringList headers;
        QStringList rows;
        QString title;
        QString prompt;
        bool modal = false;
        whenModalShows([&](QWidget* dialog) {
            QCOMPARE(dialog->objectName(), QStringLiteral("frmChooseCustomer"));
            modal = dialog->isModal();
            title = dialog->windowTitle();
            prompt = dialog->findChild<QLabel*>(QStringLiteral("lblPrompt"))->text();
            QTreeWidget* list = matchesOf(dialog);
            for (int i = 0; i < list->columnCount(); ++i)
                headers << list->headerItem()->text(i);
            for (int r = 0; r < list->topLevelItemCount(); ++r) {
                QStringList cells;
                for (int i = 0; i < list->columnCount(); ++i)
                    cells << list->topLevelItem(r)->text(i);
                rows << cells.join(QLatin1Char('|'));
            }
            QCOMPARE(dialog->findChild<QPushButton*>(QStringLiteral("cmdOK"))->text(),
                     QStringLiteral("OK"));
            QCOMPARE(dialog->findChild<QPushButton*>(QStringLiteral("cmdCancel"))->text(),
                     QStringLiteral("Cancel"));
            clickButton(dialog, "cmdCancel");
        });
        QVERIFY(search(finder, QStringLiteral("electric")) == nullptr);
        QVERIFY(modal);
        QCOMPARE(title, QStringLiteral("Choose Customer"));
        QCOMPARE(prompt, QStringLiteral("More than one customer matches your search. Choose one:"));
        QCOMPARE(headers, (QStringList{QStringLiteral("Name"), QStringLiteral("Account Number"),
                                       QStringLiteral("City"), QStringLiteral("State")}));
        QCOMPARE(rows, (QStringList{QStringLiteral("Columbia Electric Supply|100|Vancouver|WA"),
                                    QStringLiteral("electric avenue lighting|500|Salem|OR"),
                                    QStringLiteral("Rose City Electric|300|Portland|OR")}));
    }

    void okAnswersTheCustomerOfTheChosenRow()
    {
        StandaloneCustomerFinder finder(directory());
        whenModalShows([](QWidget* dialog) {
            clickRow(dialog, 2);
            clickButton(dialog, "cmdOK");
        });
        const auto result = search(finder, QStringLiteral("electric"));
        QVERIFY(result);
        QCOMPARE(result->ChosenCustomer()->Key(), QStringLiteral("K1"));
        QCOMPARE(std::static_pointer_cast<StandaloneCustomerSearchResult>(result)->matchCount(), 3);
    }

    void okWithoutChoosingTakesTheFirstRow()
    {
        StandaloneCustomerFinder finder(directory());
        whenModalShows([](QWidget* dialog) { clickButton(dialog, "cmdOK"); });
        const auto result = search(finder, QStringLiteral("electric"));
        QVERIFY(result);
        QCOMPARE(result->ChosenCustomer()->Key(), QStringLiteral("K2"));
    }

    void doubleClickOnARowChoosesIt()
    {
        StandaloneCustomerFinder finder(directory());
        whenModalShows([](QWidget* dialog) {
            QTreeWidget* list = matchesOf(dialog);
            const QRect rect = list->visualItemRect(list->topLevelItem(1));
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, rect.center());
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, rect.center());
        });
        const auto result = search(finder, QStringLiteral("electric"));
        QVERIFY(result);
        QCOMPARE(result->ChosenCustomer()->Key(), QStringLiteral("K5"));
    }

    void cancelAndEscapeAnswerNothing()
    {
        StandaloneCustomerFinder finder(directory());
        whenModalShows([](QWidget* dialog) {
            clickRow(dialog, 1);
            clickButton(dialog, "cmdCancel");
        });
        QVERIFY(search(finder, QStringLiteral("electric")) == nullptr);
        whenModalShows([](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
        QVERIFY(search(finder, QStringLiteral("electric")) == nullptr);
    }

    // A host that gave no chooser: the business objects never open a window of their own.
    void severalMatchesWithoutAHostChooserAnswerNothingAndShowNoDialog()
    {
        CustomerChoice::setChooser({});
        const auto restore = qScopeGuard([] { CustomerChooser::install(); });
        QVERIFY(!CustomerChoice::hasChooser());
        StandaloneCustomerFinder finder(directory());
        DialogWatch watch;
        QVERIFY(search(finder, QStringLiteral("electric")) == nullptr);
        QVERIFY(!watch.asked());
    }

    void theHostsChooserGetsTheMatchesAndItsAnswerSettlesTheSearch()
    {
        QList<ZebObjects::CustomerRecord> offered;
        CustomerChoice::setChooser([&](const QList<ZebObjects::CustomerRecord>& matches) {
            offered = matches;
            return qsizetype(1);
        });
        const auto restore = qScopeGuard([] { CustomerChooser::install(); });
        StandaloneCustomerFinder finder(directory());
        const auto result = search(finder, QStringLiteral("electric"));
        QVERIFY(offered.size() > 1);
        QVERIFY(result != nullptr);
        QCOMPARE(result->ChosenCustomer()->Key(), offered[1].key);
        QCOMPARE(result->ChosenCustomer()->Included(), false);
    }

    void severalMatchesWithoutInteractionAnswerNothing()
    {
        StandaloneCustomerFinder finder(directory());
        DialogWatch watch;
        QVERIFY(search(finder, QStringLiteral("electric"), {}, false) == nullptr);
        QVERIFY(!watch.asked());
    }

    void theFinderKeepsTheSearchAsReceivedWithItsContextUnchanged()
    {
        StandaloneCustomerFinder finder(directory());
        QVariantMap context{{QStringLiteral("office"), QStringLiteral("PDX")}};
        finder.Search(true, false, true, true, true, context, QStringLiteral("kw"),
                      QStringLiteral("acct"), QStringLiteral("city"), QStringLiteral("st"),
                      QStringLiteral("zip"), QStringLiteral("phone"), QStringLiteral("type"),
                      QStringLiteral("cat"), 7);
        QVERIFY(finder.lastCall().has_value());
        const auto& call = *finder.lastCall();
        QCOMPARE(call.context, QVariant(context));
        QCOMPARE(call.interactive, false);
        CustomerDirectory::Query expected{true,
                                          true,
                                          true,
                                          true,
                                          QStringLiteral("kw"),
                                          QStringLiteral("acct"),
                                          QStringLiteral("city"),
                                          QStringLiteral("st"),
                                          QStringLiteral("zip"),
                                          QStringLiteral("phone"),
                                          QStringLiteral("type"),
                                          QStringLiteral("cat"),
                                          7};
        QVERIFY(call.query == expected);
    }

    void aFinderWithoutDirectoryFailsWith91()
    {
        StandaloneCustomerFinder finder(nullptr);
        try {
            search(finder, QStringLiteral("x"));
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 91);
            QCOMPARE(f.Source(), QStringLiteral("ZebObjects.CustomerFinder"));
        }
    }

    void applicationServicesHandOutTheSampleContextAndFindersOverTheSampleDirectory()
    {
        StandaloneApplicationServices services;
        QCOMPARE(services.SearchContext()->Value(), SampleData::searchContextValue());
        const auto finder = services.CreateCustomerFinder();
        QVERIFY(finder);
        QVERIFY(finder != services.CreateCustomerFinder());
        const auto result =
            finder->Search(false, true, false, false, false, services.SearchContext()->Value(), {},
                           QStringLiteral("100457"), {}, {}, {}, {}, {}, {}, 0);
        QVERIFY(result);
        QCOMPARE(result->ChosenCustomer()->Name(), QStringLiteral("Halvorsen Electric Co."));
    }

    void applicationServicesUseTheContextAndDirectoryPutInPlace()
    {
        StandaloneApplicationServices services;
        auto context = std::make_shared<StandaloneCustomerSearchContext>(QVariant(42));
        services.setSearchContext(context);
        QCOMPARE(services.SearchContext(),
                 std::static_pointer_cast<CustomerSearchContext>(context));
        QCOMPARE(services.SearchContext()->Value(), QVariant(42));
        auto d = directory();
        services.setCustomerDirectory(d);
        QCOMPARE(services.customerDirectory(), d);
        const auto finder =
            std::dynamic_pointer_cast<StandaloneCustomerFinder>(services.CreateCustomerFinder());
        QCOMPARE(finder->directory(), d);
    }
};

QTEST_MAIN(TestCustomerFinder)
#include "tst_customerfinder.moc"
