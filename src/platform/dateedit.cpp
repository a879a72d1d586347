#include "platform/dateedit.h"

#include "contracts/failure.h"
#include "platform/dateeditaccessible.h"

#include <QCalendarWidget>
#include <QFocusEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace ZebSubCtl {

namespace {

// A typed date: month/day/year (a two-digit year is of this century) or ISO.
QDate parseTyped(const QString& typed)
{
    const QString text = typed.trimmed();
    if (text.contains(u'-'))
        return QDate::fromString(text, QStringLiteral("yyyy-M-d"));
    const QStringList parts = text.split(u'/');
    if (parts.size() != 3)
        return QDate();
    bool okM = false;
    bool okD = false;
    bool okY = false;
    const int month = parts[0].toInt(&okM);
    const int day = parts[1].toInt(&okD);
    int year = parts[2].toInt(&okY);
    if (!okM || !okD || !okY || parts[0].size() > 2 || parts[1].size() > 2)
        return QDate();
    if (parts[2].size() <= 2)
        year += 2000;
    else if (parts[2].size() != 4)
        return QDate();
    return QDate(year, month, day);
}

QDate stepped(const QDate& d, int part, int delta)
{
    switch (part) {
    case 0: {  // month, within the year; the day is kept where the month allows it
        const int month = (d.month() - 1 + delta + 12) % 12 + 1;
        const int days = QDate(d.year(), month, 1).daysInMonth();
        return QDate(d.year(), month, std::min(d.day(), days));
    }
    case 1: {  // day, within the month
        const int days = d.daysInMonth();
        return QDate(d.year(), d.month(), (d.day() - 1 + delta + days) % days + 1);
    }
    default: {
        const int year = std::clamp(d.year() + delta, 1, 9999);
        const int days = QDate(year, d.month(), 1).daysInMonth();
        return QDate(year, d.month(), std::min(d.day(), days));
    }
    }
}

// Screen readers get the calendar's parts from our own interfaces, installed before it is made.
QCalendarWidget* makeCalendar(QWidget* parent)
{
    installDateEditAccessibility();
    return new QCalendarWidget(parent);
}

}  // namespace

DateEdit::DateEdit(QWidget* parent)
    : QWidget(parent), m_edit(new QLineEdit(this)), m_button(new QToolButton(this)),
      m_popup(new QFrame(this, Qt::Popup)), m_calendar(makeCalendar(m_popup))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_edit);
    layout->addWidget(m_button);

    m_edit->setObjectName(QStringLiteral("dateText"));
    m_edit->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[0-9/-]{0,10}")), m_edit));
    m_edit->installEventFilter(this);
    setFocusProxy(m_edit);
    setFocusPolicy(Qt::StrongFocus);

    m_button->setObjectName(QStringLiteral("dropDown"));
    m_button->setArrowType(Qt::DownArrow);
    // Tab reaches the button too, for those who do not know Alt+Down.
    m_button->setFocusPolicy(Qt::TabFocus);
    m_button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    m_button->setFixedWidth(17);
    connect(m_button, &QToolButton::clicked, this, [this] { showCalendar(); });
    connect(m_edit, &QLineEdit::textChanged, this, [this] { notePending(); });

    m_popup->setObjectName(QStringLiteral("calendarPopup"));
    m_popup->setFrameShape(QFrame::Box);
    auto* popupLayout = new QVBoxLayout(m_popup);
    popupLayout->setContentsMargins(1, 1, 1, 1);
    popupLayout->addWidget(m_calendar);
    m_calendar->setObjectName(QStringLiteral("monthCalendar"));
    // English month names and Sunday-first single day letters, whatever the host's locale.
    m_calendar->setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    m_calendar->setFirstDayOfWeek(Qt::Sunday);
    m_calendar->setHorizontalHeaderFormat(QCalendarWidget::SingleLetterDayNames);
    m_calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    m_calendar->setGridVisible(false);
    // The calendar's own parts come without names.
    const std::pair<const char*, const char*> parts[] = {
        {"qt_calendar_prevmonth", "Previous month"},
        {"qt_calendar_nextmonth", "Next month"},
        {"qt_calendar_calendarview", "Days of the month"},
        {"qt_calendar_monthbutton", "Month"},
        {"qt_calendar_yearbutton", "Year"},
        {"qt_calendar_yearedit", "Year"}};
    for (const auto& [objectName, partName] : parts) {
        if (auto* part = m_calendar->findChild<QWidget*>(QLatin1String(objectName)))
            part->setAccessibleName(QLatin1String(partName));
    }
    connect(m_calendar, &QCalendarWidget::clicked, this, [this](QDate d) { takeFromCalendar(d); });
    connect(m_calendar, &QCalendarWidget::activated, this,
            [this](QDate d) { takeFromCalendar(d); });
}

DateEdit::~DateEdit() = default;

void DateEdit::setDate(const QDate& date)
{
    m_settled = date.isValid() ? date : QDate();
    userSetDate(date);
}

void DateEdit::userSetDate(const QDate& date)
{
    setValue(date.isValid() ? date : QDate());
    showValue();
    notePending();
}

bool DateEdit::isEditPending() const
{
    const QString shown = isNull() ? QString() : m_value.toString(displayFormat());
    return m_value != m_settled || m_edit->text() != shown;
}

void DateEdit::finishEdit()
{
    commitText();
    emit validate();
    m_settled = m_value;
    notePending();
}

void DateEdit::notePending()
{
    const bool pending = isEditPending();
    if (pending == m_pending)
        return;
    m_pending = pending;
    emit editPendingChanged(pending);
}

QString DateEdit::isoText() const
{
    return isNull() ? QString() : m_value.toString(Qt::ISODate);
}

void DateEdit::setIsoText(const QString& text)
{
    if (text.isEmpty()) {
        setNull();
        return;
    }
    const QDate d = QDate::fromString(text, Qt::ISODate);
    if (!d.isValid() || text.size() != 10)
        throw ZebObjects::Failure::invalidPropertyValue();
    setDate(d);
}

void DateEdit::setAccessibleTexts(const QString& name, const QString& description)
{
    const QString keys = QStringLiteral("Up and Down change the month, day or year under the "
                                        "cursor; Alt+Down or F4 opens the calendar.");
    const QString said = description.isEmpty()        ? keys
                         : description.endsWith(u'.') ? description + u' ' + keys
                                                      : description + QStringLiteral(". ") + keys;
    setAccessibleName(name);
    setAccessibleDescription(said);
    m_edit->setAccessibleName(name);
    m_edit->setAccessibleDescription(said);
    m_button->setAccessibleName(QStringLiteral("Open the calendar"));
    m_button->setAccessibleDescription(
        QStringLiteral("Shows a month calendar to choose the date from (Alt+Down)"));
    m_calendar->setAccessibleName(QStringLiteral("Month calendar"));
    m_calendar->setAccessibleDescription(QStringLiteral("Choose a day for: ") + name);
}

QWidget* DateEdit::calendarPopup() const
{
    return m_popup;
}

bool DateEdit::isCalendarOpen() const
{
    return m_popup->isVisible();
}

void DateEdit::showCalendar()
{
    if (isCalendarOpen())
        return;
    commitText();
    const QDate today = QDate::currentDate();
    m_calendar->setDateTextFormat(QDate(), QTextCharFormat());
    QTextCharFormat todayFormat;
    todayFormat.setFontWeight(QFont::Bold);
    todayFormat.setForeground(QColor(Qt::red));
    m_calendar->setDateTextFormat(today, todayFormat);
    const QDate shown = isNull() ? today : m_value;
    m_calendar->setSelectedDate(shown);
    m_calendar->setCurrentPage(shown.year(), shown.month());
    m_popup->adjustSize();
    QPoint at = mapToGlobal(QPoint(0, height()));
    if (const QScreen* s = screen()) {
        const QRect area = s->availableGeometry();
        if (at.y() + m_popup->height() > area.bottom())
            at.setY(mapToGlobal(QPoint(0, 0)).y() - m_popup->height());
        at.setX(std::clamp(at.x(), area.left(),
                           std::max(area.left(), area.right() - m_popup->width())));
    }
    m_popup->move(at);
    m_popup->show();
    m_calendar->setFocus(Qt::PopupFocusReason);
}

void DateEdit::hideCalendar()
{
    m_popup->hide();
}

void DateEdit::takeFromCalendar(const QDate& date)
{
    hideCalendar();
    userSetDate(date);
    m_edit->setFocus(Qt::PopupFocusReason);
}

void DateEdit::setValue(const QDate& date)
{
    if (date == m_value)
        return;
    m_value = date;
    emit valueChanged();
}

void DateEdit::showValue()
{
    m_edit->setText(isNull() ? QString() : m_value.toString(displayFormat()));
}

void DateEdit::commitText()
{
    const QString text = m_edit->text();
    if (text.trimmed().isEmpty()) {
        setValue(QDate());
    } else {
        const QDate typed = parseTyped(text);
        if (typed.isValid())
            setValue(typed);
    }
    showValue();
    notePending();
}

DateEdit::Part DateEdit::partAtCursor() const
{
    const QString text = m_edit->text();
    const int pos = m_edit->hasSelectedText() ? m_edit->selectionStart() : m_edit->cursorPosition();
    if (text.contains(u'-')) {
        const auto before = text.left(pos).count(u'-');
        return before == 0 ? Part::Year : before == 1 ? Part::Month : Part::Day;
    }
    const auto before = text.left(pos).count(u'/');
    return before == 0 ? Part::Month : before == 1 ? Part::Day : Part::Year;
}

void DateEdit::selectPart(Part part)
{
    switch (part) {
    case Part::Month: m_edit->setSelection(0, 2); break;
    case Part::Day: m_edit->setSelection(3, 2); break;
    case Part::Year: m_edit->setSelection(6, 4); break;
    }
}

void DateEdit::step(int delta)
{
    const Part part = partAtCursor();
    commitText();
    if (isNull())
        userSetDate(QDate::currentDate());
    else
        userSetDate(stepped(m_value, static_cast<int>(part), delta));
    selectPart(part);
}

bool DateEdit::handleKey(QKeyEvent* event)
{
    const int key = event->key();
    const auto mods = event->modifiers() & ~Qt::KeypadModifier;
    if (key == Qt::Key_F4 || (key == Qt::Key_Down && mods == Qt::AltModifier)) {
        showCalendar();
        return true;
    }
    if (mods != Qt::NoModifier)
        return false;
    switch (key) {
    case Qt::Key_Up: step(1); return true;
    case Qt::Key_Down: step(-1); return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        commitText();
        m_edit->selectAll();
        return false;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        if (!m_edit->text().isEmpty() && m_edit->selectedText() == m_edit->text()) {
            userSetDate(QDate());
            return true;
        }
        return false;
    default: return false;
    }
}

bool DateEdit::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_edit) {
        if (event->type() == QEvent::KeyPress) {
            if (handleKey(static_cast<QKeyEvent*>(event)))
                return true;
        } else if (event->type() == QEvent::FocusOut) {
            const auto reason = static_cast<QFocusEvent*>(event)->reason();
            // Opening the calendar (or any pop-up) keeps the editor current.
            if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
                finishEdit();
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace ZebSubCtl
