#pragma once

#include "zebobjectscontracts_export.h"

#include <QString>

namespace ZebObjects {

/// One addressee of a submittal.
class ZEBOBJECTSCONTRACTS_EXPORT Recipient {
public:
    virtual ~Recipient() = default;

    /// The addressee's name.
    virtual QString Name() const = 0;
    /// The addressee's company.
    virtual QString Company() const = 0;
};

}  // namespace ZebObjects
