#pragma once

#include "zebobjectsrules_export.h"

#include "rules/customerrecord.h"

#include <QList>

#include <functional>
#include <optional>

namespace ZebObjects {

// The host's part in an interactive customer search: which of several matches the user takes,
// and telling the user that nobody matched. The business objects never open a window of their
// own; a finder asks the host through these. Without a chooser an interactive search that
// matches several customers settles on nobody, as an unattended one does.
class ZEBOBJECTSRULES_EXPORT CustomerChoice {
public:
    // Answers the position of the chosen customer in matches, or -1 when the user chose none.
    using Chooser = std::function<qsizetype(const QList<CustomerRecord>& matches)>;
    using NothingFound = std::function<void()>;
    // Offers the user a new customer named as typed; answers the customer to add to the
    // directory (its key may be empty: the directory gives one), or nothing when declined.
    using NewCustomer = std::function<std::optional<CustomerRecord>(const QString& typed)>;

    // An empty function takes the host's part away again.
    static void setChooser(Chooser chooser);
    static bool hasChooser();
    static void setNothingFound(NothingFound tell);
    static void setNewCustomer(NewCustomer offer);
    // Whether an interactive search by name that matches nobody is offered to the host as a new
    // customer (the offer then says that nobody matched, in place of NothingFound).
    static bool offersNewCustomer();
    // Asks the host; nothing without an offer, or when the user declines.
    static std::optional<CustomerRecord> offerNewCustomer(const QString& typed);

    // What a search ends with, given its matches: one settles on it; several go to the chooser
    // when the search is interactive, and settle on nobody otherwise; none is told to the host
    // when the search is interactive. Answers the position settled on, or -1.
    static qsizetype settle(const QList<CustomerRecord>& matches, bool interactive);
};

}  // namespace ZebObjects
