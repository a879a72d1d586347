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
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QTabWidget>

using ZebSubCtl::UserControl;

WorkbenchWindow::WorkbenchWindow(const FormDescription& form, WorkbenchData& data, QWidget* parent)
    : QMainWindow(parent), m_form(form)
{
    setObjectName(QStringLiteral("frmWorkbench"));
    setWindowTitle(form.title);
    resize(form.width, form.height);

    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("tabPages"));
    setCentralWidget(m_tabs);
    for (const FormPage& page : form.pages) {
        auto* canvas = new QWidget;
        canvas->setObjectName(page.title);
        int right = 0, bottom = 0;
        for (const FormControl& control : page.controls) {
            place(canvas, control, data);
            right = std::max(right, ZebSubCtl::twipsToPixels(control.left + control.width));
            bottom = std::max(bottom, ZebSubCtl::twipsToPixels(control.top + control.height));
        }
        canvas->setMinimumSize(right + 10, bottom + 10);
        auto* scroll = new QScrollArea;
        scroll->setWidget(canvas);
        scroll->setWidgetResizable(true);
        m_tabs->addTab(scroll, page.title);
    }

    auto* dock = new QDockWidget(QStringLiteral("Diagnostics"), this);
    dock->setObjectName(QStringLiteral("dockDiagnostics"));
    m_log = new QPlainTextEdit(dock);
    m_log->setObjectName(QStringLiteral("txtDiagnostics"));
    m_log->setReadOnly(true);
    m_log->setMaximumBlockCount(5000);
    dock->setWidget(m_log);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
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
        auto* missing = new QLabel(QStringLiteral("%1\n%2").arg(control.identifier, f.Description()),
                                   page);
        missing->setObjectName(control.name);
        missing->setFrameShape(QFrame::Box);
        missing->setWordWrap(true);
        missing->setGeometry(rect);
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
