#include "reviewdialog.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

enum Column {
    LineColumn,
    TypeColumn,
    QuantityColumn,
    CatalogColumn,
    ActionColumn,
    NoteColumn,
    ColumnCount
};

const QString kAllTypes = QStringLiteral("All Types");

}  // namespace

ReviewDialog::ReviewDialog(const ZebObjects::IssuedRevision& revision,
                           const QList<ZebObjects::IssuedLine>& lines, QWidget* parent)
    : QDialog(parent), m_lines(lines)
{
    setObjectName(QStringLiteral("frmReview"));
    setWindowTitle(QStringLiteral("Record Review of Revision %1").arg(revision.number));
    setAccessibleName(windowTitle());
    setAccessibleDescription(QStringLiteral("The action and note the reviewer gave each line, the "
                                            "date the package came back and the reviewer's note"));

    auto* layout = new QVBoxLayout(this);
    auto* intro = new QLabel(
        QStringLiteral("Revision %1 was sent on %2 to %3. Choose the reviewer's action for each "
                       "line, or for every line of a type at once.")
            .arg(revision.number)
            .arg(QLocale().toString(revision.sent(), QLocale::ShortFormat))
            .arg(revision.recipients.isEmpty() ? QStringLiteral("no recipient")
                                               : revision.recipients.join(QStringLiteral("; "))),
        this);
    intro->setObjectName(QStringLiteral("lblReviewIntro"));
    intro->setWordWrap(true);
    layout->addWidget(intro);

    auto* typeRow = new QHBoxLayout;
    auto* typeLabel = new QLabel(QStringLiteral("&Type:"), this);
    m_type = new QComboBox(this);
    m_type->setObjectName(QStringLiteral("cmbReviewType"));
    m_type->setAccessibleName(QStringLiteral("Fixture type to set the action for"));
    typeLabel->setBuddy(m_type);
    m_type->addItem(kAllTypes);
    QStringList types;
    for (const auto& l : lines)
        if (!types.contains(l.type))
            types << l.type;
    m_type->addItems(types);
    auto* typeActionLabel = new QLabel(QStringLiteral("&Action:"), this);
    m_typeAction = new QComboBox(this);
    m_typeAction->setObjectName(QStringLiteral("cmbTypeAction"));
    m_typeAction->setAccessibleName(QStringLiteral("Action for every line of the type"));
    m_typeAction->addItems(ZebObjects::ReviewAction::all());
    typeActionLabel->setBuddy(m_typeAction);
    auto* apply = new QPushButton(QStringLiteral("&Set For Type"), this);
    apply->setObjectName(QStringLiteral("cmdApplyToType"));
    apply->setAutoDefault(false);
    connect(apply, &QPushButton::clicked, this, &ReviewDialog::applyToType);
    typeRow->addWidget(typeLabel);
    typeRow->addWidget(m_type, 1);
    typeRow->addWidget(typeActionLabel);
    typeRow->addWidget(m_typeAction, 1);
    typeRow->addWidget(apply);
    layout->addLayout(typeRow);

    m_table = new QTableWidget(int(lines.size()), ColumnCount, this);
    m_table->setObjectName(QStringLiteral("tblReviewLines"));
    m_table->setAccessibleName(QStringLiteral("Lines of the revision with their review"));
    m_table->setHorizontalHeaderLabels({QStringLiteral("Line"), QStringLiteral("Type"),
                                        QStringLiteral("Qty"), QStringLiteral("Catalog Number"),
                                        QStringLiteral("Action"), QStringLiteral("Note")});
    m_table->verticalHeader()->setVisible(false);
    m_table->verticalScrollBar()->setAccessibleName(QStringLiteral("Scroll the lines up and down"));
    m_table->horizontalScrollBar()->setAccessibleName(QStringLiteral("Scroll the lines sideways"));
    m_table->setSelectionMode(QAbstractItemView::NoSelection);
    m_table->horizontalHeader()->setSectionResizeMode(CatalogColumn, QHeaderView::Stretch);
    m_table->horizontalHeader()->setSectionResizeMode(NoteColumn, QHeaderView::Stretch);
    for (int row = 0; row < lines.size(); ++row) {
        const auto& l = lines[row];
        const QStringList cells{QString::number(l.number), l.type, l.quantity, l.catalogNumber};
        for (int c = 0; c < cells.size(); ++c) {
            auto* item = new QTableWidgetItem(cells[c]);
            item->setFlags(Qt::ItemIsEnabled);
            m_table->setItem(row, c, item);
        }
        auto* action = new QComboBox(m_table);
        action->setObjectName(QStringLiteral("cmbAction%1").arg(l.number));
        action->setAccessibleName(QStringLiteral("Action for line %1").arg(l.number));
        action->addItems(ZebObjects::ReviewAction::all());
        action->setCurrentText(l.action.isEmpty() ? ZebObjects::ReviewAction::NotReviewed
                                                  : l.action);
        connect(action, &QComboBox::currentTextChanged, this, &ReviewDialog::updateVerdict);
        m_table->setCellWidget(row, ActionColumn, action);
        auto* note = new QLineEdit(l.note, m_table);
        note->setObjectName(QStringLiteral("txtNote%1").arg(l.number));
        note->setAccessibleName(QStringLiteral("Reviewer's note for line %1").arg(l.number));
        m_table->setCellWidget(row, NoteColumn, note);
    }
    m_table->resizeColumnsToContents();
    m_table->horizontalHeader()->setSectionResizeMode(ActionColumn, QHeaderView::ResizeToContents);
    layout->addWidget(m_table, 1);

    auto* form = new QFormLayout;
    m_returned =
        new QDateEdit(revision.returned.isValid() ? revision.returned : QDate::currentDate(), this);
    m_returned->setObjectName(QStringLiteral("dtpReturned"));
    m_returned->setCalendarPopup(true);
    m_returned->setAccessibleName(QStringLiteral("Date returned"));
    form->addRow(QStringLiteral("Date &Returned:"), m_returned);
    m_note = new QPlainTextEdit(revision.reviewNote, this);
    m_note->setObjectName(QStringLiteral("txtReviewNote"));
    m_note->setAccessibleName(QStringLiteral("Reviewer's note"));
    m_note->setTabChangesFocus(true);
    m_note->setFixedHeight(m_note->fontMetrics().lineSpacing() * 4);
    form->addRow(QStringLiteral("Reviewer's &Note:"), m_note);
    m_verdict = new QLabel(this);
    m_verdict->setObjectName(QStringLiteral("lblVerdict"));
    form->addRow(QStringLiteral("Overall Verdict:"), m_verdict);
    layout->addLayout(form);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName(QStringLiteral("btnReview"));
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("Record Review"));
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdRecord"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancelReview"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);

    updateVerdict();
    resize(820, 520);
}

QComboBox* ReviewDialog::actionBox(int row) const
{
    return qobject_cast<QComboBox*>(m_table->cellWidget(row, ActionColumn));
}

void ReviewDialog::applyToType()
{
    const QString type = m_type->currentText();
    for (int row = 0; row < m_lines.size(); ++row)
        if (m_type->currentIndex() == 0 || m_lines[row].type == type)
            actionBox(row)->setCurrentText(m_typeAction->currentText());
}

void ReviewDialog::updateVerdict()
{
    m_verdict->setText(verdict());
}

QString ReviewDialog::verdict() const
{
    QStringList actions;
    for (int row = 0; row < m_lines.size(); ++row)
        actions << actionBox(row)->currentText();
    return ZebObjects::ReviewAction::overall(actions);
}

QList<ZebObjects::StoreHistory::LineReview> ReviewDialog::reviews() const
{
    QList<ZebObjects::StoreHistory::LineReview> out;
    for (int row = 0; row < m_lines.size(); ++row) {
        const auto* note = qobject_cast<QLineEdit*>(m_table->cellWidget(row, NoteColumn));
        out.append({m_lines[row].number, actionBox(row)->currentText(), note->text()});
    }
    return out;
}

QDate ReviewDialog::returned() const
{
    return m_returned->date();
}
QString ReviewDialog::note() const
{
    return m_note->toPlainText();
}
