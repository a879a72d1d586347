#include "platform/accessiblegroups.h"

#include "platform/checkbox.h"
#include "platform/optionbutton.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>
#include <QRegularExpression>

namespace ZebSubCtl {

namespace {

struct Group {
    QString name;
    QList<QPointer<QWidget>> members;
    unsigned id = 0;  // the grouping's accessible object, made on first use
};

QHash<const QWidget*, QList<Group>>& panels()
{
    static QHash<const QWidget*, QList<Group>> registry;
    return registry;
}

// The panel and group a member belongs to.
QHash<const QWidget*, std::pair<const QWidget*, int>>& members()
{
    static QHash<const QWidget*, std::pair<const QWidget*, int>> registry;
    return registry;
}

QAccessibleInterface* groupInterface(const QWidget* panel, int index);

class GroupAccessible : public QAccessibleInterface {
public:
    GroupAccessible(QWidget* panel, int index) : m_panel(panel), m_index(index) { }

    const Group* group() const
    {
        if (!m_panel)
            return nullptr;
        const auto it = panels().constFind(m_panel.data());
        return it != panels().constEnd() && m_index < it->size() ? &it->at(m_index) : nullptr;
    }
    bool isValid() const override { return group() != nullptr; }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override
    {
        return m_panel ? m_panel->window()->windowHandle() : nullptr;
    }
    QAccessibleInterface* parent() const override
    {
        return m_panel ? QAccessible::queryAccessibleInterface(m_panel.data()) : nullptr;
    }
    int childCount() const override { return group() ? int(group()->members.size()) : 0; }
    QAccessibleInterface* child(int index) const override
    {
        const Group* g = group();
        if (!g || index < 0 || index >= g->members.size() || !g->members.at(index))
            return nullptr;
        return QAccessible::queryAccessibleInterface(g->members.at(index).data());
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        const Group* g = group();
        if (!g || !child)
            return -1;
        for (int i = 0; i < g->members.size(); ++i)
            if (g->members.at(i) && g->members.at(i).data() == child->object())
                return i;
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override
    {
        for (int i = 0; i < childCount(); ++i)
            if (QAccessibleInterface* c = child(i); c && c->rect().contains(x, y))
                return c;
        return nullptr;
    }
    QString text(QAccessible::Text t) const override
    {
        return t == QAccessible::Name && group() ? group()->name : QString();
    }
    void setText(QAccessible::Text, const QString&) override { }
    QRect rect() const override
    {
        QRect r;
        if (const Group* g = group())
            for (const auto& m : g->members)
                if (m && m->isVisible())
                    r |= QRect(m->mapToGlobal(QPoint(0, 0)), m->size());
        return r;
    }
    QAccessible::Role role() const override { return QAccessible::Grouping; }
    QAccessible::State state() const override
    {
        QAccessible::State s;
        s.invisible = true;
        if (const Group* g = group())
            for (const auto& m : g->members)
                if (m && m->isVisible())
                    s.invisible = false;
        return s;
    }

private:
    QPointer<QWidget> m_panel;
    int m_index;
};

QAccessibleInterface* groupInterface(const QWidget* panel, int index)
{
    auto it = panels().find(panel);
    if (it == panels().end() || index < 0 || index >= it->size())
        return nullptr;
    Group& g = (*it)[index];
    if (QAccessibleInterface* made = g.id ? QAccessible::accessibleInterface(g.id) : nullptr)
        return made;
    auto* iface = new GroupAccessible(const_cast<QWidget*>(panel), index);
    g.id = QAccessible::registerAccessibleInterface(iface);
    return iface;
}

// The panel shows each group where its first member would be, and the members inside it.
class GroupedPanelAccessible : public QAccessibleWidget {
public:
    explicit GroupedPanelAccessible(QWidget* panel) : QAccessibleWidget(panel) { }

    QList<QAccessibleInterface*> shown() const
    {
        QList<QAccessibleInterface*> out;
        QList<int> placed;
        for (int i = 0; i < QAccessibleWidget::childCount(); ++i) {
            QAccessibleInterface* c = QAccessibleWidget::child(i);
            if (!c)
                continue;
            const auto m = members().constFind(static_cast<QWidget*>(c->object()));
            if (m == members().constEnd() || m->first != widget()) {
                out.append(c);
            } else if (!placed.contains(m->second)) {
                placed.append(m->second);
                out.append(groupInterface(widget(), m->second));
            }
        }
        return out;
    }
    int childCount() const override { return int(shown().size()); }
    QAccessibleInterface* child(int index) const override { return shown().value(index); }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        return int(shown().indexOf(const_cast<QAccessibleInterface*>(child)));
    }
};

// A check box or option button in a group: what Qt's own button says, with the group as parent.
class GroupMemberAccessible : public QAccessibleWidget {
public:
    GroupMemberAccessible(QAbstractButton* button, QAccessible::Role role)
        : QAccessibleWidget(button, role)
    { }

    QAbstractButton* button() const { return static_cast<QAbstractButton*>(widget()); }

    QString text(QAccessible::Text t) const override
    {
        QString own = QAccessibleWidget::text(t);
        if (t == QAccessible::Name && own.isEmpty()) {
            own = button()->text();
            own.remove(QRegularExpression(QStringLiteral("&(?!&)")));
        }
        return own;
    }
    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        s.checkable = true;
        if (const auto* box = qobject_cast<const CheckBox*>(button())) {
            s.checked = box->value() == 1;
            s.checkStateMixed = box->value() == 2;
        } else {
            s.checked = button()->isChecked();
        }
        return s;
    }
    QStringList actionNames() const override
    {
        if (role() == QAccessible::CheckBox)
            return {toggleAction(), setFocusAction()};
        return {pressAction(), setFocusAction()};
    }
    void doAction(const QString& name) override
    {
        if (name == toggleAction() || name == pressAction())
            button()->click();
        else if (name == setFocusAction())
            button()->setFocus(Qt::OtherFocusReason);
    }
    QAccessibleInterface* parent() const override
    {
        const auto m = members().constFind(widget());
        if (m != members().constEnd())
            if (QAccessibleInterface* g = groupInterface(m->first, m->second))
                return g;
        return QAccessibleWidget::parent();
    }
};

QAccessibleInterface* groupsFactory(const QString& className, QObject* object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    auto* w = static_cast<QWidget*>(object);
    if (panels().contains(w) && className == QLatin1String(object->metaObject()->className()))
        return new GroupedPanelAccessible(w);
    if (members().contains(w)) {
        if (className == QLatin1String("ZebSubCtl::CheckBox"))
            return new GroupMemberAccessible(static_cast<QAbstractButton*>(w),
                                             QAccessible::CheckBox);
        if (className == QLatin1String("ZebSubCtl::OptionButton"))
            return new GroupMemberAccessible(static_cast<QAbstractButton*>(w),
                                             QAccessible::RadioButton);
    }
    return nullptr;
}

// An interface made before the widget was known here is replaced by this file's own.
template <class Ours>
void replaceInterface(QWidget* w)
{
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(w);
    if (iface && !dynamic_cast<Ours*>(iface))
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(iface));
}

}  // namespace

void declareGroupedPanel(QWidget* panel)
{
    static const bool installed = [] {
        QAccessible::installFactory(&groupsFactory);
        return true;
    }();
    Q_UNUSED(installed);
    if (panels().contains(panel))
        return;
    panels().insert(panel, {});
    QObject::connect(panel, &QObject::destroyed, [panel] {
        for (const Group& g : panels().value(panel))
            if (g.id)
                QAccessible::deleteAccessibleInterface(g.id);
        panels().remove(panel);
        for (auto it = members().begin(); it != members().end();)
            it = it->first == panel ? members().erase(it) : std::next(it);
    });
    replaceInterface<GroupedPanelAccessible>(panel);
}

void groupForScreenReaders(QWidget* panel, const QString& name, const QList<QWidget*>& widgets)
{
    declareGroupedPanel(panel);
    Group g;
    g.name = name;
    for (QWidget* w : widgets)
        g.members.append(w);
    auto& groups = panels()[panel];
    groups.append(g);
    for (QWidget* w : widgets) {
        members().insert(w, {panel, int(groups.size()) - 1});
        replaceInterface<GroupMemberAccessible>(w);
    }
}

}  // namespace ZebSubCtl
