#include "controls/lineitems/ctlsublines.h"

#include "contracts/lineitems.h"
#include "controls/lineitems/ctlsubline.h"
#include "frame/controlregistry.h"
#include "frame/errorpath.h"
#include "frame/makechild.h"
#include "frame/reportmessage.h"
#include "frame/units.h"

#include <QApplication>
#include <QMoveEvent>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <limits>

namespace ZebSubCtl {

ZEB_REGISTER_CONTROL(ctlSubLines)

namespace {

// A list inside a window is hidden while its rows are rebuilt, so that the rows are laid out
// and painted once, when it shows again (also when the rebuild fails part way).
class HiddenWhileRebuilt {
public:
    explicit HiddenWhileRebuilt(QWidget* list)
        : m_list(list), m_hidden(!list->isWindow() && list->isVisible())
    {
        if (m_hidden)
            m_list->hide();
    }
    ~HiddenWhileRebuilt()
    {
        if (m_hidden)
            m_list->show();
    }
    HiddenWhileRebuilt(const HiddenWhileRebuilt&) = delete;
    HiddenWhileRebuilt& operator=(const HiddenWhileRebuilt&) = delete;

private:
    QWidget* m_list;
    bool m_hidden;
};

[[noreturn]] void overflow()
{
    throw ZebObjects::Failure(ZebObjects::ErrorNumber::Overflow, QStringLiteral("ZebSubCtl"),
                              QStringLiteral("Overflow"));
}

// 16-bit integer arithmetic: a result outside -32768..32767 fails with overflow.
qint16 add16(qint16 a, qint16 b)
{
    const int sum = int(a) + int(b);
    if (sum < std::numeric_limits<qint16>::min() || sum > std::numeric_limits<qint16>::max())
        overflow();
    return qint16(sum);
}

qint16 mul16(qint16 a, qint16 b)
{
    const int product = int(a) * int(b);
    if (product < std::numeric_limits<qint16>::min()
        || product > std::numeric_limits<qint16>::max())
        overflow();
    return qint16(product);
}

}  // namespace

ctlSubLines::ctlSubLines(QWidget* parent) : UserControl(parent)
{
    setAccessibleName(QStringLiteral("Line item list"));
    setAccessibleDescription(QStringLiteral("The lines of the submittal, one row each"));

    auto* first = makeChild<ctlSubLine>(this, "ctlSubLine", QRect());
    first->setIndex(1);
    first->move(0, 0);
    m_rows.emplace_back(first);
    m_tabStop = first;

    // The rows cover the list; it paints only what they leave, so a scroll can move the
    // pixels already drawn instead of painting every row again.
    setAttribute(Qt::WA_OpaquePaintEvent);
    resize(ctlSubLine::DesignWidth, ctlSubLine::DesignHeight);

    if (parent)
        parent->installEventFilter(this);

    m_focusWatch = connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (const qint16 index = indexOfRowAt(now))
            moveTabStop(m_rows[std::size_t(index) - 1]);
    });
}

ctlSubLines::~ctlSubLines()
{
    disconnect(m_focusWatch);
}

qint16 ctlSubLines::indexOfRowAt(const QWidget* w) const
{
    while (w && w->parentWidget() != this)
        w = w->parentWidget();
    const auto* row = qobject_cast<const ctlSubLine*>(w);
    return row ? row->Index() : qint16(0);
}

void ctlSubLines::moveTabStop(ctlSubLine* row)
{
    if (row == m_tabStop)
        return;
    if (m_tabStop)
        m_tabStop->setTabStop(false);
    m_tabStop = row;
    if (!row)
        return;
    row->setTabStop(true);
    // The one stop takes the list's place in the focus chain, where row 1's box was made. Only
    // the stop needs it: linking every new row while the list is hidden walks the whole chain.
    if (row != m_rows.front())
        QWidget::setTabOrder(m_rows.front()->selectBox(), row->selectBox());
}

int ctlSubLines::viewBottom() const
{
    const QWidget* window = parentWidget();
    if (!window || isWindow())
        return std::numeric_limits<int>::max();
    return window->height() - y();
}

void ctlSubLines::wakeRowsInView()
{
    const int bottom = viewBottom();
    while (m_quietFrom < m_rows.size()) {
        ctlSubLine* line = m_rows[m_quietFrom];
        if (line && line->y() >= bottom)
            return;
        if (line)
            line->setUpdatesEnabled(true);
        ++m_quietFrom;
    }
}

void ctlSubLines::moveEvent(QMoveEvent* event)
{
    UserControl::moveEvent(event);
    wakeRowsInView();
}

bool ctlSubLines::event(QEvent* event)
{
    if (event->type() == QEvent::ParentAboutToChange && parentWidget())
        parentWidget()->removeEventFilter(this);
    const bool handled = UserControl::event(event);
    if (event->type() == QEvent::ParentChange && parentWidget())
        parentWidget()->installEventFilter(this);
    // A move made while the list was hidden reaches it no other way.
    if (event->type() == QEvent::ParentChange || event->type() == QEvent::Show)
        wakeRowsInView();
    return handled;
}

bool ctlSubLines::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        wakeRowsInView();
    return UserControl::eventFilter(watched, event);
}

ctlSubLine* ctlSubLines::row(qint16 index) const
{
    if (index < 1 || std::size_t(index) > m_rows.size() || !m_rows[std::size_t(index) - 1])
        throw ZebObjects::Failure::controlArrayElementMissing(index);
    return m_rows[std::size_t(index) - 1];
}

// --- properties

qint16 ctlSubLines::LineHeight() const
{
    return ErrorPath::run(Procedure::untraced(this, QStringLiteral("LineHeight() - Property Get")),
                          Ending::propagate(), [&] { return narrowTo16(row(1)->height()); });
}

std::shared_ptr<ZebObjects::LineItems> ctlSubLines::LineItems() const
{
    return ErrorPath::run(Procedure::untraced(this, QStringLiteral("LineItems() - Property Get")),
                          Ending::propagate(), [&] { return m_lineItems; });
}

void ctlSubLines::setLineItems(std::shared_ptr<ZebObjects::LineItems> items)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("LineItems() - Property Set")),
                   Ending::propagate(), [&] {
                       m_lineItems = std::move(items);
                       Populate();
                   });
}

// --- building the rows

void ctlSubLines::Clear()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("Clear()")), Ending::propagate(), [&] {
        while (m_rows.size() > 1) {
            ctlSubLine* last = m_rows.back().data();
            // The row gives its area back to the list once; its children need
            // not each mark their own piece of it for repainting.
            if (last)
                last->setUpdatesEnabled(false);
            delete last;
            m_rows.pop_back();
        }
        m_quietFrom = std::min(m_quietFrom, m_rows.size());
        moveTabStop(row(1));
        row(1)->setLineItem(nullptr);
    });
}

qint16 ctlSubLines::addNextLine()
{
    return ErrorPath::run(
        Procedure::untraced(this, QStringLiteral("addNextLine()")), Ending::propagate(), [&] {
            const qint16 lastIndex = qint16(m_rows.size());
            ctlSubLine* last = row(lastIndex);
            const qint16 index = last->Index();
            const qint16 top = narrowTo16(last->y());
            const qint16 height = narrowTo16(last->height());
            const qint16 newIndex = add16(index, 1);

            // A new element of the group takes its width from the design-time row.
            ctlSubLine* first = row(1);
            auto* line = makeChild<ctlSubLine>(this, "ctlSubLine", QRect());
            // Placed even when the rows have no size at all, which makeChild would skip.
            line->setGeometry(first->x(), int(top) + int(height), first->width(), height);
            line->setIndex(newIndex);
            line->setTabStop(false);
            // A row below the window cannot be seen: with its updates off, showing it does not
            // queue each of its widgets for painting (Qt's painting visits every queued widget
            // beside all rows of the list). It is turned on before it comes into view.
            if (m_quietFrom < m_rows.size() || line->y() >= viewBottom())
                line->setUpdatesEnabled(false);
            else
                m_quietFrom = m_rows.size() + 1;
            m_rows.emplace_back(line);
            line->setVisible(true);

            const qint16 pixels = mul16(qint16(m_rows.size()), height);
            resize(width(), pixelsToTwips(pixels) / TwipsPerPixel);

            emit HeightChanged();
            return newIndex;
        });
}

void ctlSubLines::Populate()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("Populate()")), Ending::propagate(),
                   [&] {
                       // The old rows go while still shown: hiding them first would walk every one
                       // of their widgets only to destroy it.
                       Clear();
                       const HiddenWhileRebuilt hidden(this);
                       if (!m_lineItems)
                           return;
                       qint16 n = 1;
                       for (const auto& item : m_lineItems->Enumerate()) {
                           ctlSubLine* line = row(n);
                           // By name, as for any row component.
                           line->setProperty("LineItem", QVariant::fromValue(item));
                           line->setProperty("LineNumber", QString::number(n));
                           line->setProperty("Grayed", n % 2 == 0);
                           if (m_lineItems->Count() > n)
                               addNextLine();
                           n = add16(n, 1);
                       }
                   });
}

// --- layout and painting

void ctlSubLines::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().color(QPalette::Base));
}

void ctlSubLines::UserControl_Resize()
{
    // One row that cannot be widened does not stop the others.
    ResumeNext steps(Procedure::untraced(this, QStringLiteral("UserControl_Resize()")),
                     Ending::warning());
    const int w = ScaleWidth();
    const auto count = qint16(m_rows.size());
    for (qint16 i = 1; i <= count; ++i)
        steps([&] {
            ctlSubLine* line = row(i);
            if (line->width() != w)
                line->resize(w, line->height());
        });
}

}  // namespace ZebSubCtl
