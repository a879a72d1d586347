#include "contracts/failure.h"
#include "platform/keyedlistview.h"
#include "platform/keycodes.h"
#include "support/accessibleevents.h"

#include <QAccessible>
#include <QLineEdit>

#include <QDialog>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <functional>
#include <random>
#include <vector>

using namespace ZebSubCtl;
using ZebObjects::Failure;

namespace {

// The failure a call raises: number and description.
std::pair<qint32, QString> failureOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const Failure& f) {
        return {f.Number(), f.Description()};
    }
    return {0, QString()};
}

// A double click as the user makes it: press, release, the second press, release.
void doubleClick(QWidget* widget, QPoint pos)
{
    QTest::mousePress(widget, Qt::LeftButton, {}, pos);
    QTest::mouseRelease(widget, Qt::LeftButton, {}, pos);
    QTest::mouseDClick(widget, Qt::LeftButton, {}, pos);
    QTest::mouseRelease(widget, Qt::LeftButton, {}, pos);
}

// A shown list of n items keyed "k0".."k<n-1>", texts "item 0".. .
struct ShownList {
    QWidget window;
    KeyedListView* list;
    explicit ShownList(int n, bool checkBoxes = true)
    {
        list = new KeyedListView(&window);
        list->setGeometry(0, 0, 300, 200);
        list->addColumn(QStringLiteral("text"), QStringLiteral("Text"));
        list->setCheckBoxes(checkBoxes);
        for (int i = 0; i < n; ++i)
            list->addItem(QStringLiteral("k%1").arg(i), QStringLiteral("item %1").arg(i));
        window.resize(300, 200);
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            qFatal("window not exposed");
    }
    QPoint center(int row) const { return list->itemRect(row).center(); }
};

}  // namespace

class tst_KeyedListView : public QObject {
    Q_OBJECT
private slots:
    void itemsAreFoundByKeyAndKeepTagTextAndCheck();
    void duplicateKeyFailsWith35602AndAddsNothing();
    void missingKeyFailsWith35601();
    void rowOutOfRangeFailsWith35600();
    void emptyKeysMayRepeatAndAreNotFindable();
    void insertingMovesLaterKeysDown();
    void removingByKeyMovesLaterKeysUp();
    void clearEmptiesTheList();
    void everyKeyFindsItsRowThroughInsertsRemovalsAndDuplicates();
    void subItemsAreKeyedAndShownInTheirColumns();
    void duplicateSubItemKeyFailsWith35602();
    void columnsCarryKeysAndHeadings();
    void checkSetFromCodeRaisesNoItemCheck();
    void userClickOnCheckBoxRaisesItemCheckOnce();
    void spaceKeyTogglesTheSelectedItemAsAUserToggle();
    void checkBoxesOffMakesItemsUncheckable();
    void itemRectMatchesTheViewsOwnRectangle_data();
    void itemRectMatchesTheViewsOwnRectangle();
    void itemRectFollowsScrolling();
    void itemRectOfMissingRowIsEmpty();
    void batchedChangesArriveAsOneReset();
    void batchKeepsWhatWasAddedWhenAStepFails();
    void changesOutsideABatchArriveOneByOne();
    void selectionStartsEmptyAndFollowsClicksAndCode();
    void doubleClickRaisesDblClick();
    void keyUpRaisedOnceOnReleaseWithTheKey();
    void enterStaysInTheListAndDoesNotPressTheDefaultButton();
    void rightButtonReleaseRaisesMouseUpAtThePointer();
    void pointerMoveRaisesMouseMove();
    void itemToolTipComesFromTheItem();
    void keyDownKeysTranslateToTheHostsKeyCodes();
    void screenReadersSeeCheckableRowsTheirTicksAsEventsAndTheSameObjectsOnEveryRead();
    void onlyTheFocusedListHasAFocusedRow();
};

void tst_KeyedListView::itemsAreFoundByKeyAndKeepTagTextAndCheck()
{
    KeyedListView list;
    list.setCheckBoxes(true);
    QCOMPARE(list.addItem(QStringLiteral("a"), QStringLiteral("first")), 0);
    QCOMPARE(list.addItem(QStringLiteral("b"), QStringLiteral("second")), 1);
    list.setTag(1, QStringLiteral("tag-b"));
    list.setChecked(1, true);
    QCOMPARE(list.count(), 2);
    QCOMPARE(list.find(QStringLiteral("b")), 1);
    QCOMPARE(list.row(QStringLiteral("a")), 0);
    QCOMPARE(list.key(1), QStringLiteral("b"));
    QCOMPARE(list.text(1), QStringLiteral("second"));
    QCOMPARE(list.tag(1), QStringLiteral("tag-b"));
    QCOMPARE(list.tag(0), QString());
    QVERIFY(list.isChecked(1));
    QVERIFY(!list.isChecked(0));
    const QModelIndex i = list.model()->index(1, 0);
    QCOMPARE(i.data(Qt::DisplayRole).toString(), QStringLiteral("second"));
    QCOMPARE(i.data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
    list.setText(1, QStringLiteral("changed"));
    QCOMPARE(i.data(Qt::DisplayRole).toString(), QStringLiteral("changed"));
}

void tst_KeyedListView::duplicateKeyFailsWith35602AndAddsNothing()
{
    KeyedListView list;
    list.addItem(QStringLiteral("a"), QStringLiteral("first"));
    const auto add = failureOf([&] { list.addItem(QStringLiteral("a"), QStringLiteral("again")); });
    QCOMPARE(add.first, 35602);
    QCOMPARE(add.second, QStringLiteral("Key is not unique in collection"));
    const auto insert =
        failureOf([&] { list.insertItem(0, QStringLiteral("a"), QStringLiteral("again")); });
    QCOMPARE(insert.first, 35602);
    QCOMPARE(list.count(), 1);
    QCOMPARE(list.text(0), QStringLiteral("first"));
}

void tst_KeyedListView::missingKeyFailsWith35601()
{
    KeyedListView list;
    list.addItem(QStringLiteral("a"), QStringLiteral("first"));
    QCOMPARE(list.find(QStringLiteral("zz")), -1);
    const auto row = failureOf([&] { list.row(QStringLiteral("zz")); });
    QCOMPARE(row.first, 35601);
    QCOMPARE(row.second, QStringLiteral("Element not found"));
    QCOMPARE(failureOf([&] { list.removeItem(QStringLiteral("zz")); }).first, 35601);
    QCOMPARE(list.count(), 1);
}

void tst_KeyedListView::rowOutOfRangeFailsWith35600()
{
    KeyedListView list;
    list.addItem(QStringLiteral("a"), QStringLiteral("first"));
    const auto text = failureOf([&] { list.text(1); });
    QCOMPARE(text.first, 35600);
    QCOMPARE(text.second, QStringLiteral("Index out of bounds"));
    QCOMPARE(failureOf([&] { list.setChecked(-1, true); }).first, 35600);
    QCOMPARE(failureOf([&] { list.insertItem(2, QStringLiteral("b"), QString()); }).first, 35600);
    QCOMPARE(failureOf([&] { list.removeItem(5); }).first, 35600);
    QCOMPARE(failureOf([&] { list.setSelectedRow(1); }).first, 35600);
}

void tst_KeyedListView::emptyKeysMayRepeatAndAreNotFindable()
{
    KeyedListView list;
    list.addItem(QString(), QStringLiteral("one"));
    list.addItem(QString(), QStringLiteral("two"));
    QCOMPARE(list.count(), 2);
    QCOMPARE(list.find(QString()), -1);
}

void tst_KeyedListView::insertingMovesLaterKeysDown()
{
    KeyedListView list;
    list.addItem(QStringLiteral("a"), QStringLiteral("A"));
    list.addItem(QStringLiteral("c"), QStringLiteral("C"));
    QCOMPARE(list.insertItem(1, QStringLiteral("b"), QStringLiteral("B")), 1);
    QCOMPARE(list.row(QStringLiteral("a")), 0);
    QCOMPARE(list.row(QStringLiteral("b")), 1);
    QCOMPARE(list.row(QStringLiteral("c")), 2);
    QCOMPARE(list.insertItem(0, QStringLiteral("z"), QStringLiteral("Z")), 0);
    QCOMPARE(list.row(QStringLiteral("c")), 3);
    QCOMPARE(list.text(3), QStringLiteral("C"));
}

void tst_KeyedListView::removingByKeyMovesLaterKeysUp()
{
    KeyedListView list;
    for (const char* k : {"a", "b", "c", "d"})
        list.addItem(QLatin1String(k), QLatin1String(k).toString().toUpper());
    list.removeItem(QStringLiteral("b"));
    QCOMPARE(list.count(), 3);
    QCOMPARE(list.find(QStringLiteral("b")), -1);
    QCOMPARE(list.row(QStringLiteral("c")), 1);
    QCOMPARE(list.row(QStringLiteral("d")), 2);
    list.removeItem(0);
    QCOMPARE(list.row(QStringLiteral("d")), 1);
}

void tst_KeyedListView::clearEmptiesTheList()
{
    KeyedListView list;
    list.addItem(QStringLiteral("a"), QStringLiteral("A"));
    list.clear();
    QCOMPARE(list.count(), 0);
    QCOMPARE(list.find(QStringLiteral("a")), -1);
    QCOMPARE(list.model()->rowCount(), 0);
    // The key is free again.
    QCOMPARE(list.addItem(QStringLiteral("a"), QStringLiteral("A")), 0);
}

// Thousands of changes at the front, in the middle and at the end, in and out of batches, with
// keys that grow the index several times over, checked against a plain list of the keys.
void tst_KeyedListView::everyKeyFindsItsRowThroughInsertsRemovalsAndDuplicates()
{
    KeyedListView list;
    std::vector<QString> shadow;
    std::mt19937 random(24);
    int next = 0;
    const auto pick = [&](std::size_t bound) {
        return std::uniform_int_distribution<std::size_t>(0, bound)(random);
    };
    for (int step = 0; step < 3000; ++step) {
        const std::size_t op = pick(9);
        const bool batch = op == 9;
        if (batch) {
            // A batch of appends, and a key of the batch refused within it.
            list.beginUpdate();
            const std::size_t appends = 1 + pick(40);
            for (std::size_t i = 0; i < appends; ++i) {
                const QString key = QStringLiteral("K%1").arg(next++);
                QCOMPARE(list.addItem(key, key), int(shadow.size()));
                shadow.push_back(key);
            }
            const QString again = shadow[shadow.size() - 1 - pick(appends - 1)];
            QCOMPARE(failureOf([&] { list.addItem(again, QString()); }).first, 35602);
            QCOMPARE(list.find(shadow.back()), int(shadow.size()) - 1);
        }
        if (op <= 4 || shadow.empty()) {
            // Mostly adds at the end; some at the front or anywhere.
            const QString key = QStringLiteral("K%1").arg(next++);
            const std::size_t at = op <= 2 ? shadow.size() : pick(shadow.size());
            QCOMPARE(list.insertItem(int(at), key, key), int(at));
            shadow.insert(shadow.begin() + qsizetype(at), key);
        } else if (op <= 7) {
            const std::size_t at = op == 5 ? shadow.size() - 1 : pick(shadow.size() - 1);
            if (op == 6)
                list.removeItem(shadow[at]);
            else
                list.removeItem(int(at));
            QCOMPARE(list.find(shadow[at]), -1);
            shadow.erase(shadow.begin() + qsizetype(at));
        } else if (op == 8) {
            // A key already there is refused and changes nothing.
            const QString key = shadow[pick(shadow.size() - 1)];
            QCOMPARE(failureOf([&] { list.addItem(key, QString()); }).first, 35602);
        }
        if (batch)
            list.endUpdate();
        QCOMPARE(list.count(), int(shadow.size()));
        if (step % 100 == 0 || step > 2980) {
            for (std::size_t row = 0; row < shadow.size(); ++row) {
                QCOMPARE(list.find(shadow[row]), int(row));
                QCOMPARE(list.key(int(row)), shadow[row]);
            }
        }
    }
    QCOMPARE(list.find(QStringLiteral("K%1").arg(next)), -1);
}

void tst_KeyedListView::subItemsAreKeyedAndShownInTheirColumns()
{
    KeyedListView list;
    list.addColumn(QStringLiteral("keyword"), QStringLiteral("Keyword"));
    list.addColumn(QStringLiteral("name"), QStringLiteral("Name"));
    list.addColumn(QStringLiteral("city"), QStringLiteral("City"));
    list.addItem(QStringLiteral("c1"), QStringLiteral("ACME"));
    QCOMPARE(list.addSubItem(0, QStringLiteral("name"), QStringLiteral("Acme Lighting")), 1);
    QCOMPARE(list.addSubItem(0, QStringLiteral("city"), QStringLiteral("Gent")), 2);
    QCOMPARE(list.subItemCount(0), 2);
    QCOMPARE(list.subItemText(0, QStringLiteral("city")), QStringLiteral("Gent"));
    QCOMPARE(list.subItemText(0, 1), QStringLiteral("Acme Lighting"));
    QCOMPARE(list.subItemKey(0, 2), QStringLiteral("city"));
    QCOMPARE(list.model()->index(0, 0).data().toString(), QStringLiteral("ACME"));
    QCOMPARE(list.model()->index(0, 1).data().toString(), QStringLiteral("Acme Lighting"));
    QCOMPARE(list.model()->index(0, 2).data().toString(), QStringLiteral("Gent"));
    list.setSubItemText(0, 2, QStringLiteral("Brugge"));
    QCOMPARE(list.model()->index(0, 2).data().toString(), QStringLiteral("Brugge"));
    QCOMPARE(failureOf([&] { list.subItemText(0, QStringLiteral("state")); }).first, 35601);
    QCOMPARE(failureOf([&] { list.subItemText(0, 3); }).first, 35600);
}

void tst_KeyedListView::duplicateSubItemKeyFailsWith35602()
{
    KeyedListView list;
    list.addItem(QStringLiteral("c1"), QStringLiteral("ACME"));
    list.addSubItem(0, QStringLiteral("name"), QStringLiteral("A"));
    QCOMPARE(
        failureOf([&] { list.addSubItem(0, QStringLiteral("name"), QStringLiteral("B")); }).first,
        35602);
    QCOMPARE(list.subItemCount(0), 1);
}

void tst_KeyedListView::columnsCarryKeysAndHeadings()
{
    KeyedListView list;
    QCOMPARE(list.columnCount(), 0);
    QCOMPARE(list.model()->columnCount(), 1);
    list.addColumn(QString(), QStringLiteral("Text"));
    list.addColumn(QStringLiteral("name"), QStringLiteral("Name"));
    QCOMPARE(list.columnCount(), 2);
    QCOMPARE(list.columnKey(1), QStringLiteral("name"));
    QCOMPARE(list.columnHeading(0), QStringLiteral("Text"));
    QCOMPARE(list.model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Text"));
    QCOMPARE(list.model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Name"));
    QCOMPARE(failureOf([&] { list.addColumn(QStringLiteral("name"), QStringLiteral("N")); }).first,
             35602);
}

void tst_KeyedListView::checkSetFromCodeRaisesNoItemCheck()
{
    ShownList shown(3);
    QSignalSpy spy(shown.list, &KeyedListView::itemCheck);
    shown.list->setChecked(1, true);
    shown.list->setChecked(1, false);
    shown.list->setChecked(2, true);
    QCOMPARE(spy.count(), 0);
    QVERIFY(shown.list->isChecked(2));
}

void tst_KeyedListView::userClickOnCheckBoxRaisesItemCheckOnce()
{
    ShownList shown(3);
    QSignalSpy spy(shown.list, &KeyedListView::itemCheck);
    const QRect box = shown.list->checkBoxRect(1);
    QVERIFY(!box.isEmpty());
    QVERIFY(shown.list->itemRect(1).contains(box.center()));
    QTest::mouseClick(shown.list->viewport(), Qt::LeftButton, {}, box.center());
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), 1);
    QVERIFY(shown.list->isChecked(1));
    QTest::mouseClick(shown.list->viewport(), Qt::LeftButton, {}, box.center());
    QCOMPARE(spy.count(), 2);
    QVERIFY(!shown.list->isChecked(1));
    // A click on the text selects but does not toggle.
    QTest::mouseClick(shown.list->viewport(), Qt::LeftButton, {},
                      QPoint(shown.list->itemRect(1).right() - 5, box.center().y()));
    QCOMPARE(spy.count(), 2);
}

void tst_KeyedListView::spaceKeyTogglesTheSelectedItemAsAUserToggle()
{
    ShownList shown(3);
    QSignalSpy spy(shown.list, &KeyedListView::itemCheck);
    shown.list->setFocus();
    shown.list->setSelectedRow(2);
    QTest::keyClick(shown.list, Qt::Key_Space);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), 2);
    QVERIFY(shown.list->isChecked(2));
}

void tst_KeyedListView::checkBoxesOffMakesItemsUncheckable()
{
    ShownList shown(2, false);
    QVERIFY(!shown.list->checkBoxes());
    const QModelIndex i = shown.list->model()->index(0, 0);
    QVERIFY(!(i.flags() & Qt::ItemIsUserCheckable));
    QVERIFY(!i.data(Qt::CheckStateRole).isValid());
    shown.list->setCheckBoxes(true);
    QVERIFY(i.flags() & Qt::ItemIsUserCheckable);
    QCOMPARE(i.data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
}

void tst_KeyedListView::itemRectMatchesTheViewsOwnRectangle_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("first") << 0;
    QTest::newRow("second") << 1;
    QTest::newRow("middle") << 25;
    QTest::newRow("last") << 49;
}

void tst_KeyedListView::itemRectMatchesTheViewsOwnRectangle()
{
    QFETCH(int, row);
    ShownList shown(50);
    const QRect own = shown.list->visualRect(shown.list->model()->index(row, 0));
    const QRect rect = shown.list->itemRect(row);
    QCOMPARE(rect.top(), own.top());
    QCOMPARE(rect.height(), own.height());
    QCOMPARE(rect.left(), own.left());
    QCOMPARE(rect.width(), shown.list->header()->length());
}

void tst_KeyedListView::itemRectFollowsScrolling()
{
    ShownList shown(200);
    shown.list->verticalScrollBar()->setValue(30);
    for (int row : {0, 29, 30, 31, 45, 199}) {
        const QRect own = shown.list->visualRect(shown.list->model()->index(row, 0));
        QCOMPARE(shown.list->itemRect(row).top(), own.top());
    }
    shown.list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    shown.list->verticalScrollBar()->setValue(77);
    for (int row : {0, 10, 100}) {
        const QRect own = shown.list->visualRect(shown.list->model()->index(row, 0));
        QCOMPARE(shown.list->itemRect(row).top(), own.top());
    }
    // The rectangle of a visible item is where a click lands on it.
    const int row = shown.list->indexAt(QPoint(5, 40)).row();
    QVERIFY(shown.list->itemRect(row).contains(QPoint(5, 40)));
}

void tst_KeyedListView::itemRectOfMissingRowIsEmpty()
{
    ShownList shown(2);
    QVERIFY(shown.list->itemRect(2).isNull());
    QVERIFY(shown.list->itemRect(-1).isNull());
}

void tst_KeyedListView::batchedChangesArriveAsOneReset()
{
    ShownList shown(3);
    QSignalSpy resets(shown.list->model(), &QAbstractItemModel::modelReset);
    QSignalSpy inserts(shown.list->model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy changes(shown.list->model(), &QAbstractItemModel::dataChanged);
    shown.list->beginUpdate();
    shown.list->clear();
    for (int i = 0; i < 100; ++i) {
        const int row = shown.list->addItem(QStringLiteral("n%1").arg(i), QString::number(i));
        shown.list->setChecked(row, i % 2 == 0);
        shown.list->setTag(row, QString::number(i));
    }
    QCOMPARE(resets.count(), 0);
    shown.list->endUpdate();
    QCOMPARE(resets.count(), 1);
    QCOMPARE(inserts.count(), 0);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(shown.list->model()->rowCount(), 100);
    QCOMPARE(shown.list->row(QStringLiteral("n42")), 42);
    QVERIFY(shown.list->isChecked(42));
}

void tst_KeyedListView::batchKeepsWhatWasAddedWhenAStepFails()
{
    ShownList shown(0);
    shown.list->beginUpdate();
    shown.list->addItem(QStringLiteral("a"), QStringLiteral("A"));
    QCOMPARE(
        failureOf([&] { shown.list->addItem(QStringLiteral("a"), QStringLiteral("B")); }).first,
        35602);
    shown.list->endUpdate();
    QCOMPARE(shown.list->model()->rowCount(), 1);
    QCOMPARE(shown.list->text(0), QStringLiteral("A"));
}

void tst_KeyedListView::changesOutsideABatchArriveOneByOne()
{
    ShownList shown(3);
    QSignalSpy resets(shown.list->model(), &QAbstractItemModel::modelReset);
    QSignalSpy inserts(shown.list->model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy removes(shown.list->model(), &QAbstractItemModel::rowsRemoved);
    shown.list->addItem(QStringLiteral("x"), QStringLiteral("X"));
    shown.list->insertItem(1, QStringLiteral("y"), QStringLiteral("Y"));
    shown.list->removeItem(QStringLiteral("k0"));
    QCOMPARE(resets.count(), 0);
    QCOMPARE(inserts.count(), 2);
    QCOMPARE(inserts.at(1).at(1).toInt(), 1);
    QCOMPARE(removes.count(), 1);
    QCOMPARE(removes.at(0).at(1).toInt(), 0);
}

void tst_KeyedListView::selectionStartsEmptyAndFollowsClicksAndCode()
{
    ShownList shown(5);
    QCOMPARE(shown.list->selectedRow(), -1);
    QTest::mouseClick(shown.list->viewport(), Qt::LeftButton, {},
                      QPoint(shown.list->itemRect(3).right() - 5, shown.center(3).y()));
    QCOMPARE(shown.list->selectedRow(), 3);
    shown.list->setSelectedRow(1);
    QCOMPARE(shown.list->selectedRow(), 1);
    QCOMPARE(shown.list->currentIndex().row(), 1);
    shown.list->setSelectedRow(-1);
    QCOMPARE(shown.list->selectedRow(), -1);
}

void tst_KeyedListView::doubleClickRaisesDblClick()
{
    ShownList shown(3);
    QSignalSpy spy(shown.list, &KeyedListView::dblClick);
    doubleClick(shown.list->viewport(),
                QPoint(shown.list->itemRect(2).right() - 5, shown.center(2).y()));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(shown.list->selectedRow(), 2);
}

void tst_KeyedListView::keyUpRaisedOnceOnReleaseWithTheKey()
{
    ShownList shown(3);
    QSignalSpy down(shown.list, &KeyedListView::keyDown);
    QSignalSpy up(shown.list, &KeyedListView::keyUp);
    QTest::keyPress(shown.list, Qt::Key_Return);
    QCOMPARE(down.count(), 1);
    QCOMPARE(up.count(), 0);
    QTest::keyRelease(shown.list, Qt::Key_Return);
    QCOMPARE(up.count(), 1);
    QCOMPARE(up.at(0).at(0).toInt(), int(Qt::Key_Return));
    // Shift+A: A comes up with Shift held, then Shift itself comes up.
    QTest::keyClick(shown.list, Qt::Key_A, Qt::ShiftModifier);
    QCOMPARE(up.count(), 3);
    QCOMPARE(up.at(1).at(0).toInt(), int(Qt::Key_A));
    QCOMPARE(up.at(1).at(1).value<Qt::KeyboardModifiers>(),
             Qt::KeyboardModifiers(Qt::ShiftModifier));
    QCOMPARE(up.at(2).at(0).toInt(), int(Qt::Key_Shift));
}

void tst_KeyedListView::enterStaysInTheListAndDoesNotPressTheDefaultButton()
{
    QDialog dialog;
    auto* list = new KeyedListView(&dialog);
    auto* ok = new QPushButton(QStringLiteral("OK"), &dialog);
    ok->setDefault(true);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(list);
    layout->addWidget(ok);
    list->addItem(QStringLiteral("a"), QStringLiteral("A"));
    QSignalSpy clicked(ok, &QPushButton::clicked);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Return);
    QTest::keyClick(list, Qt::Key_Enter);
    QCOMPARE(clicked.count(), 0);
    QVERIFY(dialog.isVisible());
}

void tst_KeyedListView::rightButtonReleaseRaisesMouseUpAtThePointer()
{
    ShownList shown(3);
    QSignalSpy spy(shown.list, &KeyedListView::mouseUp);
    const QPoint at(40, shown.center(1).y());
    QTest::mouseClick(shown.list->viewport(), Qt::RightButton, {}, at);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).value<Qt::MouseButton>(), Qt::RightButton);
    QCOMPARE(spy.at(0).at(2).toPoint(), at);
    // The right button selects the item under the pointer, as a left click does.
    QCOMPARE(shown.list->selectedRow(), 1);
}

void tst_KeyedListView::pointerMoveRaisesMouseMove()
{
    ShownList shown(3);
    QSignalSpy spy(shown.list, &KeyedListView::mouseMove);
    QTest::mouseMove(shown.list->viewport(), QPoint(30, 10));
    QTest::mouseMove(shown.list->viewport(), QPoint(31, 25));
    QVERIFY(spy.count() >= 1);
    QCOMPARE(spy.last().at(2).toPoint(), QPoint(31, 25));
    QCOMPARE(spy.last().at(0).value<Qt::MouseButtons>(), Qt::MouseButtons(Qt::NoButton));
}

void tst_KeyedListView::itemToolTipComesFromTheItem()
{
    KeyedListView list;
    list.addItem(QStringLiteral("a"), QStringLiteral("A"));
    QVERIFY(!list.model()->index(0, 0).data(Qt::ToolTipRole).isValid());
    list.setItemToolTip(0, QStringLiteral("Acme Lighting, Gent"));
    QCOMPARE(list.itemToolTip(0), QStringLiteral("Acme Lighting, Gent"));
    QCOMPARE(list.model()->index(0, 0).data(Qt::ToolTipRole).toString(),
             QStringLiteral("Acme Lighting, Gent"));
}

void tst_KeyedListView::keyDownKeysTranslateToTheHostsKeyCodes()
{
    ShownList shown(3);
    QSignalSpy down(shown.list, &KeyedListView::keyDown);
    QTest::keyClick(shown.list, Qt::Key_Return);
    QTest::keyClick(shown.list, Qt::Key_Enter, Qt::KeypadModifier);
    QTest::keyClick(shown.list, Qt::Key_A, Qt::ShiftModifier);
    QTest::keyClick(shown.list, Qt::Key_Down);
    QTest::keyClick(shown.list, Qt::Key_7, Qt::ControlModifier | Qt::AltModifier);
    QTest::keyClick(shown.list, Qt::Key_F2);
    QTest::keyClick(shown.list, Qt::Key_Escape);
    QList<std::pair<int, int>> codes;
    for (const QList<QVariant>& args : down) {
        const int key = args.at(0).toInt();
        // Modifier keys pressed on their own come first; the keys themselves are compared.
        if (key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt)
            continue;
        codes << std::pair<int, int>(hostKeyCode(key),
                                     hostShift(args.at(1).value<Qt::KeyboardModifiers>()));
    }
    QCOMPARE(codes, (QList<std::pair<int, int>>{
                        {13, 0}, {13, 0}, {65, 1}, {40, 0}, {55, 6}, {113, 0}, {27, 0}}));
    QCOMPARE(int(hostKeyCode(Qt::Key_Space)), 32);
    QCOMPARE(int(hostKeyCode(Qt::Key_Tab)), 9);
    QCOMPARE(int(hostKeyCode(Qt::Key_Delete)), 46);
    QCOMPARE(int(hostKeyCode(Qt::Key_Z)), 90);
    QCOMPARE(int(hostKeyCode(Qt::Key_F1)), 112);
    QCOMPARE(int(hostKeyCode(Qt::Key_unknown)), 0);
}

void tst_KeyedListView::
    screenReadersSeeCheckableRowsTheirTicksAsEventsAndTheSameObjectsOnEveryRead()
{
    ZebTest::AccessibleEvents events;
    ShownList shown(4);
    shown.list->addColumn(QStringLiteral("city"), QStringLiteral("City"));
    shown.list->addSubItem(1, QStringLiteral("city"), QStringLiteral("Springfield"));
    shown.list->setAccessibleName(QStringLiteral("Customers"));
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(shown.list);
    QCOMPARE(list->role(), QAccessible::Table);
    QCOMPARE(list->text(QAccessible::Name), QStringLiteral("Customers"));
    QAccessibleTableInterface* table = list->tableInterface();
    QVERIFY(table);
    QCOMPARE(table->rowCount(), 4);
    QCOMPARE(table->columnCount(), 2);
    // The heading band comes first, then the rows' cells.
    QCOMPARE(list->childCount(), 2 + 4 * 2);
    QCOMPARE(list->child(0)->role(), QAccessible::ColumnHeader);
    QCOMPARE(list->child(1)->text(QAccessible::Name), QStringLiteral("City"));

    // An unticked row says it can be ticked.
    QAccessibleInterface* row1 = table->cellAt(1, 0);
    QCOMPARE(row1->text(QAccessible::Name), QStringLiteral("item 1"));
    QCOMPARE(row1->text(QAccessible::Description), QStringLiteral("City: Springfield"));
    QVERIFY(row1->state().checkable);
    QVERIFY(!row1->state().checked);
    QCOMPARE(row1->tableCellInterface()->columnHeaderCells().size(), 1);
    QCOMPARE(row1->tableCellInterface()->columnHeaderCells().front()->text(QAccessible::Name),
             QStringLiteral("Text"));
    QCOMPARE(list->indexOfChild(row1), 2 + 1 * 2);
    QCOMPARE(list->child(2 + 1 * 2), row1);

    // Space ticks the row and tells the screen reader; so does a tick set from code.
    shown.list->setFocus();
    shown.list->setSelectedRow(1);
    events.clear();
    QTest::keyClick(shown.list, Qt::Key_Space);
    QCOMPARE(events.checkChanges(), QStringList{QStringLiteral("item 1")});
    QVERIFY(row1->state().checked);
    events.clear();
    shown.list->setChecked(3, true);
    QCOMPARE(events.checkChanges(), QStringList{QStringLiteral("item 3")});

    // The reader's toggle is a user toggle.
    QSignalSpy userChecks(shown.list, &KeyedListView::itemCheck);
    QAccessibleInterface* row2 = table->cellAt(2, 0);
    QVERIFY(row2->actionInterface()->actionNames().contains(
        QAccessibleActionInterface::toggleAction()));
    row2->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QCOMPARE(userChecks.count(), 1);
    QVERIFY(shown.list->isChecked(2));

    // Reading the rows again and again hands out the same objects.
    const QAccessible::Id id = QAccessible::uniqueId(row1);
    for (int i = 0; i < 2000; ++i) {
        QAccessibleInterface* again = list->child(2 + (i % 4) * 2);
        QVERIFY(again == table->cellAt(i % 4, 0));
    }
    QCOMPARE(QAccessible::uniqueId(table->cellAt(1, 0)), id);

    // A removed row makes the cells anew, and the old object is no longer valid.
    shown.list->removeItem(0);
    QVERIFY(QAccessible::accessibleInterface(id) == nullptr);
    QCOMPARE(table->cellAt(0, 0)->text(QAccessible::Name), QStringLiteral("item 1"));
}

void tst_KeyedListView::onlyTheFocusedListHasAFocusedRow()
{
    ShownList shown(3);
    auto* other = new QLineEdit(&shown.window);
    other->setGeometry(0, 180, 100, 20);
    other->show();
    shown.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&shown.window));
    QAccessibleTableInterface* table =
        QAccessible::queryAccessibleInterface(shown.list)->tableInterface();
    shown.list->setFocus();
    shown.list->setSelectedRow(1);
    QVERIFY(table->cellAt(1, 0)->state().focused);
    QVERIFY(table->cellAt(1, 0)->state().selected);
    QVERIFY(!table->cellAt(0, 0)->state().focused);
    other->setFocus();
    QVERIFY(other->hasFocus());
    QVERIFY(!table->cellAt(1, 0)->state().focused);
    QVERIFY(table->cellAt(1, 0)->state().selected);
}

QTEST_MAIN(tst_KeyedListView)
#include "tst_keyedlistview.moc"
