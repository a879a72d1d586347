#include "contracts/failure.h"
#include "platform/multilinetextbox.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

using namespace ZebSubCtl;

namespace {
struct ShownBox {
    MultiLineTextBox box;
    ShownBox()
    {
        box.resize(200, 80);
        box.show();
        if (!QTest::qWaitForWindowExposed(&box))
            qFatal("box not exposed");
        box.setFocus();
    }
};
}  // namespace

class tst_MultiLineTextBox : public QObject {
    Q_OBJECT
private slots:
    void textUsesCrLfLineBreaks();
    void typedLineBreakReadsAsCrLf();
    void lengthCountsALineBreakAsTwo();
    void settingTextRaisesChangedOnlyWhenItDiffers();
    void typingRaisesChangedPerCharacter();
    void zeroMaxLengthMeansNoLimit();
    void typingStopsAtMaxLength();
    void lineBreakNeedsRoomForTwoCharacters();
    void typingOverASelectionMayReplaceItAtTheLimit();
    void pastingIsCutToTheRoomLeft();
    void pastingIntoAFullBoxAddsNothing();
    void textSetFromCodeIsNotCut();
    void negativeMaxLengthFailsWith380();
    void verticalScrollBarIsAlwaysShown();
};

void tst_MultiLineTextBox::textUsesCrLfLineBreaks()
{
    MultiLineTextBox box;
    box.setText(QStringLiteral("one\r\ntwo\r\n\r\nthree"));
    QCOMPARE(box.text(), QStringLiteral("one\r\ntwo\r\n\r\nthree"));
    QCOMPARE(box.toPlainText(), QStringLiteral("one\ntwo\n\nthree"));
    box.setText(QStringLiteral("lf\nonly"));
    QCOMPARE(box.text(), QStringLiteral("lf\r\nonly"));
}

void tst_MultiLineTextBox::typedLineBreakReadsAsCrLf()
{
    ShownBox shown;
    QTest::keyClicks(&shown.box, QStringLiteral("ab"));
    QTest::keyClick(&shown.box, Qt::Key_Return);
    QTest::keyClicks(&shown.box, QStringLiteral("cd"));
    QCOMPARE(shown.box.text(), QStringLiteral("ab\r\ncd"));
}

void tst_MultiLineTextBox::lengthCountsALineBreakAsTwo()
{
    MultiLineTextBox box;
    box.setText(QStringLiteral("ab\r\ncd"));
    QCOMPARE(box.length(), 6);
}

void tst_MultiLineTextBox::settingTextRaisesChangedOnlyWhenItDiffers()
{
    MultiLineTextBox box;
    QSignalSpy spy(&box, &MultiLineTextBox::changed);
    box.setText(QStringLiteral("a\r\nb"));
    QCOMPARE(spy.count(), 1);
    box.setText(QStringLiteral("a\r\nb"));
    QCOMPARE(spy.count(), 1);
    box.setText(QString());
    QCOMPARE(spy.count(), 2);
    box.setText(QString());
    QCOMPARE(spy.count(), 2);
}

void tst_MultiLineTextBox::typingRaisesChangedPerCharacter()
{
    ShownBox shown;
    QSignalSpy spy(&shown.box, &MultiLineTextBox::changed);
    QTest::keyClicks(&shown.box, QStringLiteral("abc"));
    QCOMPARE(spy.count(), 3);
    QTest::keyClick(&shown.box, Qt::Key_Backspace);
    QCOMPARE(spy.count(), 4);
    QCOMPARE(shown.box.text(), QStringLiteral("ab"));
}

void tst_MultiLineTextBox::zeroMaxLengthMeansNoLimit()
{
    ShownBox shown;
    QCOMPARE(shown.box.maxLength(), 0);
    const QString typed(300, QLatin1Char('x'));
    QTest::keyClicks(&shown.box, typed);
    QCOMPARE(shown.box.text(), typed);
}

void tst_MultiLineTextBox::typingStopsAtMaxLength()
{
    ShownBox shown;
    shown.box.setMaxLength(5);
    QTest::keyClicks(&shown.box, QStringLiteral("abcdefgh"));
    QCOMPARE(shown.box.text(), QStringLiteral("abcde"));
    QTest::keyClick(&shown.box, Qt::Key_Backspace);
    QTest::keyClicks(&shown.box, QStringLiteral("XY"));
    QCOMPARE(shown.box.text(), QStringLiteral("abcdX"));
}

void tst_MultiLineTextBox::lineBreakNeedsRoomForTwoCharacters()
{
    ShownBox shown;
    shown.box.setMaxLength(4);
    QTest::keyClicks(&shown.box, QStringLiteral("abc"));
    QTest::keyClick(&shown.box, Qt::Key_Return);
    QCOMPARE(shown.box.text(), QStringLiteral("abc"));
    QTest::keyClick(&shown.box, Qt::Key_Backspace);
    QTest::keyClick(&shown.box, Qt::Key_Return);
    QCOMPARE(shown.box.text(), QStringLiteral("ab\r\n"));
    QCOMPARE(shown.box.length(), 4);
}

void tst_MultiLineTextBox::typingOverASelectionMayReplaceItAtTheLimit()
{
    ShownBox shown;
    shown.box.setMaxLength(3);
    QTest::keyClicks(&shown.box, QStringLiteral("abc"));
    shown.box.selectAll();
    QTest::keyClicks(&shown.box, QStringLiteral("z"));
    QCOMPARE(shown.box.text(), QStringLiteral("z"));
}

void tst_MultiLineTextBox::pastingIsCutToTheRoomLeft()
{
    ShownBox shown;
    shown.box.setMaxLength(8);
    QTest::keyClicks(&shown.box, QStringLiteral("ab"));
    QApplication::clipboard()->setText(QStringLiteral("12\r\n345678"));
    QTest::keySequence(&shown.box, QKeySequence::Paste);
    QCOMPARE(shown.box.text(), QStringLiteral("ab12\r\n34"));
    QCOMPARE(shown.box.length(), 8);
}

void tst_MultiLineTextBox::pastingIntoAFullBoxAddsNothing()
{
    ShownBox shown;
    shown.box.setMaxLength(2);
    QTest::keyClicks(&shown.box, QStringLiteral("ab"));
    QApplication::clipboard()->setText(QStringLiteral("more"));
    shown.box.paste();
    QCOMPARE(shown.box.text(), QStringLiteral("ab"));
}

void tst_MultiLineTextBox::textSetFromCodeIsNotCut()
{
    MultiLineTextBox box;
    box.setMaxLength(3);
    box.setText(QStringLiteral("longer than three"));
    QCOMPARE(box.text(), QStringLiteral("longer than three"));
}

void tst_MultiLineTextBox::negativeMaxLengthFailsWith380()
{
    MultiLineTextBox box;
    box.setMaxLength(7);
    try {
        box.setMaxLength(-1);
        QFAIL("no failure");
    } catch (const ZebObjects::Failure& f) {
        QCOMPARE(f.Number(), 380);
        QCOMPARE(f.Description(), QStringLiteral("Invalid property value"));
    }
    QCOMPARE(box.maxLength(), 7);
}

void tst_MultiLineTextBox::verticalScrollBarIsAlwaysShown()
{
    ShownBox shown;
    QCOMPARE(shown.box.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QVERIFY(shown.box.verticalScrollBar()->isVisible());
}

QTEST_MAIN(tst_MultiLineTextBox)
#include "tst_multilinetextbox.moc"
