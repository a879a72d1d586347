#include "joblistdialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
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
        cell(1, job.archived ? QStringLiteral("%1 (archived)").arg(job.name) : job.name, false);
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

    m_search = new QLineEdit(this);
    m_search->setObjectName(QStringLiteral("txtFindJob"));
    m_search->setAccessibleName(QStringLiteral("Find a job"));
    m_search->setAccessibleDescription(
        QStringLiteral("Shows the jobs whose number, name or customer holds what is typed"));
    m_search->setPlaceholderText(QStringLiteral("Number, name or customer"));
    m_search->setClearButtonEnabled(true);
    auto* findLabel = new QLabel(QStringLiteral("&Find:"), this);
    findLabel->setBuddy(m_search);
    m_showArchived = new QCheckBox(QStringLiteral("Show &archived jobs"), this);
    m_showArchived->setObjectName(QStringLiteral("chkShowArchived"));
    m_nothingFound = new QLabel(this);
    m_nothingFound->setObjectName(QStringLiteral("lblNothingFound"));
    m_nothingFound->setAccessibleName(QStringLiteral("Search result"));
    connect(m_search, &QLineEdit::textChanged, this, [this] { filter(); });
    connect(m_showArchived, &QCheckBox::toggled, this, [this] { filter(); });
    auto* findRow = new QHBoxLayout;
    findRow->addWidget(findLabel);
    findRow->addWidget(m_search, 1);
    findRow->addWidget(m_showArchived);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(findRow);
    layout->addWidget(m_table);
    layout->addWidget(m_nothingFound);
    layout->addWidget(buttons);
    resize(620, 340);
    filter();
}

void JobListDialog::filter()
{
    const QString text = m_search->text().trimmed();
    const bool archived = m_showArchived->isChecked();
    int shown = 0;
    int firstShown = -1;
    for (int row = 0; row < m_jobs.size(); ++row) {
        const ZebObjects::JobSummary& job = m_jobs.at(row);
        bool match = text.isEmpty() || job.number.contains(text, Qt::CaseInsensitive)
                     || job.name.contains(text, Qt::CaseInsensitive);
        for (const QString& customer : job.customerNames)
            match = match || customer.contains(text, Qt::CaseInsensitive);
        const bool show = match && (archived || !job.archived);
        m_table->setRowHidden(row, !show);
        if (show) {
            ++shown;
            if (firstShown < 0)
                firstShown = row;
        }
    }
    // The selection stays on a row that shows.
    const int current = m_table->currentRow();
    if (current < 0 || m_table->isRowHidden(current)) {
        m_table->clearSelection();
        if (firstShown >= 0)
            m_table->selectRow(firstShown);
    }
    m_nothingFound->setText(
        shown == 0
            ? (text.isEmpty()
                   ? QStringLiteral("The office has no jobs to show.")
                   : QStringLiteral("No job's number, name or customer holds \"%1\".").arg(text))
            : QString());
    m_nothingFound->setVisible(shown == 0);
    if (auto* open = findChild<QPushButton*>(QStringLiteral("cmdOpen")))
        open->setEnabled(shown > 0);
}

QStringList JobListDialog::shownNumbers() const
{
    QStringList out;
    for (int row = 0; row < m_jobs.size(); ++row)
        if (!m_table->isRowHidden(row))
            out.append(m_jobs.at(row).number);
    return out;
}

qint64 JobListDialog::selectedJobId() const
{
    const int row = m_table->currentRow();
    if (row < 0 || row >= m_jobs.size() || m_table->selectedItems().isEmpty()
        || m_table->isRowHidden(row))
        return 0;
    return m_jobs.at(row).id;
}
