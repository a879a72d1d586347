#include "platform/tabbaraccessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>
#include <QTabBar>

#include <utility>

namespace ZebSubCtl {

namespace {

// "&General" reads "General"; "&&" is a shown ampersand.
QString withoutAccessKey(const QString& caption)
{
    QString out;
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (caption.at(i) == u'&' && i + 1 < caption.size())
            ++i;
        out.append(caption.at(i));
    }
    return out;
}

class TabAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    TabAccessible(QTabBar* bar, int index) : m_bar(bar), m_index(index) { }

    bool isValid() const override { return m_bar && m_index < m_bar->count(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_bar ? m_bar->window()->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override
    {
        return m_bar ? QAccessible::queryAccessibleInterface(m_bar.data()) : nullptr;
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessible::Role role() const override { return QAccessible::PageTab; }
    void setText(QAccessible::Text, const QString&) override { }

    QString text(QAccessible::Text t) const override
    {
        if (!isValid())
            return {};
        switch (t) {
        case QAccessible::Name: {
            QString name = m_bar->accessibleTabName(m_index);
            if (name.isEmpty())
                name = withoutAccessKey(m_bar->tabText(m_index));
            return name;
        }
        case QAccessible::Description: return m_bar->tabToolTip(m_index);
        default: return {};
        }
    }

    QRect rect() const override
    {
        if (!isValid())
            return {};
        const QRect r = m_bar->tabRect(m_index);
        return QRect(m_bar->mapToGlobal(r.topLeft()), r.size());
    }

    QAccessible::State state() const override
    {
        QAccessible::State s;
        if (!isValid()) {
            s.invalid = true;
            return s;
        }
        const bool current = m_bar->currentIndex() == m_index;
        s.selectable = true;
        s.focusable = true;
        s.selected = current;
        s.focused = current && m_bar->hasFocus();
        s.disabled = !m_bar->isTabEnabled(m_index);
        s.invisible = !m_bar->isVisible() || !m_bar->isTabVisible(m_index)
                      || !m_bar->rect().intersects(m_bar->tabRect(m_index));
        return s;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override
    {
        if (isValid() && name == pressAction())
            m_bar->setCurrentIndex(m_index);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QPointer<QTabBar> m_bar;
    int m_index;
};

// The bar's tabs come first, numbered as the bar numbers them in its own events; its other
// children (the scroll buttons) follow.
class TabBarAccessible : public QAccessibleWidget {
public:
    explicit TabBarAccessible(QTabBar* bar) : QAccessibleWidget(bar, QAccessible::PageTabList) { }
    ~TabBarAccessible() override
    {
        for (const unsigned id : std::as_const(m_tabs))
            QAccessible::deleteAccessibleInterface(id);
    }

    int childCount() const override { return bar()->count() + QAccessibleWidget::childCount(); }

    QAccessibleInterface* child(int index) const override
    {
        const int tabs = bar()->count();
        if (index < 0)
            return nullptr;
        if (index >= tabs)
            return QAccessibleWidget::child(index - tabs);
        while (m_tabs.size() <= index)
            m_tabs.append(QAccessible::registerAccessibleInterface(
                new TabAccessible(bar(), int(m_tabs.size()))));
        return QAccessible::accessibleInterface(m_tabs.at(index));
    }

    int indexOfChild(const QAccessibleInterface* child) const override
    {
        for (int i = 0; i < m_tabs.size() && i < bar()->count(); ++i)
            if (QAccessible::accessibleInterface(m_tabs.at(i)) == child)
                return i;
        const int other = QAccessibleWidget::indexOfChild(child);
        return other < 0 ? -1 : other + bar()->count();
    }

    QAccessibleInterface* childAt(int x, int y) const override
    {
        const QPoint at = bar()->mapFromGlobal(QPoint(x, y));
        const int tab = bar()->tabAt(at);
        return tab >= 0 ? child(tab) : QAccessibleWidget::childAt(x, y);
    }

private:
    QTabBar* bar() const { return static_cast<QTabBar*>(widget()); }
    mutable QList<unsigned> m_tabs;
};

QAccessibleInterface* tabBarFactory(const QString& className, QObject* object)
{
    if (className == QLatin1String("QTabBar") && object && object->isWidgetType())
        return new TabBarAccessible(static_cast<QTabBar*>(object));
    return nullptr;
}

}  // namespace

void installTabBarAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(&tabBarFactory);
        return true;
    }();
    Q_UNUSED(installed);
}

}  // namespace ZebSubCtl
