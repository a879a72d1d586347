#include "cutsheetpanel.h"

#include "platform/accessiblenames.h"

#include "contracts/failure.h"
#include "contracts/lineitem.h"
#include "contracts/lineitems.h"
#include "cutsheetattach.h"
#include "store/store.h"
#include "store/storecutsheets.h"
#include "store/storejob.h"
#include "store/storelineitems.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSet>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

constexpr int kSheetIdRole = Qt::UserRole + 1;
constexpr int kTypeRole = Qt::UserRole + 2;

QStringList pdfFiles(const QMimeData* mime)
{
    QStringList out;
    if (!mime || !mime->hasUrls())
        return out;
    for (const QUrl& url : mime->urls()) {
        if (url.isLocalFile())
            out << url.toLocalFile();
    }
    return out;
}

}  // namespace

CutSheetPanel::CutSheetPanel(std::shared_ptr<ZebObjects::Store> store,
                             std::shared_ptr<ZebObjects::StoreJob> job, Hooks hooks,
                             QWidget* parent)
    : QWidget(parent), m_store(std::move(store)), m_job(std::move(job)), m_hooks(std::move(hooks))
{
    setObjectName(QStringLiteral("pgCutSheets"));
    setAccessibleName(QStringLiteral("Cut Sheets"));
    setAccessibleDescription(
        QStringLiteral("The manufacturers' cut sheets each fixture type of the job prints"));

    auto* intro = new QLabel(
        QStringLiteral("Cut sheets print after the labels, for each ticked type in the order of "
                       "the line items. Drop PDF files on a type to attach them."),
        this);
    intro->setObjectName(QStringLiteral("lblCutSheetsIntro"));
    intro->setWordWrap(true);

    m_tree = new QTreeWidget(this);
    m_tree->setObjectName(QStringLiteral("tvwCutSheets"));
    m_tree->setAccessibleName(QStringLiteral("Types and their cut sheets"));
    m_tree->setAccessibleDescription(
        QStringLiteral("Each type of the job's lines with the cut sheets attached to it"));
    m_tree->setHeaderLabels({QStringLiteral("Type / Cut Sheet"), QStringLiteral("Pages")});
    m_tree->setRootIsDecorated(true);
    m_tree->setUniformRowHeights(true);
    m_tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_tree->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_tree->header()->setStretchLastSection(false);
    m_tree->setAcceptDrops(true);
    m_tree->viewport()->setAcceptDrops(true);
    m_tree->viewport()->installEventFilter(this);
    ZebSubCtl::nameScrollBars(m_tree);
    setAcceptDrops(true);

    m_attach = new QPushButton(QStringLiteral("&Attach Cut Sheets..."), this);
    m_attach->setObjectName(QStringLiteral("cmdAttachCutSheets"));
    m_remove = new QPushButton(QStringLiteral("&Remove Cut Sheet"), this);
    m_remove->setObjectName(QStringLiteral("cmdRemoveCutSheet"));
    m_preview = new QPushButton(QStringLiteral("Pre&view Package..."), this);
    m_preview->setObjectName(QStringLiteral("cmdPreviewPackage"));
    m_summary = new QLabel(this);
    m_summary->setObjectName(QStringLiteral("lblCutSheetsSummary"));

    m_summary->setWordWrap(true);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_attach);
    buttons->addWidget(m_remove);
    buttons->addStretch(1);
    auto* preview = new QHBoxLayout;
    preview->addStretch(1);
    preview->addWidget(m_preview);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addWidget(m_tree, 1);
    layout->addWidget(m_summary);
    layout->addLayout(buttons);
    layout->addLayout(preview);

    connect(m_attach, &QPushButton::clicked, this, [this] { cmdAttach_Click(); });
    connect(m_remove, &QPushButton::clicked, this, [this] { cmdRemove_Click(); });
    connect(m_preview, &QPushButton::clicked, this, [this] {
        if (m_hooks.preview)
            m_hooks.preview();
    });
    connect(m_tree, &QTreeWidget::currentItemChanged, this, [this] {
        const QTreeWidgetItem* item = m_tree->currentItem();
        m_attach->setEnabled(item != nullptr);
        m_remove->setEnabled(item && item->data(0, kSheetIdRole).isValid());
    });
    reload();
}

void CutSheetPanel::reload()
{
    const QString keepType = currentType();
    const QVariant keepSheet =
        m_tree->currentItem() ? m_tree->currentItem()->data(0, kSheetIdRole) : QVariant();
    m_tree->clear();
    // Every type of the job's lines, in line order; one without a ticked line does not print.
    QStringList types;
    QSet<QString> ticked;
    for (const auto& line : m_job->lineItems()->Enumerate()) {
        const QString type = line->Type().trimmed();
        if (type.isEmpty())
            continue;
        if (!types.contains(type))
            types << type;
        if (line->Selected())
            ticked.insert(type);
    }
    const QList<ZebObjects::StoreCutSheets::Attachment> attached =
        m_store->cutSheets().attachments(m_job->id());
    for (const auto& a : attached) {
        if (!types.contains(a.type))
            types << a.type;
    }
    int missing = 0;
    int sheets = 0;
    QTreeWidgetItem* current = nullptr;
    for (const QString& type : types) {
        auto* item = new QTreeWidgetItem(m_tree);
        item->setData(0, kTypeRole, type);
        int count = 0;
        for (const auto& a : attached) {
            if (a.type != type)
                continue;
            auto* child = new QTreeWidgetItem(item);
            child->setText(0, a.sheet.fileName);
            child->setText(1, QString::number(a.sheet.pageCount));
            child->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
            const QString added =
                QLocale().toString(a.sheet.addedAt.toLocalTime(), QLocale::ShortFormat);
            child->setToolTip(0,
                              a.sheet.addedBy.isEmpty()
                                  ? QStringLiteral("Added %1").arg(added)
                                  : QStringLiteral("Added by %1, %2").arg(a.sheet.addedBy, added));
            child->setData(0, kSheetIdRole, a.sheet.id);
            child->setData(0, kTypeRole, type);
            ++count;
            if (keepSheet.isValid() && keepSheet == a.sheet.id && type == keepType)
                current = child;
        }
        sheets += count;
        QString label = QStringLiteral("Type ") + type;
        if (!ticked.contains(type))
            label += QStringLiteral(" (no ticked line: does not print)");
        else if (count == 0) {
            label += QStringLiteral(": No cut sheet attached");
            ++missing;
        }
        item->setText(0, label);
        item->setExpanded(true);
        if (!current && type == keepType && !keepSheet.isValid())
            current = item;
    }
    if (!current && m_tree->topLevelItemCount() > 0)
        current = m_tree->topLevelItem(0);
    m_tree->setCurrentItem(current);
    m_attach->setEnabled(current != nullptr);
    m_remove->setEnabled(current && current->data(0, kSheetIdRole).isValid());
    m_summary->setText(missing == 0
                           ? QStringLiteral("%1 cut sheets attached").arg(sheets)
                           : QStringLiteral("%1 cut sheets attached; %2 ticked types have none")
                                 .arg(sheets)
                                 .arg(missing));
}

QString CutSheetPanel::currentType() const
{
    const QTreeWidgetItem* item = m_tree ? m_tree->currentItem() : nullptr;
    return item ? item->data(0, kTypeRole).toString() : QString();
}

QTreeWidgetItem* CutSheetPanel::typeItem(const QString& type) const
{
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        if (m_tree->topLevelItem(i)->data(0, kTypeRole).toString() == type)
            return m_tree->topLevelItem(i);
    }
    return nullptr;
}

int CutSheetPanel::attachFiles(const QString& type, const QStringList& paths)
{
    QStringList refused;
    QStringList repaired;
    int attached = 0;
    for (const QString& path : paths) {
        try {
            const CutSheetAttach::Result r =
                CutSheetAttach::attach(*m_store, m_job->id(), type, path);
            ++attached;
            for (const QString& warning : r.warnings)
                repaired << QStringLiteral("\"%1\": %2").arg(r.fileName, warning);
        } catch (const ZebObjects::Failure& f) {
            refused << f.Description();
        }
    }
    reload();
    if (QTreeWidgetItem* item = typeItem(type))
        m_tree->setCurrentItem(item);
    m_lastMessage.clear();
    if (!refused.isEmpty()) {
        m_lastMessage = refused.join(QLatin1Char('\n'));
        QMessageBox::warning(this, QStringLiteral("Attach Cut Sheets"), m_lastMessage);
    }
    if (!repaired.isEmpty()) {
        const QString text =
            QStringLiteral("Attached, but the file had to be repaired to be read:\n")
            + repaired.join(QLatin1Char('\n'));
        m_lastMessage += (m_lastMessage.isEmpty() ? QString() : QStringLiteral("\n")) + text;
        QMessageBox::information(this, QStringLiteral("Attach Cut Sheets"), text);
    }
    return attached;
}

void CutSheetPanel::cmdAttach_Click()
{
    const QString type = currentType();
    if (type.isEmpty())
        return;
    const QStringList files =
        m_hooks.chooseFiles ? m_hooks.chooseFiles(type)
                            : QFileDialog::getOpenFileNames(
                                this, QStringLiteral("Attach Cut Sheets to Type %1").arg(type),
                                QString(), QStringLiteral("PDF files (*.pdf);;All files (*)"));
    if (!files.isEmpty())
        attachFiles(type, files);
}

void CutSheetPanel::cmdRemove_Click()
{
    const QTreeWidgetItem* item = m_tree->currentItem();
    if (!item || !item->data(0, kSheetIdRole).isValid())
        return;
    try {
        m_store->cutSheets().detach(m_job->id(), item->data(0, kTypeRole).toString(),
                                    item->data(0, kSheetIdRole).toLongLong());
    } catch (const ZebObjects::Failure& f) {
        QMessageBox::warning(this, QStringLiteral("Remove Cut Sheet"), f.Description());
    }
    reload();
}

bool CutSheetPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_tree->viewport())
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove) {
        auto* drag = static_cast<QDragMoveEvent*>(event);
        if (pdfFiles(drag->mimeData()).isEmpty())
            return false;
        drag->setDropAction(Qt::CopyAction);
        drag->accept();
        return true;
    }
    if (event->type() == QEvent::Drop) {
        auto* drop = static_cast<QDropEvent*>(event);
        const QStringList files = pdfFiles(drop->mimeData());
        if (files.isEmpty())
            return false;
        // Dropped on a type or one of its sheets: that type; elsewhere, the current one.
        const QTreeWidgetItem* item = m_tree->itemAt(drop->position().toPoint());
        const QString type = item ? item->data(0, kTypeRole).toString() : currentType();
        drop->setDropAction(Qt::CopyAction);
        drop->accept();
        if (!type.isEmpty())
            attachFiles(type, files);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
