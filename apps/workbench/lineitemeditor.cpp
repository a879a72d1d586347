#include "lineitemeditor.h"

#include "contracts/failure.h"
#include "csvtable.h"
#include "officeimports.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QUndoCommand>
#include <QUndoStack>
#include <QVBoxLayout>

#include <algorithm>

using ZebObjects::LineItemRecord;

namespace {
const char* const kHeaders[] = {"Type",  "Quantity", "Brand",   "Catalog Number", "Description",
                                "Group", "MTO",      "Comment", "Selected"};
// The longest text each column keeps, as the import checks it.
const int kLengths[] = {20, 0, 40, 80, 255, 20, 0, 255, 0};

QString tsvCell(const QString& text)
{
    if (!text.contains(QLatin1Char('\t')) && !text.contains(QLatin1Char('\n'))
        && !text.contains(QLatin1Char('"')))
        return text;
    return QLatin1Char('"') + QString(text).replace(QLatin1String("\""), QLatin1String("\"\""))
           + QLatin1Char('"');
}
}  // namespace

// One change of the editor: writes when done and undone, then shows the lines as they are.
class LineCommand : public QUndoCommand {
public:
    LineCommand(LineItemTableModel* model, const QString& text, std::function<void()> redo,
                std::function<void()> undo)
        : QUndoCommand(text), m_model(model), m_redo(std::move(redo)), m_undo(std::move(undo))
    { }
    void redo() override { run(m_redo); }
    void undo() override { run(m_undo); }

private:
    void run(const std::function<void()>& step)
    {
        try {
            step();
        } catch (const ZebObjects::Failure& f) {
            // A step the store refused is no step to undo or redo.
            setObsolete(true);
            if (m_model->onFailure)
                m_model->onFailure(text(), f.Description());
        }
        m_model->reload();
    }

    LineItemTableModel* m_model;
    std::function<void()> m_redo;
    std::function<void()> m_undo;
};

LineItemTableModel::LineItemTableModel(std::shared_ptr<ZebObjects::StoreLineItems> lines,
                                       QUndoStack* undo, QObject* parent)
    : QAbstractTableModel(parent), m_lines(std::move(lines)), m_undo(undo)
{
    m_rows = m_lines->rows();
}

void LineItemTableModel::reload()
{
    QList<ZebObjects::StoreLineItems::Row> rows = m_lines->rows();
    // The same lines with new values change in place: an editor still open (its commit is what
    // wrote them) stays.
    if (rows.size() == m_rows.size()) {
        m_rows = std::move(rows);
        if (!m_rows.isEmpty())
            emit dataChanged(index(0, 0), index(int(m_rows.size()) - 1, ColumnCount - 1));
        return;
    }
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

int LineItemTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int LineItemTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant LineItemTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    return section < ColumnCount ? QString::fromLatin1(kHeaders[section]) : QString();
}

Qt::ItemFlags LineItemTableModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags f = QAbstractTableModel::flags(index);
    if (index.column() == MTO || index.column() == Selected)
        return f | Qt::ItemIsUserCheckable;
    return f | Qt::ItemIsEditable;
}

QVariant LineItemTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    const LineItemRecord& d = m_rows[index.row()].data;
    if (role == Qt::CheckStateRole) {
        if (index.column() == MTO)
            return d.mto ? Qt::Checked : Qt::Unchecked;
        if (index.column() == Selected)
            return d.selected ? Qt::Checked : Qt::Unchecked;
        return {};
    }
    if (role == Qt::TextAlignmentRole && index.column() == Quantity)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    switch (index.column()) {
    case Type: return d.type;
    case Quantity:
        return role == Qt::EditRole ? QVariant(d.quantity) : QVariant(QString::number(d.quantity));
    case Brand: return d.brand;
    case CatalogNumber: return d.catalogNumber;
    case Description: return d.description;
    case Group: return d.group;
    case Comment: return d.comment.value_or(QString());
    default: return {};
    }
}

bool LineItemTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return false;
    LineItemRecord d = m_rows[index.row()].data;
    const int column = index.column();
    if (role == Qt::CheckStateRole) {
        const bool on = value.toInt() == Qt::Checked;
        if (column == MTO)
            d.mto = on;
        else if (column == Selected)
            d.selected = on;
        else
            return false;
    } else if (role == Qt::EditRole) {
        const QString text = value.toString().trimmed();
        if (kLengths[column] > 0 && text.size() > kLengths[column])
            return false;
        switch (column) {
        case Quantity: {
            bool ok = false;
            const int n = text.toInt(&ok);
            if (!ok || n < 0)
                return false;
            d.quantity = n;
            break;
        }
        case Type: d.type = text; break;
        case Brand: d.brand = text; break;
        case CatalogNumber: d.catalogNumber = text; break;
        case Description: d.description = text; break;
        case Group: d.group = text; break;
        case Comment:
            if (text.isEmpty())
                d.comment.reset();
            else
                d.comment = text;
            break;
        default: return false;
        }
    } else {
        return false;
    }
    setLine(index.row(), d);
    if (role == Qt::EditRole && column == Brand && !d.brand.isEmpty() && onBrandEntered) {
        try {
            onBrandEntered(d.brand);
        } catch (const ZebObjects::Failure& f) {
            if (onFailure)
                onFailure(QStringLiteral("New brand"), f.Description());
        }
    }
    return true;
}

void LineItemTableModel::setLine(int row, const LineItemRecord& data)
{
    const LineItemRecord before = m_rows[row].data;
    // An editor left without a change writes nothing and leaves nothing to undo.
    if (before.quantity == data.quantity && before.type == data.type && before.brand == data.brand
        && before.catalogNumber == data.catalogNumber && before.description == data.description
        && before.group == data.group && before.mto == data.mto && before.comment == data.comment
        && before.selected == data.selected)
        return;
    auto lines = m_lines;
    // Positions, not ids: a line deleted and put back by undo has a new id.
    const auto write = [this, lines, row](const LineItemRecord& d) {
        lines->updateLine(m_rows.at(row).id, d);
    };
    m_undo->push(new LineCommand(
        this, QStringLiteral("Edit line %1").arg(row + 1), [write, data] { write(data); },
        [write, before] { write(before); }));
}

void LineItemTableModel::insertLines(int row, const QList<LineItemRecord>& lines,
                                     const QString& what)
{
    auto store = m_lines;
    const int count = int(lines.size());
    m_undo->push(new LineCommand(
        this, what, [store, row, lines] { store->insertLines(row + 1, lines); },
        [this, store, row, count] {
            QList<qint64> ids;
            for (int i = row; i < row + count; ++i)
                ids.append(m_rows.at(i).id);
            store->removeLines(ids);
        }));
}

void LineItemTableModel::removeRows(QList<int> rows)
{
    std::sort(rows.begin(), rows.end());
    QList<LineItemRecord> kept;
    for (const int r : rows)
        kept.append(m_rows.at(r).data);
    auto store = m_lines;
    m_undo->push(new LineCommand(
        this,
        rows.size() == 1 ? QStringLiteral("Delete line %1").arg(rows.first() + 1)
                         : QStringLiteral("Delete %1 lines").arg(rows.size()),
        [this, store, rows] {
            QList<qint64> ids;
            for (const int r : rows)
                ids.append(m_rows.at(r).id);
            store->removeLines(ids);
        },
        [store, rows, kept] {
            // Back where each was, the first first.
            QList<qint32> positions;
            for (const int r : rows)
                positions.append(r + 1);
            store->putBack(positions, kept);
        }));
}

bool LineItemTableModel::moveRows(const QList<int>& rows, int by)
{
    if (rows.isEmpty() || (by < 0 && rows.first() == 0)
        || (by > 0 && rows.last() == m_rows.size() - 1))
        return false;
    QList<int> order;
    for (int i = 0; i < m_rows.size(); ++i)
        order.append(i);
    // Each moved row trades places with its neighbour outside the selection.
    if (by < 0) {
        for (const int r : rows)
            std::swap(order[r], order[r - 1]);
    } else {
        for (auto it = rows.crbegin(); it != rows.crend(); ++it)
            std::swap(order[*it], order[*it + 1]);
    }
    QList<int> back(order.size());
    for (int i = 0; i < order.size(); ++i)
        back[order[i]] = i;
    auto store = m_lines;
    const auto apply = [this, store](const QList<int>& o) {
        QList<qint64> ids;
        for (const int i : o)
            ids.append(m_rows.at(i).id);
        store->reorder(ids);
    };
    m_undo->push(new LineCommand(
        this, by < 0 ? QStringLiteral("Move up") : QStringLiteral("Move down"),
        [apply, order] { apply(order); }, [apply, back] { apply(back); }));
    return true;
}

LineItemEditor::LineItemEditor(std::shared_ptr<ZebObjects::StoreLineItems> lines, int displayed,
                               QWidget* parent)
    : QWidget(parent), m_lines(std::move(lines)), m_displayed(displayed)
{
    setObjectName(QStringLiteral("pagLineItemEditor"));
    setAccessibleName(QStringLiteral("Line Items Editor"));
    setAccessibleDescription(QStringLiteral(
        "The job's lines as a table to edit, add to, delete from, reorder and paste into"));
    m_undo = new QUndoStack(this);
    m_model = new LineItemTableModel(m_lines, m_undo, this);
    m_model->onFailure = [this](const QString& what, const QString& description) {
        QMessageBox::warning(this, QStringLiteral("Line Items Editor"),
                             QStringLiteral("%1 was not saved:\n%2").arg(what, description));
    };
    m_table = new QTableView(this);
    m_table->setObjectName(QStringLiteral("tblLineItems"));
    m_table->setAccessibleName(QStringLiteral("Line items"));
    m_table->setAccessibleDescription(
        QStringLiteral("One line a row; type over a cell to change it"));
    m_table->setModel(m_model);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                             | QAbstractItemView::AnyKeyPressed);
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 8);
    m_table->horizontalHeader()->setSectionResizeMode(LineItemTableModel::Description,
                                                      QHeaderView::Stretch);
    m_table->setWordWrap(false);
    // Tab and Ctrl+Tab leave the table (the arrows move between cells), as on every other page.
    m_table->setTabKeyNavigation(false);
    m_table->installEventFilter(this);

    m_note = new QLabel(this);
    m_note->setObjectName(QStringLiteral("lblEditorNote"));
    m_note->setWordWrap(true);

    auto* buttons = new QHBoxLayout;
    const auto button = [&](const char* name, const QString& caption, const QString& description,
                            auto slot) {
        auto* b = new QPushButton(caption, this);
        b->setObjectName(QLatin1String(name));
        b->setAccessibleDescription(description);
        connect(b, &QPushButton::clicked, this, slot);
        buttons->addWidget(b);
        return b;
    };
    button("cmdAddLine", QStringLiteral("&Add"), QStringLiteral("Adds a line at the end"),
           [this] { addLine(); });
    button("cmdInsertLine", QStringLiteral("I&nsert"),
           QStringLiteral("Inserts a line above the current one (Insert key)"),
           [this] { insertLine(); });
    button("cmdDeleteLines", QStringLiteral("&Delete"),
           QStringLiteral("Deletes the selected lines (Delete key)"), [this] { deleteLines(); });
    button("cmdMoveUp", QStringLiteral("Move &Up"),
           QStringLiteral("Moves the selected lines up (Alt+Up)"), [this] { moveUp(); });
    button("cmdMoveDown", QStringLiteral("Move Do&wn"),
           QStringLiteral("Moves the selected lines down (Alt+Down)"), [this] { moveDown(); });
    button("cmdCopyLines", QStringLiteral("&Copy"),
           QStringLiteral("Copies the selected lines (Ctrl+C)"), [this] { copyLines(); });
    button("cmdPasteLines", QStringLiteral("&Paste"),
           QStringLiteral("Pastes lines after the current one (Ctrl+V)"), [this] { pasteLines(); });
    buttons->addStretch();
    auto* undo = button("cmdUndo", QStringLiteral("U&ndo"),
                        QStringLiteral("Undoes the editor's last change (Ctrl+Z)"),
                        [this] { m_undo->undo(); });
    auto* redo =
        button("cmdRedo", QStringLiteral("&Redo"),
               QStringLiteral("Redoes what was undone (Ctrl+Y)"), [this] { m_undo->redo(); });
    undo->setEnabled(false);
    redo->setEnabled(false);
    connect(m_undo, &QUndoStack::canUndoChanged, undo, &QPushButton::setEnabled);
    connect(m_undo, &QUndoStack::canRedoChanged, redo, &QPushButton::setEnabled);
    connect(m_undo, &QUndoStack::indexChanged, this, [this] {
        updateNote();
        if (onChanged)
            onChanged();
    });

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_note);
    updateNote();
}

LineItemEditor::~LineItemEditor()
{
    // The stack empties itself as it goes: nobody is told of that.
    onChanged = nullptr;
    m_undo->disconnect(this);
    m_table->removeEventFilter(this);
}

void LineItemEditor::updateNote()
{
    const int n = m_model->rowCount();
    m_note->setText(
        n > m_displayed
            ? QStringLiteral("%1 lines. The Line Items page shows the first %2 of them; "
                             "all %1 print.")
                  .arg(n)
                  .arg(m_displayed)
            : QStringLiteral("%1 lines.").arg(n));
}

QList<int> LineItemEditor::selectedRows() const
{
    QList<int> rows;
    for (const QModelIndex& i : m_table->selectionModel()->selectedRows())
        rows.append(i.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void LineItemEditor::selectRows(int first, int count)
{
    m_table->clearSelection();
    if (count <= 0 || first < 0 || first >= m_model->rowCount())
        return;
    const QItemSelection range(m_model->index(first, 0),
                               m_model->index(std::min(first + count, m_model->rowCount()) - 1,
                                              LineItemTableModel::ColumnCount - 1));
    m_table->selectionModel()->select(range, QItemSelectionModel::ClearAndSelect);
    m_table->selectionModel()->setCurrentIndex(m_model->index(first, 0),
                                               QItemSelectionModel::NoUpdate);
}

namespace {
LineItemRecord newLine()
{
    LineItemRecord d;
    d.quantity = 1;
    return d;
}
}  // namespace

void LineItemEditor::addLine()
{
    const int row = m_model->rowCount();
    m_model->insertLines(row, {newLine()}, QStringLiteral("Add a line"));
    selectRows(row, 1);
    m_table->setFocus();
    m_table->edit(m_model->index(row, LineItemTableModel::Type));
}

void LineItemEditor::insertLine()
{
    const int row = std::max(m_table->currentIndex().row(), 0);
    m_model->insertLines(row, {newLine()}, QStringLiteral("Insert a line"));
    selectRows(row, 1);
    m_table->setFocus();
}

void LineItemEditor::deleteLines()
{
    const QList<int> rows = selectedRows();
    if (rows.isEmpty())
        return;
    m_model->removeRows(rows);
    selectRows(std::min(rows.first(), m_model->rowCount() - 1), 1);
}

void LineItemEditor::moveUp()
{
    const QList<int> rows = selectedRows();
    if (m_model->moveRows(rows, -1))
        selectRows(rows.first() - 1, int(rows.size()));
}

void LineItemEditor::moveDown()
{
    const QList<int> rows = selectedRows();
    if (m_model->moveRows(rows, +1))
        selectRows(rows.first() + 1, int(rows.size()));
}

void LineItemEditor::copyLines()
{
    const QList<int> rows = selectedRows();
    if (rows.isEmpty())
        return;
    QStringList out;
    QStringList header;
    for (const char* h : kHeaders)
        header.append(QString::fromLatin1(h));
    out.append(header.join(QLatin1Char('\t')));
    for (const int r : rows) {
        const LineItemRecord& d = m_model->rows().at(r).data;
        out.append(QStringList{tsvCell(d.type), QString::number(d.quantity), tsvCell(d.brand),
                               tsvCell(d.catalogNumber), tsvCell(d.description), tsvCell(d.group),
                               d.mto ? QStringLiteral("Yes") : QStringLiteral("No"),
                               tsvCell(d.comment.value_or(QString())),
                               d.selected ? QStringLiteral("Yes") : QStringLiteral("No")}
                       .join(QLatin1Char('\t')));
    }
    QApplication::clipboard()->setText(out.join(QLatin1Char('\n')) + QLatin1Char('\n'));
}

void LineItemEditor::pasteLines()
{
    const QString title = QStringLiteral("Paste Line Items");
    try {
        TableImport import = OfficeImports::lineItems();
        import.setTable(CsvTable::fromClipboardText(QApplication::clipboard()->text()));
        import.guessMapping();
        import.check();
        if (import.rows().isEmpty()) {
            QMessageBox::information(
                this, title, QStringLiteral("The clipboard holds no lines under a header row."));
            return;
        }
        if (!import.problems().isEmpty()) {
            QStringList lines;
            for (const auto& p : import.problems().mid(0, 10))
                lines.append(p.message());
            QMessageBox::warning(
                this, title,
                QStringLiteral("Nothing was pasted: the lines on the clipboard are not right:\n%1")
                    .arg(lines.join(QLatin1Char('\n'))));
            return;
        }
        // Lines copied here come back as they were, ticked or not.
        const QList<LineItemRecord> lines = OfficeImports::lines(import);
        const int current = m_table->currentIndex().row();
        const int row = current < 0 ? m_model->rowCount() : current + 1;
        m_model->insertLines(row, lines,
                             lines.size() == 1
                                 ? QStringLiteral("Paste a line")
                                 : QStringLiteral("Paste %1 lines").arg(lines.size()));
        selectRows(row, int(lines.size()));
    } catch (const ZebObjects::Failure& f) {
        QMessageBox::warning(this, title, f.Description());
    }
}

bool LineItemEditor::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_table
        || (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride))
        return QWidget::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    // The editor's keys, not the window's nor the table's own copy of one cell.
    std::function<void()> action;
    if (key->matches(QKeySequence::Copy))
        action = [this] { copyLines(); };
    else if (key->matches(QKeySequence::Paste))
        action = [this] { pasteLines(); };
    else if (key->matches(QKeySequence::Undo))
        action = [this] { m_undo->undo(); };
    else if (key->matches(QKeySequence::Redo)
             || (key->key() == Qt::Key_Y && key->modifiers() == Qt::ControlModifier))
        action = [this] { m_undo->redo(); };
    else if (key->key() == Qt::Key_Delete && key->modifiers() == Qt::NoModifier)
        action = [this] { deleteLines(); };
    else if (key->key() == Qt::Key_Insert && key->modifiers() == Qt::NoModifier)
        action = [this] { insertLine(); };
    else if (key->key() == Qt::Key_Up && key->modifiers() == Qt::AltModifier)
        action = [this] { moveUp(); };
    else if (key->key() == Qt::Key_Down && key->modifiers() == Qt::AltModifier)
        action = [this] { moveDown(); };
    if (!action)
        return QWidget::eventFilter(watched, event);
    event->accept();
    if (event->type() == QEvent::KeyPress)
        action();
    return true;
}
