#include "platform/combobox.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

using namespace ZebSubCtl;

namespace {

struct Names {
    ComboBox box;
    Names()
    {
        for (const char* n : {"Dana Whitfield", "Marcus Oyelaran", "Priya Raman"})
            box.AddItem(QLatin1String(n));
        box.resize(200, 24);
    }
    void show()
    {
        box.show();
        box.activateWindow();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
        box.setFocus();
    }
};

}  // namespace

class tst_ComboBox : public QObject {
    Q_OBJECT
private slots:
    void isEditableAndStartsEmpty();
    void addingEntriesLeavesTheTextAlone();
    void typingRunsChangeForEveryKeyAndNoClick();
    void textSetFromCodeRunsChangeOnce();
    void textSetToWhatItIsRunsNothing();
    void choosingFromTheListWithTheMouseRunsClickOnly();
    void choosingWithTheArrowKeysRunsClick();
    void enterKeepsTheTypedTextAndAddsNoEntry();
    void typingDoesNotCompleteFromTheList();
    void textIsAPropertyByName();
};

void tst_ComboBox::isEditableAndStartsEmpty()
{
    ComboBox box;
    QVERIFY(box.isEditable());
    QCOMPARE(box.text(), QString());
    QCOMPARE(box.ListCount(), 0);
}

void tst_ComboBox::addingEntriesLeavesTheTextAlone()
{
    Names n;
    QCOMPARE(n.box.ListCount(), 3);
    QCOMPARE(n.box.text(), QString());
    QCOMPARE(n.box.itemText(0), QStringLiteral("Dana Whitfield"));
    n.box.setText(QStringLiteral("Someone"));
    n.box.AddItem(QStringLiteral("Zed"));
    QCOMPARE(n.box.text(), QStringLiteral("Someone"));
}

void tst_ComboBox::typingRunsChangeForEveryKeyAndNoClick()
{
    Names n;
    n.show();
    QSignalSpy changes(&n.box, &ComboBox::changed);
    QSignalSpy clicks(&n.box, &ComboBox::clicked);
    QTest::keyClicks(&n.box, QStringLiteral("Lee"));
    QCOMPARE(n.box.text(), QStringLiteral("Lee"));
    QCOMPARE(changes.count(), 3);
    QTest::keyClick(&n.box, Qt::Key_Backspace);
    QCOMPARE(n.box.text(), QStringLiteral("Le"));
    QCOMPARE(changes.count(), 4);
    QCOMPARE(clicks.count(), 0);
}

void tst_ComboBox::textSetFromCodeRunsChangeOnce()
{
    Names n;
    QSignalSpy changes(&n.box, &ComboBox::changed);
    QSignalSpy clicks(&n.box, &ComboBox::clicked);
    n.box.setText(QStringLiteral("Priya Raman"));
    QCOMPARE(n.box.text(), QStringLiteral("Priya Raman"));
    QCOMPARE(changes.count(), 1);
    n.box.setText(QStringLiteral("Not in the list"));
    QCOMPARE(n.box.text(), QStringLiteral("Not in the list"));
    QCOMPARE(changes.count(), 2);
    n.box.setText(QString());
    QCOMPARE(n.box.text(), QString());
    QCOMPARE(changes.count(), 3);
    QCOMPARE(clicks.count(), 0);
}

void tst_ComboBox::textSetToWhatItIsRunsNothing()
{
    Names n;
    n.box.setText(QStringLiteral("Marcus Oyelaran"));
    QSignalSpy changes(&n.box, &ComboBox::changed);
    n.box.setText(QStringLiteral("Marcus Oyelaran"));
    QCOMPARE(changes.count(), 0);
    ComboBox empty;
    QSignalSpy none(&empty, &ComboBox::changed);
    empty.setText(QString());
    QCOMPARE(none.count(), 0);
}

void tst_ComboBox::choosingFromTheListWithTheMouseRunsClickOnly()
{
    Names n;
    n.show();
    QTest::keyClicks(&n.box, QStringLiteral("x"));
    QSignalSpy changes(&n.box, &ComboBox::changed);
    QSignalSpy clicks(&n.box, &ComboBox::clicked);
    n.box.showPopup();
    QAbstractItemView* view = n.box.view();
    QTRY_VERIFY(view->isVisible());
    const QRect r = view->visualRect(view->model()->index(1, 0));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, r.center());
    QTRY_VERIFY(!view->isVisible());
    QCOMPARE(n.box.text(), QStringLiteral("Marcus Oyelaran"));
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(changes.count(), 0);
}

void tst_ComboBox::choosingWithTheArrowKeysRunsClick()
{
    Names n;
    n.show();
    QSignalSpy changes(&n.box, &ComboBox::changed);
    QSignalSpy clicks(&n.box, &ComboBox::clicked);
    QTest::keyClick(&n.box, Qt::Key_Down);
    QCOMPARE(n.box.text(), QStringLiteral("Dana Whitfield"));
    QTest::keyClick(&n.box, Qt::Key_Down);
    QCOMPARE(n.box.text(), QStringLiteral("Marcus Oyelaran"));
    QTest::keyClick(&n.box, Qt::Key_Up);
    QCOMPARE(n.box.text(), QStringLiteral("Dana Whitfield"));
    QCOMPARE(clicks.count(), 3);
    QCOMPARE(changes.count(), 0);
    // The open list too: Alt+Down opens it, arrows move, Enter chooses.
    QTest::keyClick(&n.box, Qt::Key_Down, Qt::AltModifier);
    QTRY_VERIFY(n.box.view()->isVisible());
    QTest::keyClick(n.box.view(), Qt::Key_Down);
    QTest::keyClick(n.box.view(), Qt::Key_Down);
    QTest::keyClick(n.box.view(), Qt::Key_Return);
    QTRY_VERIFY(!n.box.view()->isVisible());
    QCOMPARE(n.box.text(), QStringLiteral("Priya Raman"));
    QCOMPARE(clicks.count(), 4);
    QCOMPARE(changes.count(), 0);
}

void tst_ComboBox::enterKeepsTheTypedTextAndAddsNoEntry()
{
    Names n;
    n.show();
    QSignalSpy clicks(&n.box, &ComboBox::clicked);
    QTest::keyClicks(&n.box, QStringLiteral("New Name"));
    QTest::keyClick(&n.box, Qt::Key_Return);
    QCOMPARE(n.box.text(), QStringLiteral("New Name"));
    QCOMPARE(n.box.ListCount(), 3);
    QCOMPARE(clicks.count(), 0);
}

void tst_ComboBox::typingDoesNotCompleteFromTheList()
{
    Names n;
    n.show();
    QTest::keyClicks(&n.box, QStringLiteral("Pri"));
    QCOMPARE(n.box.text(), QStringLiteral("Pri"));
    QCOMPARE(n.box.lineEdit()->selectedText(), QString());
}

void tst_ComboBox::textIsAPropertyByName()
{
    Names n;
    QSignalSpy changes(&n.box, &ComboBox::changed);
    QVERIFY(n.box.setProperty("Text", QStringLiteral("Dana Whitfield")));
    QCOMPARE(n.box.property("Text").toString(), QStringLiteral("Dana Whitfield"));
    QCOMPARE(changes.count(), 1);
}

QTEST_MAIN(tst_ComboBox)
#include "tst_combobox.moc"
