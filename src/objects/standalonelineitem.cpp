#include "objects/standalonelineitem.h"

namespace ZebObjects {

StandaloneLineItemComment::StandaloneLineItemComment(QString text) : m_text(std::move(text)) { }

QString StandaloneLineItemComment::Text() const
{
    check("Text");
    return m_text;
}

StandaloneLineItem::StandaloneLineItem(const Data& data)
    : m_quantity(data.quantity), m_type(data.type), m_brand(data.brand),
      m_catalogNumber(data.catalogNumber), m_description(data.description), m_group(data.group),
      m_mto(data.mto),
      m_comment(data.comment ? std::make_shared<StandaloneLineItemComment>(*data.comment)
                             : nullptr),
      m_selected(data.selected)
{ }

bool StandaloneLineItem::Selected() const
{
    check("Selected");
    return m_selected;
}

void StandaloneLineItem::setSelected(bool selected)
{
    check("Selected=");
    m_selected = selected;
}

QString StandaloneLineItem::Quantity() const
{
    check("Quantity");
    return QString::number(m_quantity);
}

QString StandaloneLineItem::Type() const
{
    check("Type");
    return m_type;
}

QString StandaloneLineItem::Brand() const
{
    check("Brand");
    return m_brand;
}

QString StandaloneLineItem::CatalogNumber() const
{
    check("CatalogNumber");
    return m_catalogNumber;
}

QString StandaloneLineItem::Description() const
{
    check("Description");
    return m_description;
}

QString StandaloneLineItem::Group() const
{
    check("Group");
    return m_group;
}

bool StandaloneLineItem::MTO() const
{
    check("MTO");
    return m_mto;
}

std::shared_ptr<LineItemComment> StandaloneLineItem::Comment() const
{
    check("Comment");
    return m_comment;
}

}  // namespace ZebObjects
