#include "cutsheetdock.h"

#include "contracts/failure.h"
#include "cutsheetpanel.h"
#include "packagepreview.h"
#include "store/storejob.h"
#include "workstation.h"

#include <QAction>
#include <algorithm>
#include <QDir>
#include <QDockWidget>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryDir>

namespace {

const QString kDock = QStringLiteral("dockCutSheets");
const QString kLineItems = QStringLiteral("Line Items");

QDockWidget* dockOf(Workstation& window)
{
    return window.findChild<QDockWidget*>(kDock);
}

QTabWidget* pagesOf(Workstation& window)
{
    return window.findChild<QTabWidget*>(QStringLiteral("tabPages"));
}

// Set on the dock while its panel waits to be made for the open job.
const char* const kPanelWanted = "zebPanelWanted";

// The open job's panel in the dock, in place of what it held.
void makePanel(Workstation& window)
{
    QDockWidget* dock = dockOf(window);
    CutSheetPanel::Hooks hooks;
    hooks.preview = [&window] { CutSheetDock::preview(window); };
    QWidget* old = dock->widget();
    dock->setWidget(new CutSheetPanel(window.store(), window.job(), hooks, dock));
    dock->setProperty(kPanelWanted, false);
    delete old;
}

// The dock follows the Line Items page: shown with it, hidden on the other pages.
void follow(Workstation& window)
{
    QDockWidget* dock = dockOf(window);
    QTabWidget* pages = pagesOf(window);
    if (!dock || !pages || !window.job())
        return;
    const bool show =
        pages->currentIndex() >= 0 && pages->tabText(pages->currentIndex()) == kLineItems;
    dock->setVisible(show);
    // A narrow column beside the lines, which keep most of the window.
    if (show)
        window.resizeDocks({dock}, {std::max(260, window.width() / 3)}, Qt::Horizontal);
}

}  // namespace

void CutSheetDock::install(Workstation& window)
{
    auto* dock = new QDockWidget(QStringLiteral("Cut Sheets"), &window);
    dock->setObjectName(kDock);
    dock->setAllowedAreas(Qt::RightDockWidgetArea | Qt::BottomDockWidgetArea);
    window.addDockWidget(Qt::RightDockWidgetArea, dock);
    dock->hide();

    QAction* toggle = dock->toggleViewAction();
    toggle->setObjectName(QStringLiteral("actCutSheets"));
    toggle->setText(QStringLiteral("&Cut Sheets"));
    if (auto* view = window.menuBar()->findChild<QMenu*>(QStringLiteral("mnuView")))
        view->addAction(toggle);
    if (auto* file = window.menuBar()->findChild<QMenu*>(QStringLiteral("mnuFile"))) {
        auto* preview = new QAction(QStringLiteral("Pre&view Package..."), file);
        preview->setObjectName(QStringLiteral("actPreviewPackage"));
        preview->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E));
        QObject::connect(preview, &QAction::triggered, &window,
                         [&window] { CutSheetDock::preview(window); });
        const QList<QAction*> actions = file->actions();
        // Beside Export Package.
        file->insertAction(actions.size() > 2 ? actions[2] : nullptr, preview);
    }
    if (QTabWidget* pages = pagesOf(window))
        QObject::connect(pages, &QTabWidget::currentChanged, &window,
                         [&window] { follow(window); });
    // Opening a job costs no panel before its first paint: it is made in idle time after the
    // pages, or when the dock shows first (beside the Line Items page, or from View > Cut Sheets).
    QObject::connect(dock, &QDockWidget::visibilityChanged, &window, [&window, dock](bool shown) {
        if (shown && dock->property(kPanelWanted).toBool() && window.job())
            makePanel(window);
    });
}

void CutSheetDock::bind(Workstation& window)
{
    QDockWidget* dock = dockOf(window);
    if (!dock || !window.job())
        return;
    // The panel of the job before goes; the job's own is made when the dock is shown.
    if (dock->isVisible()) {
        makePanel(window);
    } else {
        QWidget* old = dock->widget();
        dock->setWidget(new QWidget(dock));
        dock->setProperty(kPanelWanted, true);
        delete old;
    }
    follow(window);
}

void CutSheetDock::prepare(Workstation& window)
{
    QDockWidget* dock = dockOf(window);
    if (!dock || dock->isVisible() || !dock->property(kPanelWanted).toBool() || !window.job())
        return;
    try {
        makePanel(window);
    } catch (const ZebObjects::Failure&) {
        // Nobody asked for the panel yet: it is made, and a failure shown, when the dock shows.
        dock->setProperty(kPanelWanted, true);
    }
}

void CutSheetDock::linesChanged(Workstation& window)
{
    QDockWidget* dock = dockOf(window);
    if (dock && !dock->isVisible() && window.job())
        dock->setProperty(kPanelWanted, true);
}

QByteArray CutSheetDock::packageBytes(Workstation& window)
{
    if (!window.job())
        return {};
    QTemporaryDir scratch;
    const QString path = scratch.filePath(QStringLiteral("package.pdf"));
    if (!scratch.isValid() || !window.exportPackage(path))
        return {};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    window.statusBar()->clearMessage();
    return file.readAll();
}

void CutSheetDock::preview(Workstation& window)
{
    const QByteArray pdf = packageBytes(window);
    if (pdf.isEmpty())
        return;
    PackagePreview dialog(
        pdf, QDir::home().filePath(QStringLiteral("%1 Submittal.pdf").arg(window.job()->number())),
        {}, &window);
    dialog.exec();
    if (!dialog.exportedPath().isEmpty())
        window.statusBar()->showMessage(
            QStringLiteral("Package written to %1").arg(dialog.exportedPath()), 5000);
}
