#pragma once

#include "zebsubctl_export.h"

#include <QDate>
#include <QWidget>

class QCalendarWidget;
class QFrame;
class QLineEdit;
class QToolButton;

namespace ZebSubCtl {

// A date editor with a null state (no date: the box is empty) and a drop-down month calendar.
// The value is a valid date or null; it converts to and from ISO text ("2026-11-21", empty for
// null). The user types a date (month/day/year, or ISO), which counts when Enter is pressed or
// the focus leaves; a typed text that is no date is dropped and the last value shows again, so
// only valid dates or null ever come out. Delete or Backspace over the whole selected date makes
// it null. Up and Down step the part (month, day or year) under the cursor; on null they start at
// today. Alt+Down or F4 opens the calendar: a click or Enter there takes the day, Escape closes it
// without a change. valueChanged() runs on every real change of the value, from code or user;
// validate() runs each time the focus leaves the editor for another widget, after the typed text
// has been taken. An edit is pending from the user's first change (typing, Enter, stepping, the
// calendar) until validate() has run, unless the value is back where it was; a value set from
// code ends it.
class ZEBSUBCTL_EXPORT DateEdit : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString Value READ isoText WRITE setIsoText NOTIFY valueChanged USER true)
public:
    explicit DateEdit(QWidget* parent = nullptr);
    ~DateEdit() override;

    // How a date shows in the box.
    static QString displayFormat() { return QStringLiteral("MM/dd/yyyy"); }

    bool isNull() const { return !m_value.isValid(); }
    // An invalid date when null.
    QDate date() const { return m_value; }
    // An invalid date makes the value null.
    void setDate(const QDate& date);
    void setNull() { setDate(QDate()); }

    // Empty for null, else yyyy-MM-dd.
    QString isoText() const;
    // Empty text sets null; text that is not an ISO date fails with 380 and changes nothing.
    void setIsoText(const QString& text);

    // Whether the user changed the value or the typed text since validate() last ran.
    bool isEditPending() const;
    // Takes the typed text and runs validate(), as leaving the editor does: for a window that
    // closes, or a page that goes, while the focus is elsewhere (another window was active).
    void finishEdit();

    // Gives the editor and its parts their names for screen readers.
    void setAccessibleTexts(const QString& name, const QString& description);

    QLineEdit* lineEdit() const { return m_edit; }
    QToolButton* dropDownButton() const { return m_button; }
    QCalendarWidget* calendar() const { return m_calendar; }
    QWidget* calendarPopup() const;
    bool isCalendarOpen() const;
    void showCalendar();
    void hideCalendar();

signals:
    void valueChanged();
    void validate();
    // isEditPending() turned true or false.
    void editPendingChanged(bool pending);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Part { Month, Day, Year };

    // Takes the typed text: a date, or empty for null; anything else shows the value again.
    void commitText();
    void showValue();
    void setValue(const QDate& date);
    // A change the user made, which validate() has yet to hand on.
    void userSetDate(const QDate& date);
    void notePending();
    Part partAtCursor() const;
    void selectPart(Part part);
    void step(int delta);
    bool handleKey(QKeyEvent* event);
    void takeFromCalendar(const QDate& date);

    QDate m_value;
    // The value as validate() last handed it on, or as code last set it.
    QDate m_settled;
    bool m_pending = false;
    QLineEdit* m_edit;
    QToolButton* m_button;
    QFrame* m_popup;
    QCalendarWidget* m_calendar;
};

}  // namespace ZebSubCtl
