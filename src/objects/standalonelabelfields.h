#pragma once

#include "zebobjects_export.h"

#include "contracts/labelfields.h"
#include "objects/faultinjector.h"

namespace ZebObjects {

class StandaloneLabelField;

// The fields of an in-memory label definition, in the order they were added. Enumeration gives
// the fields on the label first, by print order (fields of equal order as added), then the others
// as added: so the enumeration order of the included fields is their print order.
// At most maximumIncluded() fields (5 unless set) are on the label at once; a field beyond that
// stays off.
// Member names for fault injection: "Item", "Count", "Enumerate", "Add".
class ZEBOBJECTS_EXPORT StandaloneLabelFields : public LabelFields, public FaultInjectable {
public:
    StandaloneLabelFields();
    ~StandaloneLabelFields() override;

    std::shared_ptr<LabelField> Item(const QString& key) const override;
    qint16 Count() const override;
    LabelFieldList Enumerate() const override;

    // Adds a field, on the label at printOrder when that is not 0 and there is room. A key
    // already held fails with 457.
    std::shared_ptr<StandaloneLabelField> Add(const QString& key, const QString& caption,
                                              qint16 printOrder = 0);
    // The concrete field behind a key (for fault injection on one field); a missing key fails.
    std::shared_ptr<StandaloneLabelField> field(const QString& key) const;

    qint16 maximumIncluded() const;
    // Fields already on the label stay on when the limit is lowered below their number.
    void setMaximumIncluded(qint16 maximum);
    qint16 includedCount() const;

private:
    struct State;
    std::shared_ptr<State> m_state;
};

}  // namespace ZebObjects
