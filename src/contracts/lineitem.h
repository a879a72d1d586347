#pragma once

#include "zebobjectscontracts_export.h"

#include <QString>

#include <memory>

namespace ZebObjects {

class LineItemComment;

/// One fixture line of a submittal. Reads are cheap and have no side effects: a display reads a
/// member again for every use.
class ZEBOBJECTSCONTRACTS_EXPORT LineItem {
public:
    virtual ~LineItem() = default;

    /// Whether the line prints in the bill of materials.
    virtual bool Selected() const = 0;
    /// Writing the value it already has is accepted.
    virtual void setSelected(bool selected) = 0;
    /// Formatted by the object.
    virtual QString Quantity() const = 0;
    /// The fixture type of the line.
    virtual QString Type() const = 0;
    /// The brand of the fixture.
    virtual QString Brand() const = 0;
    /// The manufacturer's catalog number.
    virtual QString CatalogNumber() const = 0;
    /// The fixture's description.
    virtual QString Description() const = 0;
    /// The group code of the line.
    virtual QString Group() const = 0;
    /// Made to order.
    virtual bool MTO() const = 0;
    /// May be none.
    virtual std::shared_ptr<LineItemComment> Comment() const = 0;
};

}  // namespace ZebObjects
