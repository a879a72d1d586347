#include "platform/keyedlistview.h"

#include "contracts/failure.h"
#include "platform/accessiblenames.h"
#include "platform/keyedlistaccessible.h"

#include <QAbstractItemModel>
#include <QAccessible>
#include <QHash>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionViewItem>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace ZebSubCtl {

namespace {

const QString kSource = QStringLiteral("ZebSubCtl.KeyedListView");

[[noreturn]] void indexOutOfBounds()
{
    throw ZebObjects::Failure::indexOutOfBounds(kSource);
}

[[noreturn]] void elementNotFound()
{
    throw ZebObjects::Failure(ZebObjects::ErrorNumber::ElementNotFound, kSource,
                              QStringLiteral("Element not found"));
}

[[noreturn]] void keyNotUnique()
{
    throw ZebObjects::Failure(ZebObjects::ErrorNumber::KeyNotUnique, kSource,
                              QStringLiteral("Key is not unique in collection"));
}

struct SubItem {
    QString key;
    QString text;
};

struct Row {
    QString key;
    QString text;
    QString tag;
    QString toolTip;
    bool checked = false;
    std::vector<SubItem> subItems;
};

struct Column {
    QString key;
    QString heading;
};

// The key-to-row index: open addressing over one flat array of (hash, row) slots, kept at most
// half full. A probe compares the stored hashes and reads a row's key only when they agree, so
// adding a key touches about one cache line; a QHash<QString, int> reaches its nodes through a
// second array and compares the characters of every key it meets, which made the hash most of
// the cost of filling a list of 100,000 items.
//
// Within a batch, keys appended at the end wait in a list and are placed together at the end of
// the batch, each slot fetched from memory a few keys ahead of its use, so that the fill does not
// wait for one slot after the other. A duplicate is still refused at once: a bit array of the
// hashes held (small enough to stay in the cache) says for most keys that they are new; only a
// key whose bit is set is looked up, after the waiting keys are placed.
//
// The slots hold row numbers: a change of rows tells the index before the rows vector changes
// (insert(), remove()), and the index renumbers the later rows itself.
class KeyIndex {
public:
    explicit KeyIndex(const std::vector<Row>& rows) : m_rows(rows) { }

    void clear()
    {
        m_slots = {};
        m_seen = {};
        m_waiting = {};
        m_size = 0;
    }

    void reserve(std::size_t keys)
    {
        if (m_slots.size() < 2 * keys)
            rehash(keys);
    }

    // Keys appended from now on may wait (see above) until endBatch().
    void beginBatch() { m_batch = true; }
    void endBatch()
    {
        m_batch = false;
        placeWaiting();
    }

    // The row of key, or -1.
    int find(const QString& key)
    {
        placeWaiting();
        return find(key, hashOf(key));
    }

    // Adds the key of a row about to be put at row (rows from there move down by one); false,
    // with nothing changed, when the key is already there.
    bool insert(const QString& key, int row)
    {
        const quint32 hash = hashOf(key);
        reserve(m_size + 1);
        if (mayHold(hash)) {
            placeWaiting();
            if (find(key, hash) >= 0)
                return false;
        }
        markHeld(hash);
        ++m_size;
        if (m_batch && std::size_t(row) == m_rows.size()) {
            m_waiting.push_back(Slot{hash, row});
            return true;
        }
        placeWaiting();
        if (std::size_t(row) < m_rows.size())
            renumber(row, +1);
        place(hash, row);
        return true;
    }

    // Drops the key of the row about to be removed; when laterRows, the rows after it move up by
    // one (at the end of the list there are none, and a removal costs no pass over the index).
    void remove(const QString& key, int row, bool laterRows)
    {
        placeWaiting();
        if (m_slots.empty())
            return;
        const quint32 hash = hashOf(key);
        std::size_t i = hash & mask();
        for (;; i = (i + 1) & mask()) {
            const Slot& slot = m_slots[i];
            if (slot.row == kEmpty)
                return;
            if (slot.hash == hash && slot.row == row)
                break;
        }
        erase(i);
        --m_size;
        if (laterRows)
            renumber(row + 1, -1);
    }

private:
    static constexpr qint32 kEmpty = -1;
    // How many waiting keys ahead a slot is fetched.
    static constexpr std::size_t kAhead = 16;
    struct Slot {
        quint32 hash = 0;
        qint32 row = kEmpty;
    };

    static quint32 hashOf(const QString& key) { return quint32(qHash(key)); }
    std::size_t mask() const { return m_slots.size() - 1; }

    // The bit array has two bits per slot, indexed by the hash's high bits (the slots use the
    // low ones). Bits are never cleared on removal: a stale bit only costs a look-up.
    std::size_t seenBit(quint32 hash) const
    {
        return std::size_t((quint64(hash) * 0x9E3779B97F4A7C15ull) >> 32)
               & (m_seen.size() * 64 - 1);
    }
    bool mayHold(quint32 hash) const
    {
        const std::size_t bit = seenBit(hash);
        return m_seen[bit / 64] >> (bit % 64) & 1;
    }
    void markHeld(quint32 hash)
    {
        const std::size_t bit = seenBit(hash);
        m_seen[bit / 64] |= quint64(1) << (bit % 64);
    }

    int find(const QString& key, quint32 hash) const
    {
        if (m_slots.empty())
            return -1;
        for (std::size_t i = hash & mask();; i = (i + 1) & mask()) {
            const Slot& slot = m_slots[i];
            if (slot.row == kEmpty)
                return -1;
            if (slot.hash == hash && m_rows[std::size_t(slot.row)].key == key)
                return slot.row;
        }
    }

    void place(quint32 hash, qint32 row)
    {
        std::size_t i = hash & mask();
        while (m_slots[i].row != kEmpty)
            i = (i + 1) & mask();
        m_slots[i] = Slot{hash, row};
    }

    void placeWaiting()
    {
        const std::size_t n = m_waiting.size();
        for (std::size_t k = 0; k < n; ++k) {
            if (k + kAhead < n)
                __builtin_prefetch(&m_slots[m_waiting[k + kAhead].hash & mask()], 1);
            place(m_waiting[k].hash, m_waiting[k].row);
        }
        m_waiting.clear();
    }

    // Empties slot i and moves later slots of the same run back, so that no probe stops short.
    void erase(std::size_t i)
    {
        for (std::size_t j = (i + 1) & mask(); m_slots[j].row != kEmpty; j = (j + 1) & mask()) {
            const std::size_t home = m_slots[j].hash & mask();
            const bool stays = i <= j ? (i < home && home <= j) : (i < home || home <= j);
            if (!stays) {
                m_slots[i] = m_slots[j];
                i = j;
            }
        }
        m_slots[i].row = kEmpty;
    }

    void renumber(int from, int by)
    {
        for (Slot& slot : m_slots)
            if (slot.row >= from)
                slot.row += by;
    }

    void rehash(std::size_t keys)
    {
        placeWaiting();
        std::size_t capacity = 16;
        while (capacity < 2 * keys)
            capacity *= 2;
        std::vector<Slot> old = std::exchange(m_slots, std::vector<Slot>(capacity));
        m_seen.assign(std::max<std::size_t>(1, capacity * 2 / 64), 0);
        for (const Slot& slot : old) {
            if (slot.row != kEmpty) {
                place(slot.hash, slot.row);
                markHeld(slot.hash);
            }
        }
    }

    const std::vector<Row>& m_rows;
    std::vector<Slot> m_slots;
    std::vector<quint64> m_seen;
    std::vector<Slot> m_waiting;
    std::size_t m_size = 0;
    bool m_batch = false;
};

}  // namespace

// The items in a vector, with a key-to-row index. Changes made inside a batch (beginUpdate) are
// announced as one model reset; outside a batch each change is announced on its own.
class KeyedListView::Model : public QAbstractItemModel {
public:
    explicit Model(QObject* parent) : QAbstractItemModel(parent) { }

    std::vector<Row> rows;
    KeyIndex rowOfKey{rows};
    std::vector<Column> columns;
    bool checkBoxes = false;
    std::function<void(int)> onUserCheck;
    std::function<void(int)> onCheck;

    // --- QAbstractItemModel
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override
    {
        if (parent.isValid() || row < 0 || row >= int(rows.size()) || column < 0
            || column >= columnCount())
            return {};
        return createIndex(row, column);
    }
    QModelIndex parent(const QModelIndex&) const override { return {}; }
    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : int(rows.size());
    }
    int columnCount(const QModelIndex& = {}) const override
    {
        return columns.empty() ? 1 : int(columns.size());
    }
    bool hasChildren(const QModelIndex& parent = {}) const override
    {
        return !parent.isValid() && !rows.empty();
    }

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid())
            return {};
        const Row& r = rows[std::size_t(index.row())];
        const int column = index.column();
        switch (role) {
        case Qt::DisplayRole:
            if (column == 0)
                return r.text;
            if (std::size_t(column) <= r.subItems.size())
                return r.subItems[std::size_t(column) - 1].text;
            return {};
        case Qt::CheckStateRole:
            if (column == 0 && checkBoxes)
                return int(r.checked ? Qt::Checked : Qt::Unchecked);
            return {};
        case Qt::ToolTipRole:
            if (!r.toolTip.isEmpty())
                return r.toolTip;
            return {};
        default: return {};
        }
    }

    Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        if (!index.isValid())
            return Qt::NoItemFlags;
        Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
        if (checkBoxes && index.column() == 0)
            f |= Qt::ItemIsUserCheckable;
        return f;
    }

    // Only the view writes through here: a user toggle.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override
    {
        if (!index.isValid() || role != Qt::CheckStateRole || index.column() != 0 || !checkBoxes)
            return false;
        const bool checked = value.toInt() == Qt::Checked;
        Row& r = rows[std::size_t(index.row())];
        if (r.checked == checked)
            return true;
        r.checked = checked;
        emit dataChanged(index, index, {Qt::CheckStateRole});
        if (onCheck)
            onCheck(index.row());
        if (onUserCheck)
            onUserCheck(index.row());
        return true;
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0
            || std::size_t(section) >= columns.size())
            return {};
        return columns[std::size_t(section)].heading;
    }

    // --- batching
    bool inBatch() const { return m_depth > 0; }
    void beginUpdate()
    {
        if (m_depth++ == 0)
            rowOfKey.beginBatch();
    }
    void endUpdate()
    {
        if (m_depth > 0 && --m_depth == 0) {
            rowOfKey.endBatch();
            if (m_resetting) {
                m_resetting = false;
                endResetModel();
            }
        }
    }
    bool batching()
    {
        if (m_depth == 0)
            return false;
        if (!m_resetting) {
            m_resetting = true;
            beginResetModel();
        }
        return true;
    }

    // --- item operations
    void checkRow(int row) const
    {
        if (row < 0 || row >= int(rows.size()))
            indexOutOfBounds();
    }

    int insert(int row, const QString& key, const QString& text)
    {
        if (row < 0 || row > int(rows.size()))
            indexOutOfBounds();
        const bool keyed = !key.isEmpty();
        if (keyed && !rowOfKey.insert(key, row))
            keyNotUnique();
        try {
            const bool batch = batching();
            if (!batch)
                beginInsertRows({}, row, row);
            Row r;
            r.key = key;
            r.text = text;
            rows.insert(rows.begin() + row, std::move(r));
            if (!batch)
                endInsertRows();
        } catch (...) {
            // The rows are as they were: so must the index be.
            if (keyed)
                rowOfKey.remove(key, row, std::size_t(row) < rows.size());
            throw;
        }
        return row;
    }

    void remove(int row)
    {
        checkRow(row);
        const bool batch = batching();
        if (!batch)
            beginRemoveRows({}, row, row);
        const QString& key = rows[std::size_t(row)].key;
        if (!key.isEmpty())
            rowOfKey.remove(key, row, std::size_t(row) + 1 < rows.size());
        rows.erase(rows.begin() + row);
        if (!batch)
            endRemoveRows();
    }

    void clearItems()
    {
        const bool batch = batching();
        if (!batch)
            beginResetModel();
        rows.clear();
        rowOfKey.clear();
        if (!batch)
            endResetModel();
    }

    void changed(int row, int column, const QList<int>& roles)
    {
        if (m_resetting)
            return;
        const QModelIndex i = createIndex(row, column);
        emit dataChanged(i, i, roles);
    }

    void allChanged()
    {
        if (m_resetting || rows.empty())
            return;
        emit dataChanged(createIndex(0, 0), createIndex(int(rows.size()) - 1, columnCount() - 1));
    }

    void setColumns(std::vector<Column> next)
    {
        const bool batch = batching();
        if (!batch)
            beginResetModel();
        columns = std::move(next);
        if (!batch)
            endResetModel();
    }

private:
    int m_depth = 0;
    bool m_resetting = false;
};

KeyedListView::KeyedListView(QWidget* parent) : QTreeView(parent), m_model(new Model(this))
{
    m_model->onUserCheck = [this](int row) { emit itemCheck(row); };
    m_model->onCheck = [this](int row) { announceCheck(row); };
    KeyedListAccessible::install();
    setModel(m_model);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setExpandsOnDoubleClick(false);
    setUniformRowHeights(true);
    nameScrollBars(this);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSortingEnabled(false);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);

    // The row height is read from the first row; anything that may change it drops the cache.
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] { invalidateRowHeight(); });
    connect(m_model, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex&, int first, int) {
                if (first == 0)
                    invalidateRowHeight();
            });
    connect(m_model, &QAbstractItemModel::rowsRemoved, this,
            [this](const QModelIndex&, int first, int) {
                if (first == 0)
                    invalidateRowHeight();
            });
    connect(m_model, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& topLeft, const QModelIndex&) {
                if (topLeft.row() == 0)
                    invalidateRowHeight();
            });
    connect(header(), &QHeaderView::sectionCountChanged, this, [this] { invalidateRowHeight(); });

    // Cell objects name places by row and column: when rows move they are made again.
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] { dropAccessibleCells(); });
    connect(m_model, &QAbstractItemModel::layoutChanged, this, [this] { dropAccessibleCells(); });
    connect(m_model, &QAbstractItemModel::rowsInserted, this, [this] { dropAccessibleCells(); });
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, [this] { dropAccessibleCells(); });
}

KeyedListView::~KeyedListView()
{
    dropAccessibleCells();
}

QAccessibleInterface* KeyedListView::accessibleCell(int row, int column) const
{
    const qint64 key = (qint64(row) << 32) | quint32(column);
    if (const unsigned id = m_accessibleCells.value(key, 0))
        if (QAccessibleInterface* cell = QAccessible::accessibleInterface(id))
            return cell;
    auto* cell = new KeyedListCellAccessible(const_cast<KeyedListView*>(this), row, column);
    m_accessibleCells.insert(key, QAccessible::registerAccessibleInterface(cell));
    return cell;
}

void KeyedListView::dropAccessibleCells()
{
    const QHash<qint64, unsigned> cells = std::exchange(m_accessibleCells, {});
    for (const unsigned id : cells)
        QAccessible::deleteAccessibleInterface(id);
}

void KeyedListView::announceCheck(int row)
{
    // Ticks set from code are news to a screen reader as much as the user's own.
    // A batch ends in one reset, which tells the whole list anew.
    if (!QAccessible::isActive() || m_model->inBatch())
        return;
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(accessibleCell(row, 0), changed);
    QAccessible::updateAccessibility(&event);
}

void KeyedListView::addColumn(const QString& key, const QString& heading)
{
    if (!key.isEmpty()) {
        for (const Column& c : m_model->columns)
            if (c.key == key)
                keyNotUnique();
    }
    std::vector<Column> next = m_model->columns;
    next.push_back({key, heading});
    m_model->setColumns(std::move(next));
}

int KeyedListView::columnCount() const
{
    return int(m_model->columns.size());
}

QString KeyedListView::columnKey(int column) const
{
    if (column < 0 || std::size_t(column) >= m_model->columns.size())
        indexOutOfBounds();
    return m_model->columns[std::size_t(column)].key;
}

QString KeyedListView::columnHeading(int column) const
{
    if (column < 0 || std::size_t(column) >= m_model->columns.size())
        indexOutOfBounds();
    return m_model->columns[std::size_t(column)].heading;
}

bool KeyedListView::checkBoxes() const
{
    return m_model->checkBoxes;
}

void KeyedListView::setCheckBoxes(bool on)
{
    if (m_model->checkBoxes == on)
        return;
    m_model->checkBoxes = on;
    m_model->allChanged();
    invalidateRowHeight();
}

int KeyedListView::count() const
{
    return int(m_model->rows.size());
}

int KeyedListView::addItem(const QString& key, const QString& text)
{
    return m_model->insert(count(), key, text);
}

int KeyedListView::insertItem(int row, const QString& key, const QString& text)
{
    return m_model->insert(row, key, text);
}

void KeyedListView::removeItem(int row)
{
    m_model->remove(row);
}

void KeyedListView::removeItem(const QString& key)
{
    m_model->remove(this->row(key));
}

void KeyedListView::clear()
{
    m_model->clearItems();
}

void KeyedListView::reserve(int items)
{
    if (items > 0) {
        m_model->rows.reserve(std::size_t(items));
        m_model->rowOfKey.reserve(std::size_t(items));
    }
}

int KeyedListView::find(const QString& key) const
{
    if (key.isEmpty())
        return -1;
    return m_model->rowOfKey.find(key);
}

int KeyedListView::row(const QString& key) const
{
    const int r = find(key);
    if (r < 0)
        elementNotFound();
    return r;
}

QString KeyedListView::key(int row) const
{
    m_model->checkRow(row);
    return m_model->rows[std::size_t(row)].key;
}

QString KeyedListView::text(int row) const
{
    m_model->checkRow(row);
    return m_model->rows[std::size_t(row)].text;
}

void KeyedListView::setText(int row, const QString& text)
{
    m_model->checkRow(row);
    m_model->rows[std::size_t(row)].text = text;
    m_model->changed(row, 0, {Qt::DisplayRole});
}

QString KeyedListView::tag(int row) const
{
    m_model->checkRow(row);
    return m_model->rows[std::size_t(row)].tag;
}

void KeyedListView::setTag(int row, const QString& tag)
{
    m_model->checkRow(row);
    m_model->rows[std::size_t(row)].tag = tag;
}

bool KeyedListView::isChecked(int row) const
{
    m_model->checkRow(row);
    return m_model->rows[std::size_t(row)].checked;
}

void KeyedListView::setChecked(int row, bool checked)
{
    m_model->checkRow(row);
    Row& r = m_model->rows[std::size_t(row)];
    if (r.checked == checked)
        return;
    r.checked = checked;
    m_model->changed(row, 0, {Qt::CheckStateRole});
    announceCheck(row);
}

QString KeyedListView::itemToolTip(int row) const
{
    m_model->checkRow(row);
    return m_model->rows[std::size_t(row)].toolTip;
}

void KeyedListView::setItemToolTip(int row, const QString& text)
{
    m_model->checkRow(row);
    m_model->rows[std::size_t(row)].toolTip = text;
}

int KeyedListView::addSubItem(int row, const QString& key, const QString& text)
{
    m_model->checkRow(row);
    Row& r = m_model->rows[std::size_t(row)];
    if (!key.isEmpty()) {
        for (const SubItem& s : r.subItems)
            if (s.key == key)
                keyNotUnique();
    }
    r.subItems.push_back({key, text});
    const int index = int(r.subItems.size());
    if (index < m_model->columnCount())
        m_model->changed(row, index, {Qt::DisplayRole});
    return index;
}

int KeyedListView::subItemCount(int row) const
{
    m_model->checkRow(row);
    return int(m_model->rows[std::size_t(row)].subItems.size());
}

QString KeyedListView::subItemText(int row, int index) const
{
    m_model->checkRow(row);
    const Row& r = m_model->rows[std::size_t(row)];
    if (index < 1 || std::size_t(index) > r.subItems.size())
        indexOutOfBounds();
    return r.subItems[std::size_t(index) - 1].text;
}

QString KeyedListView::subItemText(int row, const QString& key) const
{
    m_model->checkRow(row);
    for (const SubItem& s : m_model->rows[std::size_t(row)].subItems)
        if (!key.isEmpty() && s.key == key)
            return s.text;
    elementNotFound();
}

void KeyedListView::setSubItemText(int row, int index, const QString& text)
{
    m_model->checkRow(row);
    Row& r = m_model->rows[std::size_t(row)];
    if (index < 1 || std::size_t(index) > r.subItems.size())
        indexOutOfBounds();
    r.subItems[std::size_t(index) - 1].text = text;
    if (index < m_model->columnCount())
        m_model->changed(row, index, {Qt::DisplayRole});
}

QString KeyedListView::subItemKey(int row, int index) const
{
    m_model->checkRow(row);
    const Row& r = m_model->rows[std::size_t(row)];
    if (index < 1 || std::size_t(index) > r.subItems.size())
        indexOutOfBounds();
    return r.subItems[std::size_t(index) - 1].key;
}

int KeyedListView::selectedRow() const
{
    const QModelIndexList selected = selectionModel()->selectedRows();
    return selected.isEmpty() ? -1 : selected.first().row();
}

void KeyedListView::setSelectedRow(int row)
{
    if (row < 0) {
        selectionModel()->clearSelection();
        return;
    }
    m_model->checkRow(row);
    selectionModel()->setCurrentIndex(m_model->index(row, 0), QItemSelectionModel::ClearAndSelect
                                                                  | QItemSelectionModel::Rows);
}

int KeyedListView::uniformRowHeight() const
{
    if (m_rowHeight < 0) {
        if (m_model->rows.empty())
            return 0;
        m_rowHeight = indexRowSizeHint(m_model->index(0, 0));
    }
    return m_rowHeight;
}

QRect KeyedListView::itemRect(int row) const
{
    if (row < 0 || row >= count())
        return {};
    const int height = uniformRowHeight();
    const int scroll = verticalScrollBar()->value();
    const int top = verticalScrollMode() == QAbstractItemView::ScrollPerItem
                        ? (row - scroll) * height
                        : row * height - scroll;
    return QRect(-header()->offset(), top, header()->length(), height);
}

QRect KeyedListView::checkBoxRect(int row) const
{
    const QRect item = itemRect(row);
    if (item.isNull())
        return {};
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    const QModelIndex index = m_model->index(row, 0);
    option.index = index;
    option.rect = QRect(header()->sectionViewportPosition(0), item.top(), header()->sectionSize(0),
                        item.height());
    option.features |= QStyleOptionViewItem::HasDisplay;
    option.text = m_model->rows[std::size_t(row)].text;
    if (m_model->checkBoxes) {
        option.features |= QStyleOptionViewItem::HasCheckIndicator;
        option.checkState = m_model->rows[std::size_t(row)].checked ? Qt::Checked : Qt::Unchecked;
    }
    return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this);
}

void KeyedListView::beginUpdate()
{
    m_model->beginUpdate();
}

void KeyedListView::endUpdate()
{
    m_model->endUpdate();
}

namespace {
bool isEnter(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}
}  // namespace

void KeyedListView::keyPressEvent(QKeyEvent* event)
{
    emit keyDown(event->key(), event->modifiers());
    QTreeView::keyPressEvent(event);
    // Enter belongs to the list: it must not fall through to a dialog's default button.
    if (isEnter(event->key()))
        event->accept();
}

void KeyedListView::keyReleaseEvent(QKeyEvent* event)
{
    QTreeView::keyReleaseEvent(event);
    if (!event->isAutoRepeat())
        emit keyUp(event->key(), event->modifiers());
}

void KeyedListView::mouseReleaseEvent(QMouseEvent* event)
{
    QTreeView::mouseReleaseEvent(event);
    emit mouseUp(event->button(), event->modifiers(), event->position().toPoint());
}

void KeyedListView::mouseMoveEvent(QMouseEvent* event)
{
    QTreeView::mouseMoveEvent(event);
    emit mouseMove(event->buttons(), event->modifiers(), event->position().toPoint());
}

void KeyedListView::mouseDoubleClickEvent(QMouseEvent* event)
{
    QTreeView::mouseDoubleClickEvent(event);
    emit dblClick();
}

void KeyedListView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        invalidateRowHeight();
    QTreeView::changeEvent(event);
}

}  // namespace ZebSubCtl
