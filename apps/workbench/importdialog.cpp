#include "importdialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QAbstractTableModel>
#include <QHash>
#include <QTableView>
#include <QVBoxLayout>

#include <functional>

// The checked rows of the import as a table, read where they are: a file of ten thousand rows is
// shown without an item per cell.
class ImportDialog::PreviewModel : public QAbstractTableModel {
public:
    PreviewModel(const TableImport& import, QObject* parent)
        : QAbstractTableModel(parent), m_import(import)
    { }

    // Runs change (which checks the rows again) and shows the rows as it leaves them.
    void reset(const std::function<void()>& change)
    {
        beginResetModel();
        change();
        m_problemOf.clear();
        const int fields = int(m_import.fields().size());
        qsizetype problem = 0;
        const QList<TableImport::Row>& rows = m_import.rows();
        for (int r = 0; r < rows.size(); ++r)
            for (int f = 0; f < fields; ++f)
                if (rows[r].bad.value(f))
                    m_problemOf.insert(qint64(r) * fields + f, problem++);
        endResetModel();
    }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_import.rows().size());
    }
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_import.fields().size());
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid() || index.row() >= m_import.rows().size())
            return {};
        const TableImport::Row& row = m_import.rows()[index.row()];
        const int f = index.column();
        switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole: return row.values.value(f);
        case Qt::BackgroundRole:
            return row.bad.value(f) ? QVariant(QBrush(QColor(0xFF, 0xD7, 0xD7))) : QVariant();
        case Qt::ForegroundRole:
            return row.bad.value(f) ? QVariant(QBrush(QColor(0x80, 0x00, 0x00))) : QVariant();
        case Qt::ToolTipRole:
        case Qt::AccessibleDescriptionRole: {
            if (!row.bad.value(f))
                return {};
            const qint64 cell = qint64(index.row()) * m_import.fields().size() + f;
            return m_import.problems().value(m_problemOf.value(cell)).message();
        }
        default: return {};
        }
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (role != Qt::DisplayRole)
            return {};
        if (orientation == Qt::Horizontal)
            return m_import.fields().value(section).name;
        // Rows as the file counts them.
        return m_import.rows().value(section).fileRow;
    }

private:
    const TableImport& m_import;
    // A bad cell (row * fields + field) -> its problem.
    QHash<qint64, qsizetype> m_problemOf;
};

ImportDialog::ImportDialog(const QString& title, const QString& source, TableImport import,
                           bool offerReplace, QWidget* parent)
    : QDialog(parent), m_import(std::move(import))
{
    setObjectName(QStringLiteral("dlgImport"));
    setWindowTitle(title);
    setAccessibleName(title);
    setAccessibleDescription(QStringLiteral(
        "Which column each field is read from, and every row as it will be written"));

    auto* from = new QLabel(QStringLiteral("From %1 (%2, %3 rows under the header)")
                                .arg(source, m_import.table().encoding)
                                .arg(std::max<qsizetype>(m_import.table().rows.size() - 1, 0)),
                            this);
    from->setObjectName(QStringLiteral("lblSource"));
    from->setWordWrap(true);

    // One box a field: the column it is read from.
    auto* mapping = new QGroupBox(QStringLiteral("Columns"), this);
    mapping->setObjectName(QStringLiteral("fraColumns"));
    auto* grid = new QGridLayout(mapping);
    const QStringList header = m_import.header();
    const QList<TableImport::Field>& fields = m_import.fields();
    for (int f = 0; f < fields.size(); ++f) {
        auto* box = new QComboBox(mapping);
        box->setObjectName(
            QStringLiteral("cboColumn%1")
                .arg(QString(fields[f].name).remove(QLatin1Char(' ')).remove(QLatin1Char('-'))));
        box->addItem(QStringLiteral("(not imported)"), -1);
        for (int c = 0; c < header.size(); ++c)
            box->addItem(m_import.columnName(c), c);
        box->setCurrentIndex(box->findData(m_import.mapping().value(f, -1)));
        auto* label = new QLabel(
            fields[f].name + (fields[f].required ? QStringLiteral(" *:") : QStringLiteral(":")),
            mapping);
        label->setBuddy(box);
        box->setAccessibleName(QStringLiteral("Column of %1").arg(fields[f].name));
        box->setAccessibleDescription(QStringLiteral("The column of the file the %1 is read from")
                                          .arg(fields[f].name.toLower()));
        const int half = int((fields.size() + 1) / 2);
        grid->addWidget(label, f % half, (f / half) * 2);
        grid->addWidget(box, f % half, (f / half) * 2 + 1);
        connect(box, &QComboBox::currentIndexChanged, this, [this] { mappingChanged(); });
        m_boxes.append(box);
    }

    m_model = new PreviewModel(m_import, this);
    m_view = new QTableView(this);
    m_view->setObjectName(QStringLiteral("tblPreview"));
    m_view->setAccessibleName(QStringLiteral("Preview"));
    m_view->setAccessibleDescription(QStringLiteral(
        "Every row as it will be written; a bad cell is marked and says what is wrong"));
    m_view->setModel(m_model);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->verticalHeader()->setDefaultSectionSize(m_view->fontMetrics().height() + 6);
    m_view->setWordWrap(false);
    // Columns fit the header and the first rows' cells; a long file is not measured to its end.
    m_view->horizontalHeader()->setResizeContentsPrecision(50);

    m_summary = new QLabel(this);
    m_summary->setObjectName(QStringLiteral("lblSummary"));
    m_summary->setWordWrap(true);
    m_problems = new QListWidget(this);
    m_problems->setObjectName(QStringLiteral("lstProblems"));
    m_problems->setAccessibleName(QStringLiteral("Problems"));
    m_problems->setAccessibleDescription(
        QStringLiteral("What is wrong with the rows, by row and column"));
    m_problems->setMaximumHeight(m_problems->fontMetrics().height() * 6);
    // Choosing a problem shows its cell.
    connect(m_problems, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row < 0)
            return;
        const TableImport::Problem& p = m_import.problems().value(row);
        for (int r = 0; r < m_import.rows().size(); ++r)
            if (m_import.rows()[r].fileRow == p.row)
                m_view->scrollTo(m_model->index(r, 0));
    });

    auto* buttons = new QHBoxLayout;
    if (offerReplace) {
        m_append = new QRadioButton(QStringLiteral("&Add after the job's lines"), this);
        m_append->setObjectName(QStringLiteral("optAppend"));
        m_replace = new QRadioButton(QStringLiteral("&Replace the job's lines"), this);
        m_replace->setObjectName(QStringLiteral("optReplace"));
        m_append->setChecked(true);
        buttons->addWidget(m_append);
        buttons->addWidget(m_replace);
    }
    buttons->addStretch();
    m_buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_buttons->setObjectName(QStringLiteral("btnsImport"));
    m_buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("&Import"));
    m_buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdImport"));
    m_buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
    connect(m_buttons, &QDialogButtonBox::accepted, this, [this] {
        if (m_import.problems().isEmpty() && !m_import.rows().isEmpty())
            accept();
    });
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    buttons->addWidget(m_buttons);

    auto* previewLabel = new QLabel(QStringLiteral("&Preview:"), this);
    previewLabel->setBuddy(m_view);
    m_problemsCaption = new QLabel(QStringLiteral("Pro&blems:"), this);
    m_problemsCaption->setBuddy(m_problems);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(from);
    layout->addWidget(mapping);
    layout->addWidget(previewLabel);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_summary);
    layout->addWidget(m_problemsCaption);
    layout->addWidget(m_problems);
    layout->addLayout(buttons);
    resize(860, 560);
    fill();
}

ImportDialog::~ImportDialog() = default;

QAbstractItemModel* ImportDialog::preview() const
{
    return m_model;
}

bool ImportDialog::replace() const
{
    return m_replace && m_replace->isChecked();
}

void ImportDialog::mappingChanged()
{
    QList<int> mapping;
    for (QComboBox* box : std::as_const(m_boxes))
        mapping.append(box->currentData().toInt());
    m_import.setMapping(mapping);
    fill();
}

void ImportDialog::fill()
{
    m_model->reset([this] { m_import.check(); });
    const QList<TableImport::Row>& rows = m_import.rows();
    m_view->resizeColumnsToContents();
    QSet<int> badRows;
    for (const TableImport::Problem& p : m_import.problems())
        badRows.insert(p.row);

    m_problems->clear();
    for (const TableImport::Problem& p : m_import.problems())
        m_problems->addItem(p.message());
    const bool fine = m_import.problems().isEmpty() && !rows.isEmpty();
    if (rows.isEmpty())
        m_summary->setText(
            QStringLiteral("There are no rows under the header: nothing to import."));
    else if (fine)
        m_summary->setText(QStringLiteral("All %1 rows are ready to import.").arg(rows.size()));
    else
        m_summary->setText(QStringLiteral("%1 of %2 rows are not right; nothing is imported until "
                                          "they are fixed in the file or the columns are chosen "
                                          "again.")
                               .arg(badRows.size())
                               .arg(rows.size()));
    m_problems->setVisible(!m_import.problems().isEmpty());
    m_problemsCaption->setVisible(!m_import.problems().isEmpty());
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(fine);
}
