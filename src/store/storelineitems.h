#pragma once

#include "zebstore_export.h"

#include "contracts/lineitem.h"
#include "contracts/lineitemcomment.h"
#include "contracts/lineitems.h"

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

private:
    std::shared_ptr<LineItem> line(qint64 id) const;

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
    mutable QHash<qint64, std::shared_ptr<StoreLineItem>> m_lines;
};

}  // namespace ZebObjects
