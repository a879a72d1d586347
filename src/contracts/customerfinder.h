#pragma once

#include "zebobjectscontracts_export.h"

#include <QString>
#include <QVariant>

#include <memory>

namespace ZebObjects {

class CustomerSearchResult;

/// Searches the customer directory and, where needed, lets the user choose among the matches.
///
/// Options:
///   includeInactive      also customers whose accounts are closed
///   interactive          with several matches, the user chooses one in the finder's own dialog;
///                        without it, several matches settle on nobody
///   exactName            the keyword must be the whole name, not a part of it
///   matchAny             a customer matches when any given criterion does, not only when all do
///   sortByAccountNumber  matches in account number order instead of name order
/// Criteria (an empty text and a zero maximum do not restrict the search; with none given at
/// all nothing matches):
///   keyword              part of the name, ignoring case
///   accountNumber        the whole account number, exactly
///   city, state, type, category
///                        the whole value, ignoring case
///   zip                  the leading part of the postal code
///   phone                digits contained in the phone number's digits
///   maximumResults       at most this many matches are offered (negative fails)
/// context is the value of ApplicationServices::SearchContext(), handed on unchanged.
class ZEBOBJECTSCONTRACTS_EXPORT CustomerFinder {
public:
    virtual ~CustomerFinder() = default;

    /// Answers nothing when no customer was settled on (no match, or the user chose none).
    virtual std::shared_ptr<CustomerSearchResult> Search(
        bool includeInactive, bool interactive, bool exactName, bool matchAny,
        bool sortByAccountNumber, const QVariant& context, const QString& keyword,
        const QString& accountNumber, const QString& city, const QString& state, const QString& zip,
        const QString& phone, const QString& type, const QString& category,
        qint32 maximumResults) = 0;
};

}  // namespace ZebObjects
