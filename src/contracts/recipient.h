#pragma once

#include <QString>

namespace ZebObjects {

// One addressee of a submittal.
class Recipient {
public:
    virtual ~Recipient() = default;

    virtual QString Name() const = 0;
    virtual QString Company() const = 0;
};

}  // namespace ZebObjects
