#pragma once

#include "zebobjectscontracts_export.h"

#include <QObject>

#include <memory>

namespace ZebObjects {

class TextObjects;

/// The bill of materials options: which columns print, and the default remarks at its bottom.
/// RemarksPopulated is raised synchronously whenever DefaultRemarks has been filled anew. Bound to
/// ctlBOMCriteria.
class ZEBOBJECTSCONTRACTS_EXPORT BOM : public QObject {
    Q_OBJECT
public:
    /// Constructs the object with Qt's parent, as QObject does.
    using QObject::QObject;
    ~BOM() override = default;

    /// Whether the quantity column prints.
    virtual bool IncludeQuantity() const = 0;
    /// Sets whether the quantity column prints.
    virtual void setIncludeQuantity(bool include) = 0;
    /// Whether the fixture type column prints.
    virtual bool IncludeType() const = 0;
    /// Sets whether the fixture type column prints.
    virtual void setIncludeType(bool include) = 0;
    /// Whether the default remarks print below the bill of materials.
    virtual bool IncludeDefaultRemarks() const = 0;
    /// Sets whether the default remarks print; an implementation may fill DefaultRemarks anew and
    /// raise RemarksPopulated.
    virtual void setIncludeDefaultRemarks(bool include) = 0;
    /// The remarks offered below the bill of materials; may be none until they are included.
    virtual std::shared_ptr<TextObjects> DefaultRemarks() const = 0;
    /// Whether the brand column prints.
    virtual bool IncludeBrand() const = 0;
    /// Sets whether the brand column prints.
    virtual void setIncludeBrand(bool include) = 0;
    /// Whether the manufacturer column prints.
    virtual bool IncludeManufacturer() const = 0;
    /// Sets whether the manufacturer column prints.
    virtual void setIncludeManufacturer(bool include) = 0;
    /// Whether the catalog number column prints.
    virtual bool IncludeCatalogNumber() const = 0;
    /// Sets whether the catalog number column prints.
    virtual void setIncludeCatalogNumber(bool include) = 0;
    /// Whether the description column prints.
    virtual bool IncludeDescription() const = 0;
    /// Sets whether the description column prints.
    virtual void setIncludeDescription(bool include) = 0;
    /// Whether each line's comment prints under it.
    virtual bool IncludeLineComments() const = 0;
    /// Sets whether each line's comment prints under it.
    virtual void setIncludeLineComments(bool include) = 0;
    /// Whether the made-to-order mark prints.
    virtual bool IncludeMTO() const = 0;
    /// Sets whether the made-to-order mark prints.
    virtual void setIncludeMTO(bool include) = 0;
    /// Whether the group codes print.
    virtual bool IncludeGroupCodes() const = 0;
    /// Sets whether the group codes print.
    virtual void setIncludeGroupCodes(bool include) = 0;

signals:
    /// Raised synchronously after DefaultRemarks has been filled anew; a bound ctlBOMCriteria binds
    /// its remark list again.
    void RemarksPopulated();
};

}  // namespace ZebObjects
