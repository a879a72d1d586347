#include "controls/lineitems/ctlsublinedsp.h"

#include "contracts/lineitems.h"
#include "controls/lineitems/ctlsubline.h"
#include "controls/lineitems/ctlsublines.h"
#include "frame/controlregistry.h"
#include "frame/designfont.h"
#include "frame/errorpath.h"
#include "frame/makechild.h"
#include "frame/objectref.h"
#include "frame/reportmessage.h"
#include "frame/units.h"
#include "platform/paintedlabel.h"
#include "platform/scrollbar.h"

#include <QApplication>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ZebSubCtl {

ZEB_REGISTER_CONTROL(ctlSubLineDsp)

namespace {

// The heading band and the 2-pixel margin below it.
constexpr int kHeadingAndMargin = 27;

[[noreturn]] void invalidValue()
{
    throw ZebObjects::Failure::invalidPropertyValue();
}

[[noreturn]] void overflow()
{
    throw ZebObjects::Failure(ZebObjects::ErrorNumber::Overflow, QStringLiteral("ZebSubCtl"),
                              QStringLiteral("Overflow"));
}

qint16 checked16(int value)
{
    if (value < std::numeric_limits<qint16>::min() || value > std::numeric_limits<qint16>::max())
        overflow();
    return qint16(value);
}

// A width or height below zero is not a valid size.
void setHeightOf(QWidget* widget, int height)
{
    if (height < 0)
        invalidValue();
    widget->resize(widget->width(), height);
}

void setWidthOf(QWidget* widget, int width)
{
    if (width < 0)
        invalidValue();
    widget->resize(width, widget->height());
}

ctlSubLines& listOf(const QPointer<ctlSubLines>& list)
{
    if (!list)
        raiseObjectNotSet();
    return *list;
}

}  // namespace

QFont ctlSubLineDsp::headingFont(const QFont& base)
{
    QFont font = designFont(base);
    const QString face = QStringLiteral("MS Sans Serif");
    if (QFontDatabase::hasFamily(face)) {
        font.setFamilies({face});
        font.setPointSize(8);
    }
    return font;
}

ctlSubLineDsp::ctlSubLineDsp(QWidget* parent) : UserControl(parent)
{
    setAccessibleName(QStringLiteral("Line items"));
    setAccessibleDescription(
        QStringLiteral("The lines of the submittal under a column heading; tick a line to select "
                       "it, scroll to see more lines"));
    // The rows' check boxes are the viewer's one Tab stop.
    setFocusPolicy(Qt::NoFocus);

    ControlHeading = makeChild<QWidget>(this, "ControlHeading", twipsRect(0, 0, 9150, 375));
    ControlHeading->setAutoFillBackground(true);
    ControlHeading->setBackgroundRole(QPalette::Button);
    ControlHeading->setFont(headingFont(font()));
    ControlHeading->setAccessibleName(QStringLiteral("Column heading"));
    lblQty = makeChild<PaintedLabel>(ControlHeading, "lblQty", twipsRect(1025, 38, 435, 225),
                                     QStringLiteral("QTY"));
    lblQty->setAccessibleName(QStringLiteral("Quantity"));
    lblType = makeChild<PaintedLabel>(ControlHeading, "lblType", twipsRect(1700, 38, 780, 225),
                                      QStringLiteral("Type"));
    lblBrand = makeChild<PaintedLabel>(ControlHeading, "lblBrand", twipsRect(2450, 38, 1425, 225),
                                       QStringLiteral("Brand"));
    lblCatNum = makeChild<PaintedLabel>(ControlHeading, "lblCatNum", twipsRect(3840, 38, 3690, 225),
                                        QStringLiteral("Catalog Number"));
    lblGroup = makeChild<PaintedLabel>(ControlHeading, "lblGroup", twipsRect(7980, 38, 705, 225),
                                       QStringLiteral("Group"));

    DisplayWindow = makeChild<QWidget>(this, "DisplayWindow", twipsRect(0, 375, 8895, 4920));
    DisplayWindow->setAutoFillBackground(true);
    DisplayWindow->setBackgroundRole(QPalette::Base);
    DisplayWindow->setAccessibleName(QStringLiteral("Line item window"));

    auto* lines = makeChild<ctlSubLines>(DisplayWindow, "ctlSubLines", QRect());
    lines->move(0, 0);
    mLines = lines;

    VScroll = makeChild<ScrollBar>(this, "VScroll", twipsRect(8895, 375, 255, 4920));
    VScroll->setAccessibleName(QStringLiteral("Line item scroll bar"));
    VScroll->setAccessibleDescription(
        QStringLiteral("Scrolls the lines a row or a page at a time"));
    // The keys that move between rows scroll the list; Tab does not stop at the bar as well.
    VScroll->setFocusPolicy(Qt::ClickFocus);
    // As designed: nothing to scroll until the list outgrows the window.
    VScroll->setMax(0);
    VScroll->setEnabled(false);

    resize(twipsToPixels(9150), twipsToPixels(5325));

    connect(lines, &ctlSubLines::HeightChanged, this, [this] { ctlSubLines_HeightChanged(); });
    mFocusWatch = connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        scrollIntoView(now);
        watchRowKeys(now);
    });
    connect(VScroll, &ScrollBar::changed, this, [this] { VScroll_Change(); });
}

ctlSubLineDsp::~ctlSubLineDsp()
{
    // The widget base still moves the focus while it is torn down; this part is gone by then.
    disconnect(mFocusWatch);
}

// --- properties

std::shared_ptr<ZebObjects::LineItems> ctlSubLineDsp::LineItems() const
{
    return ErrorPath::run(Procedure::untraced(this, QStringLiteral("LineItems() - Property Get")),
                          Ending::propagate(), [&] { return listOf(mLines).LineItems(); });
}

void ctlSubLineDsp::setLineItems(std::shared_ptr<ZebObjects::LineItems> items)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("LineItems() - Property Set")),
                   Ending::propagate(),
                   [&] { listOf(mLines).setProperty("LineItems", QVariant::fromValue(items)); });
}

// --- scrolling

qint16 ctlSubLineDsp::ViewableLines()
{
    return ErrorPath::run(
        Procedure::untraced(this, QStringLiteral("ViewableLines()")), Ending::logOnly(), [&] {
            const qint16 lineHeight = listOf(mLines).LineHeight();
            if (lineHeight == 0)
                throw ZebObjects::Failure(ZebObjects::ErrorNumber::DivisionByZero,
                                          QStringLiteral("ZebSubCtl"),
                                          QStringLiteral("Division by zero"));
            return checked16(int(std::floor(double(DisplayWindow->height()) / double(lineHeight))));
        });
}

void ctlSubLineDsp::ctlSubLines_HeightChanged()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("ctlSubLines_HeightChanged")),
                   Ending::report(), [&] {
                       ctlSubLines& lines = listOf(mLines);
                       const int windowHeight = DisplayWindow->height();
                       if (lines.height() > windowHeight) {
                           VScroll->setMax(narrowTo16(lines.height() - windowHeight));
                           VScroll->setSmallChange(lines.LineHeight());
                           const qint16 lineHeight = lines.LineHeight();
                           const qint16 page = checked16(int(lineHeight) * int(ViewableLines()));
                           VScroll->setLargeChange(checked16(int(page) - int(lines.LineHeight())));
                           VScroll->setEnabled(true);
                       } else {
                           VScroll->setMax(0);
                           VScroll->setEnabled(false);
                       }
                   });
}

void ctlSubLineDsp::VScroll_Change()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("VScroll_Change()")),
                   Ending::report().then(
                       [this](const ErrorInfo&) { VScroll->setValueChecked(VScroll->Min()); }),
                   [&] {
                       ctlSubLines& lines = listOf(mLines);
                       const qint16 top = checked16(-int(qint16(VScroll->Value())));
                       lines.move(lines.x(), top);
                   });
}

// --- layout and input

void ctlSubLineDsp::UserControl_Resize()
{
    const int w = ScaleWidth();
    const int h = ScaleHeight();
    ResumeNext(Procedure::untraced(this, QStringLiteral("UserControl_Resize()")),
               Ending::warning())([&] { setHeightOf(DisplayWindow, h - kHeadingAndMargin); })([&] {
        setHeightOf(VScroll, DisplayWindow->height());
    })([&] { VScroll->move(w - VScroll->width(), VScroll->y()); })([&] {
        setWidthOf(ControlHeading, w);
    })([&] { setWidthOf(DisplayWindow, w - VScroll->width()); })([&] {
        ctlSubLines& lines = listOf(mLines);
        setWidthOf(&lines, DisplayWindow->width() - 2);
    });
}

void ctlSubLineDsp::scrollIntoView(QWidget* focused)
{
    // A row reached from the keyboard scrolls into the window, by the bar, as a user would.
    if (!focused || !mLines || !mLines->isAncestorOf(focused) || !VScroll->isEnabled())
        return;
    QWidget* row = focused;
    while (row->parentWidget() != mLines)
        row = row->parentWidget();
    // Row places in the window follow from the list's top.
    const int top = mLines->y() + row->y();
    const int value = VScroll->Value();
    int wanted = value;
    if (top < 0)
        wanted = value + top;
    else if (top + row->height() > DisplayWindow->height())
        wanted = value + top + row->height() - DisplayWindow->height();
    wanted = qBound(VScroll->Min(), wanted, VScroll->Max());
    if (wanted != value)
        VScroll->setValueChecked(wanted);
}

void ctlSubLineDsp::watchRowKeys(QWidget* focused)
{
    // Only the focused row's box is watched, so the rows carry no filter of their own.
    if (mKeyedBox == focused)
        return;
    if (mKeyedBox)
        mKeyedBox->removeEventFilter(this);
    mKeyedBox = nullptr;
    if (!focused || !mLines)
        return;
    const qint16 index = mLines->indexOfRowAt(focused);
    if (index > 0 && mLines->row(index)->selectBox() == focused) {
        mKeyedBox = focused;
        focused->installEventFilter(this);
    }
}

bool ctlSubLineDsp::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == mKeyedBox && event->type() == QEvent::KeyPress)
        return moveBetweenRows(mKeyedBox, static_cast<QKeyEvent*>(event));
    return UserControl::eventFilter(watched, event);
}

bool ctlSubLineDsp::moveBetweenRows(QWidget* box, QKeyEvent* event)
{
    if (!mLines || event->modifiers() != Qt::NoModifier)
        return false;
    const int count = mLines->rowCount();
    const int index = mLines->indexOfRowAt(box);
    const int lineHeight = mLines->rowCount() > 0 ? mLines->row(1)->height() : 0;
    // A page moves the focus as far as the bar's large change moves the list.
    const int page = lineHeight > 0 ? std::max(1, VScroll->LargeChange() / lineHeight) : 1;
    int target = index;
    bool scrollByBar = false;
    switch (event->key()) {
    case Qt::Key_Up: target = index - 1; break;
    case Qt::Key_Down: target = index + 1; break;
    case Qt::Key_PageUp:
        target = index - page;
        scrollByBar = true;
        break;
    case Qt::Key_PageDown:
        target = index + page;
        scrollByBar = true;
        break;
    case Qt::Key_Home:
        target = 1;
        scrollByBar = true;
        break;
    case Qt::Key_End:
        target = count;
        scrollByBar = true;
        break;
    default: return false;
    }
    if (scrollByBar && VScroll->isEnabled())
        QCoreApplication::sendEvent(VScroll, event);
    target = std::clamp(target, 1, count);
    if (target != index)
        mLines->row(qint16(target))->selectBox()->setFocus(Qt::OtherFocusReason);
    return true;
}

void ctlSubLineDsp::wheelEvent(QWheelEvent* event)
{
    // The wheel anywhere over the viewer turns the scroll bar.
    if (VScroll->isEnabled())
        QCoreApplication::sendEvent(VScroll, event);
    event->accept();
}

void ctlSubLineDsp::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
        if (VScroll->isEnabled() && event->modifiers() == Qt::NoModifier) {
            QCoreApplication::sendEvent(VScroll, event);
            return;
        }
        break;
    default: break;
    }
    UserControl::keyPressEvent(event);
}

}  // namespace ZebSubCtl
