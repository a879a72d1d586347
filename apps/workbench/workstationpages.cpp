// The workstation's own pages beside the controls' pages: the Line Items Editor after the Line
// Items page, and the note on that page when the job has more lines than it shows.
#include "workstation.h"

#include "firstlines.h"
#include "frame/usercontrol.h"
#include "lineitemeditor.h"
#include "recipientspage.h"
#include "store/storejob.h"
#include "store/storelineitems.h"

#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {
const QString kLinesPage = QStringLiteral("Line Items");
const QString kEditorPage = QStringLiteral("Line Items Editor");
}  // namespace

void Workstation::addHostPages()
{
    if (!m_job)
        return;
    int at = -1;
    for (int i = 0; i < tabs()->count(); ++i)
        if (tabs()->tabText(i) == kLinesPage)
            at = i;
    if (at >= 0) {
        // The display page gets a line above it that tells when it does not show every line.
        QWidget* display = tabs()->widget(at);
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
        tabs()->removeTab(at);
        layout->addWidget(note);
        layout->addWidget(display, 1);
        tabs()->insertTab(at, page, kLinesPage);
    }
    // Who the letters go to, beside the letter's options.
    int letter = -1;
    for (int i = 0; i < tabs()->count(); ++i)
        if (tabs()->tabText(i) == QLatin1String("Cover Letter Options"))
            letter = i;
    tabs()->insertTab(letter >= 0 ? letter + 1 : tabs()->count(), new RecipientsPage(m_store, m_job),
                      QStringLiteral("Recipients"));
    if (letter >= 0 && at > letter)
        ++at;
    auto* editor = new LineItemEditor(m_job->lineItems(), FirstLines::Displayed);
    editor->onChanged = [this] { lineItemsChanged(); };
    tabs()->insertTab(at >= 0 ? at + 1 : tabs()->count(), editor, kEditorPage);
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

LineItemEditor* Workstation::lineItemEditor() const
{
    return findChild<LineItemEditor*>(QStringLiteral("pagLineItemEditor"));
}
