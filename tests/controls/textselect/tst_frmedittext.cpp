#include "controls/textselect/frmedittext.h"
#include "userinput.h"
#include "contracts/runtime.h"
#include "objects/standaloneapplicationservices.h"
#include "objects/standalonetextobjects.h"
#include "platform/multilinetextbox.h"
#include "support/controltesting.h"
#include "support/testsupport.h"

#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include <optional>

using namespace ZebSubCtl;
using ZebObjects::ErrorInfo;
using ZebObjects::Failure;
using ZebObjects::StandaloneApplicationServices;
using ZebObjects::StandaloneTextObject;
using ZebTest::error;
using ZebTest::typeText;
using ZebTest::WhenModal;
using Shown = ZebSubCtl::ScriptedMessageBoxService::Shown;

namespace {

const QString kReformatted =
    QStringLiteral("Your text contains unsupported characters and will be reformatted.\r\n"
                   "Please review the text to be certain you are satisfied with the new format\r\n"
                   "and then select OK.");
const ErrorInfo kStoreDown = error(-2147217843, QStringLiteral("ZebObjects.TextObjects"),
                                   QStringLiteral("The text store is not available"));
const QString kEnterOK = QStringLiteral("Trace|frmEditText|cmdOK_Click()|Entering Method...|0");
const QString kExitOK = QStringLiteral("Trace|frmEditText|cmdOK_Click()|Exiting Method...|0");

QString logError(const QString& label, const ErrorInfo& e)
{
    return ZebTest::logLine("LogError", QStringLiteral("frmEditText"), label, e);
}

struct Fixture {
    ZebTest::Harness h;
    std::shared_ptr<StandaloneApplicationServices> services =
        std::make_shared<StandaloneApplicationServices>();
    std::shared_ptr<StandaloneTextObject> paragraph = std::make_shared<StandaloneTextObject>(
        QStringLiteral("p1"), QStringLiteral("Lamps ship\r\nin May"), false);
    frmEditText dialog;

    Fixture() { ZebObjects::Runtime::setApplicationServices(services); }

    MultiLineTextBox* text() const
    {
        return dialog.findChild<MultiLineTextBox*>(QStringLiteral("txtText"));
    }
    QPushButton* ok() const { return dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")); }
    QPushButton* cancel() const
    {
        return dialog.findChild<QPushButton*>(QStringLiteral("cmdCancel"));
    }
};

// Replaces the dialog's text as a user does: select all, type.
void retype(MultiLineTextBox* box, const QStringList& lines)
{
    box->setFocus();
    box->selectAll();
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (i > 0)
            QTest::keyClick(box, Qt::Key_Return);
        typeText(box, lines[i]);
    }
}

}  // namespace

class tst_frmEditText : public QObject {
    Q_OBJECT
private slots:
    void captionIsQuenzaAndInnerSizeIsItsDesign();
    void screenReaderFindsANameForEveryInteractiveElement();
    void widgetsCarryTheirNamesCaptionsAndDesignPlaces();
    void textObjectShowsItsTextAndIsReturned();
    void settingNothingLeavesTheBoxAsItWas();
    void textObjectPropertyIsUntracedAndReachableByName();
    void okOnSupportedTextWritesItAndCloses();
    void okOnUnsupportedTextShowsTheMessageRewritesAndStaysOpen();
    void secondOkWritesTheRewrittenTextAndCloses();
    void realReformatMessageIsAnsweredByTheUser();
    void cancelAfterEditingLeavesTheObjectUnchanged();
    void closingByTheWindowFrameLeavesTheObjectUnchanged();
    void escapeLeavesTheObjectUnchanged();
    void okWithoutATextObjectReportsTheDialogsOwnMessage();
    void okWriteFailureReportsTheDialogsOwnMessageAndKeepsTheObject();
    void reformatFailureReportsTheDialogsOwnMessage();
    void failingTextObjectSetIsLoggedAndPassedOn();
};

void tst_frmEditText::captionIsQuenzaAndInnerSizeIsItsDesign()
{
    Fixture f;
    QCOMPARE(f.dialog.windowTitle(), QStringLiteral("Quenza"));
    QCOMPARE(f.dialog.size(), QSize(365, 210));
    QCOMPARE(f.dialog.objectName(), QStringLiteral("frmEditText"));
}

void tst_frmEditText::widgetsCarryTheirNamesCaptionsAndDesignPlaces()
{
    Fixture f;
    QCOMPARE(f.text()->geometry(), QRect(5, 5, 355, 170));
    QCOMPARE(f.text()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QCOMPARE(f.ok()->text(), QStringLiteral("&OK"));
    QCOMPARE(f.ok()->geometry(), QRect(215, 179, 70, 30));
    QCOMPARE(f.cancel()->text(), QStringLiteral("&Cancel"));
    QCOMPARE(f.cancel()->geometry(), QRect(290, 179, 70, 30));
}

void tst_frmEditText::textObjectShowsItsTextAndIsReturned()
{
    Fixture f;
    QVERIFY(!f.dialog.TextObject());
    f.dialog.setTextObject(f.paragraph);
    QCOMPARE(f.text()->text(), QStringLiteral("Lamps ship\r\nin May"));
    QCOMPARE(f.dialog.TextObject(), std::shared_ptr<ZebObjects::TextObject>(f.paragraph));
}

void tst_frmEditText::settingNothingLeavesTheBoxAsItWas()
{
    Fixture f;
    f.dialog.setTextObject(f.paragraph);
    f.dialog.setTextObject(nullptr);
    QVERIFY(!f.dialog.TextObject());
    QCOMPARE(f.text()->text(), QStringLiteral("Lamps ship\r\nin May"));
}

void tst_frmEditText::textObjectPropertyIsUntracedAndReachableByName()
{
    Fixture f;
    QVERIFY(f.dialog.setProperty(
        "TextObject", QVariant::fromValue(std::shared_ptr<ZebObjects::TextObject>(f.paragraph))));
    QCOMPARE(f.dialog.property("TextObject").value<std::shared_ptr<ZebObjects::TextObject>>(),
             std::shared_ptr<ZebObjects::TextObject>(f.paragraph));
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_frmEditText::okOnSupportedTextWritesItAndCloses()
{
    Fixture f;
    f.dialog.setTextObject(f.paragraph);
    WhenModal<frmEditText> user([&](frmEditText&) {
        retype(f.text(), {QStringLiteral("Lamps ship"), QStringLiteral("in June")});
        QTest::mouseClick(f.ok(), Qt::LeftButton);
    });
    QCOMPARE(f.dialog.exec(), int(QDialog::Accepted));
    QVERIFY(!user.leftOpen());
    QCOMPARE(f.paragraph->Text(), QStringLiteral("Lamps ship\r\nin June"));
    QCOMPARE(f.h.log().lines(), (QStringList{kEnterOK, kExitOK}));
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_frmEditText::okOnUnsupportedTextShowsTheMessageRewritesAndStaysOpen()
{
    Fixture f;
    f.dialog.setTextObject(f.paragraph);
    bool openAfterOk = false;
    QString boxAfterOk;
    WhenModal<frmEditText> user([&](frmEditText& d) {
        retype(f.text(), {QStringLiteral("\u201cEco\u201d \u2013 10\u00a0W")});
        QTest::mouseClick(f.ok(), Qt::LeftButton);
        openAfterOk = d.isVisible();
        boxAfterOk = f.text()->text();
        QTest::mouseClick(f.cancel(), Qt::LeftButton);
    });
    QCOMPARE(f.dialog.exec(), int(QDialog::Rejected));
    QVERIFY(openAfterOk);
    QCOMPARE(boxAfterOk, QStringLiteral("\"Eco\" - 10 W"));
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{Shown{kReformatted, 64, QStringLiteral("Text Format")}}));
    QCOMPARE(f.paragraph->Text(), QStringLiteral("Lamps ship\r\nin May"));
    QCOMPARE(f.h.log().lines(), (QStringList{kEnterOK, kExitOK}));
}

void tst_frmEditText::secondOkWritesTheRewrittenTextAndCloses()
{
    Fixture f;
    f.dialog.setTextObject(f.paragraph);
    WhenModal<frmEditText> user([&](frmEditText&) {
        retype(f.text(), {QStringLiteral("Fixture \u2116 7"), QStringLiteral("next line")});
        QTest::mouseClick(f.ok(), Qt::LeftButton);
        QTest::mouseClick(f.ok(), Qt::LeftButton);
    });
    QCOMPARE(f.dialog.exec(), int(QDialog::Accepted));
    QVERIFY(!user.leftOpen());
    QCOMPARE(f.paragraph->Text(), QStringLiteral("Fixture ? 7\r\nnext line"));
    QCOMPARE(f.h.boxes().shown().size(), 1);
    QCOMPARE(f.h.log().lines(), (QStringList{kEnterOK, kExitOK, kEnterOK, kExitOK}));
}

void tst_frmEditText::realReformatMessageIsAnsweredByTheUser()
{
    Fixture f;
    MessageBoxes::setService(std::make_shared<QtMessageBoxService>());
    f.dialog.setTextObject(f.paragraph);
    QString title;
    QString prompt;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    WhenModal<frmEditText> user([&](frmEditText&) {
        retype(f.text(), {QStringLiteral("caf\u00e9 \u2022 bar")});
        WhenModal<QMessageBox> notice([&](QMessageBox& box) {
            title = box.windowTitle();
            prompt = box.text();
            icon = box.icon();
            QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
        });
        QTest::mouseClick(f.ok(), Qt::LeftButton);
        QVERIFY(notice.answered());
        QTest::mouseClick(f.ok(), Qt::LeftButton);
    });
    QCOMPARE(f.dialog.exec(), int(QDialog::Accepted));
    QCOMPARE(title, QStringLiteral("Text Format"));
    QCOMPARE(prompt, kReformatted);
    QCOMPARE(icon, QMessageBox::Information);
    QCOMPARE(f.paragraph->Text(), QStringLiteral("caf\u00e9 * bar"));
}

void tst_frmEditText::cancelAfterEditingLeavesTheObjectUnchanged()
{
    Fixture f;
    f.dialog.setTextObject(f.paragraph);
    WhenModal<frmEditText> user([&](frmEditText&) {
        retype(f.text(), {QStringLiteral("Something else")});
        QTest::mouseClick(f.cancel(), Qt::LeftButton);
    });
    QCOMPARE(f.dialog.exec(), int(QDialog::Rejected));
    QVERIFY(!user.leftOpen());
    QCOMPARE(f.paragraph->Text(), QStringLiteral("Lamps ship\r\nin May"));
    QVERIFY(f.h.log().lines().isEmpty());
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_frmEditText::closingByTheWindowFrameLeavesTheObjectUnchanged()
{
    Fixture f;
    f.dialog.setTextObject(f.paragraph);
    WhenModal<frmEditText> user([&](frmEditText& d) {
        retype(f.text(), {QStringLiteral("Something else")});
        // What the window frame's close button sends.
        d.windowHandle()->close();
    });
    QCOMPARE(f.dialog.exec(), int(QDialog::Rejected));
    QVERIFY(!user.leftOpen());
    QCOMPARE(f.paragraph->Text(), QStringLiteral("Lamps ship\r\nin May"));
}

void tst_frmEditText::escapeLeavesTheObjectUnchanged()
{
    Fixture f;
    f.dialog.setTextObject(f.paragraph);
    WhenModal<frmEditText> user([&](frmEditText& d) {
        retype(f.text(), {QStringLiteral("Something else")});
        QTest::keyClick(&d, Qt::Key_Escape);
    });
    QCOMPARE(f.dialog.exec(), int(QDialog::Rejected));
    QVERIFY(!user.leftOpen());
    QCOMPARE(f.paragraph->Text(), QStringLiteral("Lamps ship\r\nin May"));
}

void tst_frmEditText::okWithoutATextObjectReportsTheDialogsOwnMessage()
{
    Fixture f;
    bool openAfterOk = false;
    WhenModal<frmEditText> user([&](frmEditText& d) {
        QTest::keyClicks(f.text(), QStringLiteral("Nobody's text"));
        QTest::mouseClick(f.ok(), Qt::LeftButton);
        openAfterOk = d.isVisible();
        QTest::mouseClick(f.cancel(), Qt::LeftButton);
    });
    f.dialog.exec();
    QVERIFY(openAfterOk);
    const ErrorInfo notSet =
        error(91, QStringLiteral("ZebSubCtl"),
              QStringLiteral("Object variable or With block variable not set"));
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{Shown{
                 QStringLiteral("The requested operation could not be completed.  "
                                "Object variable or With block variable not set"),
                 48, QStringLiteral("91 - Object variable or With block variable not set")}}));
    QCOMPARE(f.h.log().lines(), (QStringList{kEnterOK, logError("cmdOK_Click", notSet)}));
}

void tst_frmEditText::okWriteFailureReportsTheDialogsOwnMessageAndKeepsTheObject()
{
    Fixture f;
    f.dialog.setTextObject(f.paragraph);
    f.paragraph->faults().failNext(QStringLiteral("Text="), kStoreDown);
    bool openAfterOk = false;
    WhenModal<frmEditText> user([&](frmEditText& d) {
        retype(f.text(), {QStringLiteral("New text")});
        QTest::mouseClick(f.ok(), Qt::LeftButton);
        openAfterOk = d.isVisible();
        // Still usable: the next OK writes.
        QTest::mouseClick(f.ok(), Qt::LeftButton);
    });
    QCOMPARE(f.dialog.exec(), int(QDialog::Accepted));
    QVERIFY(openAfterOk);
    QCOMPARE(
        f.h.boxes().shown(),
        (QList<Shown>{Shown{QStringLiteral("The requested operation could not be completed.  "
                                           "The text store is not available"),
                            48, QStringLiteral("-2147217843 - The text store is not available")}}));
    QCOMPARE(f.h.log().lines(),
             (QStringList{kEnterOK, logError("cmdOK_Click", kStoreDown), kEnterOK, kExitOK}));
    QCOMPARE(f.paragraph->Text(), QStringLiteral("New text"));
}

void tst_frmEditText::reformatFailureReportsTheDialogsOwnMessage()
{
    Fixture f;
    f.dialog.setTextObject(f.paragraph);
    const ErrorInfo e = error(5, QStringLiteral("ZebObjects.ApplicationServices"),
                              QStringLiteral("Invalid procedure call or argument"));
    f.services->faults().failNext(QStringLiteral("ReformatText"), e);
    WhenModal<frmEditText> user([&](frmEditText&) {
        QTest::mouseClick(f.ok(), Qt::LeftButton);
        QTest::mouseClick(f.cancel(), Qt::LeftButton);
    });
    f.dialog.exec();
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{Shown{QStringLiteral("The requested operation could not be completed.  "
                                                "Invalid procedure call or argument"),
                                 48, QStringLiteral("5 - Invalid procedure call or argument")}}));
    QCOMPARE(f.h.log().lines(), (QStringList{kEnterOK, logError("cmdOK_Click", e)}));
    QCOMPARE(f.paragraph->Text(), QStringLiteral("Lamps ship\r\nin May"));
}

void tst_frmEditText::failingTextObjectSetIsLoggedAndPassedOn()
{
    Fixture f;
    f.paragraph->faults().failNext(QStringLiteral("Text"), kStoreDown);
    std::optional<ErrorInfo> failure;
    try {
        f.dialog.setTextObject(f.paragraph);
    } catch (const Failure& e) {
        failure = e.info();
    }
    QCOMPARE(failure, std::optional(kStoreDown));
    QCOMPARE(f.h.log().lines(), QStringList{logError("TextObject() - Property Set", kStoreDown)});
    QVERIFY(f.h.boxes().shown().isEmpty());
    // The reference was kept before the text was read.
    QCOMPARE(f.dialog.TextObject(), std::shared_ptr<ZebObjects::TextObject>(f.paragraph));
}

void tst_frmEditText::screenReaderFindsANameForEveryInteractiveElement()
{
    Fixture f;
    f.dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.dialog));
    const QStringList unnamed = ZebTest::unnamedAccessibleElements(&f.dialog);
    QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(QStringLiteral("; "))));
    QCOMPARE(f.text()->accessibleName(), QStringLiteral("Text"));
}

QTEST_MAIN(tst_frmEditText)
#include "tst_frmedittext.moc"
