#pragma once

#include "zebobjectscontracts_export.h"

#include <QString>

#include <memory>

namespace ZebObjects {

class LineItemComment;

// One fixture line of a submittal. Reads are cheap and have no side effects: a display reads a
// member again for every use.
class ZEBOBJECTSCONTRACTS_EXPORT LineItem {
public:
    virtual ~LineItem() = default;

    virtual bool Selected() const = 0;
    // Writing the value it already has is accepted.
    virtual void setSelected(bool selected) = 0;
    // Formatted by the object.
    virtual QString Quantity() const = 0;
    virtual QString Type() const = 0;
    virtual QString Brand() const = 0;
    virtual QString CatalogNumber() const = 0;
    virtual QString Description() const = 0;
    virtual QString Group() const = 0;
    // Made to order.
    virtual bool MTO() const = 0;
    // May be none.
    virtual std::shared_ptr<LineItemComment> Comment() const = 0;
};

}  // namespace ZebObjects
