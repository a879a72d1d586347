#pragma once

#include "zebsubctl_export.h"

#include "frame/usercontrol.h"

#include <QList>
#include <QMetaObject>

#include <memory>

class QAction;
class QMenu;
class QPushButton;

namespace ZebObjects {
class TextObject;
class TextObjects;
}  // namespace ZebObjects

namespace ZebSubCtl {

class CheckBox;
class KeyedListView;
class LineShape;
class MultiLineTextBox;
class ToolTipRegistry;

/// The paragraph list: the texts of one text collection with a check box each, and, as the host
/// allows, an entry area to add paragraphs, editing in frmEditText, deleting, reordering and
/// saving the order. Every command goes to the collection; the list follows the collection's
/// events. Registered as "ZebSubmittalControls.ctlTextSelect".
class ZEBSUBCTL_EXPORT ctlTextSelect : public UserControl {
    Q_OBJECT
    Q_CLASSINFO("ToolTip", "List of reusable text paragraphs or comments to pick from.")
    Q_CLASSINFO("WhatsThis",
                "ctlTextSelect lists reusable text paragraphs or comments with a check box each "
                "and, as its design allows, adds, edits, deletes, reorders and saves them. Bind "
                "it to a text collection through its TextObjects property at run time.")
    Q_CLASSINFO("IncludeFile", "controls/textselect/ctltextselect.h")
    /// The kind of text handed to each bound collection; 0 by default, saved with the design.
    Q_PROPERTY(qint32 TextObjectType READ TextObjectType WRITE setTextObjectType)
    /// 32 bits by name, as forms and the saved design hold it; narrowed on the way in.
    Q_PROPERTY(qint32 MaxLength READ MaxLength WRITE setMaxLengthByName)
    /// Whether paragraphs can be added, edited and deleted; false by default, saved with the
    /// design.
    Q_PROPERTY(bool AllowUpdate READ AllowUpdate WRITE setAllowUpdate)
    /// Whether paragraphs can be moved up and down; false by default, saved with the design.
    Q_PROPERTY(bool AllowReorder READ AllowReorder WRITE setAllowReorder)
    /// Whether Save Changes saves the order; false by default, saved with the design.
    Q_PROPERTY(bool AllowSave READ AllowSave WRITE setAllowSave)
    /// The bound text collection; none until the host binds one.
    Q_PROPERTY(std::shared_ptr<ZebObjects::TextObjects> TextObjects READ TextObjects WRITE
                   setTextObjects DESIGNABLE false)
public:
    /// Creates the list, unbound, with every command off, as a child of parent.
    explicit ctlTextSelect(QWidget* parent = nullptr);
    ~ctlTextSelect() override;

    /// Handed to each collection bound later.
    qint32 TextObjectType() const;
    /// Sets TextObjectType and marks it for saving.
    void setTextObjectType(qint32 type);
    /// Returns/Sets the maximum number of characters that can be entered when adding a new
    /// default text object (0: no limit).
    qint16 MaxLength() const;
    /// Sets the maximum length of a new paragraph and marks it for saving; 0 means no limit.
    void setMaxLength(qint16 length);
    /// The by-name and form path: narrows like the design restore (overflow 6 is reported and
    /// leaves the length as it was), then sets through setMaxLength.
    void setMaxLengthByName(qint32 length);
    /// Shows the entry area and enables Edit and Delete.
    bool AllowUpdate() const;
    /// Sets AllowUpdate, showing or hiding the entry area, and marks it for saving.
    void setAllowUpdate(bool allow);
    /// Enables Move Up and Move Down.
    bool AllowReorder() const;
    /// Sets AllowReorder and marks it for saving.
    void setAllowReorder(bool allow);
    /// Lets Save Changes follow the collection's unsaved order.
    bool AllowSave() const;
    /// Sets AllowSave; it takes effect at the collection's next event and is not marked for saving.
    void setAllowSave(bool allow);
    /// The bound collection, or none.
    std::shared_ptr<ZebObjects::TextObjects> TextObjects() const;
    /// Binds the collection (nothing empties the list) and fills the list from it.
    void setTextObjects(std::shared_ptr<ZebObjects::TextObjects> textObjects);

    /// Rebuilds the list from the bound collection.
    Q_INVOKABLE void Populate();

    void UserControl_WriteProperties(PropertyBag& bag) override;
    void UserControl_ReadProperties(const PropertyBag& bag) override;

protected:
    void UserControl_Resize() override;

private:
    void UserControl_Initialize();
    void UpdateToolTipText();
    void HandleResize();
    void registerToolTips();
    void showEditForm(std::shared_ptr<ZebObjects::TextObject>& textObject, int& item);
    void moveItemDown();
    void moveItemUp();
    /// The traced body of both moves: the collection's move, then the same item selected again.
    void moveSelectedItem(const char* name, void (ZebObjects::TextObjects::*move)(const QString&));

    void cmdAdd_Click();
    void cmdCancel_Click();
    void txtNewComment_Change();
    void cmdSave_Click();
    void cmdMoveUp_Click();
    void cmdMoveDown_Click();
    void mnu_MoveUp_Click();
    void mnu_MoveDown_Click();
    void mnu_Edit_Click();
    void mnu_Delete_Click();
    void ListView_DblClick();
    void ListView_KeyUp(int key, Qt::KeyboardModifiers modifiers);
    void ListView_MouseUp(Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                          const QPoint& pos);
    void ListView_MouseMove(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers,
                            const QPoint& pos);
    void ListView_ItemCheck(int item);

    void mTextObjects_Changed();
    void mTextObjects_ItemAdded(const QString& key);
    void mTextObjects_ItemDeleted(const QString& key);
    void mTextObjects_ItemInserted(const QString& key, qint32 position);
    void mTextObjects_ItemMoved();
    void mTextObjects_OrderSaved();

    /// The edit dialog for the selected item, then its tool tips again.
    void editSelectedItem();

    MultiLineTextBox* txtNewComment;
    CheckBox* chkIsSelected;
    QPushButton* cmdAdd;
    QPushButton* cmdCancel;
    LineShape* Line1;
    KeyedListView* ListView;
    QPushButton* cmdMoveUp;
    QPushButton* cmdMoveDown;
    QPushButton* cmdSave;
    QMenu* mnu_RightClick;
    QAction* mnu_Edit;
    QAction* mnu_Sep1;
    QAction* mnu_MoveUp;
    QAction* mnu_MoveDown;
    QAction* mnu_Sep2;
    QAction* mnu_Delete;

    std::shared_ptr<ZebObjects::TextObjects> mTextObjects;
    QList<QMetaObject::Connection> mConnections;
    qint32 mTextObjectType = 0;
    bool mAllowUpdate = false;
    bool mAllowReorder = false;
    bool mAllowSave = false;
    ToolTipRegistry* mToolTip = nullptr;
};

}  // namespace ZebSubCtl
