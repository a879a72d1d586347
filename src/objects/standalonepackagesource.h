#pragma once

#include "zebobjects_export.h"

#include "objects/faultinjector.h"
#include "objects/standalonecustomer.h"
#include "contracts/packagesource.h"

#include <QHash>

namespace ZebObjects {

class StandaloneBOM;
class StandaloneCustomers;
class StandaloneLabels;
class StandaloneLineItems;
class StandaloneSubmittal;
class StandaloneTextObjects;

// One job of the stand-alone library, as the package generator reads it: the objects it is
// given, a manufacturer for each brand and a postal address for each customer key.
// Member names for fault injection: "Submittal", "CoverLetterParagraphs", "CoverLetterRemarks",
// "BOM", "Labels", "LineItems", "Customers", "JobName", "JobNumber", "PurchaseOrder",
// "Manufacturer", "Address", "RecipientAddress", "Office".
class ZEBOBJECTS_EXPORT StandalonePackageSource : public ZebPackage::PackageSource,
                                                  public FaultInjectable {
public:
    // The sample job with every object of SampleData, and lineCount lines: the sample's twenty,
    // repeated under new types when more are asked for (at most 32,767).
    static std::shared_ptr<StandalonePackageSource> sampleJob(qint16 lineCount = 20);
    // Every customer of the sample directory's postal address, by customer key.
    static QHash<QString, ZebPackage::PostalAddress> sampleAddresses();
    // A directory record's postal address.
    static ZebPackage::PostalAddress addressOf(const StandaloneCustomer::Data& record);
    // The sample sales office's letterhead, its logo included.
    static ZebPackage::Letterhead sampleLetterhead();
    // The makers of the sample lines' brands.
    static QHash<QString, QString> sampleManufacturers();

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
    // The maker of the line's brand; empty for a brand no maker is known for.
    QString Manufacturer(const ZebObjects::LineItem& line) const override;
    // The address kept under the customer's key; empty for an unknown customer.
    ZebPackage::PostalAddress Address(const ZebObjects::Customer& customer) const override;
    // The address kept for the recipient's name and company; empty when none is kept.
    // Fault name "RecipientAddress".
    ZebPackage::PostalAddress Address(const ZebObjects::Recipient& recipient) const override;
    ZebPackage::Letterhead Office() const override;

    void setSubmittal(std::shared_ptr<ZebObjects::Submittal> submittal);
    void setCoverLetterParagraphs(std::shared_ptr<ZebObjects::TextObjects> paragraphs);
    void setCoverLetterRemarks(std::shared_ptr<ZebObjects::TextObjects> remarks);
    void setBOM(std::shared_ptr<ZebObjects::BOM> bom);
    void setLabels(std::shared_ptr<ZebObjects::Labels> labels);
    void setLineItems(std::shared_ptr<ZebObjects::LineItems> lineItems);
    void setCustomers(std::shared_ptr<ZebObjects::Customers> customers);
    void setJobName(const QString& name);
    void setJobNumber(const QString& number);
    void setPurchaseOrder(const QString& number);
    void setManufacturer(const QString& brand, const QString& manufacturer);
    void setAddress(const QString& customerKey, const ZebPackage::PostalAddress& address);
    void setRecipientAddress(const QString& name, const QString& company,
                             const ZebPackage::PostalAddress& address);
    void setOffice(const ZebPackage::Letterhead& office);
    QList<ZebPackage::CutSheet> CutSheets() const override { return m_cutSheets; }
    void setCutSheets(const QList<ZebPackage::CutSheet>& sheets) { m_cutSheets = sheets; }

private:
    std::shared_ptr<ZebObjects::Submittal> m_submittal;
    std::shared_ptr<ZebObjects::TextObjects> m_paragraphs;
    std::shared_ptr<ZebObjects::TextObjects> m_remarks;
    std::shared_ptr<ZebObjects::BOM> m_bom;
    std::shared_ptr<ZebObjects::Labels> m_labels;
    std::shared_ptr<ZebObjects::LineItems> m_lineItems;
    std::shared_ptr<ZebObjects::Customers> m_customers;
    QString m_jobName;
    QString m_jobNumber;
    QString m_purchaseOrder;
    QHash<QString, QString> m_manufacturers;
    QHash<QString, ZebPackage::PostalAddress> m_addresses;
    QHash<QString, ZebPackage::PostalAddress> m_recipientAddresses;
    QList<ZebPackage::CutSheet> m_cutSheets;
    ZebPackage::Letterhead m_office;
};

}  // namespace ZebObjects
