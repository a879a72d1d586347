#include "objects/standalonelabels.h"

#include "objects/standalonelabelfields.h"

namespace ZebObjects {

StandaloneLabels::StandaloneLabels() : m_fields(std::make_shared<StandaloneLabelFields>()) { }

StandaloneLabels::~StandaloneLabels() = default;

std::shared_ptr<LabelFields> StandaloneLabels::LabelFields() const
{
    check("LabelFields");
    return m_fields;
}

void StandaloneLabels::setLabelFields(std::shared_ptr<ZebObjects::LabelFields> fields)
{
    check("LabelFields=");
    m_fields = std::move(fields);
}

std::shared_ptr<StandaloneLabelFields> StandaloneLabels::standaloneFields() const
{
    return std::dynamic_pointer_cast<StandaloneLabelFields>(m_fields);
}

}  // namespace ZebObjects
