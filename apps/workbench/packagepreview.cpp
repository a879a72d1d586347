#include "packagepreview.h"

#include "package/pdffinish.h"
#include "platform/accessiblenames.h"

#include <QApplication>
#include <algorithm>
#include <QBuffer>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPainter>
#include <QPdfDocument>
#include <QPdfPageNavigator>
#include <QPdfView>
#include <QPushButton>
#include <QSaveFile>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTabBar>
#include <QTabWidget>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

constexpr int kThumbnailHeight = 120;

struct ZoomChoice {
    const char* text;
    QPdfView::ZoomMode mode;
    qreal factor;
};
const ZoomChoice kZooms[] = {
    {"Fit Width", QPdfView::ZoomMode::FitToWidth, 1.0},
    {"Fit Page", QPdfView::ZoomMode::FitInView, 1.0},
    {"50%", QPdfView::ZoomMode::Custom, 0.5},
    {"75%", QPdfView::ZoomMode::Custom, 0.75},
    {"100%", QPdfView::ZoomMode::Custom, 1.0},
    {"150%", QPdfView::ZoomMode::Custom, 1.5},
    {"200%", QPdfView::ZoomMode::Custom, 2.0},
};

}  // namespace

PackagePreview::PackagePreview(const QByteArray& pdf, const QString& suggestedName, Hooks hooks,
                               QWidget* parent)
    : QDialog(parent), m_pdf(pdf), m_suggested(suggestedName), m_hooks(std::move(hooks))
{
    setObjectName(QStringLiteral("dlgPackagePreview"));
    setWindowTitle(QStringLiteral("Package Preview"));
    setAccessibleName(QStringLiteral("Package Preview"));
    setAccessibleDescription(QStringLiteral("The package as it will be exported"));

    m_buffer = new QBuffer(&m_pdf, this);
    m_buffer->open(QIODevice::ReadOnly);
    m_document = new QPdfDocument(this);
    m_document->load(m_buffer);

    m_view = new QPdfView(this);
    m_view->setObjectName(QStringLiteral("pdfPreview"));
    m_view->setAccessibleName(QStringLiteral("Package pages"));
    m_view->setAccessibleDescription(QStringLiteral("The pages of the package, one after another"));
    m_view->setDocument(m_document);
    m_view->setPageMode(QPdfView::PageMode::MultiPage);

    m_thumbnails = new QListWidget(this);
    m_thumbnails->setObjectName(QStringLiteral("lstThumbnails"));
    m_thumbnails->setAccessibleName(QStringLiteral("Page thumbnails"));
    m_thumbnails->setAccessibleDescription(
        QStringLiteral("A small picture of each page; choose one to show it"));
    m_thumbnails->setViewMode(QListView::ListMode);
    m_thumbnails->setIconSize(QSize(kThumbnailHeight, kThumbnailHeight));
    m_thumbnails->setUniformItemSizes(true);
    for (int page = 0; page < m_document->pageCount(); ++page) {
        const QSizeF points = m_document->pagePointSize(page);
        const QSize size =
            points.scaled(QSizeF(kThumbnailHeight, kThumbnailHeight), Qt::KeepAspectRatio).toSize();
        // Sharp on a screen of any scale.
        const qreal scale = qApp->devicePixelRatio();
        QImage image = m_document->render(page, (QSizeF(size) * scale).toSize());
        image.setDevicePixelRatio(scale);
        // White paper under a thin frame, centred in a square so every row has one height.
        QPixmap icon(QSize(kThumbnailHeight, kThumbnailHeight) * scale);
        icon.setDevicePixelRatio(scale);
        icon.fill(Qt::transparent);
        QPainter p(&icon);
        const QRect at((kThumbnailHeight - size.width()) / 2,
                       (kThumbnailHeight - size.height()) / 2, size.width(), size.height());
        p.fillRect(at, Qt::white);
        p.drawImage(at, image);
        p.setPen(QColor(0x90, 0x90, 0x90));
        p.drawRect(at.adjusted(0, 0, -1, -1));
        p.end();
        auto* item =
            new QListWidgetItem(QIcon(icon),
                                m_document->pageLabel(page).isEmpty() ? QString::number(page + 1)
                                                                      : m_document->pageLabel(page),
                                m_thumbnails);
        item->setData(Qt::UserRole, page);
        item->setData(Qt::AccessibleTextRole, QStringLiteral("Page %1").arg(page + 1));
    }

    // The outline as the file holds it, read with the library that wrote it.
    m_bookmarks = new QStandardItemModel(this);
    QList<QStandardItem*> parents{m_bookmarks->invisibleRootItem()};
    try {
        for (const auto& mark : ZebPackage::PdfFinish::outline(m_pdf)) {
            auto* item = new QStandardItem(mark.title);
            item->setEditable(false);
            item->setData(mark.page, Qt::UserRole);
            const qsizetype level = std::clamp<qsizetype>(mark.level, 0, parents.size() - 1);
            parents.resize(level + 1);
            parents.back()->appendRow(item);
            parents.append(item);
        }
    } catch (const std::exception&) {
        // A file without a readable outline shows its pages all the same.
    }
    m_outline = new QTreeView(this);
    m_outline->setObjectName(QStringLiteral("tvwOutline"));
    m_outline->setAccessibleName(QStringLiteral("Outline"));
    m_outline->setAccessibleDescription(
        QStringLiteral("The package's bookmarks; choose one to show its page"));
    m_outline->setModel(m_bookmarks);
    m_outline->setHeaderHidden(true);
    m_outline->expandAll();

    auto* side = new QTabWidget(this);
    side->setObjectName(QStringLiteral("tabPreviewSide"));
    side->setAccessibleName(QStringLiteral("Thumbnails and outline"));
    side->setAccessibleDescription(
        QStringLiteral("Go to a page by its picture or by its bookmark"));
    side->addTab(m_thumbnails, QStringLiteral("&Pages"));
    side->addTab(m_outline, QStringLiteral("O&utline"));
    side->tabBar()->setAccessibleName(QStringLiteral("Thumbnails or outline"));
    side->tabBar()->setAccessibleDescription(
        QStringLiteral("Choose whether the side shows pages or bookmarks"));
    ZebSubCtl::nameScrollBars(m_view);
    ZebSubCtl::nameScrollBars(m_thumbnails);
    ZebSubCtl::nameScrollBars(m_outline);

    auto* splitter = new QSplitter(this);
    splitter->addWidget(side);
    splitter->addWidget(m_view);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({220, 700});

    m_zoom = new QComboBox(this);
    m_zoom->setObjectName(QStringLiteral("cboZoom"));
    m_zoom->setAccessibleName(QStringLiteral("Zoom"));
    m_zoom->setAccessibleDescription(QStringLiteral("How large the pages show"));
    for (const ZoomChoice& z : kZooms)
        m_zoom->addItem(QString::fromLatin1(z.text));
    auto* zoomLabel = new QLabel(QStringLiteral("&Zoom:"), this);
    zoomLabel->setBuddy(m_zoom);
    auto* pages = new QLabel(QStringLiteral("%1 pages").arg(m_document->pageCount()), this);
    pages->setObjectName(QStringLiteral("lblPreviewPages"));

    auto* buttons = new QDialogButtonBox(this);
    auto* exportButton =
        buttons->addButton(QStringLiteral("&Export..."), QDialogButtonBox::AcceptRole);
    exportButton->setObjectName(QStringLiteral("cmdExport"));
    auto* close = buttons->addButton(QDialogButtonBox::Close);
    close->setObjectName(QStringLiteral("cmdClose"));
    connect(exportButton, &QPushButton::clicked, this, [this] { cmdExport_Click(); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);

    auto* bar = new QHBoxLayout;
    bar->addWidget(zoomLabel);
    bar->addWidget(m_zoom);
    bar->addSpacing(12);
    bar->addWidget(pages);
    bar->addStretch(1);
    bar->addWidget(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter, 1);
    layout->addLayout(bar);

    connect(m_zoom, &QComboBox::currentIndexChanged, this, [this](int index) { applyZoom(index); });
    connect(m_thumbnails, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0)
            showPage(m_thumbnails->item(row)->data(Qt::UserRole).toInt());
    });
    connect(m_outline, &QTreeView::activated, this,
            [this](const QModelIndex& index) { showPage(index.data(Qt::UserRole).toInt()); });
    connect(m_outline, &QTreeView::clicked, this,
            [this](const QModelIndex& index) { showPage(index.data(Qt::UserRole).toInt()); });
    applyZoom(0);
    resize(960, 720);
    exportButton->setDefault(true);
}

PackagePreview::~PackagePreview()
{
    // The view lets go of the document before it closes its buffer.
    m_view->setDocument(nullptr);
    m_document->close();
}

int PackagePreview::currentPage() const
{
    return m_view->pageNavigator()->currentPage();
}

void PackagePreview::showPage(int page)
{
    if (page < 0 || page >= m_document->pageCount())
        return;
    m_view->pageNavigator()->jump(page, QPointF(), m_view->zoomFactor());
}

void PackagePreview::applyZoom(int index)
{
    if (index < 0 || index >= int(std::size(kZooms)))
        return;
    m_view->setZoomMode(kZooms[index].mode);
    if (kZooms[index].mode == QPdfView::ZoomMode::Custom)
        m_view->setZoomFactor(kZooms[index].factor);
}

bool PackagePreview::exportTo(const QString& path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(m_pdf) != m_pdf.size() || !file.commit()) {
        QMessageBox::warning(
            this, QStringLiteral("Export Package"),
            QStringLiteral("Path/File access error: %1 (%2)").arg(path, file.errorString()));
        return false;
    }
    m_exported = path;
    return true;
}

void PackagePreview::cmdExport_Click()
{
    const QString path =
        m_hooks.chooseTarget
            ? m_hooks.chooseTarget(m_suggested)
            : QFileDialog::getSaveFileName(this, QStringLiteral("Export Package"), m_suggested,
                                           QStringLiteral("PDF files (*.pdf)"));
    if (path.isEmpty())
        return;
    if (exportTo(path))
        accept();
}
