#pragma once

#include "zebstore_export.h"

#include <QString>

#include <memory>

namespace ZebObjects {

class BOM;
class CustomerFinder;
class Customers;
class Labels;
class LineItems;
class StoreBOM;
class StoreConnection;
class StoreCustomers;
class StoreHistory;
class StoreLabels;
class StoreLineItems;
class StoreSubmittal;
class StoreTextObjects;
class Submittal;
class TextObjects;

// An open job of a store and its submittal's objects. Each object is made on first use and the
// same one handed out after that, so that every control bound to it follows its events.
class ZEBSTORE_EXPORT StoreJob {
public:
    StoreJob(std::shared_ptr<StoreConnection> db, qint64 id, qint64 submittalId);
    ~StoreJob();

    qint64 id() const { return m_id; }
    // Read from the file on each call.
    QString number() const;
    QString name() const;
    QString purchaseOrder() const;

    std::shared_ptr<StoreSubmittal> submittal();
    std::shared_ptr<StoreTextObjects> coverLetterParagraphs();
    std::shared_ptr<StoreTextObjects> coverLetterRemarks();
    std::shared_ptr<StoreBOM> bom();
    std::shared_ptr<StoreLabels> labels();
    std::shared_ptr<StoreLineItems> lineItems();
    std::shared_ptr<StoreCustomers> customers();
    // A finder over the office's customer directory.
    std::shared_ptr<CustomerFinder> customerFinder();
    // The revisions of the job's submittal that were issued, and their reviews.
    std::shared_ptr<StoreHistory> history();

private:
    std::shared_ptr<StoreTextObjects> texts(qint32 kind, std::shared_ptr<StoreTextObjects>& slot);

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
    qint64 m_submittalId;
    std::shared_ptr<StoreSubmittal> m_submittal;
    std::shared_ptr<StoreTextObjects> m_paragraphs;
    std::shared_ptr<StoreTextObjects> m_remarks;
    std::shared_ptr<StoreBOM> m_bom;
    std::shared_ptr<StoreLabels> m_labels;
    std::shared_ptr<StoreLineItems> m_lineItems;
    std::shared_ptr<StoreCustomers> m_customers;
    std::shared_ptr<CustomerFinder> m_finder;
    std::shared_ptr<StoreHistory> m_history;
};

}  // namespace ZebObjects
