#pragma once

#include "zebsubctl_export.h"

#include <QHash>
#include <QString>
#include <QTreeView>

#include <memory>

class QAccessibleInterface;

namespace ZebSubCtl {

// A report-style list view: one row per item, items found by a unique key, each with a tag, an
// optional check box and keyed sub-items shown in the columns after the first.
//
// Rows are 0-based (an item's Index is its row + 1). Members that name a missing row fail with
// 35600, a missing key with 35601, a duplicate key with 35602. An empty key is allowed and is
// simply not findable.
//
// The item-check notification runs for user toggles only (a click on the check box, or Space),
// never for a check set from code. Rows have uniform heights, so itemRect() is O(1) and a loop
// over every item's rectangle stays linear.
class ZEBSUBCTL_EXPORT KeyedListView : public QTreeView {
    Q_OBJECT
public:
    explicit KeyedListView(QWidget* parent = nullptr);
    ~KeyedListView() override;

    // Columns. The first column shows the item's text, column c (c >= 1) its sub-item c.
    // Without any column the view shows one column without a heading.
    void addColumn(const QString& key, const QString& heading);
    int columnCount() const;
    QString columnKey(int column) const;
    QString columnHeading(int column) const;

    bool checkBoxes() const;
    void setCheckBoxes(bool on);

    // Items.
    int count() const;
    // Appends an item and returns its row.
    int addItem(const QString& key, const QString& text);
    // Puts an item at row (0 to count); later items move down.
    int insertItem(int row, const QString& key, const QString& text);
    void removeItem(int row);
    void removeItem(const QString& key);
    void clear();
    // Room for this many items without reallocating (a hint before a large fill).
    void reserve(int items);

    // The row of the item with this key, or -1.
    int find(const QString& key) const;
    // The row of the item with this key; fails with 35601 when there is none.
    int row(const QString& key) const;

    QString key(int row) const;
    QString text(int row) const;
    void setText(int row, const QString& text);
    QString tag(int row) const;
    void setTag(int row, const QString& tag);
    bool isChecked(int row) const;
    // Sets the check box from code: no item-check notification.
    void setChecked(int row, bool checked);
    QString itemToolTip(int row) const;
    void setItemToolTip(int row, const QString& text);

    // Sub-items, 1-based like the columns that show them; their keys are unique per item.
    int addSubItem(int row, const QString& key, const QString& text);
    int subItemCount(int row) const;
    QString subItemText(int row, int index) const;
    QString subItemText(int row, const QString& key) const;
    void setSubItemText(int row, int index, const QString& text);
    QString subItemKey(int row, int index) const;

    // The selected item's row, or -1.
    int selectedRow() const;
    // Selects one item (and makes it current); -1 clears the selection.
    void setSelectedRow(int row);

    // The item's bounding rectangle over all columns, in viewport coordinates; empty for a row
    // that does not exist. O(1).
    QRect itemRect(int row) const;
    // Where the item's check box is drawn, in viewport coordinates.
    QRect checkBoxRect(int row) const;

    // Changes made between these calls reach the view as one reset instead of one notice per
    // item. They nest; the outermost endUpdate() delivers.
    void beginUpdate();
    void endUpdate();

signals:
    // The user ticked or unticked the item's check box; isChecked() gives the new state.
    void itemCheck(int row);
    // A double click anywhere in the list.
    void dblClick();
    void keyDown(int key, Qt::KeyboardModifiers modifiers);
    // Once per key press, when the key is released (auto-repeat does not repeat it).
    void keyUp(int key, Qt::KeyboardModifiers modifiers);
    // Positions are in viewport coordinates.
    void mouseUp(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, const QPoint& pos);
    void mouseMove(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers, const QPoint& pos);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    friend class KeyedListAccessible;
    friend class KeyedListCellAccessible;
    class Model;
    int uniformRowHeight() const;
    // The screen reader's object for a cell (row -1: the column heading), made on first use.
    QAccessibleInterface* accessibleCell(int row, int column) const;
    void dropAccessibleCells();
    void announceCheck(int row);
    void invalidateRowHeight() { m_rowHeight = -1; }

    Model* m_model;
    mutable int m_rowHeight = -1;
    // Cell objects by (row, column), kept until the rows or columns change.
    mutable QHash<qint64, unsigned> m_accessibleCells;
};

}  // namespace ZebSubCtl
