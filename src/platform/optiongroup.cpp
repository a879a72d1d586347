#include "platform/optiongroup.h"

#include "contracts/failure.h"
#include "platform/optionbutton.h"

#include <QButtonGroup>

#include <algorithm>

namespace ZebSubCtl {

OptionGroup::OptionGroup(QObject* parent) : QObject(parent), m_group(new QButtonGroup(this))
{
    m_group->setExclusive(true);
    connect(m_group, &QButtonGroup::idToggled, this, [this](int id, bool checked) {
        updateTabStop();
        if (checked)
            emit optionClicked(id);
    });
}

OptionGroup::~OptionGroup()
{
    for (QAbstractButton* b : m_group->buttons()) {
        if (auto* option = qobject_cast<OptionButton*>(b))
            option->m_group = nullptr;
    }
}

void OptionGroup::add(int index, OptionButton* button)
{
    if (m_group->button(index) != nullptr || index < 0)
        throw ZebObjects::Failure(360, QStringLiteral("ZebSubCtl"),
                                  QStringLiteral("Object already loaded"));
    m_group->addButton(button, index);
    button->m_group = this;
    updateTabStop();
}

OptionButton* OptionGroup::button(int index) const
{
    auto* b = qobject_cast<OptionButton*>(m_group->button(index));
    if (b == nullptr)
        throw ZebObjects::Failure::controlArrayElementMissing(index);
    return b;
}

int OptionGroup::count() const
{
    return static_cast<int>(m_group->buttons().size());
}

QList<int> OptionGroup::indices() const
{
    QList<int> ids;
    for (QAbstractButton* b : m_group->buttons())
        ids.append(m_group->id(b));
    std::sort(ids.begin(), ids.end());
    return ids;
}

int OptionGroup::selectedIndex() const
{
    return m_group->checkedId();
}

int OptionGroup::indexOf(const OptionButton* button) const
{
    for (QAbstractButton* b : m_group->buttons()) {
        if (b == button)
            return m_group->id(b);
    }
    return -1;
}

void OptionGroup::updateTabStop()
{
    // Tab enters a group at its selected button (the first one while none is), and the next Tab
    // leaves the group; the arrow keys move inside it.
    const QList<int> ids = indices();
    if (ids.isEmpty())
        return;
    QAbstractButton* stop = m_group->checkedButton();
    if (stop == nullptr)
        stop = m_group->button(ids.first());
    for (QAbstractButton* b : m_group->buttons())
        b->setFocusPolicy(b == stop ? Qt::StrongFocus : Qt::ClickFocus);
}

void OptionGroup::step(OptionButton* from, bool forward)
{
    const QList<int> ids = indices();
    const int n = static_cast<int>(ids.size());
    const int at = static_cast<int>(ids.indexOf(indexOf(from)));
    if (at < 0)
        return;
    for (int i = 1; i < n; ++i) {
        const int next = forward ? (at + i) % n : (at - i + n) % n;
        OptionButton* candidate = button(ids.at(next));
        if (!candidate->isEnabled() || candidate->isHidden())
            continue;
        candidate->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        candidate->setValue(true);
        return;
    }
}

}  // namespace ZebSubCtl
