#include "recipientspage.h"

#include "contracts/customer.h"
#include "contracts/customers.h"
#include "contracts/failure.h"
#include "store/store.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storesubmittal.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>

using Data = ZebObjects::CustomerRecord;

namespace {
QString addressLine(const QString& city, const QString& state, const QString& zip)
{
    QString out = city;
    if (!state.isEmpty())
        out += (out.isEmpty() ? QString() : QStringLiteral(", ")) + state;
    if (!zip.isEmpty())
        out += QLatin1Char(' ') + zip;
    return out;
}

// The directory's customers with a contact, the open job's customers first.
QList<Data> contacts(ZebObjects::Store& store, ZebObjects::StoreJob& job)
{
    QSet<QString> jobKeys;
    const auto customers = job.customers();
    for (const auto& c : customers->Enumerate())
        jobKeys.insert(c->Key());
    QList<Data> first;
    QList<Data> rest;
    for (const Data& d : store.directoryCustomers()) {
        if (d.attention.isEmpty())
            continue;
        (jobKeys.contains(d.key) ? first : rest).append(d);
    }
    return first + rest;
}
}  // namespace

RecipientsPage::RecipientsPage(std::shared_ptr<ZebObjects::Store> store,
                               std::shared_ptr<ZebObjects::StoreJob> job, QWidget* parent)
    : QWidget(parent), m_store(std::move(store)), m_job(std::move(job))
{
    setObjectName(QStringLiteral("pagRecipients"));
    setAccessibleName(QStringLiteral("Recipients"));
    setAccessibleDescription(QStringLiteral("Who the cover letters go to, in order"));
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("lstRecipients"));
    m_list->setAccessibleName(QStringLiteral("Recipients"));
    m_list->setAccessibleDescription(
        QStringLiteral("The people the cover letters go to, in the order they print"));
    auto* caption = new QLabel(QStringLiteral("&Cover letters go to:"), this);
    caption->setBuddy(m_list);
    const auto button = [this](const char* name, const QString& caption, const QString& description,
                               auto slot) {
        auto* b = new QPushButton(caption, this);
        b->setObjectName(QLatin1String(name));
        b->setAccessibleDescription(description);
        connect(b, &QPushButton::clicked, this, slot);
        return b;
    };
    auto* side = new QVBoxLayout;
    side->addWidget(
        button("cmdAddRecipient", QStringLiteral("&Add from Customers..."),
               QStringLiteral("Adds a contact of a customer, with the customer's address"),
               [this] { addFromCustomers(); }));
    side->addWidget(button("cmdRecipientUp", QStringLiteral("Move &Up"),
                           QStringLiteral("Moves the recipient up"), [this] { moveUp(); }));
    side->addWidget(button("cmdRecipientDown", QStringLiteral("Move &Down"),
                           QStringLiteral("Moves the recipient down"), [this] { moveDown(); }));
    side->addWidget(button("cmdRemoveRecipient", QStringLiteral("&Remove"),
                           QStringLiteral("Removes the recipient"), [this] { removeRecipient(); }));
    side->addStretch();
    auto* row = new QHBoxLayout;
    row->addWidget(m_list, 1);
    row->addLayout(side);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addLayout(row, 1);
    reload();
}

void RecipientsPage::failed(const QString& description)
{
    QMessageBox::warning(this, QStringLiteral("Recipients"), description);
}

void RecipientsPage::reload()
{
    const int current = m_list->currentRow();
    m_list->clear();
    try {
        for (const auto& r : m_job->submittal()->Recipients()->Enumerate()) {
            const auto& d = static_cast<const ZebObjects::StoreRecipient&>(*r).data();
            const QString where = addressLine(d.city, d.state, d.zip);
            m_list->addItem(where.isEmpty()
                                ? QStringLiteral("%1, %2").arg(d.name, d.company)
                                : QStringLiteral("%1, %2 - %3").arg(d.name, d.company, where));
        }
    } catch (const ZebObjects::Failure& f) {
        failed(f.Description());
    }
    if (m_list->count() > 0)
        m_list->setCurrentRow(std::clamp(current, 0, m_list->count() - 1));
}

void RecipientsPage::addFromCustomers()
{
    QList<Data> people;
    try {
        people = contacts(*m_store, *m_job);
    } catch (const ZebObjects::Failure& f) {
        failed(f.Description());
        return;
    }
    if (people.isEmpty()) {
        QMessageBox::information(
            this, QStringLiteral("Add Recipient"),
            QStringLiteral("No customer of the office has a contact name. Give one in "
                           "Office > Customer Directory."));
        return;
    }
    QDialog dialog(this);
    dialog.setObjectName(QStringLiteral("dlgAddRecipient"));
    dialog.setWindowTitle(QStringLiteral("Add Recipient"));
    auto* list = new QListWidget(&dialog);
    list->setObjectName(QStringLiteral("lstContacts"));
    list->setAccessibleName(QStringLiteral("Customer contacts"));
    for (const Data& d : people)
        list->addItem(QStringLiteral("%1, %2 - %3")
                          .arg(d.attention, d.name, addressLine(d.city, d.state, d.zip)));
    list->setCurrentRow(0);
    auto* caption = new QLabel(QStringLiteral("&Contacts (the job's customers first):"), &dialog);
    caption->setBuddy(list);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("Add"));
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    connect(list, &QListWidget::itemDoubleClicked, &dialog, &QDialog::accept);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(caption);
    layout->addWidget(list);
    layout->addWidget(buttons);
    dialog.resize(520, 360);
    if (dialog.exec() != QDialog::Accepted || list->currentRow() < 0)
        return;
    const Data& d = people.at(list->currentRow());
    ZebObjects::JobContents::Recipient r;
    r.name = d.attention;
    r.company = d.name;
    r.street = d.street;
    r.street2 = d.street2;
    r.city = d.city;
    r.state = d.state;
    r.zip = d.zip;
    r.phone = d.phone;
    r.email = d.email;
    try {
        m_job->submittal()->storeRecipients()->add(r);
    } catch (const ZebObjects::Failure& f) {
        failed(f.Description());
    }
    reload();
    m_list->setCurrentRow(m_list->count() - 1);
}

void RecipientsPage::moveUp()
{
    const int row = m_list->currentRow();
    if (row <= 0)
        return;
    try {
        m_job->submittal()->storeRecipients()->move(qint16(row + 1), qint16(row));
    } catch (const ZebObjects::Failure& f) {
        failed(f.Description());
    }
    reload();
    m_list->setCurrentRow(row - 1);
}

void RecipientsPage::moveDown()
{
    const int row = m_list->currentRow();
    if (row < 0 || row >= m_list->count() - 1)
        return;
    try {
        m_job->submittal()->storeRecipients()->move(qint16(row + 1), qint16(row + 2));
    } catch (const ZebObjects::Failure& f) {
        failed(f.Description());
    }
    reload();
    m_list->setCurrentRow(row + 1);
}

void RecipientsPage::removeRecipient()
{
    const int row = m_list->currentRow();
    if (row < 0)
        return;
    try {
        m_job->submittal()->storeRecipients()->Remove(qint16(row + 1));
    } catch (const ZebObjects::Failure& f) {
        failed(f.Description());
    }
    reload();
}
