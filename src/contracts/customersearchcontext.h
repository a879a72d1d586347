#pragma once

#include "zebobjectscontracts_export.h"

#include <QVariant>

namespace ZebObjects {

/// Who is searching: the customer finder narrows or orders its answers by it. Callers hand the
/// value on unchanged.
class ZEBOBJECTSCONTRACTS_EXPORT CustomerSearchContext {
public:
    virtual ~CustomerSearchContext() = default;

    /// The context's value, handed to CustomerFinder::Search() unchanged.
    virtual QVariant Value() const = 0;
};

}  // namespace ZebObjects
