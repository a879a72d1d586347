#include "directorydialog.h"

#include "contracts/failure.h"
#include "customerdialog.h"
#include "store/store.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSet>
#include <QTableWidget>
#include <QVBoxLayout>

using Data = ZebObjects::CustomerRecord;

DirectoryDialog::DirectoryDialog(std::shared_ptr<ZebObjects::Store> store, QWidget* parent)
    : QDialog(parent), m_store(std::move(store))
{
    setObjectName(QStringLiteral("dlgDirectory"));
    setWindowTitle(QStringLiteral("Customer Directory"));
    setAccessibleName(windowTitle());
    setAccessibleDescription(
        QStringLiteral("The office's customers to find, add, edit, merge and import"));
    m_find = new QLineEdit(this);
    m_find->setObjectName(QStringLiteral("txtFindCustomer"));
    m_find->setAccessibleName(QStringLiteral("Find a customer"));
    m_find->setAccessibleDescription(QStringLiteral(
        "Shows the customers whose company, contact, city or account holds what is typed"));
    m_find->setClearButtonEnabled(true);
    auto* findLabel = new QLabel(QStringLiteral("&Find:"), this);
    findLabel->setBuddy(m_find);
    m_table = new QTableWidget(0, 6, this);
    m_table->setObjectName(QStringLiteral("tblDirectory"));
    m_table->setAccessibleName(QStringLiteral("Customers"));
    m_table->setAccessibleDescription(
        QStringLiteral("The office's customers; select two to merge them"));
    m_table->setHorizontalHeaderLabels({QStringLiteral("Company"), QStringLiteral("Contact"),
                                        QStringLiteral("City"), QStringLiteral("State"),
                                        QStringLiteral("Account"), QStringLiteral("Type")});
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_nothing = new QLabel(this);
    m_nothing->setObjectName(QStringLiteral("lblNoCustomer"));
    m_nothing->setWordWrap(true);

    const auto button = [this](const char* name, const QString& caption, auto slot) {
        auto* b = new QPushButton(caption, this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        connect(b, &QPushButton::clicked, this, slot);
        return b;
    };
    auto* side = new QVBoxLayout;
    side->addWidget(button("cmdAddCustomer", QStringLiteral("&Add..."), [this] { addCustomer(); }));
    side->addWidget(
        button("cmdEditCustomer", QStringLiteral("&Edit..."), [this] { editCustomer(); }));
    side->addWidget(
        button("cmdMergeCustomers", QStringLiteral("&Merge"), [this] { mergeCustomers(); }));
    side->addWidget(button("cmdImportCustomers", QStringLiteral("&Import..."), [this] {
        if (onImport)
            onImport();
        reload();
    }));
    side->addStretch();
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    close->button(QDialogButtonBox::Close)->setObjectName(QStringLiteral("cmdClose"));
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_find, &QLineEdit::textChanged, this, [this] { filter(); });
    connect(m_table, &QTableWidget::cellDoubleClicked, this, [this] { editCustomer(); });

    auto* findRow = new QHBoxLayout;
    findRow->addWidget(findLabel);
    findRow->addWidget(m_find, 1);
    auto* middle = new QHBoxLayout;
    middle->addWidget(m_table, 1);
    middle->addLayout(side);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(findRow);
    layout->addLayout(middle, 1);
    layout->addWidget(m_nothing);
    layout->addWidget(close);
    resize(760, 440);
    reload();
}

void DirectoryDialog::failed(const QString& title, const QString& description)
{
    QMessageBox::warning(this, title, description);
}

void DirectoryDialog::reload()
{
    try {
        m_customers = m_store->directoryCustomers();
    } catch (const ZebObjects::Failure& f) {
        failed(windowTitle(), f.Description());
        return;
    }
    m_table->setRowCount(int(m_customers.size()));
    for (int r = 0; r < m_customers.size(); ++r) {
        const Data& d = m_customers[r];
        const QString cells[] = {d.name, d.attention, d.city, d.state, d.accountNumber, d.type};
        for (int c = 0; c < 6; ++c)
            m_table->setItem(r, c, new QTableWidgetItem(cells[c]));
    }
    m_table->resizeColumnsToContents();
    m_table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    filter();
}

void DirectoryDialog::filter()
{
    const QString text = m_find->text().trimmed();
    int shown = 0;
    for (int r = 0; r < m_customers.size(); ++r) {
        const Data& d = m_customers[r];
        const bool match = text.isEmpty() || d.name.contains(text, Qt::CaseInsensitive)
                           || d.attention.contains(text, Qt::CaseInsensitive)
                           || d.city.contains(text, Qt::CaseInsensitive)
                           || d.accountNumber.contains(text, Qt::CaseInsensitive);
        m_table->setRowHidden(r, !match);
        shown += match ? 1 : 0;
    }
    m_nothing->setText(
        shown == 0 && !text.isEmpty()
            ? QStringLiteral(
                  "No customer matches \"%1\". Add... makes a new customer with that name.")
                  .arg(text)
            : QString());
    m_nothing->setVisible(!m_nothing->text().isEmpty());
}

QStringList DirectoryDialog::shownKeys() const
{
    QStringList out;
    for (int r = 0; r < m_customers.size(); ++r)
        if (!m_table->isRowHidden(r))
            out.append(m_customers[r].key);
    return out;
}

QList<Data> DirectoryDialog::selected() const
{
    QList<int> rows;
    for (const QModelIndex& i : m_table->selectionModel()->selectedRows())
        if (!m_table->isRowHidden(i.row()))
            rows.append(i.row());
    std::sort(rows.begin(), rows.end());
    QList<Data> out;
    for (const int r : rows)
        out.append(m_customers[r]);
    return out;
}

void DirectoryDialog::addCustomer(const QString& name)
{
    Data d;
    // A search that found nobody offers its text as the new customer's name.
    d.name = name.isEmpty() && shownKeys().isEmpty() ? m_find->text().trimmed() : name;
    QSet<QString> keys;
    for (const Data& c : m_customers)
        keys.insert(c.key);
    int n = 1;
    while (keys.contains(QStringLiteral("C%1").arg(n)))
        ++n;
    d.key = QStringLiteral("C%1").arg(n);
    CustomerDialog dialog(QStringLiteral("New Customer"), d, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    try {
        m_store->addDirectoryCustomers({dialog.customer()});
    } catch (const ZebObjects::Failure& f) {
        failed(QStringLiteral("New Customer"), f.Description());
        return;
    }
    m_find->clear();
    reload();
}

void DirectoryDialog::editCustomer()
{
    const QList<Data> chosen = selected();
    if (chosen.isEmpty())
        return;
    CustomerDialog dialog(QStringLiteral("Edit Customer"), chosen.first(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    try {
        m_store->updateDirectoryCustomer(dialog.customer());
    } catch (const ZebObjects::Failure& f) {
        failed(QStringLiteral("Edit Customer"), f.Description());
    }
    reload();
}

void DirectoryDialog::mergeCustomers()
{
    const QList<Data> chosen = selected();
    if (chosen.size() != 2) {
        QMessageBox::information(
            this, QStringLiteral("Merge Customers"),
            QStringLiteral("Select the two entries of one customer to merge them."));
        return;
    }
    const Data& keep = chosen[0];
    const Data& drop = chosen[1];
    if (QMessageBox::question(
            this, QStringLiteral("Merge Customers"),
            QStringLiteral("Keep \"%1\" and merge \"%2\" into it?\nThe jobs that have \"%2\" "
                           "then have \"%1\"; \"%2\" leaves the directory.")
                .arg(keep.displayText, drop.displayText))
        != QMessageBox::Yes)
        return;
    try {
        m_store->mergeDirectoryCustomers(keep.key, drop.key);
    } catch (const ZebObjects::Failure& f) {
        failed(QStringLiteral("Merge Customers"), f.Description());
    }
    reload();
}
