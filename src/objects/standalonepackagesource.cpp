#include "objects/standalonepackagesource.h"

#include "contracts/lineitem.h"
#include "contracts/lineitemcomment.h"
#include "contracts/recipient.h"
#include "contracts/recipients.h"
#include "contracts/submittal.h"
#include "objects/customerdirectory.h"
#include "objects/sampledata.h"
#include "objects/standalonebom.h"
#include "rules/brandrecord.h"
#include "objects/standalonecustomer.h"
#include "objects/standalonecustomers.h"
#include "objects/standalonelabels.h"
#include "objects/standalonelineitems.h"
#include "objects/standalonesubmittal.h"
#include "objects/standalonetextobjects.h"

namespace ZebObjects {

std::shared_ptr<StandalonePackageSource> StandalonePackageSource::sampleJob(qint16 lineCount)
{
    auto job = std::make_shared<StandalonePackageSource>();
    job->setSubmittal(SampleData::submittal());
    job->setCoverLetterParagraphs(SampleData::coverLetterParagraphs());
    job->setCoverLetterRemarks(SampleData::coverLetterRemarks());
    job->setBOM(SampleData::bom());
    job->setLabels(SampleData::labels());
    job->setCustomers(SampleData::customers());
    job->setJobName(SampleData::jobName());
    job->setJobNumber(QStringLiteral("PDX-26-0147"));
    job->setPurchaseOrder(QStringLiteral("RMOB-4471"));
    job->m_manufacturers = sampleManufacturers();
    job->m_addresses = sampleAddresses();
    job->m_office = sampleLetterhead();
    // A recipient's letter goes to the directory's address of the recipient's company.
    const auto directory = SampleData::customerDirectory()->Records();
    for (const auto& recipient : job->m_submittal->Recipients()->Enumerate()) {
        for (const auto& record : directory) {
            if (record.name == recipient->Company()) {
                job->setRecipientAddress(recipient->Name(), recipient->Company(),
                                         addressOf(record));
                break;
            }
        }
    }

    const auto sample = SampleData::lineItems();
    if (lineCount == sample->Count()) {
        job->setLineItems(sample);
        return job;
    }
    // Longer jobs repeat the sample's lines, each round under types of its own ("A-2").
    auto lines = std::make_shared<StandaloneLineItems>();
    const qint16 base = sample->Count();
    for (qint32 i = 0; i < lineCount; ++i) {
        const auto from = sample->line(qint16(i % base + 1));
        StandaloneLineItem::Data data;
        data.quantity = from->quantity();
        data.type = from->Type();
        if (i >= base)
            data.type += QStringLiteral("-%1").arg(i / base + 1);
        data.brand = from->Brand();
        data.catalogNumber = from->CatalogNumber();
        data.description = from->Description();
        data.group = from->Group();
        data.mto = from->MTO();
        if (const auto comment = from->Comment())
            data.comment = comment->Text();
        data.selected = from->Selected();
        lines->Add(data);
    }
    job->setLineItems(lines);
    return job;
}

QHash<QString, QString> StandalonePackageSource::sampleManufacturers()
{
    QHash<QString, QString> out;
    for (const BrandRecord& b : SampleBrands::all())
        out.insert(b.name, b.manufacturer);
    return out;
}

ZebPackage::PostalAddress StandalonePackageSource::addressOf(const StandaloneCustomer::Data& record)
{
    ZebPackage::PostalAddress address;
    address.Attention = record.attention;
    address.Street = record.street;
    address.Street2 = record.street2;
    address.City = record.city;
    address.State = record.state;
    address.Zip = record.zip;
    address.Phone = record.phone;
    address.Email = record.email;
    return address;
}

ZebPackage::Letterhead StandalonePackageSource::sampleLetterhead()
{
    ZebPackage::Letterhead office;
    office.Name = QStringLiteral("Northlight Lighting Sales");
    office.Street = QStringLiteral("1120 NW Couch Street");
    office.Street2 = QStringLiteral("Suite 450");
    office.City = QStringLiteral("Portland");
    office.State = QStringLiteral("OR");
    office.Zip = QStringLiteral("97209");
    office.Phone = QStringLiteral("(503) 555-0100");
    office.Email = QStringLiteral("submittals@northlight.example");
    office.Logo = SampleData::logo();
    return office;
}

QHash<QString, ZebPackage::PostalAddress> StandalonePackageSource::sampleAddresses()
{
    QHash<QString, ZebPackage::PostalAddress> out;
    const auto directory = SampleData::customerDirectory()->Records();
    for (const auto& record : directory)
        out.insert(record.key, addressOf(record));
    return out;
}

std::shared_ptr<ZebObjects::Submittal> StandalonePackageSource::Submittal() const
{
    check("Submittal");
    return m_submittal;
}

std::shared_ptr<ZebObjects::TextObjects> StandalonePackageSource::CoverLetterParagraphs() const
{
    check("CoverLetterParagraphs");
    return m_paragraphs;
}

std::shared_ptr<ZebObjects::TextObjects> StandalonePackageSource::CoverLetterRemarks() const
{
    check("CoverLetterRemarks");
    return m_remarks;
}

std::shared_ptr<ZebObjects::BOM> StandalonePackageSource::BOM() const
{
    check("BOM");
    return m_bom;
}

std::shared_ptr<ZebObjects::Labels> StandalonePackageSource::Labels() const
{
    check("Labels");
    return m_labels;
}

std::shared_ptr<ZebObjects::LineItems> StandalonePackageSource::LineItems() const
{
    check("LineItems");
    return m_lineItems;
}

std::shared_ptr<ZebObjects::Customers> StandalonePackageSource::Customers() const
{
    check("Customers");
    return m_customers;
}

QString StandalonePackageSource::JobName() const
{
    check("JobName");
    return m_jobName;
}

QString StandalonePackageSource::JobNumber() const
{
    check("JobNumber");
    return m_jobNumber;
}

QString StandalonePackageSource::PurchaseOrder() const
{
    check("PurchaseOrder");
    return m_purchaseOrder;
}

QString StandalonePackageSource::Manufacturer(const ZebObjects::LineItem& line) const
{
    check("Manufacturer");
    return m_manufacturers.value(line.Brand());
}

ZebPackage::PostalAddress StandalonePackageSource::Address(
    const ZebObjects::Customer& customer) const
{
    check("Address");
    return m_addresses.value(customer.Key());
}

ZebPackage::PostalAddress StandalonePackageSource::Address(
    const ZebObjects::Recipient& recipient) const
{
    check("RecipientAddress");
    return m_recipientAddresses.value(recipient.Name() + QLatin1Char('\n') + recipient.Company());
}

ZebPackage::Letterhead StandalonePackageSource::Office() const
{
    check("Office");
    return m_office;
}

void StandalonePackageSource::setRecipientAddress(const QString& name, const QString& company,
                                                  const ZebPackage::PostalAddress& address)
{
    m_recipientAddresses.insert(name + QLatin1Char('\n') + company, address);
}

void StandalonePackageSource::setOffice(const ZebPackage::Letterhead& office)
{
    m_office = office;
}

void StandalonePackageSource::setSubmittal(std::shared_ptr<ZebObjects::Submittal> submittal)
{
    m_submittal = std::move(submittal);
}

void StandalonePackageSource::setCoverLetterParagraphs(
    std::shared_ptr<ZebObjects::TextObjects> paragraphs)
{
    m_paragraphs = std::move(paragraphs);
}

void StandalonePackageSource::setCoverLetterRemarks(
    std::shared_ptr<ZebObjects::TextObjects> remarks)
{
    m_remarks = std::move(remarks);
}

void StandalonePackageSource::setBOM(std::shared_ptr<ZebObjects::BOM> bom)
{
    m_bom = std::move(bom);
}

void StandalonePackageSource::setLabels(std::shared_ptr<ZebObjects::Labels> labels)
{
    m_labels = std::move(labels);
}

void StandalonePackageSource::setLineItems(std::shared_ptr<ZebObjects::LineItems> lineItems)
{
    m_lineItems = std::move(lineItems);
}

void StandalonePackageSource::setCustomers(std::shared_ptr<ZebObjects::Customers> customers)
{
    m_customers = std::move(customers);
}

void StandalonePackageSource::setJobName(const QString& name)
{
    m_jobName = name;
}

void StandalonePackageSource::setJobNumber(const QString& number)
{
    m_jobNumber = number;
}

void StandalonePackageSource::setPurchaseOrder(const QString& number)
{
    m_purchaseOrder = number;
}

void StandalonePackageSource::setManufacturer(const QString& brand, const QString& manufacturer)
{
    m_manufacturers.insert(brand, manufacturer);
}

void StandalonePackageSource::setAddress(const QString& customerKey,
                                         const ZebPackage::PostalAddress& address)
{
    m_addresses.insert(customerKey, address);
}

}  // namespace ZebObjects
