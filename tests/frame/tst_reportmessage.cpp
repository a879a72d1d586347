#include "frame/reportmessage.h"

#include <QTest>

using namespace ZebSubCtl;
using ZebObjects::ErrorInfo;
using ZebObjects::Failure;

namespace {
const ErrorInfo kError{35601, QStringLiteral("ZebObjects.Customers"),
                       QStringLiteral("Element not found")};
}

class tst_ReportMessage : public QObject {
    Q_OBJECT
private slots:
    void plainHasNoTrailingBlanksAndTitlesNumberDashDescription();
    void textDeleteAppendsDescriptionAfterTwoBlanks();
    void dialogOkSaysCouldNotAndTitlesWithoutErrorPrefix();
    void itemCheckSaysCouldNotWithErrorPrefix();
    void customerRemovedPrompt();
    void removeRunsPromptAndDescriptionTogether();
    void removeAllPutsCrLfBeforeDescription();
    void searchShowsMisspeltPromptWithoutDescription();
    void searchNarrowsNegativeNumbersThatFit();
    void searchNumberOutsideSixteenBitsFailsWithOverflow_data();
    void searchNumberOutsideSixteenBitsFailsWithOverflow();
    void addDuplicateIsInformationTitledDuplicateCustomer();
    void addOtherIsTitledWithTheBareNumber();
    void negativeNumberKeepsMinusSignInEveryTitle();
};

void tst_ReportMessage::plainHasNoTrailingBlanksAndTitlesNumberDashDescription()
{
    const auto m = ReportMessage::forFailure(ReportVariant::Plain, kError);
    QCOMPARE(m.prompt, QStringLiteral("The requested operation cannot be completed."));
    QCOMPARE(m.title, QStringLiteral("35601 - Element not found"));
    QCOMPARE(m.style, 48);
}

void tst_ReportMessage::textDeleteAppendsDescriptionAfterTwoBlanks()
{
    const auto m = ReportMessage::forFailure(ReportVariant::TextDelete, kError);
    QCOMPARE(m.prompt,
             QStringLiteral("The requested operation cannot be completed.  Element not found"));
    QCOMPARE(m.title, QStringLiteral("Error: 35601 - Element not found"));
    QCOMPARE(m.style, 48);
}

void tst_ReportMessage::dialogOkSaysCouldNotAndTitlesWithoutErrorPrefix()
{
    const auto m = ReportMessage::forFailure(ReportVariant::DialogOK, kError);
    QCOMPARE(m.prompt,
             QStringLiteral("The requested operation could not be completed.  Element not found"));
    QCOMPARE(m.title, QStringLiteral("35601 - Element not found"));
    QCOMPARE(m.style, 48);
}

void tst_ReportMessage::itemCheckSaysCouldNotWithErrorPrefix()
{
    const auto m = ReportMessage::forFailure(ReportVariant::ItemCheck, kError);
    QCOMPARE(m.prompt,
             QStringLiteral("The requested operation could not be completed.  Element not found"));
    QCOMPARE(m.title, QStringLiteral("Error: 35601 - Element not found"));
    QCOMPARE(m.style, 48);
}

void tst_ReportMessage::customerRemovedPrompt()
{
    const auto m = ReportMessage::forFailure(ReportVariant::CustomerRemoved, kError);
    QCOMPARE(m.prompt, QStringLiteral("Unable to remove the customer.  Element not found"));
    QCOMPARE(m.title, QStringLiteral("Error: 35601 - Element not found"));
    QCOMPARE(m.style, 48);
}

void tst_ReportMessage::removeRunsPromptAndDescriptionTogether()
{
    const auto m = ReportMessage::forFailure(ReportVariant::Remove, kError);
    QCOMPARE(m.prompt, QStringLiteral("An error occurred while deleting the selected "
                                      "customer.Element not found"));
    QCOMPARE(m.title, QStringLiteral("Error: 35601 - Element not found"));
    QCOMPARE(m.style, 48);
}

void tst_ReportMessage::removeAllPutsCrLfBeforeDescription()
{
    const auto m = ReportMessage::forFailure(ReportVariant::RemoveAll, kError);
    QCOMPARE(m.prompt, QStringLiteral("An error occurred while removing all customers, some "
                                      "customers could not be removed.  \r\nElement not found"));
    QCOMPARE(m.title, QStringLiteral("Error: 35601 - Element not found"));
    QCOMPARE(m.style, 48);
}

void tst_ReportMessage::searchShowsMisspeltPromptWithoutDescription()
{
    const ErrorInfo e{429, QStringLiteral("Finder"), QStringLiteral("Cannot create object")};
    const auto m = ReportMessage::forFailure(ReportVariant::Search, e);
    QCOMPARE(m.prompt, QStringLiteral("The requested operation could not be completed.  An error "
                                      "occurred whilde performing the search."));
    QCOMPARE(m.title, QStringLiteral("Error Number: 429 - Cannot create object"));
    QCOMPARE(m.style, 48);
}

void tst_ReportMessage::searchNarrowsNegativeNumbersThatFit()
{
    const ErrorInfo e{-32768, QStringLiteral("Finder"), QStringLiteral("Lowest")};
    QCOMPARE(ReportMessage::forFailure(ReportVariant::Search, e).title,
             QStringLiteral("Error Number: -32768 - Lowest"));
    const ErrorInfo f{32767, QStringLiteral("Finder"), QStringLiteral("Highest")};
    QCOMPARE(ReportMessage::forFailure(ReportVariant::Search, f).title,
             QStringLiteral("Error Number: 32767 - Highest"));
}

void tst_ReportMessage::searchNumberOutsideSixteenBitsFailsWithOverflow_data()
{
    QTest::addColumn<qint32>("number");
    QTest::newRow("32768") << 32768;
    QTest::newRow("-32769") << -32769;
    QTest::newRow("35601") << 35601;
    QTest::newRow("-2147221504") << -2147221504;
}

void tst_ReportMessage::searchNumberOutsideSixteenBitsFailsWithOverflow()
{
    QFETCH(qint32, number);
    try {
        ReportMessage::forFailure(ReportVariant::Search,
                                  ErrorInfo{number, QStringLiteral("s"), QStringLiteral("d")});
        QFAIL("no overflow");
    } catch (const Failure& f) {
        QCOMPARE(f.Number(), 6);
        QCOMPARE(f.Description(), QStringLiteral("Overflow"));
    }
}

void tst_ReportMessage::addDuplicateIsInformationTitledDuplicateCustomer()
{
    const ErrorInfo e{457, QStringLiteral("Customers"),
                      QStringLiteral("This key is already associated with an element of this "
                                     "collection")};
    const auto m = ReportMessage::forFailure(ReportVariant::Add, e);
    QCOMPARE(m.prompt, QStringLiteral("The customer has already been added."));
    QCOMPARE(m.title, QStringLiteral("Duplicate Customer"));
    QCOMPARE(m.style, 64);
}

void tst_ReportMessage::addOtherIsTitledWithTheBareNumber()
{
    const ErrorInfo e{458, QStringLiteral("Customers"), QStringLiteral("Unsupported type")};
    const auto m = ReportMessage::forFailure(ReportVariant::Add, e);
    QCOMPARE(m.prompt,
             QStringLiteral("An error occurred while adding the customer.\r\nUnsupported type"));
    QCOMPARE(m.title, QStringLiteral("458"));
    QCOMPARE(m.style, 48);
}

void tst_ReportMessage::negativeNumberKeepsMinusSignInEveryTitle()
{
    const ErrorInfo e{-5, QStringLiteral("s"), QStringLiteral("d")};
    QCOMPARE(ReportMessage::forFailure(ReportVariant::Plain, e).title, QStringLiteral("-5 - d"));
    QCOMPARE(ReportMessage::forFailure(ReportVariant::TextDelete, e).title,
             QStringLiteral("Error: -5 - d"));
    QCOMPARE(ReportMessage::forFailure(ReportVariant::Add, e).title, QStringLiteral("-5"));
    QCOMPARE(ReportMessage::forFailure(ReportVariant::Search, e).title,
             QStringLiteral("Error Number: -5 - d"));
}

QTEST_APPLESS_MAIN(tst_ReportMessage)
#include "tst_reportmessage.moc"
