#pragma once

#include "zebobjectscontracts_export.h"

#include "contracts/lineitem.h"

#include <QList>

#include <memory>

namespace ZebObjects {

using LineItemList = QList<std::shared_ptr<LineItem>>;

/// The lines of a submittal in display order; the n-th line is line number n.
class ZEBOBJECTSCONTRACTS_EXPORT LineItems {
public:
    virtual ~LineItems() = default;

    /// Always the number of items Enumerate yields.
    virtual qint16 Count() const = 0;
    /// Look-up by 1-based position; a position out of range fails.
    virtual std::shared_ptr<LineItem> Item(qint16 position) const = 0;
    /// The items in display order (a snapshot).
    virtual LineItemList Enumerate() const = 0;
};

}  // namespace ZebObjects
