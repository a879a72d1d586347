#include "controls/labels/ctllabelcriteria.h"

#include "contracts/labelfields.h"
#include "contracts/labels.h"
#include "frame/controlregistry.h"
#include "frame/errorpath.h"
#include "frame/makechild.h"
#include "frame/objectref.h"
#include "frame/reportmessage.h"
#include "frame/units.h"
#include "platform/keycodes.h"
#include "platform/keyedlistview.h"
#include "platform/lineshape.h"
#include "platform/picture.h"

#include <QHeaderView>
#include <QLabel>
#include <QMetaProperty>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QStyledItemDelegate>

#include <algorithm>

namespace ZebSubCtl {

ZEB_REGISTER_CONTROL(ctlLabelCriteria)

namespace {

const QString kInstructions = QStringLiteral(
    "Choose what you want to include on the label.  The label size is Avery 5190, it is 1\" X "
    "2 5/8\".  The fields you select will print on the label in the order that you select "
    "them.  You may only select up to five fields.");

// Room for a vertical scroll bar once a list holds more than this many items.
constexpr int kRowsWithoutScrollBar = 6;
constexpr int kMarginWithScrollBar = 20;
constexpr int kMarginWithoutScrollBar = 5;

// The panel's own operations are called by its handlers: a failure they swallow is only
// logged, but a failure of that logging itself reaches the calling handler.
template <class Body>
void calledOperation(const QObject* component, const char* label, Body&& body)
{
    ErrorPath::runOrThrow(Procedure::untraced(component, QLatin1String(label)), Ending::logOnly(),
                          body);
}

// The key of the list's selected item; no selected item fails like an empty reference.
QString selectedKey(const KeyedListView* list)
{
    const int row = list->selectedRow();
    if (row < 0)
        raiseObjectNotSet();
    return list->key(row);
}

// Sets a property by its name through the object's meta-object, the way a late-bound caller
// does: a missing property fails with 438, a value it does not take with 13.
void putByName(QObject& object, const char* name, const QVariant& value)
{
    const QMetaObject* meta = object.metaObject();
    const int index = meta->indexOfProperty(name);
    if (index < 0 || !meta->property(index).isWritable())
        throw ZebObjects::Failure(ZebObjects::ErrorNumber::NoSuchProperty,
                                  QStringLiteral("ZebSubCtl"),
                                  QStringLiteral("Object doesn't support this property or method"));
    if (!meta->property(index).write(&object, value))
        throw ZebObjects::Failure(ZebObjects::ErrorNumber::TypeMismatch,
                                  QStringLiteral("ZebSubCtl"), QStringLiteral("Type mismatch"));
}

// An arrow button: its tip names it, for a screen reader too, since the arrow says nothing.
ChildSettings arrowSettings(const QString& tip)
{
    return ChildSettings().tipped(tip).named(tip);
}

// Rows of one height for every item.
class RowHeight : public QStyledItemDelegate {
public:
    RowHeight(int height, QObject* parent) : QStyledItemDelegate(parent), m_height(height) { }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return {QStyledItemDelegate::sizeHint(option, index).width(), m_height};
    }

private:
    int m_height;
};

// A row cut by the list's lower edge shows half a caption ("Submittal Date" as its upper
// half). The list keeps its design place; its rows share the room under the header so that
// they fill it exactly, the header taking the pixels that are left over.
void fitWholeRows(KeyedListView* list)
{
    QStyleOptionViewItem item;
    item.initFrom(list);
    item.features = QStyleOptionViewItem::HasDisplay;
    item.text = QStringLiteral("Submittal Date");
    const int natural = std::max(
        1, list->style()->sizeFromContents(QStyle::CT_ItemViewItem, &item, QSize(), list).height());
    const int header = list->header()->sizeHint().height();
    const int room = list->height() - 2 * list->frameWidth() - header;
    const int rows = std::max(1, room / natural);
    const int height = std::max(natural, room / rows);
    list->setItemDelegate(new RowHeight(height, list));
    list->header()->setFixedHeight(std::max(header, header + room - rows * height));
}

// One column of field names, rows that show whole.
void setUpFieldList(KeyedListView* list)
{
    list->addColumn(QString(), QStringLiteral("Fields"));
    // The column's margin leaves room for the vertical bar; the few pixels it may still
    // reach under that bar are no reason for a horizontal one.
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    fitWholeRows(list);
}

}  // namespace

ctlLabelCriteria::ctlLabelCriteria(QWidget* parent) : UserControl(parent)
{
    Image2 = makeChild<Picture>(this, "Image2", QRect(),
                                ChildSettings()
                                    .movedTo(twipsPoint(120, 120))
                                    .named(QStringLiteral("Label sheet"),
                                           QStringLiteral("Picture of a sheet of mailing labels")),
                                PictureImage::LabelSheet);

    lblIncludeOnLabel =
        makeChild<QLabel>(this, "lblIncludeOnLabel", twipsRect(720, 225, 3000, 255),
                          ChildSettings().inBold(), QStringLiteral("Include On Label"));

    lineInclude = makeChild<LineShape>(
        this, "lineInclude", QRect(),
        QLine(twipsToPixels(720), twipsToPixels(540), twipsToPixels(9255), twipsToPixels(540)));

    lblAvailableFields =
        makeChild<QLabel>(this, "lblAvailableFields", twipsRect(2040, 1125, 2700, 210),
                          QStringLiteral("Available Fields:"));
    lsvAvailableItems =
        makeChild<KeyedListView>(this, "lsvAvailableItems", twipsRect(2040, 1350, 3000, 1350));
    setUpFieldList(lsvAvailableItems);
    lsvAvailableItems->setAccessibleName(QStringLiteral("Available fields"));
    lsvAvailableItems->setAccessibleDescription(QStringLiteral(
        "Fields that are not on the label. Press Enter or double-click to add the selected "
        "field to the label."));

    cmdAdd =
        makeChild<QPushButton>(this, "cmdAdd", twipsRect(5115, 1800, 450, 225),
                               arrowSettings(QStringLiteral("Add Field")), QStringLiteral(">"));
    cmdAdd->setAccessibleDescription(
        QStringLiteral("Puts the selected available field on the label, after the others"));
    cmdRemove =
        makeChild<QPushButton>(this, "cmdRemove", twipsRect(5115, 2100, 450, 225),
                               arrowSettings(QStringLiteral("Remove Field")), QStringLiteral("<"));
    cmdRemove->setAccessibleDescription(QStringLiteral("Takes the selected field off the label"));

    lblIssueToLisHeading =
        makeChild<QLabel>(this, "lblIssueToLisHeading", twipsRect(5640, 1125, 2700, 210),
                          QStringLiteral("Selected Fields:"));
    lsvSelectedItems =
        makeChild<KeyedListView>(this, "lsvSelectedItems", twipsRect(5640, 1350, 3000, 1350));
    setUpFieldList(lsvSelectedItems);
    // Each list is labelled by the heading over it.
    lblAvailableFields->setBuddy(lsvAvailableItems);
    lblIssueToLisHeading->setBuddy(lsvSelectedItems);
    lsvSelectedItems->setAccessibleName(QStringLiteral("Selected fields"));
    lsvSelectedItems->setAccessibleDescription(QStringLiteral(
        "Fields on the label, in print order from the top. Press Enter or double-click to take "
        "the selected field off the label."));

    lblIncludeInfo = makeChild<QLabel>(
        this, "lblIncludeInfo", twipsRect(2040, 2880, 5850, 900),
        ChildSettings().aligned(Qt::AlignLeft | Qt::AlignTop).wrapped(), kInstructions);

    // The lists are reached before and after the arrows.
    setTabOrder(lsvAvailableItems, cmdAdd);
    setTabOrder(cmdAdd, cmdRemove);
    setTabOrder(cmdRemove, lsvSelectedItems);

    setAccessibleName(QStringLiteral("Label fields"));
    setAccessibleDescription(
        QStringLiteral("Chooses the fields printed on the mailing labels and their order"));

    resize(twipsToPixels(9375), twipsToPixels(5685));

    connect(cmdAdd, &QPushButton::clicked, this, [this] { cmdAdd_Click(); });
    connect(cmdRemove, &QPushButton::clicked, this, [this] { cmdRemove_Click(); });
    connect(lsvAvailableItems, &KeyedListView::dblClick, this,
            [this] { lsvAvailableItems_DblClick(); });
    connect(lsvAvailableItems, &KeyedListView::keyDown, this,
            [this](int key, Qt::KeyboardModifiers modifiers) {
                qint16 keyCode = hostKeyCode(key);
                lsvAvailableItems_KeyDown(keyCode, hostShift(modifiers));
            });
    connect(lsvSelectedItems, &KeyedListView::dblClick, this,
            [this] { lsvSelectedItems_DblClick(); });
    connect(lsvSelectedItems, &KeyedListView::keyDown, this,
            [this](int key, Qt::KeyboardModifiers modifiers) {
                qint16 keyCode = hostKeyCode(key);
                lsvSelectedItems_KeyDown(keyCode, hostShift(modifiers));
            });
}

ctlLabelCriteria::~ctlLabelCriteria() = default;

// --- the label definition

std::shared_ptr<ZebObjects::Labels> ctlLabelCriteria::Labels() const
{
    return ErrorPath::run(Procedure::untraced(this, QStringLiteral("Labels() - Property Get")),
                          Ending::propagate(), [&] { return mLabels; });
}

void ctlLabelCriteria::setLabels(std::shared_ptr<ZebObjects::Labels> labels)
{
    // No error path of its own: whatever fails here reaches the host as it is.
    mLabels = std::move(labels);
    Populate();
}

// --- operations

void ctlLabelCriteria::Populate()
{
    calledOperation(this, "Populate()", [&] {
        if (!mLabels)
            return;
        // Never emptied first: the included fields come in print order from the collection.
        const auto fields = mLabels->LabelFields();
        for (const auto& field : objectRef(fields).Enumerate()) {
            const bool included = objectRef(field).Included();
            const QString key = field->Key();
            const QString caption = field->Caption();
            if (included)
                lsvSelectedItems->addItem(key, caption);
            else
                lsvAvailableItems->addItem(key, caption);
        }
        sizeItUp();
    });
}

void ctlLabelCriteria::addField()
{
    calledOperation(this, "addField()", [&] {
        const QString selected = selectedKey(lsvAvailableItems);
        const auto field = objectRef(objectRef(mLabels).LabelFields()).Item(selected);
        // Appended at the end, so count + 1 is already the right place: no renumbering.
        objectRef(field).setPrintOrder(narrowTo16(lsvSelectedItems->count() + 1));
        // The label definition may refuse the field (a full label): then nothing moves.
        if (field->Included()) {
            const QString key = field->Key();
            const QString caption = field->Caption();
            lsvSelectedItems->addItem(key, caption);
            lsvAvailableItems->removeItem(key);
        }
        sizeItUp();
    });
}

void ctlLabelCriteria::removeField()
{
    calledOperation(this, "removeField()", [&] {
        const QString selected = selectedKey(lsvSelectedItems);
        const auto field = objectRef(objectRef(mLabels).LabelFields()).Item(selected);
        const QString key = objectRef(field).Key();
        const QString caption = field->Caption();
        // To the bottom of the available list, not back to where it came from.
        lsvAvailableItems->addItem(key, caption);
        lsvSelectedItems->removeItem(key);
        field->setPrintOrder(0);
        reorderSelectedItems();
        sizeItUp();
    });
}

void ctlLabelCriteria::reorderSelectedItems()
{
    calledOperation(this, "reorderSelectedItems()", [&] {
        // One field at a time: two fields may share a print order until the pass is done.
        const int count = lsvSelectedItems->count();
        for (int row = 0; row < count; ++row) {
            const qint32 position = row + 1;
            const QString key = lsvSelectedItems->key(row);
            const auto field = objectRef(objectRef(mLabels).LabelFields()).Item(key);
            putByName(objectRef(field), "PrintOrder", QVariant::fromValue<qint32>(position));
        }
    });
}

void ctlLabelCriteria::sizeItUp()
{
    calledOperation(this, "sizeItUp()", [&] {
        for (KeyedListView* list : {lsvAvailableItems, lsvSelectedItems}) {
            const int items = list->count();
            const int margin =
                items > kRowsWithoutScrollBar ? kMarginWithScrollBar : kMarginWithoutScrollBar;
            list->setColumnWidth(0, list->width() - margin);
        }
    });
}

// --- user events

void ctlLabelCriteria::cmdAdd_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("cmdAdd_Click()")), Ending::report(),
                   [&] { addField(); });
}

void ctlLabelCriteria::cmdRemove_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("cmdRemove_Click()")), Ending::report(),
                   [&] { removeField(); });
}

void ctlLabelCriteria::lsvAvailableItems_DblClick()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("lsvAvailableItems_DblClick()")),
                   Ending::report(), [&] { addField(); });
}

void ctlLabelCriteria::lsvAvailableItems_KeyDown(qint16& KeyCode, qint16)
{
    // The key goes on to the list unchanged, whatever it is.
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("lsvAvailableItems_KeyDown()")),
                   Ending::report(), [&] {
                       if (KeyCode == ZebSubCtl::KeyCode::Return)
                           addField();
                   });
}

void ctlLabelCriteria::lsvSelectedItems_DblClick()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("lsvSelectedItems_DblClick()")),
                   Ending::report(), [&] { removeField(); });
}

void ctlLabelCriteria::lsvSelectedItems_KeyDown(qint16& KeyCode, qint16)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("lsvSelectedItems_KeyDown()")),
                   Ending::report(), [&] {
                       if (KeyCode == ZebSubCtl::KeyCode::Return)
                           removeField();
                   });
}

}  // namespace ZebSubCtl
