#include "platform/keyedlistaccessible.h"

#include "platform/keyedlistview.h"

#include <QHeaderView>
#include <QItemSelectionModel>

namespace ZebSubCtl {

namespace {

QAccessibleInterface* keyedListFactory(const QString& className, QObject* object)
{
    if (className == QLatin1String("ZebSubCtl::KeyedListView") && object && object->isWidgetType())
        return new KeyedListAccessible(static_cast<KeyedListView*>(object));
    return nullptr;
}

const QString kToggle = QAccessibleActionInterface::toggleAction();
const QString kPress = QAccessibleActionInterface::pressAction();
const QString kFocus = QAccessibleActionInterface::setFocusAction();

QString cellText(const KeyedListView* view, int row, int column)
{
    return view->model()->index(row, column).data(Qt::DisplayRole).toString();
}

}  // namespace

// --- the list

KeyedListAccessible::KeyedListAccessible(KeyedListView* view)
    : QAccessibleWidget(view, QAccessible::Table)
{ }

void KeyedListAccessible::install()
{
    static const bool installed = [] {
        QAccessible::installFactory(&keyedListFactory);
        return true;
    }();
    Q_UNUSED(installed);
}

KeyedListView* KeyedListAccessible::view() const
{
    return static_cast<KeyedListView*>(widget());
}

int KeyedListAccessible::headingRows() const
{
    // The same numbering the view uses for its focus and selection events.
    return view()->isHeaderHidden() ? 0 : 1;
}

int KeyedListAccessible::columnCount() const
{
    return view()->model()->columnCount();
}

int KeyedListAccessible::rowCount() const
{
    return view()->count();
}

int KeyedListAccessible::childCount() const
{
    return (rowCount() + headingRows()) * columnCount();
}

QAccessibleInterface* KeyedListAccessible::child(int index) const
{
    const int columns = columnCount();
    if (index < 0 || columns == 0 || index >= childCount())
        return nullptr;
    const int row = index / columns - headingRows();
    return view()->accessibleCell(row, index % columns);
}

int KeyedListAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* cell = dynamic_cast<const KeyedListCellAccessible*>(child);
    if (!cell || cell->view() != view() || !cell->isValid())
        return -1;
    return (cell->row() + headingRows()) * columnCount() + cell->column();
}

QAccessibleInterface* KeyedListAccessible::childAt(int x, int y) const
{
    KeyedListView* v = view();
    const QPoint inViewport = v->viewport()->mapFromGlobal(QPoint(x, y));
    if (headingRows() > 0) {
        const QPoint inHeader = v->header()->mapFromGlobal(QPoint(x, y));
        if (v->header()->rect().contains(inHeader)) {
            const int column = v->header()->logicalIndexAt(inHeader.x());
            return column >= 0 ? v->accessibleCell(-1, column) : nullptr;
        }
    }
    const QModelIndex index = v->indexAt(inViewport);
    if (!index.isValid())
        return nullptr;
    return v->accessibleCell(index.row(), index.column());
}

void* KeyedListAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessibleInterface* KeyedListAccessible::focusChild() const
{
    const QModelIndex current = view()->currentIndex();
    if (!view()->hasFocus() || !current.isValid())
        return nullptr;
    return cellAt(current.row(), 0);
}

QAccessibleInterface* KeyedListAccessible::cellAt(int row, int column) const
{
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount())
        return nullptr;
    return view()->accessibleCell(row, column);
}

int KeyedListAccessible::selectedCellCount() const
{
    return selectedRowCount() * columnCount();
}

QList<QAccessibleInterface*> KeyedListAccessible::selectedCells() const
{
    QList<QAccessibleInterface*> cells;
    for (int row : selectedRows())
        for (int c = 0; c < columnCount(); ++c)
            cells.append(view()->accessibleCell(row, c));
    return cells;
}

QString KeyedListAccessible::columnDescription(int column) const
{
    return view()->model()->headerData(column, Qt::Horizontal).toString();
}

int KeyedListAccessible::selectedRowCount() const
{
    return int(selectedRows().size());
}

QList<int> KeyedListAccessible::selectedRows() const
{
    const int row = view()->selectedRow();
    return row < 0 ? QList<int>{} : QList<int>{row};
}

bool KeyedListAccessible::isRowSelected(int row) const
{
    return row >= 0 && row == view()->selectedRow();
}

bool KeyedListAccessible::selectRow(int row)
{
    if (row < 0 || row >= rowCount())
        return false;
    view()->setSelectedRow(row);
    return true;
}

bool KeyedListAccessible::unselectRow(int row)
{
    if (!isRowSelected(row))
        return false;
    view()->setSelectedRow(-1);
    return true;
}

// --- a cell

KeyedListCellAccessible::KeyedListCellAccessible(KeyedListView* view, int row, int column)
    : m_view(view), m_row(row), m_column(column)
{ }

bool KeyedListCellAccessible::isValid() const
{
    if (!m_view || m_column < 0 || m_column >= m_view->model()->columnCount())
        return false;
    return m_row >= -1 && m_row < m_view->count();
}

QWindow* KeyedListCellAccessible::window() const
{
    return m_view ? m_view->window()->windowHandle() : nullptr;
}

QAccessibleInterface* KeyedListCellAccessible::parent() const
{
    return m_view ? QAccessible::queryAccessibleInterface(m_view.data()) : nullptr;
}

bool KeyedListCellAccessible::isCheckCell() const
{
    return !isHeading() && m_column == 0 && m_view->checkBoxes();
}

QString KeyedListCellAccessible::text(QAccessible::Text t) const
{
    if (!isValid())
        return {};
    const QString heading = m_view->model()->headerData(m_column, Qt::Horizontal).toString();
    if (isHeading())
        return t == QAccessible::Name ? heading : QString();
    switch (t) {
    case QAccessible::Name: {
        const QString shown = cellText(m_view, m_row, m_column);
        // A blank first cell still names its row.
        if (shown.isEmpty() && m_column == 0)
            return QStringLiteral("Row %1").arg(m_row + 1);
        return shown;
    }
    case QAccessible::Description: {
        // The first cell reads the rest of its row under the headings, worked out when asked.
        if (m_column != 0)
            return heading;
        QStringList parts;
        for (int c = 1; c < m_view->model()->columnCount(); ++c) {
            const QString value = cellText(m_view, m_row, c);
            if (value.isEmpty())
                continue;
            const QString h = m_view->model()->headerData(c, Qt::Horizontal).toString();
            parts.append(h.isEmpty() ? value : h + QStringLiteral(": ") + value);
        }
        return parts.join(QStringLiteral(", "));
    }
    case QAccessible::Value:
        if (isCheckCell())
            return m_view->isChecked(m_row) ? QStringLiteral("ticked")
                                            : QStringLiteral("not ticked");
        return {};
    case QAccessible::Help:
        return m_view->model()->index(m_row, m_column).data(Qt::ToolTipRole).toString();
    default: return {};
    }
}

QRect KeyedListCellAccessible::rect() const
{
    if (!isValid())
        return {};
    if (isHeading()) {
        QHeaderView* header = m_view->header();
        const QRect r(header->sectionViewportPosition(m_column), 0, header->sectionSize(m_column),
                      header->height());
        return QRect(header->viewport()->mapToGlobal(r.topLeft()), r.size());
    }
    const QRect r = m_view->visualRect(m_view->model()->index(m_row, m_column));
    return QRect(m_view->viewport()->mapToGlobal(r.topLeft()), r.size());
}

QAccessible::Role KeyedListCellAccessible::role() const
{
    if (isHeading())
        return QAccessible::ColumnHeader;
    // A row that can be ticked is a check box to a screen reader: "..., check box, not checked".
    return isValid() && isCheckCell() ? QAccessible::CheckBox : QAccessible::Cell;
}

QAccessible::State KeyedListCellAccessible::state() const
{
    QAccessible::State s;
    if (!isValid()) {
        s.invalid = true;
        return s;
    }
    if (isHeading()) {
        s.invisible = m_view->isHeaderHidden() || !m_view->isVisible();
        return s;
    }
    s.selectable = true;
    s.focusable = true;
    s.selected = m_view->selectedRow() == m_row;
    // Only the list that has the focus has a focused row.
    const QModelIndex current = m_view->currentIndex();
    s.focused = m_view->hasFocus() && current.isValid() && current.row() == m_row && m_column == 0;
    if (isCheckCell()) {
        s.checkable = true;
        s.checked = m_view->isChecked(m_row);
    }
    const QRect r = m_view->visualRect(m_view->model()->index(m_row, m_column));
    s.invisible = !m_view->isVisible() || !m_view->viewport()->rect().intersects(r);
    s.offscreen = s.invisible;
    s.disabled = !m_view->isEnabled();
    return s;
}

void* KeyedListCellAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TableCellInterface)
        return static_cast<QAccessibleTableCellInterface*>(this);
    if (type == QAccessible::ActionInterface)
        return static_cast<QAccessibleActionInterface*>(this);
    return nullptr;
}

bool KeyedListCellAccessible::isSelected() const
{
    return isValid() && !isHeading() && m_view->selectedRow() == m_row;
}

QList<QAccessibleInterface*> KeyedListCellAccessible::columnHeaderCells() const
{
    if (!isValid() || isHeading() || m_view->isHeaderHidden())
        return {};
    return {m_view->accessibleCell(-1, m_column)};
}

QStringList KeyedListCellAccessible::actionNames() const
{
    if (!isValid() || isHeading())
        return {};
    if (isCheckCell())
        return {kToggle, kFocus};
    return {kFocus};
}

void KeyedListCellAccessible::doAction(const QString& actionName)
{
    if (!isValid() || isHeading())
        return;
    if (actionName == kFocus || actionName == kPress) {
        m_view->setSelectedRow(m_row);
        m_view->setFocus(Qt::OtherFocusReason);
    } else if (actionName == kToggle && isCheckCell()) {
        // A toggle from a screen reader is the user's own, as a click on the box is.
        const QModelIndex index = m_view->model()->index(m_row, 0);
        m_view->model()->setData(index, m_view->isChecked(m_row) ? Qt::Unchecked : Qt::Checked,
                                 Qt::CheckStateRole);
    }
}

}  // namespace ZebSubCtl
