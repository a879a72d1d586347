#include "controls/textselect/ctltextselect.h"

#include "contracts/applicationservices.h"
#include "contracts/textobjects.h"
#include "controls/textselect/frmedittext.h"
#include "frame/controlregistry.h"
#include "frame/errorpath.h"
#include "frame/makechild.h"
#include "frame/messageboxes.h"
#include "frame/objectref.h"
#include "frame/propertybag.h"
#include "frame/reportmessage.h"
#include "frame/units.h"
#include "contracts/runtime.h"
#include "platform/checkbox.h"
#include "platform/keyedlistview.h"
#include "platform/listupdate.h"
#include "platform/lineshape.h"
#include "platform/multilinetextbox.h"
#include "platform/tooltipregistry.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QStringBuilder>

namespace ZebSubCtl {

ZEB_REGISTER_CONTROL(ctlTextSelect)

namespace {

const QString kModule = QStringLiteral("ctlTextSelect");
constexpr QLatin1StringView kItemKeyPrefix("TEXTOBJECT");
const QString kReformatted = QStringLiteral(
    "Your text contains unsupported characters and will be reformatted.\r\n"
    "Please review the paragraph to be certain you are satisfied with the new format\r\n"
    "before selecting add again.");

// Tool-tip settings: a short wait, and the tip stays as long as the pointer does.
constexpr int kToolTipDelay = 750;
constexpr int kToolTipDisplayTime = 2147483647;

const TracedIn traced(kModule);

// The tool-tip object; without one the tips fail like any empty reference.
ToolTipRegistry& tipsOf(ToolTipRegistry* registry)
{
    if (!registry)
        raiseObjectNotSet();
    return *registry;
}

// The list item's key of a text object's key: built in one allocation, as a fill makes one per
// paragraph.
QString itemKey(const QString& key)
{
    return kItemKeyPrefix % key;
}

// A paragraph as one list line: each line break shows as two blanks. The pair and the blanks
// are as long, so the text is rewritten in place, and a text without one is taken as it is.
QString displayText(const QString& text)
{
    qsizetype at = text.indexOf(u'\r');
    if (at < 0)
        return text;
    QString out = text;
    QChar* chars = out.data();
    for (const qsizetype end = out.size() - 1; at < end; ++at) {
        if (chars[at] == u'\r' && chars[at + 1] == u'\n') {
            chars[at] = chars[at + 1] = u' ';
            ++at;
        }
    }
    return out;
}

// The hourglass over the whole application while the order is saved.
class Hourglass {
public:
    Hourglass() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Hourglass() { QApplication::restoreOverrideCursor(); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
};

}  // namespace

ctlTextSelect::ctlTextSelect(QWidget* parent) : UserControl(parent)
{
    setAccessibleName(QStringLiteral("Text list"));
    setAccessibleDescription(QStringLiteral("Reusable paragraphs or remarks: tick the ones to use, "
                                            "add, edit, delete and reorder them."));
    txtNewComment =
        makeChild<MultiLineTextBox>(this, "txtNewComment", twipsRect(75, 75, 4575, 1200));
    txtNewComment->setAccessibleName(QStringLiteral("New text"));
    txtNewComment->setAccessibleDescription(QStringLiteral(
        "Type a new paragraph or remark here, then choose Add to put it in the list."));

    chkIsSelected = makeChild<CheckBox>(this, "chkIsSelected", twipsRect(4875, 75, 975, 225),
                                        QStringLiteral("Selected"));

    cmdAdd = makeChild<QPushButton>(this, "cmdAdd", twipsRect(4875, 375, 1050, 375),
                                    QStringLiteral("&Add"));
    cmdCancel = makeChild<QPushButton>(this, "cmdCancel", twipsRect(4875, 900, 1050, 375),
                                       QStringLiteral("&Cancel"));

    // A line is placed by its end points.
    Line1 = makeChild<LineShape>(this, "Line1", QRect());
    Line1->setPoints(twipsToPixels(75), twipsToPixels(1350), twipsToPixels(6075),
                     twipsToPixels(1350));

    ListView = makeChild<KeyedListView>(this, "ListView", twipsRect(75, 1425, 6000, 3225));
    ListView->setCheckBoxes(true);
    ListView->addColumn(QString(), QStringLiteral("Text"));
    ListView->setAccessibleName(QStringLiteral("Texts"));
    ListView->setAccessibleDescription(
        QStringLiteral("The paragraphs or remarks to choose from; a ticked text is used."));

    cmdMoveUp = makeChild<QPushButton>(this, "cmdMoveUp", twipsRect(2250, 4830, 1200, 375),
                                       QStringLiteral("Move &Up"));
    cmdMoveDown = makeChild<QPushButton>(this, "cmdMoveDown", twipsRect(3450, 4830, 1200, 375),
                                         QStringLiteral("Move &Down"));
    cmdSave = makeChild<QPushButton>(this, "cmdSave", twipsRect(4875, 4830, 1200, 375),
                                     QStringLiteral("Save Changes"));

    mnu_RightClick = new QMenu(this);
    mnu_RightClick->setObjectName(QStringLiteral("mnu_RightClick"));
    mnu_Edit = mnu_RightClick->addAction(QStringLiteral("&Edit"));
    mnu_Edit->setObjectName(QStringLiteral("mnu_Edit"));
    mnu_Sep1 = mnu_RightClick->addSeparator();
    mnu_Sep1->setObjectName(QStringLiteral("mnu_Sep1"));
    mnu_MoveUp = mnu_RightClick->addAction(QStringLiteral("Move &Up"));
    mnu_MoveUp->setObjectName(QStringLiteral("mnu_MoveUp"));
    mnu_MoveDown = mnu_RightClick->addAction(QStringLiteral("Move Dow&n"));
    mnu_MoveDown->setObjectName(QStringLiteral("mnu_MoveDown"));
    mnu_Sep2 = mnu_RightClick->addSeparator();
    mnu_Sep2->setObjectName(QStringLiteral("mnu_Sep2"));
    mnu_Delete = mnu_RightClick->addAction(QStringLiteral("&Delete"));
    mnu_Delete->setObjectName(QStringLiteral("mnu_Delete"));

    // The widgets start as the default properties have them: no entry area, no editing, no
    // reordering; Add waits for text and Save for an unsaved order.
    for (QWidget* w : {static_cast<QWidget*>(txtNewComment), static_cast<QWidget*>(cmdAdd),
                       static_cast<QWidget*>(cmdCancel), static_cast<QWidget*>(Line1),
                       static_cast<QWidget*>(chkIsSelected)})
        w->setVisible(false);
    mnu_Edit->setEnabled(false);
    mnu_Delete->setEnabled(false);
    cmdMoveDown->setEnabled(false);
    cmdMoveUp->setEnabled(false);
    mnu_MoveDown->setEnabled(false);
    mnu_MoveUp->setEnabled(false);
    cmdAdd->setEnabled(false);
    cmdSave->setEnabled(false);

    resize(twipsToPixels(6150), twipsToPixels(5280));

    connect(cmdAdd, &QPushButton::clicked, this, [this] { cmdAdd_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
    connect(txtNewComment, &MultiLineTextBox::changed, this, [this] { txtNewComment_Change(); });
    connect(cmdSave, &QPushButton::clicked, this, [this] { cmdSave_Click(); });
    connect(cmdMoveUp, &QPushButton::clicked, this, [this] { cmdMoveUp_Click(); });
    connect(cmdMoveDown, &QPushButton::clicked, this, [this] { cmdMoveDown_Click(); });
    connect(mnu_MoveUp, &QAction::triggered, this, [this] { mnu_MoveUp_Click(); });
    connect(mnu_MoveDown, &QAction::triggered, this, [this] { mnu_MoveDown_Click(); });
    connect(mnu_Edit, &QAction::triggered, this, [this] { mnu_Edit_Click(); });
    connect(mnu_Delete, &QAction::triggered, this, [this] { mnu_Delete_Click(); });
    connect(ListView, &KeyedListView::dblClick, this, [this] { ListView_DblClick(); });
    connect(ListView, &KeyedListView::keyUp, this,
            [this](int key, Qt::KeyboardModifiers m) { ListView_KeyUp(key, m); });
    connect(ListView, &KeyedListView::mouseUp, this,
            [this](Qt::MouseButton b, Qt::KeyboardModifiers m, const QPoint& p) {
                ListView_MouseUp(b, m, p);
            });
    connect(ListView, &KeyedListView::mouseMove, this,
            [this](Qt::MouseButtons b, Qt::KeyboardModifiers m, const QPoint& p) {
                ListView_MouseMove(b, m, p);
            });
    connect(ListView, &KeyedListView::itemCheck, this,
            [this](int item) { ListView_ItemCheck(item); });

    UserControl_Initialize();
}

ctlTextSelect::~ctlTextSelect()
{
    for (const auto& c : std::as_const(mConnections))
        disconnect(c);
}

void ctlTextSelect::UserControl_Initialize()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("Clear()")), Ending::logOnly(), [&] {
        mToolTip = new ToolTipRegistry(this);
        mToolTip->setDelay(kToolTipDelay);
        mToolTip->setDisplayTime(kToolTipDisplayTime);
        mToolTip->setActive(true);
    });
}

// --- properties

qint32 ctlTextSelect::TextObjectType() const
{
    return ErrorPath::run(traced("TextObjectType"), Ending::propagate(),
                          [&] { return mTextObjectType; });
}

void ctlTextSelect::setTextObjectType(qint32 type)
{
    ErrorPath::run(traced("TextObjectType"), Ending::propagate(), [&] {
        mTextObjectType = type;
        PropertyChanged(QStringLiteral("TextObjectType"));
    });
}

qint16 ctlTextSelect::MaxLength() const
{
    return ErrorPath::run(traced("MaxLength"), Ending::propagate(),
                          [&] { return qint16(txtNewComment->maxLength()); });
}

void ctlTextSelect::setMaxLength(qint16 length)
{
    ErrorPath::run(traced("MaxLength"), Ending::propagate(), [&] {
        txtNewComment->setMaxLength(length);
        PropertyChanged(QStringLiteral("MaxLength"));
    });
}

void ctlTextSelect::setMaxLengthByName(qint32 length)
{
    // Reached from Qt's property system, so a failure must not leave this function.
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("MaxLength() - Property Set")),
                   Ending::report(), [&] { setMaxLength(narrowTo16(length)); });
}

bool ctlTextSelect::AllowUpdate() const
{
    return ErrorPath::run(traced("AllowUpdate"), Ending::propagate(), [&] { return mAllowUpdate; });
}

void ctlTextSelect::setAllowUpdate(bool allow)
{
    ErrorPath::run(traced("AllowUpdate"), Ending::propagate(), [&] {
        mAllowUpdate = allow;
        PropertyChanged(QStringLiteral("AllowUpdate"));
        txtNewComment->setVisible(allow);
        cmdAdd->setVisible(allow);
        cmdCancel->setVisible(allow);
        Line1->setVisible(allow);
        chkIsSelected->setVisible(allow);
        mnu_Edit->setEnabled(allow);
        mnu_Delete->setEnabled(allow);
        HandleResize();
    });
}

bool ctlTextSelect::AllowReorder() const
{
    return ErrorPath::run(traced("AllowReorder"), Ending::propagate(),
                          [&] { return mAllowReorder; });
}

void ctlTextSelect::setAllowReorder(bool allow)
{
    ErrorPath::run(traced("AllowReorder"), Ending::propagate(), [&] {
        mAllowReorder = allow;
        PropertyChanged(QStringLiteral("AllowReorder"));
        cmdMoveDown->setEnabled(allow);
        cmdMoveUp->setEnabled(allow);
        mnu_MoveDown->setEnabled(allow);
        mnu_MoveUp->setEnabled(allow);
    });
}

bool ctlTextSelect::AllowSave() const
{
    return ErrorPath::run(traced("AllowSave"), Ending::propagate(), [&] { return mAllowSave; });
}

void ctlTextSelect::setAllowSave(bool allow)
{
    // Stored only: it gates Save Changes when the collection reports, and it is not marked for
    // saving the design.
    ErrorPath::run(traced("AllowSave"), Ending::propagate(), [&] { mAllowSave = allow; });
}

std::shared_ptr<ZebObjects::TextObjects> ctlTextSelect::TextObjects() const
{
    return ErrorPath::run(traced("TextObjects"), Ending::propagate(), [&] { return mTextObjects; });
}

void ctlTextSelect::setTextObjects(std::shared_ptr<ZebObjects::TextObjects> textObjects)
{
    ErrorPath::run(traced("TextObjects"), Ending::propagate(), [&] {
        for (const auto& c : std::as_const(mConnections))
            disconnect(c);
        mConnections.clear();
        mTextObjects = std::move(textObjects);
        if (auto* c = mTextObjects.get()) {
            using ZebObjects::TextObjects;
            mConnections = {
                connect(c, &TextObjects::Changed, this, [this] { mTextObjects_Changed(); }),
                connect(c, &TextObjects::ItemAdded, this,
                        [this](const QString& key) { mTextObjects_ItemAdded(key); }),
                connect(c, &TextObjects::ItemDeleted, this,
                        [this](const QString& key) { mTextObjects_ItemDeleted(key); }),
                connect(c, &TextObjects::ItemInserted, this,
                        [this](const QString& key, qint32 position) {
                            mTextObjects_ItemInserted(key, position);
                        }),
                connect(c, &TextObjects::ItemMoved, this, [this] { mTextObjects_ItemMoved(); }),
                connect(c, &TextObjects::OrderSaved, this, [this] { mTextObjects_OrderSaved(); }),
            };
        }
        PropertyChanged(QStringLiteral("TextObjects"));
        if (mTextObjects)
            mTextObjects->setTextObjectType(mTextObjectType);
        Populate();
    });
}

// --- persistence

void ctlTextSelect::UserControl_WriteProperties(PropertyBag& bag)
{
    ErrorPath::run(
        Procedure::untraced(this, QStringLiteral("UserControl_WriteProperties()")),
        Ending::report(), [&] {
            bag.WriteProperty(QStringLiteral("AllowUpdate"), AllowUpdate(), false);
            bag.WriteProperty(QStringLiteral("AllowReorder"), AllowReorder(), false);
            bag.WriteProperty(QStringLiteral("MaxLength"), qint32(MaxLength()), qint32(0));
            bag.WriteProperty(QStringLiteral("TextObjectType"), TextObjectType(), qint32(0));
            bag.WriteProperty(QStringLiteral("AllowSave"), AllowSave(), false);
        });
}

void ctlTextSelect::UserControl_ReadProperties(const PropertyBag& bag)
{
    ErrorPath::run(
        Procedure::untraced(this, QStringLiteral("UserControl_ReadProperties()")), Ending::report(),
        [&] {
            setAllowUpdate(bag.ReadProperty(QStringLiteral("AllowUpdate"), false).toBool());
            setAllowReorder(bag.ReadProperty(QStringLiteral("AllowReorder"), false).toBool());
            // Saved as 32 bits; a value beyond 16 bits overflows here.
            setMaxLength(
                narrowTo16(bag.ReadProperty(QStringLiteral("MaxLength"), qint32(0)).toInt()));
            setTextObjectType(
                bag.ReadProperty(QStringLiteral("TextObjectType"), qint32(0)).toInt());
            setAllowSave(bag.ReadProperty(QStringLiteral("AllowSave"), false).toBool());
        });
}

// --- population, tool tips, layout

void ctlTextSelect::Populate()
{
    ErrorPath::run(traced("Populate"), Ending::propagate(), [&] {
        if (!mTextObjects) {
            ListView->clear();
            return;
        }
        {
            ListUpdate batch(ListView);
            ListView->clear();
            const ZebObjects::TextObjectList objects = mTextObjects->Enumerate();
            ListView->reserve(int(objects.size()));
            for (const auto& object : objects) {
                const QString key = objectRef(object).Key();
                const QString text = object->Text();
                const int item = ListView->addItem(itemKey(key), displayText(text));
                ListView->setChecked(item, object->Selected());
                ListView->setTag(item, key);
            }
        }
        registerToolTips();
    });
}

void ctlTextSelect::UpdateToolTipText()
{
    ErrorPath::run(traced("UpdateToolTipText"), Ending::propagate(), [&] { registerToolTips(); });
}

// One tool per item, numbered by the item's position less one, over the item's rectangle, with
// the paragraph's full text. The object is found by position, so the pass also fits an item that
// has no tag. Numbers past the last item no longer stand for an item and are dropped.
void ctlTextSelect::registerToolTips()
{
    QWidget* window = ListView->viewport();
    const int count = ListView->count();
    for (int i = 1; i <= count; ++i) {
        const QRect rect = ListView->itemRect(i - 1);
        const auto object = objectRef(mTextObjects).Item(qint32(i));
        tipsOf(mToolTip).addTool(window, i - 1, rect, objectRef(object).Text());
    }
    tipsOf(mToolTip).removeToolsFrom(window, count);
}

void ctlTextSelect::UserControl_Resize()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("UserControl_Resize()")),
                   Ending::propagate(), [&] { HandleResize(); });
}

void ctlTextSelect::HandleResize()
{
    ErrorPath::run(traced("HandleResize"), Ending::propagate(), [&] {
        // Each value is applied only when it is positive; otherwise the widget keeps its last.
        const int w = ScaleWidth();
        const int h = ScaleHeight();
        const auto setLeft = [](QWidget* widget, int left) {
            if (left > 0)
                widget->move(left, widget->y());
        };
        const auto setTop = [](QWidget* widget, int top) {
            if (top > 0)
                widget->move(widget->x(), top);
        };
        const auto setWidth = [](QWidget* widget, int width) {
            if (width > 0)
                widget->resize(width, widget->height());
        };
        const auto setHeight = [](QWidget* widget, int height) {
            if (height > 0)
                widget->resize(widget->width(), height);
        };

        if (w - 10 > 0)
            Line1->setX2(w - 10);
        setWidth(ListView, w - 10);
        if (mAllowUpdate) {
            setTop(ListView, 95);
            setHeight(ListView, h - 140);
        } else {
            setTop(ListView, 5);
            setHeight(ListView, h - 50);
        }
        setWidth(txtNewComment, w - 105);
        setLeft(cmdAdd, txtNewComment->x() + txtNewComment->width() + 20);
        setLeft(cmdCancel, cmdAdd->x());
        setLeft(chkIsSelected, cmdCancel->x());

        const int bottomRow = ListView->y() + ListView->height() + 10;
        setTop(cmdSave, bottomRow);
        setTop(cmdMoveDown, bottomRow);
        setTop(cmdMoveUp, bottomRow);
        setLeft(cmdSave, w - (cmdSave->width() + 5));
        // Move Down keeps a gap of 15 from Save Changes; Move Up touches Move Down.
        setLeft(cmdMoveDown, cmdSave->x() - (cmdMoveDown->width() + 15));
        setLeft(cmdMoveUp, cmdMoveDown->x() - cmdMoveUp->width());

        if (ListView->width() - 5 > 0)
            ListView->setColumnWidth(0, ListView->width() - 5);
    });
}

// --- commands

void ctlTextSelect::cmdAdd_Click()
{
    ErrorPath::run(
        Procedure::untraced(this, QStringLiteral("cmdAdd_Click()")), Ending::report(), [&] {
            QString text = txtNewComment->text();
            if (ZebObjects::Runtime::applicationServices()->ReformatText(text)) {
                MessageBoxes::MsgBox(kReformatted, MsgBoxStyle::Information,
                                     QStringLiteral("Text Format"));
                txtNewComment->setText(text);
                return;
            }
            // The new item reaches the list through ItemAdded.
            objectRef(mTextObjects).Add(txtNewComment->text(), chkIsSelected->value() == 1);
            txtNewComment->setText(QString());
            chkIsSelected->setValue(0);
        });
}

void ctlTextSelect::cmdCancel_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("cmdCancel_Click()")), Ending::report(),
                   [&] {
                       txtNewComment->setText(QString());
                       chkIsSelected->setValue(0);
                       txtNewComment->setFocus();
                   });
}

void ctlTextSelect::txtNewComment_Change()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("txtNewComment_Change()")),
                   Ending::report(), [&] { cmdAdd->setEnabled(!txtNewComment->text().isEmpty()); });
}

void ctlTextSelect::cmdSave_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("cmdSave_Click()")), Ending::report(),
                   [&] {
                       // The pointer comes back also when the save fails.
                       Hourglass hourglass;
                       objectRef(mTextObjects).SaveOrder();
                   });
}

void ctlTextSelect::cmdMoveUp_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("cmdMoveUp_Click()")), Ending::report(),
                   [&] { moveItemUp(); });
}

void ctlTextSelect::cmdMoveDown_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("cmdMoveDown_Click()")),
                   Ending::report(), [&] { moveItemDown(); });
}

void ctlTextSelect::mnu_MoveUp_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mnu_MoveUp_Click()")),
                   Ending::report(), [&] { moveItemUp(); });
}

void ctlTextSelect::mnu_MoveDown_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mnu_MoveDown_Click()")),
                   Ending::report(), [&] { moveItemDown(); });
}

namespace {
// The selected item's row; none fails like using an empty reference.
int selectedItem(const KeyedListView* list)
{
    const int row = list->selectedRow();
    if (row < 0)
        raiseObjectNotSet();
    return row;
}
}  // namespace

void ctlTextSelect::moveItemDown()
{
    moveSelectedItem("moveItemDown", &ZebObjects::TextObjects::MoveDown);
}

void ctlTextSelect::moveItemUp()
{
    moveSelectedItem("moveItemUp", &ZebObjects::TextObjects::MoveUp);
}

void ctlTextSelect::moveSelectedItem(const char* name,
                                     void (ZebObjects::TextObjects::*move)(const QString&))
{
    ErrorPath::run(traced(name), Ending::propagate(), [&] {
        const int item = selectedItem(ListView);
        const QString key = ListView->key(item);
        // The collection raises ItemMoved and the list is rebuilt; the moved paragraph stays
        // selected.
        (objectRef(mTextObjects).*move)(ListView->tag(item));
        ListView->setSelectedRow(ListView->row(key));
    });
}

void ctlTextSelect::showEditForm(std::shared_ptr<ZebObjects::TextObject>& textObject, int& item)
{
    // Traces its entry only: there is no exit trace. A failure is logged as a traced
    // procedure's is, under "showEditForm", and passed on.
    ErrorPath::run(Procedure::untraced(kModule, QStringLiteral("showEditForm")),
                   Ending::propagate(), [&] {
                       ErrorPath::traceEntry(traced("showEditForm"));
                       {
                           frmEditText form(this);
                           form.setTextObject(textObject);
                           form.exec();
                       }
                       // OK or Cancel: the item shows what the object now holds.
                       ListView->setChecked(item, objectRef(textObject).Selected());
                       ListView->setText(item, displayText(textObject->Text()));
                   });
}

void ctlTextSelect::editSelectedItem()
{
    int item = ListView->selectedRow();
    auto textObject = objectRef(mTextObjects).Item(ListView->tag(item));
    showEditForm(textObject, item);
    // The tip shows the edited text too.
    UpdateToolTipText();
}

void ctlTextSelect::mnu_Edit_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mnu_Edit_Click()")), Ending::report(),
                   [&] {
                       if (mAllowUpdate && ListView->selectedRow() >= 0)
                           editSelectedItem();
                   });
}

void ctlTextSelect::mnu_Delete_Click()
{
    ErrorPath::run(traced("mnu_Delete_Click"), Ending::report(ReportVariant::TextDelete), [&] {
        if (mAllowUpdate && ListView->selectedRow() >= 0) {
            // The item leaves the list through ItemDeleted; the tips then follow the
            // remaining items.
            objectRef(mTextObjects).Remove(ListView->tag(ListView->selectedRow()));
            UpdateToolTipText();
        }
    });
}

void ctlTextSelect::ListView_DblClick()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("ListView_DblClick()")),
                   Ending::report(), [&] {
                       if (mAllowUpdate && ListView->selectedRow() >= 0)
                           editSelectedItem();
                   });
}

void ctlTextSelect::ListView_KeyUp(int key, Qt::KeyboardModifiers)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("ListView_KeyUp()")), Ending::report(),
                   [&] {
                       const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
                       if (mAllowUpdate && enter && ListView->selectedRow() >= 0)
                           editSelectedItem();
                   });
}

void ctlTextSelect::ListView_MouseUp(Qt::MouseButton button, Qt::KeyboardModifiers,
                                     const QPoint& pos)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("ListView_MouseUp()")),
                   Ending::report(), [&] {
                       // The entries are enabled by AllowUpdate and AllowReorder, not here.
                       if (button == Qt::RightButton)
                           mnu_RightClick->exec(ListView->viewport()->mapToGlobal(pos));
                   });
}

void ctlTextSelect::ListView_MouseMove(Qt::MouseButtons, Qt::KeyboardModifiers, const QPoint&)
{
    // Keeps every tip over its item after the list has scrolled.
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("ListView_MouseMove()")),
                   Ending::logOnly(), [&] {
                       ToolTipRegistry& tips = tipsOf(mToolTip);
                       QWidget* window = ListView->viewport();
                       const int count = ListView->count();
                       for (int i = 1; i <= count; ++i)
                           tips.setToolRect(window, i - 1, ListView->itemRect(i - 1));
                   });
}

void ctlTextSelect::ListView_ItemCheck(int item)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("ListView_ItemCheck()")),
                   Ending::report(), [&] {
                       const auto textObject = objectRef(mTextObjects).Item(ListView->tag(item));
                       objectRef(textObject).setSelected(ListView->isChecked(item));
                   });
}

// --- collection events

void ctlTextSelect::mTextObjects_Changed()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mTextObjects_Changed()")),
                   Ending::report(), [&] {
                       if (mAllowSave)
                           cmdSave->setEnabled(objectRef(mTextObjects).IsDirty());
                       else
                           cmdSave->setEnabled(false);
                   });
}

void ctlTextSelect::mTextObjects_ItemAdded(const QString& key)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mTextObjects_ItemAdded()")),
                   Ending::report(), [&] {
                       const auto textObject = objectRef(mTextObjects).Item(key);
                       const QString text = objectRef(textObject).Text();
                       const int item = ListView->addItem(itemKey(key), displayText(text));
                       ListView->setTag(item, key);
                       ListView->setChecked(item, textObject->Selected());
                       const int index = ListView->row(itemKey(key));
                       tipsOf(mToolTip).addTool(ListView->viewport(), index,
                                                ListView->itemRect(index), textObject->Text());
                   });
}

void ctlTextSelect::mTextObjects_ItemDeleted(const QString& key)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mTextObjects_ItemDeleted()")),
                   Ending::report(), [&] { ListView->removeItem(itemKey(key)); });
}

void ctlTextSelect::mTextObjects_ItemInserted(const QString& key, qint32 position)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mTextObjects_ItemInserted()")),
                   Ending::report(), [&] {
                       const auto textObject = objectRef(mTextObjects).Item(key);
                       const QString text = objectRef(textObject).Text();
                       // No tag: commands on this item pass an empty key until the next rebuild.
                       const int item =
                           ListView->insertItem(position - 1, itemKey(key), displayText(text));
                       ListView->setChecked(item, textObject->Selected());
                       ListView->setSelectedRow(item);
                       UpdateToolTipText();
                   });
}

void ctlTextSelect::mTextObjects_ItemMoved()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mTextObjects_ItemMoved()")),
                   Ending::report(), [&] {
                       Populate();
                       if (mAllowSave)
                           cmdSave->setEnabled(true);
                   });
}

void ctlTextSelect::mTextObjects_OrderSaved()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mTextObjects_OrderSaved()")),
                   Ending::report(), [&] { cmdSave->setEnabled(false); });
}

}  // namespace ZebSubCtl
