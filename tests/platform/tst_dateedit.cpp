#include "contracts/failure.h"
#include "platform/dateedit.h"
#include "support/accessibleevents.h"

#include <QAccessible>
#include <QApplication>
#include <QCalendarWidget>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>

using namespace ZebSubCtl;

namespace {

// A date editor on a form with one more box to move the focus to.
struct Form {
    QWidget form;
    DateEdit* date;
    QLineEdit* other;

    Form()
    {
        auto* layout = new QVBoxLayout(&form);
        date = new DateEdit(&form);
        other = new QLineEdit(&form);
        other->setObjectName(QStringLiteral("other"));
        layout->addWidget(date);
        layout->addWidget(other);
        form.resize(200, 80);
    }
    void show()
    {
        form.show();
        form.activateWindow();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QTRY_VERIFY(form.isActiveWindow());
        date->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(date->lineEdit()->hasFocus());
    }
    QLineEdit* edit() const { return date->lineEdit(); }
    void leave() { QTest::keyClick(edit(), Qt::Key_Tab); }
};

QTableView* dayTable(const DateEdit* d)
{
    return d->calendar()->findChild<QTableView*>(QStringLiteral("qt_calendar_calendarview"));
}

}  // namespace

class tst_DateEdit : public QObject {
    Q_OBJECT
private slots:
    void startsNullAndShowsEmpty();
    void isoTextConvertsBothWays();
    void emptyIsoTextMakesItNull();
    void isoTextThatIsNoDateFailsWith380AndChangesNothing();
    void valueSetFromCodeRunsValueChangedOnlyOnARealChange();
    void typedDateCountsWhenTheFocusLeaves();
    void typedDateCountsOnEnter();
    void typedIsoDateCounts();
    void invalidTypedDateKeepsTheLastValueAndShowsIt();
    void invalidTypedDateOverNullKeepsNull();
    void lettersCannotBeTyped();
    void emptiedTextMakesItNullWhenTheFocusLeaves();
    void deleteOnAFullySelectedDateMakesItNull();
    void backspaceOnAFullySelectedDateMakesItNull();
    void deleteInsideThePartialTextOnlyEdits();
    void upAndDownStepTheMonthUnderTheCursor();
    void upAndDownStepTheDayUnderTheCursorWithinTheMonth();
    void upAndDownStepTheYearUnderTheCursor();
    void steppingTheMonthKeepsTheDayInsideTheMonth();
    void upOnNullStartsAtToday();
    void altDownOpensTheCalendar();
    void f4OpensTheCalendar();
    void dropDownButtonOpensTheCalendar();
    void screenReadersMeetADateFieldWithANamedCalendarAndDaysInWords();
    void escapeClosesTheCalendarWithoutAChange();
    void clickingADayTakesItAndClosesTheCalendar();
    void enterInTheCalendarTakesTheChosenDay();
    void calendarOpensOnTheValueOrOnToday();
    void calendarNamesTheMonthsJanuaryToDecember();
    void calendarDayLettersAreSMTWTFS();
    void calendarMarksToday();
    void validateRunsWhenTheFocusLeavesAndOnlyThen();
    void valueIsAPropertyByName();
    void anEditIsPendingFromTheUsersChangeUntilValidateRuns();
    void finishEditTakesTheTypedTextAndValidatesWithoutTheFocusMoving();
};

void tst_DateEdit::startsNullAndShowsEmpty()
{
    DateEdit d;
    QVERIFY(d.isNull());
    QVERIFY(!d.date().isValid());
    QCOMPARE(d.isoText(), QString());
    QCOMPARE(d.lineEdit()->text(), QString());
}

void tst_DateEdit::isoTextConvertsBothWays()
{
    DateEdit d;
    d.setIsoText(QStringLiteral("2026-11-21"));
    QCOMPARE(d.date(), QDate(2026, 11, 21));
    QCOMPARE(d.isoText(), QStringLiteral("2026-11-21"));
    QCOMPARE(d.lineEdit()->text(), QStringLiteral("11/21/2026"));
    d.setDate(QDate(2025, 2, 3));
    QCOMPARE(d.isoText(), QStringLiteral("2025-02-03"));
}

void tst_DateEdit::emptyIsoTextMakesItNull()
{
    DateEdit d;
    d.setIsoText(QStringLiteral("2026-11-21"));
    QSignalSpy changed(&d, &DateEdit::valueChanged);
    d.setIsoText(QString());
    QVERIFY(d.isNull());
    QCOMPARE(d.lineEdit()->text(), QString());
    QCOMPARE(changed.count(), 1);
}

void tst_DateEdit::isoTextThatIsNoDateFailsWith380AndChangesNothing()
{
    DateEdit d;
    d.setIsoText(QStringLiteral("2026-11-21"));
    QSignalSpy changed(&d, &DateEdit::valueChanged);
    for (const char* bad : {"2026-02-30", "21.11.2026", "soon", "2026-1-5"}) {
        try {
            d.setIsoText(QLatin1String(bad));
            QFAIL(bad);
        } catch (const ZebObjects::Failure& f) {
            QCOMPARE(f.Number(), 380);
            QCOMPARE(f.Description(), QStringLiteral("Invalid property value"));
        }
    }
    QCOMPARE(d.isoText(), QStringLiteral("2026-11-21"));
    QCOMPARE(d.lineEdit()->text(), QStringLiteral("11/21/2026"));
    QCOMPARE(changed.count(), 0);
}

void tst_DateEdit::valueSetFromCodeRunsValueChangedOnlyOnARealChange()
{
    DateEdit d;
    QSignalSpy changed(&d, &DateEdit::valueChanged);
    QSignalSpy validated(&d, &DateEdit::validate);
    d.setNull();
    QCOMPARE(changed.count(), 0);
    d.setDate(QDate(2026, 1, 2));
    d.setDate(QDate(2026, 1, 2));
    QCOMPARE(changed.count(), 1);
    d.setNull();
    QCOMPARE(changed.count(), 2);
    QCOMPARE(validated.count(), 0);
}

void tst_DateEdit::typedDateCountsWhenTheFocusLeaves()
{
    Form f;
    f.show();
    QSignalSpy changed(f.date, &DateEdit::valueChanged);
    QSignalSpy validated(f.date, &DateEdit::validate);
    QTest::keyClicks(f.edit(), QStringLiteral("3/7/2026"));
    QVERIFY(f.date->isNull());
    QCOMPARE(changed.count(), 0);
    f.leave();
    // Tab goes on to the calendar button: the text box is left all the same.
    QVERIFY(f.date->dropDownButton()->hasFocus());
    QCOMPARE(f.date->date(), QDate(2026, 3, 7));
    QCOMPARE(f.edit()->text(), QStringLiteral("03/07/2026"));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(validated.count(), 1);
}

void tst_DateEdit::typedDateCountsOnEnter()
{
    Form f;
    f.show();
    QSignalSpy changed(f.date, &DateEdit::valueChanged);
    QTest::keyClicks(f.edit(), QStringLiteral("12/31/26"));
    QTest::keyClick(f.edit(), Qt::Key_Return);
    QCOMPARE(f.date->date(), QDate(2026, 12, 31));
    QCOMPARE(f.edit()->text(), QStringLiteral("12/31/2026"));
    QCOMPARE(changed.count(), 1);
}

void tst_DateEdit::typedIsoDateCounts()
{
    Form f;
    f.show();
    QTest::keyClicks(f.edit(), QStringLiteral("2027-04-09"));
    f.leave();
    QCOMPARE(f.date->isoText(), QStringLiteral("2027-04-09"));
}

void tst_DateEdit::invalidTypedDateKeepsTheLastValueAndShowsIt()
{
    Form f;
    f.show();
    f.date->setIsoText(QStringLiteral("2026-11-21"));
    QSignalSpy changed(f.date, &DateEdit::valueChanged);
    QSignalSpy validated(f.date, &DateEdit::validate);
    f.edit()->selectAll();
    QTest::keyClicks(f.edit(), QStringLiteral("02/30/2026"));
    QCOMPARE(f.edit()->text(), QStringLiteral("02/30/2026"));
    f.leave();
    QCOMPARE(f.date->isoText(), QStringLiteral("2026-11-21"));
    QCOMPARE(f.edit()->text(), QStringLiteral("11/21/2026"));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(validated.count(), 1);
    // A half-typed date fares the same.
    f.date->setFocus();
    f.edit()->selectAll();
    QTest::keyClicks(f.edit(), QStringLiteral("13/"));
    QTest::keyClick(f.edit(), Qt::Key_Return);
    QCOMPARE(f.edit()->text(), QStringLiteral("11/21/2026"));
    QCOMPARE(changed.count(), 0);
}

void tst_DateEdit::invalidTypedDateOverNullKeepsNull()
{
    Form f;
    f.show();
    QSignalSpy changed(f.date, &DateEdit::valueChanged);
    QTest::keyClicks(f.edit(), QStringLiteral("99/99/9999"));
    f.leave();
    QVERIFY(f.date->isNull());
    QCOMPARE(f.edit()->text(), QString());
    QCOMPARE(changed.count(), 0);
}

void tst_DateEdit::lettersCannotBeTyped()
{
    Form f;
    f.show();
    QTest::keyClicks(f.edit(), QStringLiteral("1a/b2"));
    QCOMPARE(f.edit()->text(), QStringLiteral("1/2"));
}

void tst_DateEdit::emptiedTextMakesItNullWhenTheFocusLeaves()
{
    Form f;
    f.show();
    f.date->setIsoText(QStringLiteral("2026-11-21"));
    f.edit()->end(false);
    for (int i = 0; i < 10; ++i)
        QTest::keyClick(f.edit(), Qt::Key_Backspace);
    QCOMPARE(f.edit()->text(), QString());
    QVERIFY(!f.date->isNull());
    f.leave();
    QVERIFY(f.date->isNull());
}

void tst_DateEdit::deleteOnAFullySelectedDateMakesItNull()
{
    Form f;
    f.show();
    f.date->setIsoText(QStringLiteral("2026-11-21"));
    QSignalSpy changed(f.date, &DateEdit::valueChanged);
    f.edit()->selectAll();
    QTest::keyClick(f.edit(), Qt::Key_Delete);
    QVERIFY(f.date->isNull());
    QCOMPARE(f.edit()->text(), QString());
    QCOMPARE(changed.count(), 1);
}

void tst_DateEdit::backspaceOnAFullySelectedDateMakesItNull()
{
    Form f;
    f.show();
    f.date->setIsoText(QStringLiteral("2026-11-21"));
    QTest::keyClick(f.edit(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(f.edit(), Qt::Key_Backspace);
    QVERIFY(f.date->isNull());
    QCOMPARE(f.edit()->text(), QString());
}

void tst_DateEdit::deleteInsideThePartialTextOnlyEdits()
{
    Form f;
    f.show();
    f.date->setIsoText(QStringLiteral("2026-11-21"));
    f.edit()->setCursorPosition(0);
    QTest::keyClick(f.edit(), Qt::Key_Delete);
    QCOMPARE(f.edit()->text(), QStringLiteral("1/21/2026"));
    QCOMPARE(f.date->isoText(), QStringLiteral("2026-11-21"));
    f.leave();
    QCOMPARE(f.date->isoText(), QStringLiteral("2026-01-21"));
}

void tst_DateEdit::upAndDownStepTheMonthUnderTheCursor()
{
    Form f;
    f.show();
    f.date->setIsoText(QStringLiteral("2026-11-21"));
    f.edit()->setCursorPosition(1);
    QTest::keyClick(f.edit(), Qt::Key_Up);
    QCOMPARE(f.date->isoText(), QStringLiteral("2026-12-21"));
    QCOMPARE(f.edit()->selectedText(), QStringLiteral("12"));
    QTest::keyClick(f.edit(), Qt::Key_Up);
    QCOMPARE(f.date->isoText(), QStringLiteral("2026-01-21"));
    QTest::keyClick(f.edit(), Qt::Key_Down);
    QTest::keyClick(f.edit(), Qt::Key_Down);
    QCOMPARE(f.date->isoText(), QStringLiteral("2026-11-21"));
}

void tst_DateEdit::upAndDownStepTheDayUnderTheCursorWithinTheMonth()
{
    Form f;
    f.show();
    f.date->setIsoText(QStringLiteral("2026-11-30"));
    f.edit()->setCursorPosition(4);
    QSignalSpy changed(f.date, &DateEdit::valueChanged);
    QTest::keyClick(f.edit(), Qt::Key_Up);
    QCOMPARE(f.date->isoText(), QStringLiteral("2026-11-01"));
    QCOMPARE(f.edit()->selectedText(), QStringLiteral("01"));
    QTest::keyClick(f.edit(), Qt::Key_Down);
    QTest::keyClick(f.edit(), Qt::Key_Down);
    QCOMPARE(f.date->isoText(), QStringLiteral("2026-11-29"));
    QCOMPARE(changed.count(), 3);
}

void tst_DateEdit::upAndDownStepTheYearUnderTheCursor()
{
    Form f;
    f.show();
    f.date->setIsoText(QStringLiteral("2024-02-29"));
    f.edit()->setCursorPosition(10);
    QTest::keyClick(f.edit(), Qt::Key_Up);
    QCOMPARE(f.date->isoText(), QStringLiteral("2025-02-28"));
    QCOMPARE(f.edit()->selectedText(), QStringLiteral("2025"));
    QTest::keyClick(f.edit(), Qt::Key_Down);
    QCOMPARE(f.date->isoText(), QStringLiteral("2024-02-28"));
}

void tst_DateEdit::steppingTheMonthKeepsTheDayInsideTheMonth()
{
    Form f;
    f.show();
    f.date->setIsoText(QStringLiteral("2026-01-31"));
    f.edit()->setCursorPosition(0);
    QTest::keyClick(f.edit(), Qt::Key_Up);
    QCOMPARE(f.date->isoText(), QStringLiteral("2026-02-28"));
}

void tst_DateEdit::upOnNullStartsAtToday()
{
    Form f;
    f.show();
    QTest::keyClick(f.edit(), Qt::Key_Up);
    QCOMPARE(f.date->date(), QDate::currentDate());
    QTest::keyClick(f.date->lineEdit(), Qt::Key_Delete);  // the month is selected, not all
    QVERIFY(!f.date->isNull());
}

void tst_DateEdit::altDownOpensTheCalendar()
{
    Form f;
    f.show();
    QSignalSpy validated(f.date, &DateEdit::validate);
    QTest::keyClick(f.edit(), Qt::Key_Down, Qt::AltModifier);
    QTRY_VERIFY(f.date->isCalendarOpen());
    QVERIFY(f.date->isNull());
    QCOMPARE(validated.count(), 0);
}

void tst_DateEdit::f4OpensTheCalendar()
{
    Form f;
    f.show();
    QTest::keyClick(f.edit(), Qt::Key_F4);
    QTRY_VERIFY(f.date->isCalendarOpen());
}

void tst_DateEdit::dropDownButtonOpensTheCalendar()
{
    Form f;
    f.show();
    QTest::mouseClick(f.date->dropDownButton(), Qt::LeftButton);
    QTRY_VERIFY(f.date->isCalendarOpen());
}

void tst_DateEdit::escapeClosesTheCalendarWithoutAChange()
{
    Form f;
    f.show();
    f.date->setIsoText(QStringLiteral("2026-11-21"));
    QSignalSpy changed(f.date, &DateEdit::valueChanged);
    QSignalSpy validated(f.date, &DateEdit::validate);
    QTest::keyClick(f.edit(), Qt::Key_F4);
    QTRY_VERIFY(f.date->isCalendarOpen());
    QTableView* table = dayTable(f.date);
    QTest::keyClick(table, Qt::Key_Right);
    QTest::keyClick(table, Qt::Key_Down);
    QCOMPARE(f.date->calendar()->selectedDate(), QDate(2026, 11, 29));
    QTest::keyClick(table, Qt::Key_Escape);
    QTRY_VERIFY(!f.date->isCalendarOpen());
    QCOMPARE(f.date->isoText(), QStringLiteral("2026-11-21"));
    QCOMPARE(f.edit()->text(), QStringLiteral("11/21/2026"));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(validated.count(), 0);
}

void tst_DateEdit::clickingADayTakesItAndClosesTheCalendar()
{
    Form f;
    f.show();
    f.date->setIsoText(QStringLiteral("2026-11-21"));
    QSignalSpy changed(f.date, &DateEdit::valueChanged);
    QTest::keyClick(f.edit(), Qt::Key_F4);
    QTRY_VERIFY(f.date->isCalendarOpen());
    QTableView* table = dayTable(f.date);
    QModelIndex fifteenth;
    for (int r = 1; r < table->model()->rowCount(); ++r)
        for (int c = 0; c < table->model()->columnCount(); ++c) {
            const QModelIndex i = table->model()->index(r, c);
            if (i.data().toInt() == 15)
                fifteenth = i;
        }
    QVERIFY(fifteenth.isValid());
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(fifteenth).center());
    QTRY_VERIFY(!f.date->isCalendarOpen());
    QCOMPARE(f.date->isoText(), QStringLiteral("2026-11-15"));
    QCOMPARE(f.edit()->text(), QStringLiteral("11/15/2026"));
    QCOMPARE(changed.count(), 1);
}

void tst_DateEdit::enterInTheCalendarTakesTheChosenDay()
{
    Form f;
    f.show();
    f.date->setIsoText(QStringLiteral("2026-11-21"));
    QSignalSpy validated(f.date, &DateEdit::validate);
    QTest::keyClick(f.edit(), Qt::Key_Down, Qt::AltModifier);
    QTRY_VERIFY(f.date->isCalendarOpen());
    QTableView* table = dayTable(f.date);
    QTest::keyClick(table, Qt::Key_Left);
    QTest::keyClick(table, Qt::Key_Return);
    QTRY_VERIFY(!f.date->isCalendarOpen());
    QCOMPARE(f.date->isoText(), QStringLiteral("2026-11-20"));
    QTRY_VERIFY(f.edit()->hasFocus());
    QCOMPARE(validated.count(), 0);
    f.leave();
    QCOMPARE(validated.count(), 1);
}

void tst_DateEdit::calendarOpensOnTheValueOrOnToday()
{
    Form f;
    f.show();
    f.date->showCalendar();
    QCOMPARE(f.date->calendar()->selectedDate(), QDate::currentDate());
    f.date->hideCalendar();
    f.date->setIsoText(QStringLiteral("2020-06-10"));
    f.date->showCalendar();
    QCOMPARE(f.date->calendar()->selectedDate(), QDate(2020, 6, 10));
    QCOMPARE(f.date->calendar()->monthShown(), 6);
    QCOMPARE(f.date->calendar()->yearShown(), 2020);
    f.date->hideCalendar();
}

void tst_DateEdit::calendarNamesTheMonthsJanuaryToDecember()
{
    DateEdit d;
    auto* monthButton =
        d.calendar()->findChild<QToolButton*>(QStringLiteral("qt_calendar_monthbutton"));
    QVERIFY(monthButton);
    const QStringList names{"January", "February", "March",     "April",   "May",      "June",
                            "July",    "August",   "September", "October", "November", "December"};
    for (int m = 1; m <= 12; ++m) {
        d.calendar()->setCurrentPage(2026, m);
        QCOMPARE(monthButton->text(), names.at(m - 1));
    }
}

void tst_DateEdit::calendarDayLettersAreSMTWTFS()
{
    DateEdit d;
    QTableView* table = dayTable(&d);
    QString letters;
    for (int c = 0; c < 7; ++c)
        letters += table->model()->index(0, c).data().toString();
    QCOMPARE(letters, QStringLiteral("SMTWTFS"));
}

void tst_DateEdit::calendarMarksToday()
{
    Form f;
    f.show();
    f.date->showCalendar();
    const QTextCharFormat today = f.date->calendar()->dateTextFormat(QDate::currentDate());
    QCOMPARE(today.fontWeight(), int(QFont::Bold));
    QCOMPARE(today.foreground().color(), QColor(Qt::red));
    QCOMPARE(f.date->calendar()->dateTextFormat().size(), 1);  // no other day
    f.date->hideCalendar();
}

void tst_DateEdit::validateRunsWhenTheFocusLeavesAndOnlyThen()
{
    Form f;
    f.show();
    QSignalSpy validated(f.date, &DateEdit::validate);
    f.date->setIsoText(QStringLiteral("2026-11-21"));
    QTest::keyClick(f.edit(), Qt::Key_Up);
    QTest::keyClick(f.edit(), Qt::Key_Return);
    QCOMPARE(validated.count(), 0);
    f.leave();
    QCOMPARE(validated.count(), 1);
    f.other->setFocus();
    QCOMPARE(validated.count(), 1);
    f.date->setFocus();
    QTRY_VERIFY(f.edit()->hasFocus());
    QTest::keyClick(f.edit(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(validated.count(), 2);
}

void tst_DateEdit::valueIsAPropertyByName()
{
    DateEdit d;
    QVERIFY(d.setProperty("Value", QStringLiteral("2026-05-04")));
    QCOMPARE(d.property("Value").toString(), QStringLiteral("2026-05-04"));
}

void tst_DateEdit::anEditIsPendingFromTheUsersChangeUntilValidateRuns()
{
    Form f;
    f.date->setIsoText(QStringLiteral("2026-03-01"));
    QVERIFY(!f.date->isEditPending());
    QSignalSpy pending(f.date, &DateEdit::editPendingChanged);
    f.show();
    QVERIFY(!f.date->isEditPending());
    QTest::keyClick(f.edit(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(f.edit(), QStringLiteral("12/24/2026"));
    QVERIFY(f.date->isEditPending());
    QTest::keyClick(f.edit(), Qt::Key_Return);
    // Enter takes the date, but it is handed on only when the editor is left.
    QCOMPARE(f.date->isoText(), QStringLiteral("2026-12-24"));
    QVERIFY(f.date->isEditPending());
    QCOMPARE(pending.count(), 1);
    int validated = 0;
    connect(f.date, &DateEdit::validate, this, [&] { ++validated; });
    f.leave();
    QCOMPARE(validated, 1);
    QVERIFY(!f.date->isEditPending());
    QCOMPARE(pending.count(), 2);
    QCOMPARE(pending.at(1).at(0).toBool(), false);

    // Stepping is a change of the user's; stepping back ends it again.
    f.date->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(f.edit()->hasFocus());
    f.edit()->setCursorPosition(0);
    QTest::keyClick(f.edit(), Qt::Key_Up);
    QCOMPARE(f.date->isoText(), QStringLiteral("2026-01-24"));
    QVERIFY(f.date->isEditPending());
    QTest::keyClick(f.edit(), Qt::Key_Down);
    QVERIFY(!f.date->isEditPending());

    // A value set from code ends a pending edit.
    QTest::keyClick(f.edit(), Qt::Key_Up);
    QVERIFY(f.date->isEditPending());
    f.date->setIsoText(QStringLiteral("2027-05-05"));
    QVERIFY(!f.date->isEditPending());
}

void tst_DateEdit::finishEditTakesTheTypedTextAndValidatesWithoutTheFocusMoving()
{
    Form f;
    f.show();
    int validated = 0;
    QString seen;
    connect(f.date, &DateEdit::validate, this, [&] {
        ++validated;
        seen = f.date->isoText();
    });
    QTest::keyClicks(f.edit(), QStringLiteral("7/4/2027"));
    QVERIFY(f.date->isEditPending());
    f.date->finishEdit();
    QCOMPARE(validated, 1);
    QCOMPARE(seen, QStringLiteral("2027-07-04"));
    QCOMPARE(f.edit()->text(), QStringLiteral("07/04/2027"));
    QVERIFY(!f.date->isEditPending());
    QVERIFY(f.edit()->hasFocus());
}

void tst_DateEdit::screenReadersMeetADateFieldWithANamedCalendarAndDaysInWords()
{
    Form f;
    f.date->setAccessibleTexts(QStringLiteral("Submittal Date"),
                               QStringLiteral("The date used for the submittal"));
    f.date->setDate(QDate(2026, 11, 21));
    f.show();
    QAccessibleInterface* field = QAccessible::queryAccessibleInterface(f.date);
    QCOMPARE(field->role(), QAccessible::ComboBox);
    QCOMPARE(field->text(QAccessible::Name), QStringLiteral("Submittal Date"));
    QCOMPARE(field->text(QAccessible::Value), QStringLiteral("Saturday, November 21, 2026"));
    QCOMPARE(field->text(QAccessible::Description),
             QStringLiteral("The date used for the submittal. Up and Down change the month, day or "
                            "year under the cursor; Alt+Down or F4 opens the calendar."));
    QCOMPARE(QAccessible::queryAccessibleInterface(f.edit())->text(QAccessible::Description),
             field->text(QAccessible::Description));
    QCOMPARE(field->childCount(), 2);

    // Tab reaches the calendar button; Space opens the calendar from it.
    ZebTest::AccessibleEvents events;
    QTest::keyClick(f.edit(), Qt::Key_Tab);
    QVERIFY(f.date->dropDownButton()->hasFocus());
    QTest::keyClick(f.date->dropDownButton(), Qt::Key_Space);
    QTRY_VERIFY(f.date->isCalendarOpen());

    // The calendar window is named after the field and found under it.
    QAccessibleInterface* popup = QAccessible::queryAccessibleInterface(f.date->calendarPopup());
    QCOMPARE(popup->text(QAccessible::Name), QStringLiteral("Calendar for Submittal Date"));
    QCOMPARE(popup->parent(), field);
    QCOMPARE(field->childCount(), 3);
    QCOMPARE(field->child(2), popup);

    // Weekdays head the columns; every day says its month and year.
    QAccessibleInterface* grid = QAccessible::queryAccessibleInterface(dayTable(f.date));
    QAccessibleTableInterface* table = grid->tableInterface();
    QVERIFY(table);
    QCOMPARE(table->columnCount(), 7);
    QCOMPARE(table->rowCount(), 6);
    QStringList headings;
    for (int c = 0; c < 7; ++c)
        headings << table->cellAt(0, c)->tableCellInterface()->columnHeaderCells().front()->text(
            QAccessible::Name);
    QCOMPARE(headings, (QStringList{"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday",
                                    "Friday", "Saturday"}));
    QAccessibleInterface* chosen = nullptr;
    for (QAccessibleInterface* cell : table->selectedCells())
        chosen = cell;
    QVERIFY(chosen);
    QCOMPARE(chosen->text(QAccessible::Name), QStringLiteral("Saturday, November 21, 2026"));
    QCOMPARE(chosen->tableCellInterface()->columnHeaderCells().front()->text(QAccessible::Name),
             QStringLiteral("Saturday"));
    // The days before the first of the month belong to October.
    QCOMPARE(table->cellAt(0, 0)->text(QAccessible::Name),
             QStringLiteral("Sunday, October 25, 2026"));
    QCOMPARE(table->cellAt(5, 6)->text(QAccessible::Name),
             QStringLiteral("Saturday, December 5, 2026"));

    // Moving in the calendar announces the day in words.
    events.clear();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    QCOMPARE(events.names(QAccessible::Focus).value(0),
             QStringLiteral("Sunday, November 22, 2026"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTRY_VERIFY(!f.date->isCalendarOpen());
    QCOMPARE(f.date->date(), QDate(2026, 11, 22));
}

QTEST_MAIN(tst_DateEdit)
#include "tst_dateedit.moc"
