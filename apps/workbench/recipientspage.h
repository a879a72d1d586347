#pragma once

#include <QWidget>

#include <memory>

class QListWidget;
namespace ZebObjects {
class Store;
class StoreJob;
}  // namespace ZebObjects

// The Recipients page: who the cover letters go to, in order. Recipients come from the contacts
// of the office's customers (the job's own first) with their addresses; they can be moved up and
// down and removed. Every change is written at once.
class RecipientsPage : public QWidget {
    Q_OBJECT
public:
    RecipientsPage(std::shared_ptr<ZebObjects::Store> store,
                   std::shared_ptr<ZebObjects::StoreJob> job, QWidget* parent = nullptr);

    QListWidget* list() const { return m_list; }
    void reload();
    // Asks for a customer's contact and adds it.
    void addFromCustomers();
    void moveUp();
    void moveDown();
    void removeRecipient();

private:
    void failed(const QString& description);

    std::shared_ptr<ZebObjects::Store> m_store;
    std::shared_ptr<ZebObjects::StoreJob> m_job;
    QListWidget* m_list = nullptr;
};
