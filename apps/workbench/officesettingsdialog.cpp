#include "officesettingsdialog.h"

#include "contracts/failure.h"
#include "store/storedialect.h"
#include "store/storelocation.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSpinBox>
#include <QUrl>
#include <QVBoxLayout>

namespace {
const QString kLocationKey = QStringLiteral("office/location");

QLineEdit* field(QWidget* parent, const char* name, const QString& description)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(QLatin1String(name));
    edit->setAccessibleDescription(description);
    return edit;
}
}  // namespace

OfficeSettingsDialog::OfficeSettingsDialog(const QString& location, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("dlgOfficeDatabase"));
    setWindowTitle(QStringLiteral("Office Database"));

    m_file = new QRadioButton(QStringLiteral("A &file on this workstation"), this);
    m_file->setObjectName(QStringLiteral("optFile"));
    m_path = field(this, "txtPath", QStringLiteral("The office file of this workstation"));
    auto* browse = new QPushButton(QStringLiteral("&Browse..."), this);
    browse->setObjectName(QStringLiteral("cmdBrowse"));
    m_server = new QRadioButton(QStringLiteral("The office's PostgreSQL &server"), this);
    m_server->setObjectName(QStringLiteral("optServer"));
    m_host = field(this, "txtHost", QStringLiteral("The name or address of the database server"));
    m_port = new QSpinBox(this);
    m_port->setObjectName(QStringLiteral("txtPort"));
    m_port->setRange(1, 65535);
    m_port->setValue(5432);
    m_port->setAccessibleDescription(QStringLiteral("The server's port, 5432 unless the office "
                                                    "set another"));
    m_database = field(this, "txtDatabase", QStringLiteral("The office's database on the server"));
    m_user = field(this, "txtUser", QStringLiteral("The user this workstation signs in as"));

    auto* pathRow = new QHBoxLayout;
    pathRow->addWidget(m_path, 1);
    pathRow->addWidget(browse);
    auto* server = new QFormLayout;
    const auto row = [&](const QString& caption, QWidget* widget) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(widget);
        widget->setAccessibleName(
            QString(caption).remove(QLatin1Char('&')).remove(QLatin1Char(':')));
        server->addRow(label, widget);
    };
    row(QStringLiteral("&Host:"), m_host);
    row(QStringLiteral("P&ort:"), m_port);
    row(QStringLiteral("&Database:"), m_database);
    row(QStringLiteral("&User:"), m_user);
    m_path->setAccessibleName(QStringLiteral("Office file"));

    auto* note = new QLabel(QStringLiteral("The workbench opens the office chosen here from its "
                                           "next start."),
                            this);
    note->setObjectName(QStringLiteral("lblNote"));
    note->setWordWrap(true);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_file, &QRadioButton::toggled, this, [this] { updateFields(); });
    connect(browse, &QPushButton::clicked, this, [this] {
        const QString chosen = QFileDialog::getSaveFileName(
            this, QStringLiteral("Office File"), m_path->text(),
            QStringLiteral("Office (*.sqlite)"), nullptr, QFileDialog::DontConfirmOverwrite);
        if (!chosen.isEmpty())
            m_path->setText(QDir::toNativeSeparators(chosen));
    });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_file);
    layout->addLayout(pathRow);
    layout->addWidget(m_server);
    layout->addLayout(server);
    layout->addWidget(note);
    layout->addWidget(buttons);

    if (ZebObjects::StoreDialect::isServerLocation(location)) {
        ZebObjects::StoreLocation parts;
        try {
            parts = ZebObjects::StoreLocation::parse(location);
        } catch (const ZebObjects::Failure&) {
            // A location that cannot be read shows what could be: the fields are filled anew.
        }
        m_server->setChecked(true);
        m_host->setText(parts.host());
        m_port->setValue(parts.port());
        m_database->setText(parts.database());
        m_user->setText(parts.user());
    } else {
        m_file->setChecked(true);
        m_path->setText(QDir::toNativeSeparators(location));
        m_host->setText(QStringLiteral("localhost"));
        m_database->setText(QStringLiteral("office"));
        m_user->setText(qEnvironmentVariable("USER"));
    }
    updateFields();
    resize(460, sizeHint().height());
}

void OfficeSettingsDialog::updateFields()
{
    const bool file = m_file->isChecked();
    m_path->setEnabled(file);
    findChild<QPushButton*>(QStringLiteral("cmdBrowse"))->setEnabled(file);
    for (QWidget* w : std::initializer_list<QWidget*>{m_host, m_port, m_database, m_user})
        w->setEnabled(!file);
}

QString OfficeSettingsDialog::location() const
{
    if (m_file->isChecked())
        return QDir::fromNativeSeparators(m_path->text().trimmed());
    return ZebObjects::StoreLocation::server(m_user->text().trimmed(), m_host->text().trimmed(),
                                             m_port->value(), m_database->text().trimmed())
        .shown();
}

QString OfficeSettingsDialog::savedLocation()
{
    return QSettings().value(kLocationKey).toString();
}

void OfficeSettingsDialog::saveLocation(const QString& location)
{
    QSettings().setValue(kLocationKey, location);
}
