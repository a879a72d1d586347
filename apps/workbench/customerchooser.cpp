#include "customerchooser.h"

#include "contracts/failure.h"
#include "rules/customerchoice.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace ZebObjects {

namespace {
constexpr int kPositionRole = Qt::UserRole;
bool g_tellNothingFound = false;
}  // namespace

CustomerChooser::CustomerChooser(const QList<CustomerRecord>& customers, QWidget* parent)
    : QDialog(parent), m_list(new QTreeWidget(this))
{
    setObjectName(QStringLiteral("frmChooseCustomer"));
    setWindowTitle(QStringLiteral("Choose Customer"));
    setModal(true);

    auto* prompt =
        new QLabel(QStringLiteral("More than one customer matches your search. Choose one:"), this);
    prompt->setObjectName(QStringLiteral("lblPrompt"));
    prompt->setBuddy(m_list);

    m_list->setObjectName(QStringLiteral("lsvMatches"));
    m_list->setAccessibleName(QStringLiteral("Matching customers"));
    m_list->setAccessibleDescription(QStringLiteral(
        "The customers your search found, with account number, city and state; choose one"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Account Number"),
                             QStringLiteral("City"), QStringLiteral("State")});
    for (qsizetype i = 0; i < customers.size(); ++i) {
        const auto& c = customers[i];
        auto* row = new QTreeWidgetItem(m_list, {c.name, c.accountNumber, c.city, c.state});
        row->setData(0, kPositionRole, QVariant::fromValue(i));
    }
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    if (m_list->topLevelItemCount() > 0)
        m_list->setCurrentItem(m_list->topLevelItem(0));

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancel"));

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(prompt);
    layout->addWidget(m_list);
    layout->addLayout(buttons);
    resize(560, 320);

    connect(ok, &QPushButton::clicked, this, [this] {
        if (current() >= 0)
            accept();
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, [this] { accept(); });
    connect(m_list, &QTreeWidget::currentItemChanged, this,
            [ok](QTreeWidgetItem* item) { ok->setEnabled(item != nullptr); });
    ok->setEnabled(m_list->currentItem() != nullptr);
}

CustomerChooser::~CustomerChooser() = default;

void CustomerChooser::install()
{
    CustomerChoice::setChooser(&CustomerChooser::choose);
    CustomerChoice::setNothingFound(&CustomerChooser::tellNothingFound);
}

void CustomerChooser::setTellsWhenNothingFound(bool on)
{
    g_tellNothingFound = on;
}

bool CustomerChooser::tellsWhenNothingFound()
{
    return g_tellNothingFound;
}

void CustomerChooser::tellNothingFound()
{
    if (!g_tellNothingFound || !qobject_cast<QApplication*>(QCoreApplication::instance()))
        return;
    // Guarded as the chooser is: whoever answers the box may also close its parent.
    QPointer<QMessageBox> box =
        new QMessageBox(QMessageBox::Information, QStringLiteral("Customer Search"),
                        QStringLiteral("No customer matches your search."), QMessageBox::Ok,
                        QApplication::activeWindow());
    box->setObjectName(QStringLiteral("frmNoCustomer"));
    box->exec();
    delete box.data();
}

void CustomerChooser::installNewCustomerOffer(NewCustomerEditor editor)
{
    CustomerChoice::setNewCustomer(
        [editor](const QString& typed) { return offerNewCustomer(typed, editor); });
}

std::optional<CustomerRecord> CustomerChooser::offerNewCustomer(const QString& typed,
                                                                const NewCustomerEditor& editor)
{
    if (!g_tellNothingFound || !qobject_cast<QApplication*>(QCoreApplication::instance()))
        return std::nullopt;
    QPointer<QMessageBox> box = new QMessageBox(
        QMessageBox::Question, QStringLiteral("Customer Search"),
        QStringLiteral("No customer matches \"%1\".\nAdd a new customer named \"%1\"?").arg(typed),
        QMessageBox::Yes | QMessageBox::No, QApplication::activeWindow());
    box->setObjectName(QStringLiteral("frmNoCustomer"));
    box->setDefaultButton(QMessageBox::Yes);
    const int answer = box->exec();
    delete box.data();
    if (answer != QMessageBox::Yes || !editor)
        return std::nullopt;
    CustomerRecord named;
    named.name = typed;
    named.displayText = typed;
    named.active = true;
    return editor(named);
}

qsizetype CustomerChooser::current() const
{
    const QTreeWidgetItem* item = m_list->currentItem();
    return item ? item->data(0, kPositionRole).value<qsizetype>() : -1;
}

qsizetype CustomerChooser::choose(const QList<CustomerRecord>& customers)
{
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        throw Failure(ErrorNumber::CannotCreateObject, QStringLiteral("ZebObjects.CustomerFinder"),
                      QStringLiteral("Cannot show the customer chooser: the process has no "
                                     "widget application"));
    // Guarded: whoever answers the dialog may also close its parent.
    QPointer<CustomerChooser> dialog = new CustomerChooser(customers, QApplication::activeWindow());
    const int answer = dialog->exec();
    qsizetype chosen = -1;
    if (dialog) {
        if (answer == QDialog::Accepted)
            chosen = dialog->current();
        delete dialog.data();
    }
    return chosen;
}

}  // namespace ZebObjects
