#include "store/storelastread.h"

namespace ZebObjects {

const QVariant& StoreLastRead::remember(const QString& name, const QVariant& value)
{
    return *m_values.insert(name, value);
}

bool StoreLastRead::conflicts(const QString& name, const QVariant& now,
                              const QVariant& wanted) const
{
    const auto it = m_values.constFind(name);
    if (it == m_values.constEnd())
        return false;
    return *it != now && now != wanted;
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
