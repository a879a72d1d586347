#pragma once

#include "formdescription.h"

#include <QHash>
#include <QList>
#include <QMainWindow>

#include <functional>
#include <memory>

class QDockWidget;
class QPlainTextEdit;
class QScrollArea;
class QTabWidget;
class QTimer;
class WorkbenchData;
namespace ZebSubCtl {
class UserControl;
}

// The host's main window: one tab per form page with its controls, a page whose controls all
// failed to be created left out, and a dockable pane that shows the diagnostic log. A window may
// bind its pages when they are first shown (setBindPagesWhenShown): opening then costs the page
// the user sees, and whatever reads a page's controls asks for it to be bound first (bindPage,
// bindAllPages), so that nothing reads a control that is not bound yet. After the open page was
// painted, the others are bound while the user is idle, one page per pass of the event loop.
class WorkbenchWindow : public QMainWindow {
    Q_OBJECT
public:
    WorkbenchWindow(const FormDescription& form, WorkbenchData& data, QWidget* parent = nullptr);
    ~WorkbenchWindow() override;

    // Drops every page and builds them again over other objects.
    void setData(WorkbenchData& data);
    // Binds the page at index when it is not bound yet, as showing it would.
    void bindPage(int index);
    // Binds every page not bound yet, as visiting each would.
    void bindAllPages();
    bool isPageBound(int index) const;
    // Whether every page has its content.
    bool allPagesBound() const { return m_unbound.isEmpty(); }
    // Drops every page.
    void clearPages();
    int pageCount() const;
    QStringList pageTitles() const;
    QDockWidget* diagnosticsDock() const { return m_dock; }

    // The controls of the pages bound so far.
    QList<ZebSubCtl::UserControl*> controls() const { return m_controls; }
    QPlainTextEdit* logView() const { return m_log; }
    // Problems met while building the pages bound so far (a control that could not be created,
    // restored or bound); the form still shows everything else. Each building step tells its
    // own with problemsFound.
    QStringList problems() const { return m_problems; }
    // The form with every control's current saved design; every page is bound first.
    FormDescription currentDesign();
    QByteArray currentDesignJson();
    void showPage(int index);
    // Gives the focus to the first control of the open page.
    void focusPage();

    // Sets a property that is not saved with the design, by name, as a host does in code after
    // binding. A name the control does not have, or a value it does not take, fails with 438.
    static void setRuntimeProperty(ZebSubCtl::UserControl* control, const QString& property,
                                   const QVariant& value);

signals:
    // Problems met while building pages or binding one of them (when it was first shown, read,
    // or bound in idle time), each told once.
    void problemsFound(const QStringList& problems);
    // The pages not shown yet were all bound while the user was idle.
    void pagesReady();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    // From the next setData on, each page is bound when first shown or asked for, or in idle
    // time after the open page's first paint.
    void setBindPagesWhenShown(bool whenShown) { m_bindWhenShown = whenShown; }
    // While held, showing a page does not bind it: the host is still adding pages. Releasing
    // binds the open page.
    void holdBinding(bool hold);
    // Adds the page scroll at index (-1: at the end); bind() makes its content when the page is
    // first shown or asked for, or at once when pages are not bound when shown. Without bind,
    // the scroll area holds its content already.
    void addPage(int at, QScrollArea* scroll, const QString& title, std::function<QWidget*()> bind);
    // The scroll area of the page titled title; null when there is none.
    QWidget* pageNamed(const QString& title) const;
    // Runs after the page at index got its content, before it is shown.
    virtual void pageBound(int index);
    // The window without pages, for a host that binds them later.
    explicit WorkbenchWindow(const FormDescription& form, QWidget* parent = nullptr);
    QTabWidget* tabs() const { return m_tabs; }

private:
    // The pages still to bind wait for the first paint of the open page, then go one per pass of
    // the event loop.
    void bindWhenIdle();
    void stopIdleBinding();
    void bindNextWhenIdle();
    void watchFirstPaint(bool watch);

    void buildPages(WorkbenchData& data);
    QWidget* buildPage(const FormPage& page, WorkbenchData& data);
    ZebSubCtl::UserControl* place(QWidget* page, const FormControl& control, WorkbenchData& data);

    FormDescription m_form;
    QTabWidget* m_tabs = nullptr;
    QPlainTextEdit* m_log = nullptr;
    QDockWidget* m_dock = nullptr;
    QList<ZebSubCtl::UserControl*> m_controls;
    QStringList m_problems;
    bool m_bindWhenShown = false;
    bool m_holdBinding = false;
    bool m_bindingAll = false;
    // Pages wait to be bound in idle time; the first paint of the open page came already.
    bool m_idleWanted = false;
    bool m_painted = false;
    QObject* m_paintWatch = nullptr;
    QTimer* m_idleTimer = nullptr;
    // The pages not bound yet, by their scroll area, with what binds them.
    QHash<QWidget*, std::function<QWidget*()>> m_unbound;
};
