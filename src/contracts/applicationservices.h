#pragma once

#include "zebobjectscontracts_export.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace ZebObjects {

class CustomerFinder;
class CustomerSearchContext;

/// The process-wide application object a host provides: the text rule, the issuers, the customer
/// search. Install it with Runtime::setApplicationServices() before the first control needs it.
class ZEBOBJECTSCONTRACTS_EXPORT ApplicationServices {
public:
    virtual ~ApplicationServices() = default;

    /// True when the text held characters the documents cannot print; the text has then been
    /// rewritten in place. False, with the text untouched, otherwise.
    virtual bool ReformatText(QString& text) = 0;
    /// The names a submittal may be issued by, in display order.
    virtual QStringList IssuedByNames() const = 0;
    /// The search context of the current user, handed to the customer finder unchanged.
    virtual std::shared_ptr<CustomerSearchContext> SearchContext() const = 0;
    /// A new customer finder; a panel creates one on first use and keeps it.
    virtual std::shared_ptr<CustomerFinder> CreateCustomerFinder() = 0;
};

}  // namespace ZebObjects
