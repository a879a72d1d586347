#include "workbenchwindow.h"

#include "contracts/failure.h"
#include "frame/controlregistry.h"
#include "frame/units.h"
#include "frame/usercontrol.h"
#include "platform/accessiblenames.h"
#include "platform/tabbaraccessible.h"
#include "workbenchdata.h"

#include <QApplication>
#include <QDockWidget>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QPlainTextEdit>
#include <QResizeEvent>
#include <QScrollBar>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>

#include <algorithm>

using ZebSubCtl::UserControl;

namespace {
// Empty space kept around a page's controls, in pixels.
constexpr int kPageMargin = 10;

// A page's surface. A single control follows the page's size (its own resize rules lay out its
// insides); several keep their design places. Never smaller than the design, so a small window
// scrolls instead of squeezing the control below what it was drawn for.
class PageCanvas : public QWidget {
public:
    using QWidget::QWidget;

    void addControl(QWidget* control, const QRect& designRect)
    {
        m_controls.append(control);
        m_design = m_design.united(designRect);
        setMinimumSize(m_design.right() + 1 + kPageMargin, m_design.bottom() + 1 + kPageMargin);
        layoutControls();
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QWidget::resizeEvent(event);
        layoutControls();
    }

private:
    void layoutControls()
    {
        if (m_controls.size() != 1)
            return;
        m_controls.front()->setGeometry(
            rect().adjusted(kPageMargin, kPageMargin, -kPageMargin, -kPageMargin));
    }

    QList<QWidget*> m_controls;
    QRect m_design;
};

// Tells once when the page the user sees paints, from whichever of its widgets paints first.
class FirstPaintWatch : public QObject {
public:
    FirstPaintWatch(QTabWidget* pages, std::function<void()> painted, QObject* parent)
        : QObject(parent), m_pages(pages), m_painted(std::move(painted))
    { }
    void setWatching(bool watching)
    {
        if (watching == m_watching)
            return;
        m_watching = watching;
        // Application-wide only while waiting: from the open to its first paint.
        if (watching)
            qApp->installEventFilter(this);
        else
            qApp->removeEventFilter(this);
    }
    ~FirstPaintWatch() override { setWatching(false); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Paint || !watched->isWidgetType())
            return false;
        QWidget* page = m_pages->currentWidget();
        auto* widget = static_cast<QWidget*>(watched);
        if (page && (page == widget || page->isAncestorOf(widget))) {
            setWatching(false);
            m_painted();
        }
        return false;
    }

private:
    QTabWidget* m_pages;
    std::function<void()> m_painted;
    bool m_watching = false;
};
}  // namespace

WorkbenchWindow::WorkbenchWindow(const FormDescription& form, QWidget* parent)
    : QMainWindow(parent), m_form(form)
{
    setObjectName(QStringLiteral("frmWorkbench"));
    setWindowTitle(form.title);
    resize(form.width, form.height);

    ZebSubCtl::installTabBarAccessibility();
    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("tabPages"));
    m_tabs->setAccessibleName(QStringLiteral("Pages"));
    m_tabs->setAccessibleDescription(QStringLiteral("The pages of the open submittal"));
    m_tabs->tabBar()->setAccessibleName(QStringLiteral("Page tabs"));
    m_tabs->tabBar()->setAccessibleDescription(
        QStringLiteral("Choose a page with the arrow keys, or Ctrl+Tab from within a page"));
    setCentralWidget(m_tabs);
    m_paintWatch = new FirstPaintWatch(
        m_tabs,
        [this] {
            m_painted = true;
            if (m_idleWanted && !m_holdBinding)
                m_idleTimer->start();
        },
        this);
    m_idleTimer = new QTimer(this);
    m_idleTimer->setSingleShot(true);
    m_idleTimer->setInterval(0);
    connect(m_idleTimer, &QTimer::timeout, this, [this] { bindNextWhenIdle(); });
    // A page that opens is bound (when it was not yet), read by its name and starts at its
    // first control. The page stack has switched already; nothing is painted before this runs.
    connect(m_tabs, &QTabWidget::currentChanged, this, [this](int index) {
        if (!m_holdBinding)
            bindPage(index);
        if (!m_tabs->tabBar()->hasFocus())
            focusPage();
    });

    m_dock = new QDockWidget(QStringLiteral("Diagnostics"), this);
    m_dock->setObjectName(QStringLiteral("dockDiagnostics"));
    m_log = new QPlainTextEdit(m_dock);
    m_log->setObjectName(QStringLiteral("txtDiagnostics"));
    m_log->setAccessibleName(QStringLiteral("Diagnostics"));
    m_log->setAccessibleDescription(QStringLiteral("What the controls logged"));
    m_log->setReadOnly(true);
    m_log->setMaximumBlockCount(5000);
    // The log is for a glance with the mouse: Tab goes from page to page without stopping in it.
    m_log->setFocusPolicy(Qt::ClickFocus);
    ZebSubCtl::nameScrollBars(m_log);
    m_log->verticalScrollBar()->setAccessibleName(QStringLiteral("Diagnostics scroll bar"));
    m_dock->setWidget(m_log);
    addDockWidget(Qt::BottomDockWidgetArea, m_dock);
    // The pages come first; the log is for a glance and grows when dragged.
    resizeDocks({m_dock}, {110}, Qt::Vertical);
    // Shown from View > Diagnostics; a user starts without it.
    m_dock->hide();
}

WorkbenchWindow::WorkbenchWindow(const FormDescription& form, WorkbenchData& data, QWidget* parent)
    : WorkbenchWindow(form, parent)
{
    buildPages(data);
    focusPage();
}

WorkbenchWindow::~WorkbenchWindow()
{
    // Controls go before the objects they are bound to are let go by the host.
    clearPages();
}

void WorkbenchWindow::setData(WorkbenchData& data)
{
    clearPages();
    buildPages(data);
    focusPage();
}

void WorkbenchWindow::clearPages()
{
    // Pages that go are not bound on their way out, when the next one becomes the open page,
    // nor later in idle time; the next pages wait for their own first paint.
    stopIdleBinding();
    m_unbound.clear();
    while (m_tabs->count() > 0) {
        QWidget* page = m_tabs->widget(0);
        m_tabs->removeTab(0);
        delete page;
    }
    m_controls.clear();
    m_problems.clear();
}

int WorkbenchWindow::pageCount() const
{
    return m_tabs->count();
}

QStringList WorkbenchWindow::pageTitles() const
{
    QStringList titles;
    for (int i = 0; i < m_tabs->count(); ++i)
        titles.append(m_tabs->tabText(i));
    return titles;
}

void WorkbenchWindow::buildPages(WorkbenchData& data)
{
    // The pages bound later share one copy of the objects, held as long as a page waits for it.
    const auto shared = std::make_shared<WorkbenchData>(data);
    const auto& registry = ZebSubCtl::ControlRegistry::instance();
    const qsizetype known = m_problems.size();
    for (int i = 0; i < m_form.pages.size(); ++i) {
        const FormPage& page = m_form.pages.at(i);
        // A page none of whose controls can be created is left out; it is built at once, so
        // that its problems are known now.
        const bool creatable = std::any_of(
            page.controls.begin(), page.controls.end(),
            [&registry](const FormControl& c) { return registry.contains(c.identifier); });
        if (!m_bindWhenShown || !creatable) {
            QWidget* canvas = buildPage(page, data);
            if (!canvas)
                continue;
            auto* scroll = new QScrollArea;
            scroll->setObjectName(QStringLiteral("scr") + page.title);
            scroll->setWidget(canvas);
            addPage(-1, scroll, page.title, nullptr);
            continue;
        }
        auto* scroll = new QScrollArea;
        scroll->setObjectName(QStringLiteral("scr") + page.title);
        addPage(-1, scroll, page.title, [this, i, shared]() -> QWidget* {
            QWidget* canvas = buildPage(m_form.pages.at(i), *shared);
            // Its controls all failed: the page stays, empty, with its problems in the log.
            return canvas ? canvas : new QWidget;
        });
    }
    if (m_problems.size() > known)
        emit problemsFound(m_problems.mid(known));
    if (!m_unbound.isEmpty())
        bindWhenIdle();
}

QWidget* WorkbenchWindow::buildPage(const FormPage& page, WorkbenchData& data)
{
    auto* canvas = new PageCanvas;
    canvas->setObjectName(page.title);
    bool any = false;
    for (const FormControl& control : page.controls) {
        if (UserControl* created = place(canvas, control, data)) {
            canvas->addControl(created, ZebSubCtl::twipsRect(control.left, control.top,
                                                             control.width, control.height));
            any = true;
        }
    }
    if (!any) {
        delete canvas;
        return nullptr;
    }
    return canvas;
}

void WorkbenchWindow::addPage(int at, QScrollArea* scroll, const QString& title,
                              std::function<QWidget*()> bind)
{
    if (scroll->objectName().isEmpty())
        scroll->setObjectName(QStringLiteral("scr") + QString(title).remove(QLatin1Char(' ')));
    if (scroll->accessibleName().isEmpty())
        scroll->setAccessibleName(title + QStringLiteral(" page"));
    // Not a stop of its own: Tab and Ctrl+Tab land on the page's controls.
    scroll->setFocusPolicy(Qt::NoFocus);
    ZebSubCtl::nameScrollBars(scroll);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->installEventFilter(this);
    const bool later = bind && m_bindWhenShown;
    if (later)
        m_unbound.insert(scroll, std::move(bind));
    else if (bind)
        scroll->setWidget(bind());
    const int index = m_tabs->insertTab(at, scroll, title);
    if (!later)
        pageBound(index);
    else
        bindWhenIdle();
}

void WorkbenchWindow::bindPage(int index)
{
    auto* scroll = qobject_cast<QScrollArea*>(m_tabs->widget(index));
    const auto it = m_unbound.find(scroll);
    if (!scroll || it == m_unbound.end())
        return;
    const std::function<QWidget*()> bind = std::move(it.value());
    m_unbound.erase(it);
    const qsizetype known = m_problems.size();
    try {
        scroll->setWidget(bind());
        pageBound(index);
    } catch (const ZebObjects::Failure& f) {
        // Bound from a tab click as well: the failure ends here, shown on the page and in the
        // problems; View > Refresh tries again.
        const QString title = m_tabs->tabText(index);
        m_problems.append(QStringLiteral("%1: %2").arg(title, f.Description()));
        auto* failed = new QLabel(
            QStringLiteral("The %1 page cannot be shown: %2").arg(title, f.Description()));
        failed->setObjectName(QStringLiteral("lblPageFailed"));
        failed->setWordWrap(true);
        failed->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        failed->setMargin(kPageMargin);
        delete scroll->takeWidget();
        scroll->setWidget(failed);
    }
    if (!m_bindingAll && m_problems.size() > known)
        emit problemsFound(m_problems.mid(known));
}

void WorkbenchWindow::bindAllPages()
{
    // One report for the whole walk, after it.
    const qsizetype known = m_problems.size();
    m_bindingAll = true;
    for (int i = 0; i < m_tabs->count(); ++i)
        bindPage(i);
    m_bindingAll = false;
    if (m_problems.size() > known)
        emit problemsFound(m_problems.mid(known));
}

void WorkbenchWindow::bindWhenIdle()
{
    m_idleWanted = true;
    if (m_painted) {
        if (!m_holdBinding)
            m_idleTimer->start();
    } else {
        watchFirstPaint(true);
    }
}

void WorkbenchWindow::watchFirstPaint(bool watch)
{
    static_cast<FirstPaintWatch*>(m_paintWatch)->setWatching(watch);
}

void WorkbenchWindow::stopIdleBinding()
{
    m_idleWanted = false;
    m_painted = false;
    m_idleTimer->stop();
    watchFirstPaint(false);
}

void WorkbenchWindow::bindNextWhenIdle()
{
    if (!m_idleWanted || m_holdBinding)
        return;
    if (!isVisible()) {
        // Closed or hidden: the rest waits until the window paints again.
        m_painted = false;
        watchFirstPaint(true);
        return;
    }
    // The page after the open one first (Ctrl+Tab goes there), then on in tab order.
    const int count = m_tabs->count();
    const int from = std::max(m_tabs->currentIndex(), 0);
    bool bound = false;
    for (int step = 1; step <= count && !bound; ++step) {
        const int index = (from + step) % count;
        if (!isPageBound(index)) {
            bindPage(index);
            bound = true;
        }
    }
    if (m_unbound.isEmpty()) {
        m_idleWanted = false;
        emit pagesReady();
    } else if (bound) {
        m_idleTimer->start();
    } else {
        // What waits is no page of the window's: nothing to do in idle time.
        m_idleWanted = false;
    }
}

bool WorkbenchWindow::isPageBound(int index) const
{
    QWidget* page = m_tabs->widget(index);
    return page && !m_unbound.contains(page);
}

void WorkbenchWindow::holdBinding(bool hold)
{
    m_holdBinding = hold;
    if (!hold && m_tabs->currentIndex() >= 0) {
        bindPage(m_tabs->currentIndex());
        focusPage();
    }
    if (!hold && m_idleWanted && m_painted)
        m_idleTimer->start();
}

QWidget* WorkbenchWindow::pageNamed(const QString& title) const
{
    for (int i = 0; i < m_tabs->count(); ++i)
        if (m_tabs->tabText(i) == title)
            return m_tabs->widget(i);
    return nullptr;
}

void WorkbenchWindow::pageBound(int) { }

UserControl* WorkbenchWindow::place(QWidget* page, const FormControl& control, WorkbenchData& data)
{
    const QRect rect =
        ZebSubCtl::twipsRect(control.left, control.top, control.width, control.height);
    UserControl* created = nullptr;
    try {
        created = ZebSubCtl::ControlRegistry::instance().create(control.identifier, page);
    } catch (const ZebObjects::Failure& f) {
        m_problems.append(QStringLiteral("%1: %2").arg(control.name, f.Description()));
        return nullptr;
    }
    created->setObjectName(control.name);
    created->setGeometry(rect);
    try {
        created->UserControl_ReadProperties(control.properties);
    } catch (const ZebObjects::Failure& f) {
        m_problems.append(QStringLiteral("%1: %2").arg(control.name, f.Description()));
    }
    for (auto it = control.bindings.begin(); it != control.bindings.end(); ++it) {
        try {
            data.bind(created, it.key(), it.value());
        } catch (const ZebObjects::Failure& f) {
            m_problems.append(
                QStringLiteral("%1.%2: %3").arg(control.name, it.key(), f.Description()));
        }
    }
    for (const auto& [property, value] : control.runtimeProperties) {
        try {
            setRuntimeProperty(created, property, value);
        } catch (const ZebObjects::Failure& f) {
            m_problems.append(
                QStringLiteral("%1.%2: %3").arg(control.name, property, f.Description()));
        }
    }
    for (auto it = control.accessibleNames.begin(); it != control.accessibleNames.end(); ++it) {
        QWidget* named = it.key().isEmpty() ? created : created->findChild<QWidget*>(it.key());
        if (named)
            named->setAccessibleName(it.value());
        else
            m_problems.append(
                QStringLiteral("%1: no part \"%2\" to name").arg(control.name, it.key()));
    }
    created->clearPropertyChanged();
    m_controls.append(created);
    return created;
}

void WorkbenchWindow::setRuntimeProperty(UserControl* control, const QString& property,
                                         const QVariant& value)
{
    const QByteArray name = property.toLatin1();
    if (control->metaObject()->indexOfProperty(name.constData()) < 0
        || !control->setProperty(name.constData(), value))
        throw ZebObjects::Failure(ZebObjects::ErrorNumber::NoSuchProperty,
                                  QStringLiteral("zeb-workbench"),
                                  QStringLiteral("Object doesn't support this property or method: "
                                                 "%1.%2 cannot be set to %3")
                                      .arg(control->Name(), property, value.toString()));
}

FormDescription WorkbenchWindow::currentDesign()
{
    bindAllPages();
    FormDescription form = m_form;
    for (FormPage& page : form.pages)
        for (FormControl& control : page.controls)
            if (auto* c = findChild<UserControl*>(control.name)) {
                ZebSubCtl::PropertyBag bag;
                c->UserControl_WriteProperties(bag);
                control.properties = bag;
            }
    return form;
}

QByteArray WorkbenchWindow::currentDesignJson()
{
    const FormDescription form = currentDesign();
    QJsonArray pages;
    for (const FormPage& page : form.pages) {
        QJsonArray controls;
        for (const FormControl& c : page.controls) {
            QJsonObject bind;
            for (auto it = c.bindings.begin(); it != c.bindings.end(); ++it)
                bind.insert(it.key(), it.value());
            QJsonObject o{{QStringLiteral("identifier"), c.identifier},
                          {QStringLiteral("name"), c.name},
                          {QStringLiteral("left"), c.left},
                          {QStringLiteral("top"), c.top},
                          {QStringLiteral("width"), c.width},
                          {QStringLiteral("height"), c.height},
                          {QStringLiteral("properties"), c.properties.toJsonObject()}};
            if (!bind.isEmpty())
                o.insert(QStringLiteral("bind"), bind);
            QJsonObject runtime;
            for (const auto& [property, value] : c.runtimeProperties)
                runtime.insert(property, QJsonValue::fromVariant(value));
            if (!runtime.isEmpty())
                o.insert(QStringLiteral("runtime"), runtime);
            QJsonObject names;
            for (auto it = c.accessibleNames.begin(); it != c.accessibleNames.end(); ++it)
                names.insert(it.key(), it.value());
            if (!names.isEmpty())
                o.insert(QStringLiteral("names"), names);
            controls.append(o);
        }
        pages.append(QJsonObject{{QStringLiteral("title"), page.title},
                                 {QStringLiteral("controls"), controls}});
    }
    const QJsonObject root{{QStringLiteral("title"), form.title},
                           {QStringLiteral("width"), form.width},
                           {QStringLiteral("height"), form.height},
                           {QStringLiteral("pages"), pages}};
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}

void WorkbenchWindow::showPage(int index)
{
    if (index >= 0 && index < m_tabs->count())
        m_tabs->setCurrentIndex(index);
}

bool WorkbenchWindow::eventFilter(QObject* watched, QEvent* event)
{
    // A page that hides with the focus in it hands it straight to the page that opens, so the
    // focus never passes through the tab bar on its way (a screen reader would announce it).
    // The tab bar knows the new page before the page stack has switched.
    if (event->type() == QEvent::Hide && watched != m_tabs->widget(m_tabs->currentIndex())
        && m_tabs->indexOf(static_cast<QWidget*>(watched)) >= 0) {
        QWidget* focused = QApplication::focusWidget();
        if (focused && static_cast<QWidget*>(watched)->isAncestorOf(focused)) {
            // The page that opens gets its controls first, to take the focus.
            if (!m_holdBinding)
                bindPage(m_tabs->currentIndex());
            focusPage();
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void WorkbenchWindow::focusPage()
{
    QWidget* page = m_tabs->widget(m_tabs->currentIndex());
    if (!page)
        return;
    // The control the page had last, else the first one Tab reaches.
    QWidget* target = page->focusWidget();
    if (!target || !target->isVisibleTo(page) || !target->isEnabled()) {
        target = nullptr;
        for (QWidget* w = page->nextInFocusChain(); w && w != page; w = w->nextInFocusChain()) {
            if ((w->focusPolicy() & Qt::TabFocus) && w->isEnabled() && !w->focusProxy()
                && page->isAncestorOf(w) && w->isVisibleTo(page)) {
                target = w;
                break;
            }
        }
    }
    if (target)
        target->setFocus(Qt::TabFocusReason);
}
