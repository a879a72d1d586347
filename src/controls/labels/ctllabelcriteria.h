#pragma once

#include "zebsubctl_export.h"

#include "frame/usercontrol.h"

#include <memory>

class QLabel;
class QPushButton;

namespace ZebObjects {
class Labels;
}  // namespace ZebObjects

namespace ZebSubCtl {

class KeyedListView;
class LineShape;

/// The label field chooser: the fields that are off the label on the left, those on it on the
/// right in print order. Moving a field writes its print order into the bound label definition
/// at once. The panel is meant to be bound once: it never empties its lists.
/// Registered as "ZebSubmittalControls.ctlLabelCriteria".
class ZEBSUBCTL_EXPORT ctlLabelCriteria : public UserControl {
    Q_OBJECT
    Q_CLASSINFO("ToolTip", "Which fields print on labels, and in which order.")
    Q_CLASSINFO("WhatsThis",
                "ctlLabelCriteria chooses the fields that print on a submittal's labels and their"
                " order. Bind it to the labels through its Labels property at run time.")
    Q_CLASSINFO("IncludeFile", "controls/labels/ctllabelcriteria.h")
    /// The bound label definition; none until the host binds one.
    Q_PROPERTY(
        std::shared_ptr<ZebObjects::Labels> Labels READ Labels WRITE setLabels DESIGNABLE false)
public:
    /// Creates the chooser, unbound, as a child of parent.
    explicit ctlLabelCriteria(QWidget* parent = nullptr);
    ~ctlLabelCriteria() override;

    /// The bound label definition, or none.
    std::shared_ptr<ZebObjects::Labels> Labels() const;
    /// Stores the reference, then fills both lists from it.
    void setLabels(std::shared_ptr<ZebObjects::Labels> labels);

private:
    void Populate();
    void addField();
    void removeField();
    void reorderSelectedItems();
    void sizeItUp();

    void cmdAdd_Click();
    void cmdRemove_Click();
    void lsvAvailableItems_DblClick();
    void lsvAvailableItems_KeyDown(qint16& KeyCode, qint16 Shift);
    void lsvSelectedItems_DblClick();
    void lsvSelectedItems_KeyDown(qint16& KeyCode, qint16 Shift);

    QLabel* Image2;
    QLabel* lblIncludeOnLabel;
    LineShape* lineInclude;
    QLabel* lblAvailableFields;
    KeyedListView* lsvAvailableItems;
    QPushButton* cmdAdd;
    QPushButton* cmdRemove;
    QLabel* lblIssueToLisHeading;
    KeyedListView* lsvSelectedItems;
    QLabel* lblIncludeInfo;

    std::shared_ptr<ZebObjects::Labels> mLabels;
};

}  // namespace ZebSubCtl
