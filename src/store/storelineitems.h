#pragma once

#include "zebstore_export.h"

#include "contracts/lineitem.h"
#include "contracts/lineitemcomment.h"
#include "contracts/lineitems.h"
#include "rules/lineitemrecord.h"

#include <QHash>

namespace ZebObjects {

class StoreConnection;

class ZEBSTORE_EXPORT StoreLineItemComment : public LineItemComment {
public:
    StoreLineItemComment(std::shared_ptr<StoreConnection> db, qint64 lineId);

    QString Text() const override;

private:
    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
};

// One line of a submittal in a store. Every read asks the file, and nothing else.
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

private:
    QVariant column(const char* name) const;

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
    mutable std::shared_ptr<StoreLineItemComment> m_comment;
};

// The lines of a submittal in a store, in display order.
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
    void writeLine(qint64 id, const LineItemRecord& data);

    std::shared_ptr<LineItem> line(qint64 id) const;

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
    mutable QHash<qint64, std::shared_ptr<StoreLineItem>> m_lines;
};

}  // namespace ZebObjects
