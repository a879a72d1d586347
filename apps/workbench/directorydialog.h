#pragma once

#include "rules/customerrecord.h"

#include <QDialog>
#include <functional>
#include <memory>

class QLabel;
class QLineEdit;
class QTableWidget;
namespace ZebObjects {
class Store;
}

// The office's customer directory: find, add, edit, merge two entries of one customer, import
// from a CSV file. Every change is written at once.
class DirectoryDialog : public QDialog {
    Q_OBJECT
public:
    DirectoryDialog(std::shared_ptr<ZebObjects::Store> store, QWidget* parent = nullptr);

    QTableWidget* table() const { return m_table; }
    // Keys of the rows shown, in order.
    QStringList shownKeys() const;

    void addCustomer(const QString& name = {});
    void editCustomer();
    // Merges the second selected row into the first.
    void mergeCustomers();
    // Runs the import of a CSV file (the workstation's, with its preview).
    std::function<void()> onImport;
    void reload();

private:
    void filter();
    QList<ZebObjects::CustomerRecord> selected() const;
    void failed(const QString& title, const QString& description);

    std::shared_ptr<ZebObjects::Store> m_store;
    QList<ZebObjects::CustomerRecord> m_customers;
    QTableWidget* m_table = nullptr;
    QLineEdit* m_find = nullptr;
    QLabel* m_nothing = nullptr;
};
