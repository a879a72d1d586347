#pragma once

#include "package/packagesource.h"

#include <QHash>

#include <memory>

namespace ZebObjects {
class Store;
class StoreJob;
}

// A job of the office's store as the package generator reads it. The store keeps a customer's
// zip code and phone number in its directory, but no street, attention or purchase order, and no
// maker for a line: those print empty, and a line's maker comes from the makers the office knows
// for its brands.
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

private:
    std::shared_ptr<ZebObjects::StoreJob> m_job;
    QHash<QString, ZebPackage::PostalAddress> m_addresses;
    QHash<QString, QString> m_manufacturers;
};
