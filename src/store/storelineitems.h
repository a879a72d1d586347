#pragma once

#include "zebstore_export.h"

#include "contracts/lineitem.h"
#include "contracts/lineitemcomment.h"
#include "contracts/lineitems.h"
#include "rules/lineitemrecord.h"

#include <QHash>

namespace ZebObjects {

class StoreConnection;
class StoreRow;

class ZEBSTORE_EXPORT StoreLineItemComment : public LineItemComment {
public:
    StoreLineItemComment(std::shared_ptr<StoreConnection> db, qint64 lineId);

    QString Text() const override;

private:
    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
};

// One line of a submittal in a store. It answers from what it or its collection last read of
// it for as long as the database's state is the one it was read in; then it reads its row again,
// all of it in one statement.
class ZEBSTORE_EXPORT StoreLineItem : public LineItem {
public:
    StoreLineItem(std::shared_ptr<StoreConnection> db, qint64 id);

    bool Selected() const override;
    void setSelected(bool selected) override;
    QString Quantity() const override;
    QString Type() const override;
    QString Brand() const override;
    QString CatalogNumber() const override;
    QString Description() const override;
    QString Group() const override;
    bool MTO() const override;
    std::shared_ptr<LineItemComment> Comment() const override;

    // What the collection read of this line in the database's state.
    void seen(quint64 state, const LineItemRecord& data);

private:
    const LineItemRecord& data() const;

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
    mutable std::shared_ptr<StoreLineItemComment> m_comment;
    mutable quint64 m_state = 0;
    mutable LineItemRecord m_data;
};

// The lines of a submittal in a store, in display order. The lines and their values are read in
// one statement and kept for as long as the database's state stays the same, so that a list
// that asks the count or a line by position for every row sends no statement per row.
class ZEBSTORE_EXPORT StoreLineItems : public LineItems {
public:
    StoreLineItems(std::shared_ptr<StoreConnection> db, qint64 submittalId);
    ~StoreLineItems() override;

    qint16 Count() const override;
    std::shared_ptr<LineItem> Item(qint16 position) const override;
    LineItemList Enumerate() const override;

    // A line as the editor and the import see it, with its row id.
    struct Row {
        qint64 id = 0;
        LineItemRecord data;
    };
    // Every line in display order, read in one statement.
    QList<Row> rows() const;
    // Writes lines in one transaction, after the job's lines or in their place: a failure
    // leaves the job's lines as they were. Answers the new rows' ids.
    QList<qint64> importLines(const QList<LineItemRecord>& lines, bool replace);
    // Puts lines at a 1-based position (Count() + 1 appends) in one transaction; the lines
    // from there on move down. Answers the new rows' ids.
    QList<qint64> insertLines(qint32 position, const QList<LineItemRecord>& lines);
    // Puts lines back where they were, in one transaction: each at its 1-based position, in
    // ascending order of position (as removeLines' rows were).
    void putBack(const QList<qint32>& positions, const QList<LineItemRecord>& lines);
    // Takes the lines with these ids out in one transaction; the lines after each close up. A
    // line no longer in the file fails with 35601 and nothing is taken out.
    void removeLines(const QList<qint64>& ids);
    // Writes one line's values; a line no longer in the file fails with 35601.
    void updateLine(qint64 id, const LineItemRecord& data);
    // Puts the lines in this order of ids (all of the job's lines) in one transaction.
    void reorder(const QList<qint64>& ids);

private:
    friend class StoreLineItem;

    void writeLine(qint64 id, const LineItemRecord& data);

    std::shared_ptr<StoreLineItem> line(qint64 id) const;
    // Reads the lines again unless what is kept is still the database's; false when nothing may
    // be kept (inside a write on the server).
    bool kept() const;
    static QString rowsQuery(const QString& where, const QString& along = QString());
    static LineItemRecord record(const StoreRow& r, int first);

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
    mutable QHash<qint64, std::shared_ptr<StoreLineItem>> m_lines;
    // The line ids in display order, read in state m_state.
    mutable quint64 m_state = 0;
    mutable QList<qint64> m_ids;
};

}  // namespace ZebObjects
