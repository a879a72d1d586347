#pragma once

#include "zebobjects_export.h"

#include "contracts/lineitem.h"
#include "contracts/lineitemcomment.h"
#include "objects/faultinjector.h"
#include "rules/lineitemrecord.h"

namespace ZebObjects {

// Member names for fault injection: "Text".
class ZEBOBJECTS_EXPORT StandaloneLineItemComment : public LineItemComment, public FaultInjectable {
public:
    explicit StandaloneLineItemComment(QString text);

    QString Text() const override;

private:
    QString m_text;
};

// One in-memory line of a bill of materials. Reads only hand back what the line holds.
// Member names for fault injection: "Selected", "Selected=", "Quantity", "Type", "Brand",
// "CatalogNumber", "Description", "Group", "MTO", "Comment".
class ZEBOBJECTS_EXPORT StandaloneLineItem : public LineItem, public FaultInjectable {
public:
    using Data = LineItemRecord;

    explicit StandaloneLineItem(const Data& data);

    bool Selected() const override;
    void setSelected(bool selected) override;
    // The quantity in plain decimal digits ("12").
    QString Quantity() const override;
    QString Type() const override;
    QString Brand() const override;
    QString CatalogNumber() const override;
    QString Description() const override;
    QString Group() const override;
    bool MTO() const override;
    std::shared_ptr<LineItemComment> Comment() const override;

    qint32 quantity() const { return m_quantity; }

private:
    qint32 m_quantity;
    QString m_type;
    QString m_brand;
    QString m_catalogNumber;
    QString m_description;
    QString m_group;
    bool m_mto;
    std::shared_ptr<StandaloneLineItemComment> m_comment;
    bool m_selected;
};

}  // namespace ZebObjects
