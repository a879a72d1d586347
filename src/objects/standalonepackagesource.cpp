#include "objects/standalonepackagesource.h"

#include "contracts/lineitem.h"
#include "contracts/lineitemcomment.h"
#include "objects/customerdirectory.h"
#include "objects/sampledata.h"
#include "objects/standalonebom.h"
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
    return {
        {QStringLiteral("Varnholt"), QStringLiteral("Varnholt Lighting Works")},
        {QStringLiteral("Quenza Architectural"), QStringLiteral("Quenza Lighting Group")},
        {QStringLiteral("Lumatrex"), QStringLiteral("Lumatrex Linear Systems")},
        {QStringLiteral("Northgate Lighting"), QStringLiteral("Northgate Electric Manufacturing")},
        {QStringLiteral("Cellar & Beam"), QStringLiteral("Cellar & Beam Studio")},
        {QStringLiteral("Solace Exterior"), QStringLiteral("Solace Outdoor Lighting")},
    };
}

QHash<QString, ZebPackage::PostalAddress> StandalonePackageSource::sampleAddresses()
{
    struct Row {
        const char* key;
        const char* attention;
        const char* street;
        const char* street2;
    };
    // Zip and phone come from the directory; the directory knows no street.
    static const Row rows[] = {
        {"C1001", "Dana Whitcomb", "2210 NW Front Avenue", "Suite 300"},
        {"C1002", "Tom Okafor", "12725 SW Millikan Way", "Floor 4"},
        {"C1003", "Priya Raman", "520 SW Yamhill Street", "Suite 1100"},
        {"C1004", "Luis Navarro", "1880 Lancaster Drive NE", ""},
        {"C1005", "Grace Lindholm", "4400 NE 77th Avenue", "Building B"},
        {"C1006", "Owen Fairbanks", "1201 Third Avenue", "Suite 2400"},
        {"C1007", "Hannah Becker", "1040 NE 44th Avenue", ""},
        {"C1008", "Marcus Delgado", "2302 Pacific Avenue", ""},
        {"C1009", "Ruth Abernathy", "333 NE Burnside Road", ""},
        {"C1010", "Kevin Marsh", "1675 W 11th Avenue", ""},
        {"C1011", "Ines Carvalho", "1435 NW Flanders Street", "Studio 5"},
        {"C1012", "Paul Engstrom", "5050 NE Elam Young Parkway", ""},
        {"C1013", "Sandra Whitley", "7600 N Interstate Avenue", ""},
        {"C1014", "Victor Huang", "10900 NE 8th Street", "Suite 900"},
        {"C1015", "Amy Castellano", "8203 W Quinault Avenue", ""},
        {"C1016", "Derek Holm", "63055 Corporate Place", ""},
        {"C1017", "Naomi Fischer", "325 Ninth Avenue", "Box 359750"},
        {"C1018", "Colin Ashby", "44 W Broadway", "Suite 500"},
        {"C1019", "Teresa Vaughn", "2555 SW 17th Street", ""},
        {"C1020", "Felix Morrow", "3621 SE Division Street", ""},
        {"C1021", "Janet Sorensen", "2802 NE 65th Avenue", ""},
        {"C1022", "Ahmed Saleh", "3002 Colby Avenue", ""},
        {"C1023", "Bonnie Reyes", "2045 Washburn Way", ""},
        {"C1024", "Elin Dahl", "2200 Western Avenue", "Suite 210"},
        {"C1025", "Joseph Kimura", "1010 W Jefferson Street", ""},
        {"C1026", "Carla Jennings", "1850 N Holmes Avenue", ""},
        {"C1027", "Martin Pruitt", "820 Crater Lake Avenue", ""},
        {"C1028", "Lena Vogel", "110 First Avenue S", ""},
        {"C1029", "Sam Tillman", "140 SW Coast Highway", ""},
        {"C1030", "Olivia Grant", "1015 SE Grand Avenue", "Suite 200"},
        {"C1031", "Brandon Cole", "15912 E Marietta Avenue", ""},
        {"C1032", "Mei Lin Zhou", "945 NW Wall Street", ""},
        {"C1033", "Gary Lindstrom", "1900 12th Street", ""},
        {"C1034", "Rosa Martinez", "22443 68th Avenue S", ""},
        {"C1035", "Nathan Price", "5320 NE Martin Luther King Jr Boulevard", ""},
        {"C1036", "Wendy Harlan", "2780 NE Stephens Street", ""},
    };
    QHash<QString, ZebPackage::PostalAddress> out;
    const auto directory = SampleData::customerDirectory()->Records();
    for (const Row& row : rows) {
        ZebPackage::PostalAddress address;
        address.Attention = QString::fromLatin1(row.attention);
        address.Street = QString::fromLatin1(row.street);
        address.Street2 = QString::fromLatin1(row.street2);
        const QString key = QString::fromLatin1(row.key);
        for (const auto& record : directory) {
            if (record.key == key) {
                address.Zip = record.zip;
                address.Phone = record.phone;
            }
        }
        out.insert(key, address);
    }
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

ZebPackage::PostalAddress StandalonePackageSource::Address(const ZebObjects::Customer& customer) const
{
    check("Address");
    return m_addresses.value(customer.Key());
}

void StandalonePackageSource::setSubmittal(std::shared_ptr<ZebObjects::Submittal> submittal)
{
    m_submittal = std::move(submittal);
}

void StandalonePackageSource::setCoverLetterParagraphs(std::shared_ptr<ZebObjects::TextObjects> paragraphs)
{
    m_paragraphs = std::move(paragraphs);
}

void StandalonePackageSource::setCoverLetterRemarks(std::shared_ptr<ZebObjects::TextObjects> remarks)
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

void StandalonePackageSource::setAddress(const QString& customerKey, const ZebPackage::PostalAddress& address)
{
    m_addresses.insert(customerKey, address);
}

}  // namespace ZebObjects
