#include "platform/dateeditaccessible.h"

#include "platform/dateedit.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCalendarWidget>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QPointer>
#include <QTableView>
#include <QToolButton>

namespace ZebSubCtl {

namespace {

const QLocale kEnglish(QLocale::English, QLocale::UnitedStates);

DateEdit* dateEditOf(const QWidget* w)
{
    for (const QWidget* p = w ? w->parentWidget() : nullptr; p; p = p->parentWidget())
        if (auto* d = qobject_cast<DateEdit*>(const_cast<QWidget*>(p)))
            return d;
    return nullptr;
}

// The date field: an editable box with a drop-down calendar, read as a combo box with the date
// as its value and the calendar, while open, among its parts.
class DateEditAccessible : public QAccessibleWidget {
public:
    explicit DateEditAccessible(DateEdit* edit) : QAccessibleWidget(edit, QAccessible::ComboBox) { }

    DateEdit* edit() const { return static_cast<DateEdit*>(widget()); }

    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Value)
            return edit()->isNull()
                       ? QStringLiteral("no date")
                       : kEnglish.toString(edit()->date(), QStringLiteral("dddd, MMMM d, yyyy"));
        return QAccessibleWidget::text(t);
    }

    int childCount() const override { return edit()->isCalendarOpen() ? 3 : 2; }
    QAccessibleInterface* child(int index) const override
    {
        QWidget* parts[] = {edit()->lineEdit(), edit()->dropDownButton(), edit()->calendarPopup()};
        if (index < 0 || index >= childCount())
            return nullptr;
        return QAccessible::queryAccessibleInterface(parts[index]);
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        for (int i = 0; i < childCount(); ++i)
            if (this->child(i) == child)
                return i;
        return -1;
    }
};

// The calendar window, named and hung under its date field rather than floating on its own.
class CalendarPopupAccessible : public QAccessibleWidget {
public:
    explicit CalendarPopupAccessible(QWidget* popup) : QAccessibleWidget(popup, QAccessible::Dialog)
    { }

    QString text(QAccessible::Text t) const override
    {
        const DateEdit* field = dateEditOf(widget());
        if (t == QAccessible::Name && field)
            return QStringLiteral("Calendar for ") + field->accessibleName();
        if (t == QAccessible::Description)
            return QStringLiteral("Arrow keys move by day and week, Page Up and Page Down by "
                                  "month; Enter takes the day, Escape closes without a change");
        return QAccessibleWidget::text(t);
    }

    QAccessibleInterface* parent() const override
    {
        if (DateEdit* field = dateEditOf(widget()))
            return QAccessible::queryAccessibleInterface(field);
        return QAccessibleWidget::parent();
    }
};

// The month grid: weekday headings over the days, each day named with its month and year.
class DayGridAccessible : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit DayGridAccessible(QTableView* view) : QAccessibleWidget(view, QAccessible::Table) { }
    ~DayGridAccessible() override
    {
        for (const unsigned id : std::as_const(m_cells))
            QAccessible::deleteAccessibleInterface(id);
    }

    QTableView* view() const { return static_cast<QTableView*>(widget()); }
    QCalendarWidget* calendar() const
    {
        for (QWidget* p = view()->parentWidget(); p; p = p->parentWidget())
            if (auto* c = qobject_cast<QCalendarWidget*>(p))
                return c;
        return nullptr;
    }

    // Model row 0 holds the weekday letters; the days follow in rows 1 to 6.
    int columns() const { return view()->model()->columnCount(); }
    int modelRows() const { return view()->model()->rowCount(); }

    QDate dateAt(int row, int column) const
    {
        QCalendarWidget* c = calendar();
        if (!c || row < 1)
            return {};
        const int day = view()->model()->index(row, column).data().toInt();
        if (day < 1)
            return {};
        QDate month(c->yearShown(), c->monthShown(), 1);
        // Leading days belong to the month before, trailing ones to the month after.
        if (row <= 2 && day > 20)
            month = month.addMonths(-1);
        else if (row >= 4 && day < 15)
            month = month.addMonths(1);
        return QDate(month.year(), month.month(), day);
    }

    QString weekday(int column) const
    {
        const QCalendarWidget* c = calendar();
        const int first = c ? int(c->firstDayOfWeek()) : int(Qt::Sunday);
        return kEnglish.dayName((first - 1 + column) % 7 + 1, QLocale::LongFormat);
    }

    QAccessibleInterface* cellInterface(int row, int column) const;

    // Numbered as the view numbers its own focus and selection events: a row for its (hidden)
    // column header and a column for its (hidden) row header come first.
    int childCount() const override { return (modelRows() + 1) * (columns() + 1); }
    QAccessibleInterface* child(int index) const override
    {
        if (index < 0 || index >= childCount())
            return nullptr;
        return cellInterface(index / (columns() + 1) - 1, index % (columns() + 1) - 1);
    }
    int indexOfChild(const QAccessibleInterface* child) const override;
    // The day the keys are on, while the calendar has the focus.
    QAccessibleInterface* focusChild() const override
    {
        const QModelIndex current = view()->currentIndex();
        if (!view()->hasFocus() || !current.isValid() || current.row() < 1)
            return nullptr;
        return cellInterface(current.row(), current.column());
    }
    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TableInterface)
            return static_cast<QAccessibleTableInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override
    {
        return row >= 0 && row + 1 < modelRows() && column >= 0 && column < columns()
                   ? cellInterface(row + 1, column)
                   : nullptr;
    }
    int columnCount() const override { return columns(); }
    int rowCount() const override { return std::max(0, modelRows() - 1); }
    int selectedCellCount() const override { return int(selectedCells().size()); }
    QList<QAccessibleInterface*> selectedCells() const override
    {
        QList<QAccessibleInterface*> out;
        for (const QModelIndex& i : view()->selectionModel()->selectedIndexes())
            if (i.row() > 0)
                out.append(cellInterface(i.row(), i.column()));
        return out;
    }
    QString columnDescription(int column) const override { return weekday(column); }
    QString rowDescription(int) const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return 0; }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override { return {}; }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int) const override { return false; }
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override { }

private:
    mutable QHash<int, unsigned> m_cells;
};

class DayCellAccessible : public QAccessibleInterface, public QAccessibleTableCellInterface {
public:
    DayCellAccessible(QTableView* view, int row, int column)
        : m_view(view), m_row(row), m_column(column)
    { }

    DayGridAccessible* grid() const
    {
        return m_view ? static_cast<DayGridAccessible*>(
                   QAccessible::queryAccessibleInterface(m_view.data()))
                      : nullptr;
    }
    bool isValid() const override { return m_view != nullptr; }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_view ? m_view->window()->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override { return grid(); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    void setText(QAccessible::Text, const QString&) override { }
    // Model row 0 holds the weekday letters; row -1 and column -1 are the view's hidden headers.
    bool isHeading() const { return m_row <= 0 || m_column < 0; }
    QAccessible::Role role() const override
    {
        if (m_column < 0)
            return QAccessible::RowHeader;
        return m_row <= 0 ? QAccessible::ColumnHeader : QAccessible::Cell;
    }

    QString text(QAccessible::Text t) const override
    {
        if (!isValid() || t != QAccessible::Name || m_column < 0)
            return {};
        if (m_row <= 0)
            return grid()->weekday(m_column);
        const QDate d = grid()->dateAt(m_row, m_column);
        return d.isValid() ? kEnglish.toString(d, QStringLiteral("dddd, MMMM d, yyyy")) : QString();
    }

    QRect rect() const override
    {
        if (!isValid() || m_row < 0 || m_column < 0)
            return {};
        const QRect r = m_view->visualRect(m_view->model()->index(m_row, m_column));
        return QRect(m_view->viewport()->mapToGlobal(r.topLeft()), r.size());
    }

    QAccessible::State state() const override
    {
        QAccessible::State s;
        if (!isValid()) {
            s.invalid = true;
            return s;
        }
        s.invisible = !m_view->isVisible() || m_row < 0 || m_column < 0;
        if (isHeading())
            return s;
        const QModelIndex index = m_view->model()->index(m_row, m_column);
        s.selectable = true;
        s.focusable = true;
        s.selected = m_view->selectionModel()->isSelected(index);
        s.focused = m_view->hasFocus() && m_view->currentIndex() == index;
        return s;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TableCellInterface
                   ? static_cast<QAccessibleTableCellInterface*>(this)
                   : nullptr;
    }

    bool isSelected() const override { return state().selected; }
    QList<QAccessibleInterface*> columnHeaderCells() const override
    {
        return !isHeading() && grid()
                   ? QList<QAccessibleInterface*>{grid()->cellInterface(0, m_column)}
                   : QList<QAccessibleInterface*>{};
    }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return m_column; }
    int rowIndex() const override { return m_row - 1; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return grid(); }

    int modelRow() const { return m_row; }
    int modelColumn() const { return m_column; }
    const QTableView* view() const { return m_view; }

private:
    QPointer<QTableView> m_view;
    int m_row;
    int m_column;
};

QAccessibleInterface* DayGridAccessible::cellInterface(int row, int column) const
{
    const int key = (row + 1) * 64 + column + 1;
    if (const unsigned id = m_cells.value(key, 0))
        if (QAccessibleInterface* cell = QAccessible::accessibleInterface(id))
            return cell;
    auto* cell = new DayCellAccessible(view(), row, column);
    m_cells.insert(key, QAccessible::registerAccessibleInterface(cell));
    return cell;
}

int DayGridAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* cell = dynamic_cast<const DayCellAccessible*>(child);
    if (!cell || cell->view() != view())
        return -1;
    return (cell->modelRow() + 1) * (columns() + 1) + cell->modelColumn() + 1;
}

QAccessibleInterface* dateEditFactory(const QString& className, QObject* object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    auto* w = static_cast<QWidget*>(object);
    if (className == QLatin1String("ZebSubCtl::DateEdit"))
        return new DateEditAccessible(static_cast<DateEdit*>(w));
    if (className == QLatin1String("QFrame") && w->objectName() == QLatin1String("calendarPopup")
        && qobject_cast<DateEdit*>(w->parentWidget()))
        return new CalendarPopupAccessible(w);
    if (className == QLatin1String("QCalendarView") && dateEditOf(w))
        return new DayGridAccessible(static_cast<QTableView*>(w));
    return nullptr;
}

}  // namespace

void installDateEditAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(&dateEditFactory);
        return true;
    }();
    Q_UNUSED(installed);
}

}  // namespace ZebSubCtl
