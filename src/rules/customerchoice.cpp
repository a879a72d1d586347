#include "rules/customerchoice.h"

namespace ZebObjects {

namespace {
// Set by the host on its user-interface thread, as every search runs there.
struct Hooks {
    CustomerChoice::Chooser chooser;
    CustomerChoice::NothingFound nothingFound;
    CustomerChoice::NewCustomer newCustomer;
};

Hooks& hooks()
{
    static Hooks h;
    return h;
}
}  // namespace

void CustomerChoice::setChooser(Chooser chooser)
{
    hooks().chooser = std::move(chooser);
}

bool CustomerChoice::hasChooser()
{
    return bool(hooks().chooser);
}

void CustomerChoice::setNothingFound(NothingFound tell)
{
    hooks().nothingFound = std::move(tell);
}

void CustomerChoice::setNewCustomer(NewCustomer offer)
{
    hooks().newCustomer = std::move(offer);
}

bool CustomerChoice::offersNewCustomer()
{
    return bool(hooks().newCustomer);
}

std::optional<CustomerRecord> CustomerChoice::offerNewCustomer(const QString& typed)
{
    // A copy: the offer may put another in place while it runs.
    const auto offer = hooks().newCustomer;
    if (!offer)
        return std::nullopt;
    return offer(typed);
}

qsizetype CustomerChoice::settle(const QList<CustomerRecord>& matches, bool interactive)
{
    if (matches.size() == 1)
        return 0;
    if (!interactive)
        return -1;
    if (matches.isEmpty()) {
        if (const auto tell = hooks().nothingFound)
            tell();
        return -1;
    }
    // A copy: the chooser may put another chooser in place while it runs.
    const auto choose = hooks().chooser;
    if (!choose)
        return -1;
    const qsizetype chosen = choose(matches);
    return chosen >= 0 && chosen < matches.size() ? chosen : -1;
}

}  // namespace ZebObjects
