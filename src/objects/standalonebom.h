#pragma once

#include "zebobjects_export.h"

#include "contracts/bom.h"
#include "objects/faultinjector.h"

#include <QStringList>

namespace ZebObjects {

class StandaloneTextObjects;

// In-memory bill of materials options: every flag false to begin with, and an empty remarks
// collection. Filling the remarks puts a new collection in place and raises RemarksPopulated, so
// whoever shows the remarks binds to the new one.
//
// Member names for fault injection: "IncludeQuantity", "IncludeType", "IncludeDefaultRemarks",
// "IncludeBrand", "IncludeManufacturer", "IncludeCatalogNumber", "IncludeDescription",
// "IncludeLineComments", "IncludeMTO", "IncludeGroupCodes" (each also with "=" for its write),
// "DefaultRemarks", "PopulateRemarks", "DefaultRemarks=".
class ZEBOBJECTS_EXPORT StandaloneBOM : public BOM, public FaultInjectable {
    Q_OBJECT
public:
    explicit StandaloneBOM(QObject* parent = nullptr);
    ~StandaloneBOM() override;

    bool IncludeQuantity() const override;
    void setIncludeQuantity(bool include) override;
    bool IncludeType() const override;
    void setIncludeType(bool include) override;
    bool IncludeDefaultRemarks() const override;
    void setIncludeDefaultRemarks(bool include) override;
    std::shared_ptr<TextObjects> DefaultRemarks() const override;
    bool IncludeBrand() const override;
    void setIncludeBrand(bool include) override;
    bool IncludeManufacturer() const override;
    void setIncludeManufacturer(bool include) override;
    bool IncludeCatalogNumber() const override;
    void setIncludeCatalogNumber(bool include) override;
    bool IncludeDescription() const override;
    void setIncludeDescription(bool include) override;
    bool IncludeLineComments() const override;
    void setIncludeLineComments(bool include) override;
    bool IncludeMTO() const override;
    void setIncludeMTO(bool include) override;
    bool IncludeGroupCodes() const override;
    void setIncludeGroupCodes(bool include) override;

    // Fills the remarks anew: a new collection of BOM remarks holding texts, in order, none of
    // them ticked. Raises RemarksPopulated.
    std::shared_ptr<StandaloneTextObjects> PopulateRemarks(const QStringList& texts);
    // Puts a collection of the host's in place (none is allowed). Raises RemarksPopulated.
    void setDefaultRemarks(std::shared_ptr<TextObjects> remarks);

private:
    bool m_quantity = false;
    bool m_type = false;
    bool m_defaultRemarks = false;
    bool m_brand = false;
    bool m_manufacturer = false;
    bool m_catalogNumber = false;
    bool m_description = false;
    bool m_lineComments = false;
    bool m_mto = false;
    bool m_groupCodes = false;
    std::shared_ptr<TextObjects> m_remarks;
};

}  // namespace ZebObjects
