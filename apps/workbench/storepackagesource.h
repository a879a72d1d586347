#pragma once

#include "contracts/packagesource.h"
#include "store/storecutsheets.h"

#include <QHash>

#include <memory>

namespace ZebObjects {
class Store;
class StoreJob;
}  // namespace ZebObjects

// A job of the office's store as the package generator reads it: a customer's address comes from
// the office's directory, a recipient's from the recipient's row, the letterhead from the
// office's settings, a line's manufacturer from the office's brands.
class StorePackageSource : public ZebPackage::PackageSource {
public:
    StorePackageSource(const ZebObjects::Store& store, std::shared_ptr<ZebObjects::StoreJob> job);

    std::shared_ptr<ZebObjects::Submittal> Submittal() const override;
    std::shared_ptr<ZebObjects::TextObjects> CoverLetterParagraphs() const override;
    std::shared_ptr<ZebObjects::TextObjects> CoverLetterRemarks() const override;
    std::shared_ptr<ZebObjects::BOM> BOM() const override;
    std::shared_ptr<ZebObjects::Labels> Labels() const override;
    std::shared_ptr<ZebObjects::LineItems> LineItems() const override;
    std::shared_ptr<ZebObjects::Customers> Customers() const override;
    QString JobName() const override;
    QString JobNumber() const override;
    QString PurchaseOrder() const override;
    QString Manufacturer(const ZebObjects::LineItem& line) const override;
    ZebPackage::PostalAddress Address(const ZebObjects::Customer& customer) const override;
    ZebPackage::PostalAddress Address(const ZebObjects::Recipient& recipient) const override;
    ZebPackage::Letterhead Office() const override;
    QList<ZebPackage::CutSheet> CutSheets() const override;

private:
    std::shared_ptr<ZebObjects::StoreJob> m_job;
    QHash<QString, ZebPackage::PostalAddress> m_addresses;
    ZebPackage::Letterhead m_office;
    QHash<QString, QString> m_manufacturers;
    ZebObjects::StoreCutSheets m_cutSheets;
};
