#include "storepackagesource.h"

#include "contracts/customer.h"
#include "contracts/recipient.h"
#include "contracts/lineitem.h"
#include "objects/standalonepackagesource.h"
#include "store/store.h"
#include "store/storebrands.h"
#include "store/storebom.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storelabels.h"
#include "store/storelineitems.h"
#include "store/storesubmittal.h"
#include "store/storetextobjects.h"

StorePackageSource::StorePackageSource(const ZebObjects::Store& store,
                                       std::shared_ptr<ZebObjects::StoreJob> job)
    : m_job(std::move(job)), m_office(store.letterhead()),
      m_manufacturers(store.brands().manufacturers()), m_cutSheets(store.cutSheets())
{
    for (const auto& customer : store.directoryCustomers())
        m_addresses.insert(customer.key, ZebObjects::StandalonePackageSource::addressOf(customer));
}

std::shared_ptr<ZebObjects::Submittal> StorePackageSource::Submittal() const
{
    return m_job->submittal();
}

std::shared_ptr<ZebObjects::TextObjects> StorePackageSource::CoverLetterParagraphs() const
{
    return m_job->coverLetterParagraphs();
}

std::shared_ptr<ZebObjects::TextObjects> StorePackageSource::CoverLetterRemarks() const
{
    return m_job->coverLetterRemarks();
}

std::shared_ptr<ZebObjects::BOM> StorePackageSource::BOM() const
{
    return m_job->bom();
}

std::shared_ptr<ZebObjects::Labels> StorePackageSource::Labels() const
{
    return m_job->labels();
}

std::shared_ptr<ZebObjects::LineItems> StorePackageSource::LineItems() const
{
    return m_job->lineItems();
}

std::shared_ptr<ZebObjects::Customers> StorePackageSource::Customers() const
{
    return m_job->customers();
}

QString StorePackageSource::JobName() const
{
    return m_job->name();
}

QString StorePackageSource::JobNumber() const
{
    return m_job->number();
}

QString StorePackageSource::PurchaseOrder() const
{
    return m_job->purchaseOrder();
}

QString StorePackageSource::Manufacturer(const ZebObjects::LineItem& line) const
{
    return m_manufacturers.value(line.Brand());
}

ZebPackage::PostalAddress StorePackageSource::Address(const ZebObjects::Customer& customer) const
{
    return m_addresses.value(customer.Key());
}

ZebPackage::PostalAddress StorePackageSource::Address(const ZebObjects::Recipient& recipient) const
{
    ZebPackage::PostalAddress address;
    if (const auto* stored = dynamic_cast<const ZebObjects::StoreRecipient*>(&recipient)) {
        const auto& d = stored->data();
        address.Street = d.street;
        address.Street2 = d.street2;
        address.City = d.city;
        address.State = d.state;
        address.Zip = d.zip;
        address.Phone = d.phone;
        address.Email = d.email;
    }
    return address;
}

ZebPackage::Letterhead StorePackageSource::Office() const
{
    return m_office;
}

QList<ZebPackage::CutSheet> StorePackageSource::CutSheets() const
{
    return m_cutSheets.sheetsOf(m_job->id());
}
