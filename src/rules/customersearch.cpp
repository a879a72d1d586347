#include "rules/customersearch.h"

#include "contracts/failure.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace ZebObjects {

namespace {

const QString kSource = QStringLiteral("ZebObjects.CustomerDirectory");

QString digits(const QString& text)
{
    QString out;
    for (const QChar c : text)
        if (c.isDigit())
            out.append(c);
    return out;
}

bool sameText(const QString& a, const QString& b)
{
    return QString::compare(a, b, Qt::CaseInsensitive) == 0;
}

}  // namespace

QList<CustomerRecord> CustomerSearch::match(const QList<CustomerRecord>& records,
                                            const CustomerQuery& query)
{
    if (query.maximumResults < 0)
        throw Failure(ErrorNumber::InvalidProcedureCall, kSource,
                      QStringLiteral("Invalid procedure call or argument: at most %1 results")
                          .arg(query.maximumResults));

    using Test = std::function<bool(const CustomerRecord&)>;
    std::vector<Test> tests;
    const QString keyword = query.keyword.trimmed();
    if (!keyword.isEmpty()) {
        if (query.exactName)
            tests.push_back([keyword](const auto& r) { return sameText(r.name, keyword); });
        else
            tests.push_back(
                [keyword](const auto& r) { return r.name.contains(keyword, Qt::CaseInsensitive); });
    }
    const QString account = query.accountNumber.trimmed();
    if (!account.isEmpty())
        tests.push_back([account](const auto& r) { return r.accountNumber == account; });
    const auto whole = [&](const QString& criterion, QString CustomerRecord::*field) {
        const QString value = criterion.trimmed();
        if (!value.isEmpty())
            tests.push_back([value, field](const auto& r) { return sameText(r.*field, value); });
    };
    whole(query.city, &CustomerRecord::city);
    whole(query.state, &CustomerRecord::state);
    whole(query.type, &CustomerRecord::type);
    whole(query.category, &CustomerRecord::category);
    const QString zip = query.zip.trimmed();
    if (!zip.isEmpty())
        tests.push_back(
            [zip](const auto& r) { return r.zip.startsWith(zip, Qt::CaseInsensitive); });
    if (!query.phone.trimmed().isEmpty()) {
        const QString wanted = digits(query.phone);
        tests.push_back([wanted](const auto& r) {
            return !wanted.isEmpty() && digits(r.phone).contains(wanted);
        });
    }
    if (tests.empty())
        return {};

    QList<CustomerRecord> matches;
    for (const auto& record : records) {
        if (!record.active && !query.includeInactive)
            continue;
        const auto pass = [&](const Test& t) { return t(record); };
        if (query.matchAny ? std::any_of(tests.begin(), tests.end(), pass)
                           : std::all_of(tests.begin(), tests.end(), pass))
            matches.append(record);
    }

    const auto byName = [](const auto& a, const auto& b) {
        return QString::compare(a.name, b.name, Qt::CaseInsensitive) < 0;
    };
    const auto byAccount = [](const auto& a, const auto& b) {
        return a.accountNumber < b.accountNumber;
    };
    if (query.sortByAccountNumber)
        std::stable_sort(matches.begin(), matches.end(), [&](const auto& a, const auto& b) {
            return byAccount(a, b) || (!byAccount(b, a) && byName(a, b));
        });
    else
        std::stable_sort(matches.begin(), matches.end(), [&](const auto& a, const auto& b) {
            return byName(a, b) || (!byName(b, a) && byAccount(a, b));
        });
    if (query.maximumResults > 0 && matches.size() > query.maximumResults)
        matches.resize(query.maximumResults);
    return matches;
}

}  // namespace ZebObjects
