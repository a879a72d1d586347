// The workstation's own pages after the pages the form describes, so that those keep their
// places: the Line Items Editor beside the Line Items page, then the Recipients page; and the
// note on the Line Items page when the job has more lines than it shows.
#include "workstation.h"

#include "cutsheetdock.h"
#include "firstlines.h"
#include "frame/usercontrol.h"
#include "lineitemeditor.h"
#include "recipientspage.h"
#include "store/store.h"
#include "store/storebrands.h"
#include "store/storejob.h"
#include "store/storelineitems.h"

#include <QLabel>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {
const QString kLinesPage = QStringLiteral("Line Items");
const QString kEditorPage = QStringLiteral("Line Items Editor");
const QString kRecipientsPage = QStringLiteral("Recipients");
}  // namespace

void Workstation::addHostPages()
{
    if (!m_job)
        return;
    const int at = tabs()->indexOf(pageNamed(kLinesPage));
    m_linesNoted = m_job->lineItems()->Count() > FirstLines::Displayed;
    addPage(at >= 0 ? at + 1 : -1, new QScrollArea, kEditorPage, [this]() -> QWidget* {
        auto* editor = new LineItemEditor(m_job->lineItems(), FirstLines::Displayed);
        editor->onChanged = [this] { lineItemsChanged(); };
        editor->model()->onBrandEntered = [store = m_store](const QString& brand) {
            store->brands().addMissing({{brand, {}}});
        };
        return editor;
    });
    addPage(at >= 0 ? at + 2 : -1, new QScrollArea, kRecipientsPage,
            [this]() -> QWidget* { return new RecipientsPage(m_store, m_job); });
}

void Workstation::pageBound(int index)
{
    QWidget* page = tabs()->widget(index);
    if (tabs()->tabText(index) == kLinesPage)
        noteLines(index);
    keepCarbonCopyChoice(page);
    followPendingEdits(page);
}

void Workstation::noteLines(int index)
{
    auto* scroll = qobject_cast<QScrollArea*>(tabs()->widget(index));
    if (!scroll || !m_linesNoted)
        return;
    // The display page gets a line above its list that tells it does not show every line.
    QWidget* canvas = scroll->takeWidget();
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("pagLineItems"));
    auto* note = new QLabel(page);
    note->setObjectName(QStringLiteral("lblDisplayNote"));
    note->setWordWrap(true);
    note->setMargin(6);
    note->setStyleSheet(QStringLiteral("QLabel { background: #FFF4CE; color: #3B2F00; }"));
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(note);
    layout->addWidget(canvas, 1);
    scroll->setWidget(page);
    updateDisplayNote();
}

void Workstation::lineItemsChanged()
{
    if (!m_job)
        return;
    // The display page shows the lines as the editor left them.
    if (auto* display = tabs()->findChild<ZebSubCtl::UserControl*>(QStringLiteral("ctlLineItems")))
        setRuntimeProperty(display, QStringLiteral("LineItems"),
                           QVariant::fromValue(std::shared_ptr<ZebObjects::LineItems>(
                               std::make_shared<FirstLines>(m_job->lineItems()))));
    // A job that now has more lines than the page shows, or no longer has, gets its page anew.
    if ((m_job->lineItems()->Count() > FirstLines::Displayed) != m_linesNoted)
        refreshSoon();
    CutSheetDock::linesChanged(*this);
    updateDisplayNote();
    updateStatus();
}

void Workstation::updateDisplayNote()
{
    auto* note = findChild<QLabel*>(QStringLiteral("lblDisplayNote"));
    if (!note || !m_job)
        return;
    const int count = m_job->lineItems()->Count();
    note->setText(QStringLiteral("This page shows the first %1 of the job's %2 lines; the package "
                                 "prints all %2, and the Line Items Editor shows them all.")
                      .arg(FirstLines::Displayed)
                      .arg(count));
    note->setVisible(count > FirstLines::Displayed);
}

LineItemEditor* Workstation::lineItemEditor()
{
    if (!m_job)
        return nullptr;
    bindPage(tabs()->indexOf(pageNamed(kEditorPage)));
    return findChild<LineItemEditor*>(QStringLiteral("pagLineItemEditor"));
}
