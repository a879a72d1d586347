#pragma once

#include "zebobjectscontracts_export.h"

#include "contracts/recipient.h"

#include <QList>

#include <memory>

namespace ZebObjects {

using RecipientList = QList<std::shared_ptr<Recipient>>;

/// The addressees of a submittal, in display order.
class ZEBOBJECTSCONTRACTS_EXPORT Recipients {
public:
    virtual ~Recipients() = default;

    /// The number of recipients.
    virtual qint16 Count() const = 0;
    /// Look-up by 1-based position; a position out of range fails.
    virtual std::shared_ptr<Recipient> Item(qint16 position) const = 0;
    /// The recipients in display order (a snapshot).
    virtual RecipientList Enumerate() const = 0;
};

}  // namespace ZebObjects
