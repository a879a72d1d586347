#pragma once

#include "zebstore_export.h"

#include "contracts/bom.h"

#include <QStringList>

namespace ZebObjects {

class StoreConnection;
class StoreTextObjects;

// The bill of materials options of a submittal in a store. Filling the default remarks anew
// puts a new collection in place, committed with its texts, then raises RemarksPopulated.
class ZEBSTORE_EXPORT StoreBOM : public BOM {
    Q_OBJECT
public:
    StoreBOM(std::shared_ptr<StoreConnection> db, qint64 submittalId, QObject* parent = nullptr);
    ~StoreBOM() override;

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

    // Fills the remarks anew: a new collection holding texts, in order, none ticked.
    std::shared_ptr<TextObjects> PopulateRemarks(const QStringList& texts);

private:
    QVariant column(const char* name) const;
    void setFlag(const char* name, bool value);

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
    // The collection handed out last, so that every caller shares its events.
    mutable std::shared_ptr<StoreTextObjects> m_remarks;
};

}  // namespace ZebObjects
