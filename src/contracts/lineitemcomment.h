#pragma once

#include "zebobjectscontracts_export.h"

#include <QString>

namespace ZebObjects {

/// The comment attached to a line of the bill of materials.
class ZEBOBJECTSCONTRACTS_EXPORT LineItemComment {
public:
    virtual ~LineItemComment() = default;

    /// The comment's text.
    virtual QString Text() const = 0;
};

}  // namespace ZebObjects
