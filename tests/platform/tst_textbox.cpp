#include "platform/textbox.h"

#include <QApplication>
#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>

using namespace ZebSubCtl;

class tst_TextBox : public QObject {
    Q_OBJECT
private slots:
    void everyKeyReleasedRunsKeyUpOnce();
    void keyUpRunsAfterTheKeyHasChangedTheText();
    void keysThatChangeNothingRunKeyUpToo();
    void textSetFromCodeRunsChangeButNoKeyUp();
    void heldKeyIsReleasedOnce();
    void textIsAPropertyByName();
};

namespace {
void showFocused(TextBox& box)
{
    box.resize(160, 24);
    box.show();
    box.activateWindow();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    box.setFocus();
}
}  // namespace

void tst_TextBox::everyKeyReleasedRunsKeyUpOnce()
{
    TextBox box;
    showFocused(box);
    QSignalSpy up(&box, &TextBox::keyUp);
    QTest::keyClicks(&box, QStringLiteral("Bid"));
    QCOMPARE(up.count(), 3);
    QCOMPARE(up.at(0).at(0).toInt(), int(Qt::Key_B));
}

void tst_TextBox::keyUpRunsAfterTheKeyHasChangedTheText()
{
    TextBox box;
    showFocused(box);
    QStringList seen;
    connect(&box, &TextBox::keyUp, &box, [&] { seen << box.text(); });
    QTest::keyClicks(&box, QStringLiteral("ab"));
    QTest::keyClick(&box, Qt::Key_Backspace);
    QCOMPARE(seen, (QStringList{"a", "ab", "a"}));
}

void tst_TextBox::keysThatChangeNothingRunKeyUpToo()
{
    TextBox box;
    showFocused(box);
    QSignalSpy up(&box, &TextBox::keyUp);
    QSignalSpy changed(&box, &TextBox::changed);
    QTest::keyClick(&box, Qt::Key_Left);
    QTest::keyClick(&box, Qt::Key_Shift);
    QCOMPARE(up.count(), 2);
    QCOMPARE(changed.count(), 0);
}

void tst_TextBox::textSetFromCodeRunsChangeButNoKeyUp()
{
    TextBox box;
    QSignalSpy up(&box, &TextBox::keyUp);
    QSignalSpy changed(&box, &TextBox::changed);
    box.setText(QStringLiteral("Other"));
    box.setText(QStringLiteral("Other"));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(up.count(), 0);
}

void tst_TextBox::heldKeyIsReleasedOnce()
{
    TextBox box;
    showFocused(box);
    QSignalSpy up(&box, &TextBox::keyUp);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"), i > 0);
        QApplication::sendEvent(&box, &press);
        if (i < 2) {
            QKeyEvent repeat(QEvent::KeyRelease, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"),
                             true);
            QApplication::sendEvent(&box, &repeat);
        }
    }
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"), false);
    QApplication::sendEvent(&box, &release);
    QCOMPARE(box.text(), QStringLiteral("xxx"));
    QCOMPARE(up.count(), 1);
}

void tst_TextBox::textIsAPropertyByName()
{
    TextBox box;
    QVERIFY(box.setProperty("Text", QStringLiteral("Site visit")));
    QCOMPARE(box.property("Text").toString(), QStringLiteral("Site visit"));
}

QTEST_MAIN(tst_TextBox)
#include "tst_textbox.moc"
