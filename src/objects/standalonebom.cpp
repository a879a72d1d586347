#include "objects/standalonebom.h"

#include "objects/standalonetextobjects.h"
#include "rules/textkind.h"

namespace ZebObjects {

StandaloneBOM::StandaloneBOM(QObject* parent)
    : BOM(parent), m_remarks(std::make_shared<StandaloneTextObjects>())
{
    m_remarks->setTextObjectType(TextKind::BOMRemark);
}

StandaloneBOM::~StandaloneBOM() = default;

bool StandaloneBOM::IncludeQuantity() const
{
    check("IncludeQuantity");
    return m_quantity;
}

void StandaloneBOM::setIncludeQuantity(bool include)
{
    check("IncludeQuantity=");
    m_quantity = include;
}

bool StandaloneBOM::IncludeType() const
{
    check("IncludeType");
    return m_type;
}

void StandaloneBOM::setIncludeType(bool include)
{
    check("IncludeType=");
    m_type = include;
}

bool StandaloneBOM::IncludeDefaultRemarks() const
{
    check("IncludeDefaultRemarks");
    return m_defaultRemarks;
}

void StandaloneBOM::setIncludeDefaultRemarks(bool include)
{
    check("IncludeDefaultRemarks=");
    m_defaultRemarks = include;
}

std::shared_ptr<TextObjects> StandaloneBOM::DefaultRemarks() const
{
    check("DefaultRemarks");
    return m_remarks;
}

bool StandaloneBOM::IncludeBrand() const
{
    check("IncludeBrand");
    return m_brand;
}

void StandaloneBOM::setIncludeBrand(bool include)
{
    check("IncludeBrand=");
    m_brand = include;
}

bool StandaloneBOM::IncludeManufacturer() const
{
    check("IncludeManufacturer");
    return m_manufacturer;
}

void StandaloneBOM::setIncludeManufacturer(bool include)
{
    check("IncludeManufacturer=");
    m_manufacturer = include;
}

bool StandaloneBOM::IncludeCatalogNumber() const
{
    check("IncludeCatalogNumber");
    return m_catalogNumber;
}

void StandaloneBOM::setIncludeCatalogNumber(bool include)
{
    check("IncludeCatalogNumber=");
    m_catalogNumber = include;
}

bool StandaloneBOM::IncludeDescription() const
{
    check("IncludeDescription");
    return m_description;
}

void StandaloneBOM::setIncludeDescription(bool include)
{
    check("IncludeDescription=");
    m_description = include;
}

bool StandaloneBOM::IncludeLineComments() const
{
    check("IncludeLineComments");
    return m_lineComments;
}

void StandaloneBOM::setIncludeLineComments(bool include)
{
    check("IncludeLineComments=");
    m_lineComments = include;
}

bool StandaloneBOM::IncludeMTO() const
{
    check("IncludeMTO");
    return m_mto;
}

void StandaloneBOM::setIncludeMTO(bool include)
{
    check("IncludeMTO=");
    m_mto = include;
}

bool StandaloneBOM::IncludeGroupCodes() const
{
    check("IncludeGroupCodes");
    return m_groupCodes;
}

void StandaloneBOM::setIncludeGroupCodes(bool include)
{
    check("IncludeGroupCodes=");
    m_groupCodes = include;
}

std::shared_ptr<StandaloneTextObjects> StandaloneBOM::PopulateRemarks(const QStringList& texts)
{
    check("PopulateRemarks");
    auto remarks = std::make_shared<StandaloneTextObjects>();
    remarks->setTextObjectType(TextKind::BOMRemark);
    for (const QString& text : texts)
        remarks->Add(text, false);
    m_remarks = remarks;
    emit RemarksPopulated();
    return remarks;
}

void StandaloneBOM::setDefaultRemarks(std::shared_ptr<TextObjects> remarks)
{
    check("DefaultRemarks=");
    m_remarks = std::move(remarks);
    emit RemarksPopulated();
}

}  // namespace ZebObjects
