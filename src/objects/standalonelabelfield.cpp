#include "objects/standalonelabelfield.h"

#include "rules/labelrules.h"

namespace ZebObjects {

StandaloneLabelField::StandaloneLabelField(QString key, QString caption, QObject* parent)
    : LabelField(parent), m_key(std::move(key)), m_caption(std::move(caption))
{ }

QString StandaloneLabelField::Caption() const
{
    check("Caption");
    return m_caption;
}

QString StandaloneLabelField::Key() const
{
    check("Key");
    return m_key;
}

bool StandaloneLabelField::Included() const
{
    check("Included");
    return m_order != 0;
}

qint16 StandaloneLabelField::PrintOrder() const
{
    check("PrintOrder");
    return m_order;
}

void StandaloneLabelField::setPrintOrder(qint16 order)
{
    check("PrintOrder=");
    LabelRules::checkPrintOrder(m_key, order);
    if (order > 0 && m_order == 0 && m_room && !m_room())
        return;
    m_order = order;
}

void StandaloneLabelField::setRoom(Room room)
{
    m_room = std::move(room);
}

}  // namespace ZebObjects
