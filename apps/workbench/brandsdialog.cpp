#include "brandsdialog.h"

#include "contracts/failure.h"
#include "store/store.h"
#include "store/storebrands.h"

#include <QAbstractItemDelegate>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {
enum Column { BrandColumn, ManufacturerColumn, LinesColumn };
}

BrandsDialog::BrandsDialog(std::shared_ptr<ZebObjects::Store> store, QWidget* parent)
    : QDialog(parent), m_store(std::move(store))
{
    setObjectName(QStringLiteral("dlgBrands"));
    setWindowTitle(QStringLiteral("Brands and Manufacturers"));
    setAccessibleName(windowTitle());
    setAccessibleDescription(QStringLiteral(
        "The office's brands and the manufacturer the bill of materials prints for each"));
    m_table = new QTableWidget(0, 3, this);
    m_table->setObjectName(QStringLiteral("tblBrands"));
    m_table->setAccessibleName(QStringLiteral("Brands"));
    m_table->setAccessibleDescription(
        QStringLiteral("Each brand with its manufacturer and the number of lines that use it; "
                       "type over a brand or manufacturer to change it"));
    m_table->setHorizontalHeaderLabels(
        {QStringLiteral("Brand"), QStringLiteral("Manufacturer"), QStringLiteral("Lines")});
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                             | QAbstractItemView::AnyKeyPressed);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(BrandColumn, QHeaderView::Stretch);
    m_table->horizontalHeader()->setSectionResizeMode(ManufacturerColumn, QHeaderView::Stretch);
    m_table->horizontalHeader()->setSectionResizeMode(LinesColumn, QHeaderView::ResizeToContents);
    auto* caption = new QLabel(QStringLiteral("&Brands the office sells:"), this);
    caption->setBuddy(m_table);
    m_note = new QLabel(QStringLiteral("A brand that lines use stays until they have another "
                                       "brand. Renaming a brand renames it on every line."),
                        this);
    m_note->setObjectName(QStringLiteral("lblBrandsNote"));
    m_note->setWordWrap(true);

    auto* add = new QPushButton(QStringLiteral("&Add"), this);
    add->setObjectName(QStringLiteral("cmdAddBrand"));
    add->setAutoDefault(false);
    add->setToolTip(QStringLiteral("A new brand (Insert)"));
    connect(add, &QPushButton::clicked, this, [this] { addBrand(); });
    auto* remove = new QPushButton(QStringLiteral("&Remove"), this);
    remove->setObjectName(QStringLiteral("cmdRemoveBrand"));
    remove->setAutoDefault(false);
    remove->setToolTip(QStringLiteral("Removes the selected brand (Delete)"));
    connect(remove, &QPushButton::clicked, this, [this] { removeBrand(); });
    auto* insertKey = new QShortcut(QKeySequence(Qt::Key_Insert), m_table);
    insertKey->setContext(Qt::WidgetShortcut);
    connect(insertKey, &QShortcut::activated, this, [this] { addBrand(); });
    auto* deleteKey = new QShortcut(QKeySequence::Delete, m_table);
    deleteKey->setContext(Qt::WidgetShortcut);
    connect(deleteKey, &QShortcut::activated, this, [this] { removeBrand(); });

    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    close->button(QDialogButtonBox::Close)->setObjectName(QStringLiteral("cmdClose"));
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_table, &QTableWidget::itemChanged, this,
            [this](QTableWidgetItem* item) { cellEdited(item); });
    connect(m_table->itemDelegate(), &QAbstractItemDelegate::closeEditor, this,
            [this](QWidget*, QAbstractItemDelegate::EndEditHint hint) {
                if (hint != QAbstractItemDelegate::EditNextItem
                    && hint != QAbstractItemDelegate::EditPreviousItem)
                    editorClosed();
            });

    auto* side = new QVBoxLayout;
    side->addWidget(add);
    side->addWidget(remove);
    side->addStretch();
    auto* middle = new QHBoxLayout;
    middle->addWidget(m_table, 1);
    middle->addLayout(side);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addLayout(middle, 1);
    layout->addWidget(m_note);
    layout->addWidget(close);
    resize(620, 400);
    reload();
}

void BrandsDialog::failed(const QString& title, const QString& description)
{
    QMessageBox::warning(this, title, description);
}

QList<ZebObjects::BrandRecord> BrandsDialog::shown() const
{
    QList<ZebObjects::BrandRecord> out;
    for (int r = 0; r < m_table->rowCount(); ++r) {
        const QTableWidgetItem* brand = m_table->item(r, BrandColumn);
        const QTableWidgetItem* maker = m_table->item(r, ManufacturerColumn);
        out.append({brand ? brand->text() : QString(), maker ? maker->text() : QString()});
    }
    return out;
}

void BrandsDialog::reload()
{
    QHash<QString, qint32> lines;
    try {
        const ZebObjects::StoreBrands brands = m_store->brands();
        m_brands = brands.all();
        lines = brands.lineCounts();
    } catch (const ZebObjects::Failure& f) {
        failed(windowTitle(), f.Description());
        return;
    }
    m_filling = true;
    m_newRow = -1;
    m_table->setRowCount(int(m_brands.size()));
    for (int r = 0; r < m_brands.size(); ++r) {
        const ZebObjects::BrandRecord& b = m_brands[r];
        m_table->setItem(r, BrandColumn, new QTableWidgetItem(b.name));
        m_table->setItem(r, ManufacturerColumn, new QTableWidgetItem(b.manufacturer));
        auto* count = new QTableWidgetItem(QString::number(lines.value(b.name)));
        count->setFlags(count->flags() & ~Qt::ItemIsEditable);
        count->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        m_table->setItem(r, LinesColumn, count);
    }
    m_filling = false;
}

void BrandsDialog::addBrand()
{
    if (m_newRow >= 0) {
        m_table->setCurrentCell(m_newRow, BrandColumn);
        m_table->editItem(m_table->item(m_newRow, BrandColumn));
        return;
    }
    m_filling = true;
    m_newRow = m_table->rowCount();
    m_table->insertRow(m_newRow);
    m_table->setItem(m_newRow, BrandColumn, new QTableWidgetItem);
    m_table->setItem(m_newRow, ManufacturerColumn, new QTableWidgetItem);
    auto* count = new QTableWidgetItem(QStringLiteral("0"));
    count->setFlags(count->flags() & ~Qt::ItemIsEditable);
    count->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_table->setItem(m_newRow, LinesColumn, count);
    m_filling = false;
    m_table->setFocus();
    m_table->setCurrentCell(m_newRow, BrandColumn);
    m_table->editItem(m_table->item(m_newRow, BrandColumn));
}

void BrandsDialog::cellEdited(QTableWidgetItem* item)
{
    if (m_filling)
        return;
    const int row = item->row();
    const int column = item->column();
    const QString text = item->text().trimmed();
    ZebObjects::StoreBrands brands = m_store->brands();
    QString select;
    try {
        if (row == m_newRow) {
            // A new row is written once it has a name.
            if (column != BrandColumn || text.isEmpty())
                return;
            const QTableWidgetItem* maker = m_table->item(row, ManufacturerColumn);
            brands.add({text, maker ? maker->text() : QString()});
            select = text;
        } else if (row >= 0 && row < m_brands.size()) {
            const ZebObjects::BrandRecord& b = m_brands[row];
            if (column == BrandColumn) {
                brands.rename(b.name, text);
                select = text;
            } else if (column == ManufacturerColumn) {
                brands.setManufacturer(b.name, text);
                select = b.name;
            }
        }
    } catch (const ZebObjects::Failure& f) {
        // What the office has stays as it was; the row shows it again.
        failed(row == m_newRow ? QStringLiteral("New Brand") : windowTitle(), f.Description());
        select = row < m_brands.size() ? m_brands[row].name : QString();
    }
    // The table takes the store's order after the edit has ended.
    QMetaObject::invokeMethod(
        this,
        [this, select, column] {
            reload();
            for (int r = 0; r < m_brands.size(); ++r)
                if (m_brands[r].name == select) {
                    m_table->setCurrentCell(
                        r, column == BrandColumn && select.size() ? ManufacturerColumn : column);
                    break;
                }
        },
        Qt::QueuedConnection);
}

void BrandsDialog::editorClosed()
{
    if (m_newRow < 0)
        return;
    const QTableWidgetItem* brand = m_table->item(m_newRow, BrandColumn);
    if (brand && !brand->text().trimmed().isEmpty())
        return;
    // A new row left without a name is not a brand.
    m_table->removeRow(m_newRow);
    m_newRow = -1;
}

void BrandsDialog::removeBrand()
{
    const int row = m_table->currentRow();
    if (row < 0)
        return;
    if (row == m_newRow) {
        m_table->removeRow(m_newRow);
        m_newRow = -1;
        return;
    }
    if (row >= m_brands.size())
        return;
    try {
        m_store->brands().remove(m_brands[row].name);
    } catch (const ZebObjects::Failure& f) {
        failed(QStringLiteral("Remove Brand"), f.Description());
        return;
    }
    reload();
    if (m_table->rowCount() > 0)
        m_table->setCurrentCell(std::min(row, m_table->rowCount() - 1), BrandColumn);
}
