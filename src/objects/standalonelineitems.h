#pragma once

#include "zebobjects_export.h"

#include "contracts/lineitems.h"
#include "objects/faultinjector.h"
#include "objects/standalonelineitem.h"

#include <vector>

namespace ZebObjects {

// In-memory lines of a bill of materials, in the order they were added.
// Member names for fault injection: "Count", "Item", "Enumerate", "Add", "Clear".
class ZEBOBJECTS_EXPORT StandaloneLineItems : public LineItems, public FaultInjectable {
public:
    qint16 Count() const override;
    std::shared_ptr<LineItem> Item(qint16 position) const override;
    LineItemList Enumerate() const override;

    // Appends a line; more than 32,767 lines fail with overflow.
    std::shared_ptr<StandaloneLineItem> Add(const StandaloneLineItem::Data& data);
    void Clear();
    // The concrete line at a 1-based position (for fault injection on one line).
    std::shared_ptr<StandaloneLineItem> line(qint16 position) const;

private:
    std::vector<std::shared_ptr<StandaloneLineItem>> m_items;
};

}  // namespace ZebObjects
