#pragma once

#include "zebsubctl_export.h"

#include <QList>
#include <QObject>

class QButtonGroup;

namespace ZebSubCtl {

class OptionButton;

// An indexed group of option buttons: one handler for all of them, told the index of the button
// that became selected. At most one button of the group is selected. The arrow keys move the
// selection to the previous (Up, Left) or next (Down, Right) enabled, visible button in index
// order, wrapping at the ends; Tab stops at the selected button only (at the first while none is
// selected). The group does not own its buttons; their parent widget does.
class ZEBSUBCTL_EXPORT OptionGroup : public QObject {
    Q_OBJECT
public:
    explicit OptionGroup(QObject* parent = nullptr);
    ~OptionGroup() override;

    // Adds a button under an index of its own; an index already in use fails with 360.
    void add(int index, OptionButton* button);
    // The button with this index; an index not in the group fails with 340.
    OptionButton* button(int index) const;
    int count() const;
    // Indices in ascending order.
    QList<int> indices() const;
    // The index of the selected button, or -1 when none is.
    int selectedIndex() const;
    // The index of a member, or -1.
    int indexOf(const OptionButton* button) const;

signals:
    void optionClicked(int index);

private:
    friend class OptionButton;
    void step(OptionButton* from, bool forward);
    void updateTabStop();
    QButtonGroup* buttonGroup() const { return m_group; }

    QButtonGroup* m_group;
};

}  // namespace ZebSubCtl
