#include "controls/lineitems/ctlsubline.h"

#include "controls/lineitems/lineitemaccessible.h"
#include "contracts/lineitem.h"
#include "frame/controlregistry.h"
#include "frame/errorpath.h"
#include "frame/makechild.h"
#include "frame/objectref.h"
#include "frame/units.h"
#include "platform/checkbox.h"
#include "platform/imagebox.h"
#include "platform/lineshape.h"
#include "platform/paintedlabel.h"

#include <QAccessible>
#include <QPainter>
#include <QPixmapCache>
#include <QPaintEvent>

namespace ZebSubCtl {

ZEB_REGISTER_CONTROL(ctlSubLine)

namespace {

constexpr QRgb kGrey = 0xE0E0E0;
constexpr QRgb kWhite = 0xFFFFFF;

// The comment picture, read once and shared by every row.
QPixmap commentPicture()
{
    const QString key = QStringLiteral("ZebSubCtl.ctlSubLine.comment");
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture)) {
        picture = QPixmap(QStringLiteral(":/lineitems/comment.xpm"));
        QPixmapCache::insert(key, picture);
    }
    return picture;
}

}  // namespace

ctlSubLine::ctlSubLine(QWidget* parent) : UserControl(parent)
{
    // Before anything below makes a screen reader ask for the row's or its parts' interfaces.
    LineItemAccess::install();
    setAccessibleName(QStringLiteral("Line item"));
    setAccessibleDescription(
        QStringLiteral("One line of the submittal: its number, quantity, type, brand, catalog "
                       "number, group and description, with a box to select it"));

    lblNumber = makeChild<PaintedLabel>(this, "lblNumber", twipsRect(30, 60, 375, 240),
                                        QStringLiteral("0"));
    imgComment = makeChild<ImageBox>(this, "imgComment", twipsRect(660, 60, 240, 240));
    imgComment->setPicture(commentPicture());
    imgComment->setAccessibleName(QStringLiteral("Comment"));
    imgComment->setAccessibleDescription(QStringLiteral("Shown when the line has a comment"));
    lblQuantity = makeChild<PaintedLabel>(this, "lblQuantity", twipsRect(975, 60, 675, 240),
                                          QStringLiteral("Qty"));
    lblType = makeChild<PaintedLabel>(this, "lblType", twipsRect(1665, 60, 780, 240),
                                      QStringLiteral("Type"));
    lblBrand = makeChild<PaintedLabel>(this, "lblBrand", twipsRect(2460, 60, 1425, 240),
                                       QStringLiteral("Brand"));
    lblCatNum = makeChild<PaintedLabel>(this, "lblCatNum", twipsRect(3900, 60, 4050, 240),
                                        QStringLiteral("Catalog Number"));
    lblGroup = makeChild<PaintedLabel>(this, "lblGroup", twipsRect(7965, 60, 840, 240),
                                       QStringLiteral("Group"));

    chkSelect = makeChild<CheckBox>(this, "chkSelect", twipsRect(30, 345, 225, 225));
    chkSelect->setAccessibleName(QStringLiteral("Select line"));
    chkSelect->setAccessibleDescription(
        QStringLiteral("Ticked when this line is selected for the submittal"));
    lblMTO = makeChild<PaintedLabel>(this, "lblMTO", twipsRect(330, 330, 630, 240),
                                     QStringLiteral("MTO"));
    lblDescHeading = makeChild<PaintedLabel>(this, "lblDescHeading", twipsRect(1650, 330, 780, 240),
                                             QStringLiteral("Desc:"));
    lblDescription =
        makeChild<PaintedLabel>(this, "lblDescription", twipsRect(2490, 330, 5445, 240), QString());

    auto* line = makeChild<LineShape>(this, "Line1", QRect());
    // Along the bottom edge, so stacked rows are ruled off from each other.
    line->setPoints(0, DesignHeight - 1, DesignWidth, DesignHeight - 1);
    line->setBorderColor(QColor(0x80, 0x80, 0x80));
    Line1 = line;

    // The row paints every pixel of its background itself.
    setAttribute(Qt::WA_OpaquePaintEvent);
    resize(DesignWidth, DesignHeight);

    connect(chkSelect, &CheckBox::valueChanged, this, [this] { chkSelect_Click(); });
}

ctlSubLine::~ctlSubLine() = default;

void ctlSubLine::setTabStop(bool on)
{
    chkSelect->setFocusPolicy(on ? Qt::StrongFocus : Qt::ClickFocus);
}

QWidget* ctlSubLine::selectBox() const
{
    return chkSelect;
}

// --- properties

QString ctlSubLine::LineNumber() const
{
    return ErrorPath::run(Procedure::untraced(this, QStringLiteral("LineNumber() - Property Get")),
                          Ending::propagate(), [&] { return lblNumber->Caption(); });
}

void ctlSubLine::setLineNumber(const QString& number)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("LineNumber() - Property Let")),
                   Ending::propagate(), [&] {
                       lblNumber->setCaption(number);
                       chkSelect->setAccessibleName(QStringLiteral("Select line ") + number);
                   });
}

std::shared_ptr<ZebObjects::LineItem> ctlSubLine::LineItem() const
{
    return ErrorPath::run(Procedure::untraced(this, QStringLiteral("LineItem() - Property Get")),
                          Ending::propagate(), [&] { return m_lineItem; });
}

void ctlSubLine::setLineItem(std::shared_ptr<ZebObjects::LineItem> item)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("LineItem() - Property Set")),
                   Ending::propagate(), [&] {
                       m_lineItem = std::move(item);
                       Populate();
                       // What the box and the row read is made from the texts just shown.
                       if (QAccessible::isActive()) {
                           QAccessibleEvent name(chkSelect, QAccessible::NameChanged);
                           QAccessible::updateAccessibility(&name);
                           QAccessibleEvent reading(this, QAccessible::DescriptionChanged);
                           QAccessible::updateAccessibility(&reading);
                       }
                   });
}

bool ctlSubLine::Grayed() const
{
    return ErrorPath::run(Procedure::untraced(this, QStringLiteral("Grayed() - Property Get")),
                          Ending::propagate(), [&] { return BackColor() == kGrey; });
}

void ctlSubLine::setGrayed(bool grayed)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("Grayed() - Property Let")),
                   Ending::propagate(), [&] { setBackColor(grayed ? kGrey : kWhite); });
}

void ctlSubLine::setBackColor(QRgb color)
{
    color &= 0xFFFFFF;
    if (color == m_backColor)
        return;
    m_backColor = color;
    update();
}

// --- showing the line

void ctlSubLine::Populate()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("Populate()")), Ending::logOnly(), [&] {
        if (!m_lineItem)
            return;
        // Each member is read at its use; ticking the box writes Selected back.
        ZebObjects::LineItem& item = *m_lineItem;
        chkSelect->setValue(item.Selected() ? 1 : 0);
        lblQuantity->setCaption(item.Quantity());
        lblType->setCaption(item.Type());
        lblType->setToolTip(item.Type());
        lblBrand->setCaption(item.Brand());
        lblCatNum->setCaption(item.CatalogNumber());
        lblCatNum->setToolTip(item.CatalogNumber());
        lblGroup->setCaption(item.Group());
        lblMTO->setVisible(item.MTO());
        lblDescription->setCaption(item.Description());
        lblDescription->setToolTip(item.Description());
        imgComment->setVisible(item.Comment() != nullptr);
    });
}

void ctlSubLine::chkSelect_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("chkSelect_Click()")), Ending::report(),
                   [&] {
                       const int value = chkSelect->value();
                       objectRef(m_lineItem).setSelected(value == 1);
                   });
}

// --- layout and painting

void ctlSubLine::UserControl_Resize()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("UserControl_Resize()")),
                   Ending::notice(), [&] {
                       if (!Line1)
                           raiseObjectNotSet();
                       Line1->setX2(ScaleWidth());
                   });
}

void ctlSubLine::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), QColor::fromRgb(m_backColor));
}

}  // namespace ZebSubCtl
