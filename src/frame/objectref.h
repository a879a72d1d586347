#pragma once

#include "contracts/failure.h"

#include <QString>

#include <memory>

namespace ZebSubCtl {

/// Raises the run time's "object reference not set" (91), as using an empty reference does.
[[noreturn]] inline void raiseObjectNotSet()
{
    throw ZebObjects::Failure(ZebObjects::ErrorNumber::ObjectNotSet, QStringLiteral("ZebSubCtl"),
                              QStringLiteral("Object variable or With block variable not set"));
}

/// The object behind a reference; an empty reference fails with 91.
template <class T>
T& objectRef(const std::shared_ptr<T>& reference)
{
    if (!reference)
        raiseObjectNotSet();
    return *reference;
}

}  // namespace ZebSubCtl
