#pragma once

#include "formdescription.h"

#include <QList>
#include <QMainWindow>

class QDockWidget;
class QPlainTextEdit;
class QTabWidget;
class WorkbenchData;
namespace ZebSubCtl {
class UserControl;
}

// The host's main window: one tab per form page with its controls, a page whose controls all
// failed to be created left out, and a dockable pane that shows the diagnostic log.
class WorkbenchWindow : public QMainWindow {
    Q_OBJECT
public:
    WorkbenchWindow(const FormDescription& form, WorkbenchData& data, QWidget* parent = nullptr);
    ~WorkbenchWindow() override;

    // Drops every page and builds them again over other objects.
    void setData(WorkbenchData& data);
    // Drops every page.
    void clearPages();
    int pageCount() const;
    QStringList pageTitles() const;
    QDockWidget* diagnosticsDock() const { return m_dock; }

    QList<ZebSubCtl::UserControl*> controls() const { return m_controls; }
    QPlainTextEdit* logView() const { return m_log; }
    // Problems met while building the form (a control that could not be created, restored or
    // bound); the form still shows everything else.
    QStringList problems() const { return m_problems; }
    // The form with every control's current saved design.
    FormDescription currentDesign() const;
    QByteArray currentDesignJson() const;
    void showPage(int index);
    // Gives the focus to the first control of the open page.
    void focusPage();

    // Sets a property that is not saved with the design, by name, as a host does in code after
    // binding. A name the control does not have, or a value it does not take, fails with 438.
    static void setRuntimeProperty(ZebSubCtl::UserControl* control, const QString& property,
                                   const QVariant& value);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    // The window without pages, for a host that binds them later.
    explicit WorkbenchWindow(const FormDescription& form, QWidget* parent = nullptr);
    QTabWidget* tabs() const { return m_tabs; }

private:
    void buildPages(WorkbenchData& data);
    ZebSubCtl::UserControl* place(QWidget* page, const FormControl& control, WorkbenchData& data);

    FormDescription m_form;
    QTabWidget* m_tabs = nullptr;
    QPlainTextEdit* m_log = nullptr;
    QDockWidget* m_dock = nullptr;
    QList<ZebSubCtl::UserControl*> m_controls;
    QStringList m_problems;
};
