#include "joblistdialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

JobListDialog::JobListDialog(const QList<ZebObjects::JobSummary>& jobs, qint64 current,
                             QWidget* parent)
    : QDialog(parent), m_jobs(jobs)
{
    setObjectName(QStringLiteral("dlgOpenJob"));
    setWindowTitle(QStringLiteral("Open Job"));

    m_table = new QTableWidget(int(jobs.size()), 4, this);
    m_table->setObjectName(QStringLiteral("tblJobs"));
    m_table->setAccessibleName(QStringLiteral("Jobs"));
    m_table->setAccessibleDescription(QStringLiteral("The office's jobs; choose the one to open"));
    m_table->setHorizontalHeaderLabels({QStringLiteral("Number"), QStringLiteral("Name"),
                                        QStringLiteral("Customers"), QStringLiteral("Lines")});
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    for (int row = 0; row < jobs.size(); ++row) {
        const ZebObjects::JobSummary& job = jobs.at(row);
        const auto cell = [&](int column, const QString& text, bool number) {
            auto* item = new QTableWidgetItem(text);
            if (number)
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            m_table->setItem(row, column, item);
        };
        cell(0, job.number, false);
        cell(1, job.name, false);
        cell(2, QString::number(job.customerCount), true);
        cell(3, QString::number(job.lineCount), true);
        if (job.id == current)
            m_table->selectRow(row);
    }
    m_table->resizeColumnsToContents();
    m_table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    if (m_table->currentRow() < 0 && !jobs.isEmpty())
        m_table->selectRow(0);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Open | QDialogButtonBox::Cancel, this);
    buttons->setObjectName(QStringLiteral("btnsOpenJob"));
    buttons->button(QDialogButtonBox::Open)->setObjectName(QStringLiteral("cmdOpen"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
    buttons->button(QDialogButtonBox::Open)->setEnabled(!jobs.isEmpty());
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_table, &QTableWidget::cellDoubleClicked, this, [this] { accept(); });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_table);
    layout->addWidget(buttons);
    resize(620, 300);
}

qint64 JobListDialog::selectedJobId() const
{
    const int row = m_table->currentRow();
    if (row < 0 || row >= m_jobs.size() || m_table->selectedItems().isEmpty())
        return 0;
    return m_jobs.at(row).id;
}
