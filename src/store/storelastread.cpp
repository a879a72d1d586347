#include "store/storelastread.h"

namespace ZebObjects {

const QVariant& StoreLastRead::remember(const QString& name, const QVariant& value)
{
    for (auto& [known, last] : m_values)
        if (known == name)
            return last = value;
    m_values.append({name, value});
    return m_values.back().second;
}

bool StoreLastRead::conflicts(const QString& name, const QVariant& now,
                              const QVariant& wanted) const
{
    for (const auto& [known, last] : m_values)
        if (known == name)
            return last != now && now != wanted;
    return false;
}

Failure StoreLastRead::conflict(const QString& source, const QString& what, const QVariant& now,
                                const QVariant& wanted)
{
    return Failure(ChangedElsewhere, source,
                   QStringLiteral("Another workstation changed %1 to \"%2\" after it was shown "
                                  "here, so \"%3\" was not saved. The other workstation's value "
                                  "is shown now; make the change again if it still applies.")
                       .arg(what, now.toString(), wanted.toString()));
}

}  // namespace ZebObjects
