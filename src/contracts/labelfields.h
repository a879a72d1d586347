#pragma once

#include "zebobjectscontracts_export.h"

#include "contracts/labelfield.h"

#include <QList>
#include <QString>

#include <memory>

namespace ZebObjects {

using LabelFieldList = QList<std::shared_ptr<LabelField>>;

/// The fields a label definition offers, keyed by LabelField::Key.
class ZEBOBJECTSCONTRACTS_EXPORT LabelFields {
public:
    virtual ~LabelFields() = default;

    /// Look-up by key; a key not in the collection fails, it never answers an empty field.
    virtual std::shared_ptr<LabelField> Item(const QString& key) const = 0;
    /// The number of fields offered.
    virtual qint16 Count() const = 0;
    /// The fields in a stable order in which the included ones come in print order (a snapshot).
    virtual LabelFieldList Enumerate() const = 0;
};

}  // namespace ZebObjects
