#pragma once

#include "zebobjectscontracts_export.h"

#include <QString>

namespace ZebObjects {

// One addressee of a submittal.
class ZEBOBJECTSCONTRACTS_EXPORT Recipient {
public:
    virtual ~Recipient() = default;

    virtual QString Name() const = 0;
    virtual QString Company() const = 0;
};

}  // namespace ZebObjects
