#include "storepackagesource.h"

#include "contracts/customer.h"
#include "contracts/lineitem.h"
#include "objects/standalonepackagesource.h"
#include "store/store.h"
#include "store/storebom.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storelabels.h"
#include "store/storelineitems.h"
#include "store/storesubmittal.h"
#include "store/storetextobjects.h"

StorePackageSource::StorePackageSource(const ZebObjects::Store& store,
                                       std::shared_ptr<ZebObjects::StoreJob> job)
    : m_job(std::move(job)),
      m_manufacturers(ZebObjects::StandalonePackageSource::sampleManufacturers())
{
    for (const auto& customer : store.directoryCustomers()) {
        ZebPackage::PostalAddress address;
        address.Zip = customer.zip;
        address.Phone = customer.phone;
        m_addresses.insert(customer.key, address);
    }
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
    return {};
}

QString StorePackageSource::Manufacturer(const ZebObjects::LineItem& line) const
{
    return m_manufacturers.value(line.Brand());
}

ZebPackage::PostalAddress StorePackageSource::Address(const ZebObjects::Customer& customer) const
{
    return m_addresses.value(customer.Key());
}
