#pragma once

#include "rules/brandrecord.h"

#include <QDialog>

#include <memory>

class QLabel;
class QTableWidget;
class QTableWidgetItem;
namespace ZebObjects {
class Store;
}

// The office's brands and who makes each, as the bill of materials prints them: add, rename or
// give a manufacturer in place, remove a brand no line uses. Every change is written at once.
class BrandsDialog : public QDialog {
    Q_OBJECT
public:
    explicit BrandsDialog(std::shared_ptr<ZebObjects::Store> store, QWidget* parent = nullptr);

    QTableWidget* table() const { return m_table; }
    // The brands shown, in order.
    QList<ZebObjects::BrandRecord> shown() const;

    // Starts a new row and edits its brand; it is written once it has a name.
    void addBrand();
    void removeBrand();
    void reload();

private:
    void cellEdited(QTableWidgetItem* item);
    void editorClosed();
    void failed(const QString& title, const QString& description);

    std::shared_ptr<ZebObjects::Store> m_store;
    QList<ZebObjects::BrandRecord> m_brands;
    QTableWidget* m_table = nullptr;
    QLabel* m_note = nullptr;
    // The row being added, not written yet; -1 when none.
    int m_newRow = -1;
    bool m_filling = false;
};
