#pragma once

#include "zebsubctl_export.h"

#include <QAccessibleWidget>
#include <QPointer>

namespace ZebSubCtl {

class KeyedListView;

// What a screen reader sees of a keyed list view: a table of cells, the column headings first
// (when the heading band shows), then every row's cells. The first cell of a row in a list with
// check boxes is checkable and toggles like a click on its box. Cell objects are made once per
// cell and kept until rows or columns are added, removed or reset, so reading a list again and
// again costs no new objects.
class ZEBSUBCTL_EXPORT KeyedListAccessible : public QAccessibleWidget,
                                             public QAccessibleTableInterface {
public:
    explicit KeyedListAccessible(KeyedListView* view);

    static void install();

    QAccessibleInterface* child(int index) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    // The current row, while the list has the focus.
    QAccessibleInterface* focusChild() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override;
    int columnCount() const override;
    int rowCount() const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface*> selectedCells() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int) const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override;
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override;
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override;
    bool selectRow(int row) override;
    bool selectColumn(int) override { return false; }
    bool unselectRow(int row) override;
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override { }

private:
    KeyedListView* view() const;
    int headingRows() const;
};

// One cell of a keyed list view; row -1 is the column heading.
class ZEBSUBCTL_EXPORT KeyedListCellAccessible : public QAccessibleInterface,
                                                 public QAccessibleTableCellInterface,
                                                 public QAccessibleActionInterface {
public:
    KeyedListCellAccessible(KeyedListView* view, int row, int column);

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QString text(QAccessible::Text t) const override;
    void setText(QAccessible::Text, const QString&) override { }
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    bool isSelected() const override;
    QList<QAccessibleInterface*> columnHeaderCells() const override;
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return m_column; }
    int rowIndex() const override { return m_row; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

    QStringList actionNames() const override;
    void doAction(const QString& actionName) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

    int row() const { return m_row; }
    int column() const { return m_column; }
    KeyedListView* view() const { return m_view; }

private:
    bool isHeading() const { return m_row < 0; }
    bool isCheckCell() const;

    QPointer<KeyedListView> m_view;
    int m_row;
    int m_column;
};

}  // namespace ZebSubCtl
