#pragma once

#include "zebstore_export.h"

#include "contracts/failure.h"

#include <QVarLengthArray>
#include <QString>
#include <QVariant>

#include <utility>

namespace ZebObjects {

// What an object last read of each value it shows, so that a write can tell whether another
// workstation changed the value in between. A write that would replace such a change with a
// different value is a conflict: nothing is written, the object remembers the value that won,
// and the writer is told. A value never read here is written as it comes.
class ZEBSTORE_EXPORT StoreLastRead {
public:
    // Remembers value as read (or written) here and answers it.
    const QVariant& remember(const QString& name, const QVariant& value);
    // True when now (what the database holds, read inside the write) is a change made elsewhere
    // since the last read here, and wanted differs from it.
    bool conflicts(const QString& name, const QVariant& now, const QVariant& wanted) const;

    // The failure for a conflict on what (as the user knows it: "IssuedBy"), naming both values.
    static Failure conflict(const QString& source, const QString& what, const QVariant& now,
                            const QVariant& wanted);
    // A write that met another workstation's change.
    static constexpr qint32 ChangedElsewhere = 3197;

private:
    // A paragraph remembers one value, a submittal a handful: a short list kept in place, so
    // that the thousands of paragraphs a list shows allocate nothing to remember their text.
    QVarLengthArray<std::pair<QString, QVariant>, 1> m_values;
};

}  // namespace ZebObjects
