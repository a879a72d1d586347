#include "exportcheckdialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

ExportCheckDialog::ExportCheckDialog(const QString& job, const QStringList& gaps, QWidget* parent)
    : QDialog(parent), m_gaps(gaps)
{
    setObjectName(QStringLiteral("dlgExportCheck"));
    setWindowTitle(QStringLiteral("Export Package"));
    setAccessibleName(QStringLiteral("The package is incomplete"));
    setAccessibleDescription(QStringLiteral("What the package lacks, with the choice to export it "
                                            "anyway or go back"));

    auto* layout = new QVBoxLayout(this);
    auto* heading =
        new QLabel(QStringLiteral("The package of job %1 is incomplete:").arg(job), this);
    heading->setObjectName(QStringLiteral("lblExportCheck"));
    heading->setWordWrap(true);
    layout->addWidget(heading);

    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("lstMissing"));
    m_list->setAccessibleName(QStringLiteral("What the package lacks"));
    m_list->setAccessibleDescription(
        QStringLiteral("One line for each thing missing from the package"));
    m_list->setWordWrap(true);
    m_list->setSelectionMode(QAbstractItemView::NoSelection);
    m_list->addItems(gaps);
    layout->addWidget(m_list, 1);
    heading->setBuddy(m_list);

    auto* question =
        new QLabel(QStringLiteral("Export it anyway, or go back and complete it?"), this);
    question->setObjectName(QStringLiteral("lblExportQuestion"));
    question->setWordWrap(true);
    layout->addWidget(question);

    auto* buttons = new QDialogButtonBox(this);
    buttons->setObjectName(QStringLiteral("btnsExportCheck"));
    QPushButton* anyway =
        buttons->addButton(QStringLiteral("&Export Anyway"), QDialogButtonBox::AcceptRole);
    anyway->setObjectName(QStringLiteral("btnExportAnyway"));
    QPushButton* back =
        buttons->addButton(QStringLiteral("Go &Back"), QDialogButtonBox::RejectRole);
    back->setObjectName(QStringLiteral("btnGoBack"));
    back->setDefault(true);
    back->setAutoDefault(true);
    anyway->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    back->setFocus();
    resize(460, 300);
}
