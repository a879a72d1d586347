#pragma once

#include "zebobjects_export.h"

#include "contracts/labels.h"
#include "objects/faultinjector.h"

namespace ZebObjects {

class StandaloneLabelFields;

// An in-memory label definition; it starts with an empty field collection.
// Member names for fault injection: "LabelFields", "LabelFields=".
class ZEBOBJECTS_EXPORT StandaloneLabels : public Labels, public FaultInjectable {
public:
    StandaloneLabels();
    ~StandaloneLabels() override;

    std::shared_ptr<ZebObjects::LabelFields> LabelFields() const override;

    void setLabelFields(std::shared_ptr<ZebObjects::LabelFields> fields);
    // The concrete collection, or none when the host put one of its own in place.
    std::shared_ptr<StandaloneLabelFields> standaloneFields() const;

private:
    std::shared_ptr<ZebObjects::LabelFields> m_fields;
};

}  // namespace ZebObjects
