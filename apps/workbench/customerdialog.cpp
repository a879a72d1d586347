#include "customerdialog.h"

#include <QApplication>

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
using Data = ZebObjects::CustomerRecord;
struct Field {
    const char* name;
    const char* caption;
    QString Data::*member;
    int maxLength;
};
const Field kFields[] = {
    {"txtCompany", "&Company:", &Data::name, 80},
    {"txtContact", "C&ontact name:", &Data::attention, 60},
    {"txtStreet", "&Street:", &Data::street, 80},
    {"txtStreet2", "Street &2:", &Data::street2, 80},
    {"txtCity", "C&ity:", &Data::city, 40},
    {"txtState", "S&tate:", &Data::state, 20},
    {"txtZip", "&ZIP:", &Data::zip, 10},
    {"txtPhone", "&Phone:", &Data::phone, 30},
    {"txtEmail", "&E-mail:", &Data::email, 80},
    {"txtAccount", "&Account number:", &Data::accountNumber, 20},
    {"txtType", "T&ype:", &Data::type, 20},
    {"txtCategory", "Cate&gory:", &Data::category, 20},
};
}  // namespace

CustomerDialog::CustomerDialog(const QString& title, const Data& customer, QWidget* parent)
    : QDialog(parent), m_customer(customer)
{
    setObjectName(QStringLiteral("dlgCustomer"));
    setWindowTitle(title);
    setAccessibleName(title);
    setAccessibleDescription(QStringLiteral(
        "A customer's company, contact, address, phone, e-mail, account, type and category"));
    auto* form = new QFormLayout;
    for (const Field& f : kFields) {
        auto* edit = new QLineEdit(customer.*f.member, this);
        edit->setObjectName(QLatin1String(f.name));
        edit->setMaxLength(f.maxLength);
        const QString caption = QString::fromLatin1(f.caption);
        edit->setAccessibleName(QString(caption).remove(QLatin1Char('&')).remove(QLatin1Char(':')));
        auto* label = new QLabel(caption, this);
        label->setBuddy(edit);
        form->addRow(label, edit);
        m_edits.append(edit);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    m_ok->setObjectName(QStringLiteral("cmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        if (!m_edits.first()->text().trimmed().isEmpty())
            accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // A customer without a company name cannot be found or printed.
    const auto check = [this] { m_ok->setEnabled(!m_edits.first()->text().trimmed().isEmpty()); };
    connect(m_edits.first(), &QLineEdit::textChanged, this, check);
    check();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    setMinimumWidth(420);
}

Data CustomerDialog::customer() const
{
    Data d = m_customer;
    for (qsizetype i = 0; i < m_edits.size(); ++i)
        d.*kFields[i].member = m_edits[i]->text().trimmed();
    d.displayText = d.city.isEmpty() ? d.name : QStringLiteral("%1 (%2)").arg(d.name, d.city);
    return d;
}

std::optional<ZebObjects::CustomerRecord> CustomerDialog::askNew(
    const ZebObjects::CustomerRecord& named)
{
    CustomerDialog dialog(QStringLiteral("New Customer"), named, QApplication::activeWindow());
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.customer();
}
