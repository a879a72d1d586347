#pragma once

#include "zebobjectscontracts_export.h"

#include <QObject>

#include <memory>

namespace ZebObjects {

class TextObjects;

// The bill of materials options: which columns print, and the default remarks at its bottom.
// RemarksPopulated is raised synchronously whenever DefaultRemarks has been filled anew.
class ZEBOBJECTSCONTRACTS_EXPORT BOM : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    ~BOM() override = default;

    virtual bool IncludeQuantity() const = 0;
    virtual void setIncludeQuantity(bool include) = 0;
    virtual bool IncludeType() const = 0;
    virtual void setIncludeType(bool include) = 0;
    virtual bool IncludeDefaultRemarks() const = 0;
    virtual void setIncludeDefaultRemarks(bool include) = 0;
    virtual std::shared_ptr<TextObjects> DefaultRemarks() const = 0;
    virtual bool IncludeBrand() const = 0;
    virtual void setIncludeBrand(bool include) = 0;
    virtual bool IncludeManufacturer() const = 0;
    virtual void setIncludeManufacturer(bool include) = 0;
    virtual bool IncludeCatalogNumber() const = 0;
    virtual void setIncludeCatalogNumber(bool include) = 0;
    virtual bool IncludeDescription() const = 0;
    virtual void setIncludeDescription(bool include) = 0;
    virtual bool IncludeLineComments() const = 0;
    virtual void setIncludeLineComments(bool include) = 0;
    virtual bool IncludeMTO() const = 0;
    virtual void setIncludeMTO(bool include) = 0;
    virtual bool IncludeGroupCodes() const = 0;
    virtual void setIncludeGroupCodes(bool include) = 0;

signals:
    void RemarksPopulated();
};

}  // namespace ZebObjects
