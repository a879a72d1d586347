#include "store/storejob.h"

#include "rules/textkind.h"
#include "store/storeapplicationservices.h"
#include "store/storebom.h"
#include "store/storeconnection.h"
#include "store/storecustomers.h"
#include "store/storehistory.h"
#include "store/storelabels.h"
#include "store/storelineitems.h"
#include "store/storesubmittal.h"
#include "store/storetextobjects.h"

namespace ZebObjects {

StoreJob::StoreJob(std::shared_ptr<StoreConnection> db, qint64 id, qint64 submittalId)
    : m_db(std::move(db)), m_id(id), m_submittalId(submittalId)
{ }

StoreJob::~StoreJob() = default;

QString StoreJob::number() const
{
    return m_db->value(QStringLiteral("SELECT number FROM jobs WHERE id = ?"), {m_id}).toString();
}

QString StoreJob::purchaseOrder() const
{
    return m_db->value(QStringLiteral("SELECT purchase_order FROM jobs WHERE id = ?"), {m_id})
        .toString();
}

QString StoreJob::name() const
{
    return m_db->value(QStringLiteral("SELECT name FROM jobs WHERE id = ?"), {m_id}).toString();
}

std::shared_ptr<StoreSubmittal> StoreJob::submittal()
{
    if (!m_submittal)
        m_submittal = std::make_shared<StoreSubmittal>(m_db, m_submittalId);
    return m_submittal;
}

std::shared_ptr<StoreTextObjects> StoreJob::texts(qint32 kind,
                                                  std::shared_ptr<StoreTextObjects>& slot)
{
    if (!slot) {
        const QString find = QStringLiteral("SELECT id FROM text_collections WHERE submittal_id "
                                            "= ? AND kind = ? ORDER BY id LIMIT 1");
        // Only read when it is there: a reader never waits for another writer.
        QVariant found = m_db->value(find, {m_submittalId, kind});
        // Made here when a job of an older file has none of this kind yet.
        const qint64 id = found.isValid() ? found.toLongLong() : m_db->write([&] {
            // Asked again under the write lock: another program may have made it meanwhile.
            found = m_db->value(find, {m_submittalId, kind});
            if (found.isValid())
                return found.toLongLong();
            return m_db->insert(QStringLiteral("INSERT INTO text_collections (submittal_id, "
                                               "kind, text_type) VALUES (?, ?, ?)"),
                                {m_submittalId, kind, kind});
        });
        slot = std::make_shared<StoreTextObjects>(m_db, id);
    }
    return slot;
}

std::shared_ptr<StoreTextObjects> StoreJob::coverLetterParagraphs()
{
    return texts(TextKind::CoverLetterParagraph, m_paragraphs);
}

std::shared_ptr<StoreTextObjects> StoreJob::coverLetterRemarks()
{
    return texts(TextKind::CoverLetterRemark, m_remarks);
}

std::shared_ptr<StoreBOM> StoreJob::bom()
{
    if (!m_bom)
        m_bom = std::make_shared<StoreBOM>(m_db, m_submittalId);
    return m_bom;
}

std::shared_ptr<StoreLabels> StoreJob::labels()
{
    if (!m_labels)
        m_labels = std::make_shared<StoreLabels>(m_db, m_submittalId);
    return m_labels;
}

std::shared_ptr<StoreLineItems> StoreJob::lineItems()
{
    if (!m_lineItems)
        m_lineItems = std::make_shared<StoreLineItems>(m_db, m_submittalId);
    return m_lineItems;
}

std::shared_ptr<StoreCustomers> StoreJob::customers()
{
    if (!m_customers)
        m_customers = std::make_shared<StoreCustomers>(m_db, m_submittalId);
    return m_customers;
}

std::shared_ptr<CustomerFinder> StoreJob::customerFinder()
{
    if (!m_finder)
        m_finder = std::make_shared<StoreCustomerFinder>(m_db);
    return m_finder;
}

std::shared_ptr<StoreHistory> StoreJob::history()
{
    if (!m_history)
        m_history = std::make_shared<StoreHistory>(m_db, m_id);
    return m_history;
}

}  // namespace ZebObjects
