#include "jobdialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QString titleOf(JobDialog::Purpose purpose)
{
    switch (purpose) {
    case JobDialog::Purpose::NewJob: return QStringLiteral("New Job");
    case JobDialog::Purpose::Duplicate: return QStringLiteral("Duplicate Job");
    case JobDialog::Purpose::Properties: return QStringLiteral("Job Properties");
    }
    return {};
}
}  // namespace

JobDialog::JobDialog(Purpose purpose, const ZebObjects::JobDetails& details,
                     const QStringList& takenNumbers, QWidget* parent)
    : QDialog(parent), m_purpose(purpose), m_details(details), m_taken(takenNumbers)
{
    setObjectName(QStringLiteral("dlgJob"));
    setWindowTitle(titleOf(purpose));
    setAccessibleName(titleOf(purpose));
    setAccessibleDescription(
        QStringLiteral("A job's number, name, site address, architect, engineer and contractor"));

    const auto edit = [this](const char* name, const QString& text, const QString& description,
                             int maxLength) {
        auto* e = new QLineEdit(text, this);
        e->setObjectName(QLatin1String(name));
        e->setAccessibleDescription(description);
        e->setMaxLength(maxLength);
        return e;
    };
    m_number = edit("txtJobNumber", details.number,
                    QStringLiteral("The job's number, which no other job of the office has"), 20);
    m_name = edit("txtJobName", details.name,
                  QStringLiteral("The job's name, as letters and labels print it"), 80);
    m_site =
        edit("txtSiteAddress", details.siteAddress, QStringLiteral("Where the job is built"), 160);
    m_architect =
        edit("txtArchitect", details.architect, QStringLiteral("The job's architect"), 80);
    m_engineer = edit("txtEngineer", details.engineer, QStringLiteral("The job's engineer"), 80);
    m_contractor =
        edit("txtContractor", details.contractor, QStringLiteral("The job's contractor"), 80);
    m_numberCheck = new QLabel(this);
    m_numberCheck->setObjectName(QStringLiteral("lblNumberCheck"));
    m_numberCheck->setWordWrap(true);
    m_numberCheck->setAccessibleName(QStringLiteral("Job number check"));
    QPalette warn = m_numberCheck->palette();
    warn.setColor(QPalette::WindowText, QColor(0xB0, 0x00, 0x20));
    m_numberCheck->setPalette(warn);

    auto* form = new QFormLayout;
    const auto row = [&](const QString& caption, QWidget* widget) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(widget);
        widget->setAccessibleName(
            QString(caption).remove(QLatin1Char('&')).remove(QLatin1Char(':')));
        form->addRow(label, widget);
    };
    row(QStringLiteral("Job &number:"), m_number);
    form->addRow(QString(), m_numberCheck);
    row(QStringLiteral("Job na&me:"), m_name);
    row(QStringLiteral("&Site address:"), m_site);
    row(QStringLiteral("&Architect:"), m_architect);
    row(QStringLiteral("&Engineer:"), m_engineer);
    row(QStringLiteral("&Contractor:"), m_contractor);
    if (purpose == Purpose::Duplicate) {
        m_copyLines = new QCheckBox(QStringLiteral("Copy the &line items too"), this);
        m_copyLines->setObjectName(QStringLiteral("chkCopyLines"));
        m_copyLines->setAccessibleDescription(QStringLiteral(
            "The new job takes the settings, texts, label fields and customers; ticked, its line "
            "items as well"));
        form->addRow(QString(), m_copyLines);
    }
    if (purpose == Purpose::Properties) {
        m_archived = new QCheckBox(
            QStringLiteral("A&rchived (kept in the office, not in the job list)"), this);
        m_archived->setObjectName(QStringLiteral("chkArchived"));
        m_archived->setChecked(details.archived);
        form->addRow(QString(), m_archived);
    }

    m_buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_buttons->setObjectName(QStringLiteral("btnsJob"));
    m_buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    m_buttons->button(QDialogButtonBox::Ok)
        ->setText(purpose == Purpose::Properties ? QStringLiteral("OK")
                                                 : QStringLiteral("Make Job"));
    m_buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
    connect(m_buttons, &QDialogButtonBox::accepted, this, [this] {
        if (numberProblem().isEmpty() && !m_name->text().trimmed().isEmpty())
            accept();
    });
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_number, &QLineEdit::textChanged, this, [this] { check(); });
    connect(m_name, &QLineEdit::textChanged, this, [this] { check(); });

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_buttons);
    setMinimumWidth(460);
    check();
}

QString JobDialog::numberProblem() const
{
    const QString number = m_number->text().trimmed();
    if (number.isEmpty())
        return QStringLiteral("Type the job's number.");
    if (m_taken.contains(number))
        return QStringLiteral("The office already has a job numbered %1.").arg(number);
    return {};
}

void JobDialog::check()
{
    const QString problem = numberProblem();
    m_numberCheck->setText(problem);
    m_numberCheck->setAccessibleDescription(problem);
    m_buttons->button(QDialogButtonBox::Ok)
        ->setEnabled(problem.isEmpty() && !m_name->text().trimmed().isEmpty());
}

ZebObjects::JobDetails JobDialog::details() const
{
    ZebObjects::JobDetails d = m_details;
    d.number = m_number->text().trimmed();
    d.name = m_name->text().trimmed();
    d.siteAddress = m_site->text().trimmed();
    d.architect = m_architect->text().trimmed();
    d.engineer = m_engineer->text().trimmed();
    d.contractor = m_contractor->text().trimmed();
    if (m_archived)
        d.archived = m_archived->isChecked();
    return d;
}

bool JobDialog::copyLines() const
{
    return m_copyLines && m_copyLines->isChecked();
}
