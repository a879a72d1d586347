#include "workbenchwindow.h"

#include "contracts/failure.h"
#include "frame/controlregistry.h"
#include "frame/units.h"
#include "frame/usercontrol.h"
#include "workbenchdata.h"

#include <QDockWidget>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPlainTextEdit>
#include <QResizeEvent>
#include <QScrollArea>
#include <QTabWidget>

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
        m_controls.front()->setGeometry(rect().adjusted(kPageMargin, kPageMargin, -kPageMargin,
                                                        -kPageMargin));
    }

    QList<QWidget*> m_controls;
    QRect m_design;
};
}  // namespace

WorkbenchWindow::WorkbenchWindow(const FormDescription& form, QWidget* parent)
    : QMainWindow(parent), m_form(form)
{
    setObjectName(QStringLiteral("frmWorkbench"));
    setWindowTitle(form.title);
    resize(form.width, form.height);

    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("tabPages"));
    m_tabs->setAccessibleName(QStringLiteral("Pages"));
    m_tabs->setAccessibleDescription(QStringLiteral("The pages of the open submittal"));
    setCentralWidget(m_tabs);

    m_dock = new QDockWidget(QStringLiteral("Diagnostics"), this);
    m_dock->setObjectName(QStringLiteral("dockDiagnostics"));
    m_log = new QPlainTextEdit(m_dock);
    m_log->setObjectName(QStringLiteral("txtDiagnostics"));
    m_log->setAccessibleName(QStringLiteral("Diagnostics"));
    m_log->setAccessibleDescription(QStringLiteral("What the controls logged"));
    m_log->setReadOnly(true);
    m_log->setMaximumBlockCount(5000);
    m_dock->setWidget(m_log);
    addDockWidget(Qt::BottomDockWidgetArea, m_dock);
    // The pages come first; the log is for a glance and grows when dragged.
    resizeDocks({m_dock}, {110}, Qt::Vertical);
}

WorkbenchWindow::WorkbenchWindow(const FormDescription& form, WorkbenchData& data, QWidget* parent)
    : WorkbenchWindow(form, parent)
{
    buildPages(data);
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
}

void WorkbenchWindow::clearPages()
{
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
    for (const FormPage& page : m_form.pages) {
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
            continue;
        }
        auto* scroll = new QScrollArea;
        scroll->setObjectName(QStringLiteral("scr") + page.title);
        scroll->setFrameShape(QFrame::NoFrame);
        scroll->setWidget(canvas);
        scroll->setWidgetResizable(true);
        m_tabs->addTab(scroll, page.title);
    }
}

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
            m_problems.append(QStringLiteral("%1.%2: %3").arg(control.name, it.key(), f.Description()));
        }
    }
    for (const auto& [property, value] : control.runtimeProperties) {
        try {
            setRuntimeProperty(created, property, value);
        } catch (const ZebObjects::Failure& f) {
            m_problems.append(QStringLiteral("%1.%2: %3").arg(control.name, property, f.Description()));
        }
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

FormDescription WorkbenchWindow::currentDesign() const
{
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

QByteArray WorkbenchWindow::currentDesignJson() const
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
