#include "issuersdialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

IssuersDialog::IssuersDialog(const QStringList& names, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("dlgIssuers"));
    setWindowTitle(QStringLiteral("Issued By"));
    setAccessibleName(windowTitle());
    setAccessibleDescription(QStringLiteral("The office's salespeople offered under Issued By"));
    m_names = new QPlainTextEdit(names.join(QLatin1Char('\n')), this);
    m_names->setObjectName(QStringLiteral("txtIssuers"));
    m_names->setAccessibleName(QStringLiteral("Issued By names"));
    m_names->setAccessibleDescription(
        QStringLiteral("The office's salespeople, one a line, in the order offered"));
    m_names->setTabChangesFocus(true);
    auto* caption =
        new QLabel(QStringLiteral("&Salespeople offered under \"Issued By\", one a line:"), this);
    caption->setBuddy(m_names);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(m_names);
    layout->addWidget(buttons);
    resize(400, 300);
}

QStringList IssuersDialog::names() const
{
    QStringList out;
    for (const QString& line : m_names->toPlainText().split(QLatin1Char('\n'))) {
        const QString name = line.trimmed();
        if (!name.isEmpty() && !out.contains(name))
            out.append(name);
    }
    return out;
}
