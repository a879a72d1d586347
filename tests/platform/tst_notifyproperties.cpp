// The platform widgets' value properties as Qt's item mappers and bindings use them: one USER
// property per widget with a notify signal named after it, read and written by a
// QDataWidgetMapper in both directions, without adding or losing a control event.
#include "platform/checkbox.h"
#include "platform/combobox.h"
#include "platform/dateedit.h"
#include "platform/multilinetextbox.h"
#include "platform/optionbutton.h"
#include "platform/scrollbar.h"
#include "platform/textbox.h"

#include <QDataWidgetMapper>
#include <QLineEdit>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>
#include <QVBoxLayout>

using namespace ZebSubCtl;

namespace {

enum Column { Tick, Option, Line, Choice, Date, Scroll, Memo, Columns };

// One form with each widget, mapped to the columns of a two-row model.
struct MappedForm {
    QWidget window;
    CheckBox* tick = new CheckBox(QStringLiteral("Include"), &window);
    OptionButton* option = new OptionButton(QStringLiteral("Separate letters"), &window);
    TextBox* line = new TextBox(&window);
    ComboBox* choice = new ComboBox(&window);
    DateEdit* date = new DateEdit(&window);
    ScrollBar* scroll = new ScrollBar(&window);
    MultiLineTextBox* memo = new MultiLineTextBox(&window);
    QStandardItemModel model{2, Columns};
    QDataWidgetMapper mapper;

    MappedForm()
    {
        auto* layout = new QVBoxLayout(&window);
        for (QWidget* w : widgets())
            layout->addWidget(w);
        choice->AddItem(QStringLiteral("Marta Lindqvist"));
        choice->AddItem(QStringLiteral("Dana Whitfield"));
        scroll->setMax(100);
        set(0, {1, false, QStringLiteral("Riverside"), QStringLiteral("Dana Whitfield"),
                QStringLiteral("2026-11-21"), 5, QStringLiteral("First\r\nSecond")});
        set(1, {0, true, QStringLiteral("Harbor"), QStringLiteral("Marta Lindqvist"), QString(), 40,
                QStringLiteral("Only")});
        mapper.setModel(&model);
        mapper.setSubmitPolicy(QDataWidgetMapper::ManualSubmit);
        for (int c = 0; c < Columns; ++c)
            mapper.addMapping(widgets().at(c), c);
        window.resize(300, 400);
    }

    QList<QWidget*> widgets() const { return {tick, option, line, choice, date, scroll, memo}; }

    void set(int row, const QVariantList& values)
    {
        for (int c = 0; c < Columns; ++c)
            model.setData(model.index(row, c), values.at(c));
    }
    QVariant at(int row, Column column) const { return model.data(model.index(row, column)); }

    // What a binding does with a notify signal: every change goes to the model at once.
    void submitOnEveryNotify()
    {
        const QMetaMethod submit =
            mapper.metaObject()->method(mapper.metaObject()->indexOfSlot("submit()"));
        for (QWidget* w : widgets()) {
            const QMetaProperty p = w->metaObject()->userProperty();
            QVERIFY(QObject::connect(w, p.notifySignal(), &mapper, submit));
        }
    }

    void show()
    {
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
    }
};

}  // namespace

class tst_NotifyProperties : public QObject {
    Q_OBJECT
private slots:
    void valuePropertiesAreUserPropertiesWithANotifySignalNamedAfterThem_data();
    void valuePropertiesAreUserPropertiesWithANotifySignalNamedAfterThem();
    void notifySignalRunsOnEveryChangeFromCode();
    void mapperShowsEachRowOfTheModel();
    void userChangesReachTheModelThroughTheNotifySignals();
    void mapperWritesRunTheControlEventsOnceAndAddNone();
};

void tst_NotifyProperties::valuePropertiesAreUserPropertiesWithANotifySignalNamedAfterThem_data()
{
    QTest::addColumn<QObject*>("widget");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("notify");
    // The widgets are parentless and freed by the test.
    QTest::newRow("CheckBox") << static_cast<QObject*>(new CheckBox) << "Value"
                              << "valueChanged";
    QTest::newRow("OptionButton") << static_cast<QObject*>(new OptionButton) << "Value"
                                  << "valueChanged";
    QTest::newRow("TextBox") << static_cast<QObject*>(new TextBox) << "Text"
                             << "textChanged";
    QTest::newRow("ComboBox") << static_cast<QObject*>(new ComboBox) << "Text"
                              << "textChanged";
    QTest::newRow("DateEdit") << static_cast<QObject*>(new DateEdit) << "Value"
                              << "valueChanged";
    QTest::newRow("ScrollBar") << static_cast<QObject*>(new ScrollBar) << "Value"
                               << "valueChanged";
    QTest::newRow("MultiLineTextBox") << static_cast<QObject*>(new MultiLineTextBox) << "Text"
                                      << "textChanged";
}

void tst_NotifyProperties::valuePropertiesAreUserPropertiesWithANotifySignalNamedAfterThem()
{
    QFETCH(QObject*, widget);
    QFETCH(QString, property);
    QFETCH(QString, notify);
    const std::unique_ptr<QObject> owner(widget);
    const QMetaProperty p = widget->metaObject()->userProperty();
    QCOMPARE(QString::fromLatin1(p.name()), property);
    QVERIFY(p.isUser());
    QVERIFY(p.hasNotifySignal());
    QCOMPARE(QString::fromLatin1(p.notifySignal().name()), notify);
    // The one scheme: the property's name with a small first letter, then "Changed".
    QCOMPARE(notify, property.left(1).toLower() + property.mid(1) + QStringLiteral("Changed"));
}

void tst_NotifyProperties::notifySignalRunsOnEveryChangeFromCode()
{
    MappedForm f;
    const QList<std::pair<QWidget*, QVariant>> changes = {
        {f.tick, 2},
        {f.option, true},
        {f.line, QStringLiteral("Eastside")},
        {f.choice, QStringLiteral("Someone else")},
        {f.date, QStringLiteral("2027-01-04")},
        {f.scroll, 17},
        {f.memo, QStringLiteral("A\r\nB")},
    };
    for (const auto& [w, value] : changes) {
        const QMetaProperty p = w->metaObject()->userProperty();
        QSignalSpy spy(w, p.notifySignal());
        QVERIFY(p.write(w, value));
        QCOMPARE(p.read(w), value);
        QVERIFY2(spy.count() >= 1, w->metaObject()->className());
    }
}

void tst_NotifyProperties::mapperShowsEachRowOfTheModel()
{
    MappedForm f;
    f.mapper.setCurrentIndex(0);
    QCOMPARE(f.tick->value(), 1);
    QCOMPARE(f.option->value(), false);
    QCOMPARE(f.line->text(), QStringLiteral("Riverside"));
    QCOMPARE(f.choice->text(), QStringLiteral("Dana Whitfield"));
    QCOMPARE(f.date->date(), QDate(2026, 11, 21));
    QCOMPARE(f.scroll->Value(), 5);
    QCOMPARE(f.memo->text(), QStringLiteral("First\r\nSecond"));

    f.mapper.setCurrentIndex(1);
    QCOMPARE(f.tick->value(), 0);
    QCOMPARE(f.option->value(), true);
    QCOMPARE(f.line->text(), QStringLiteral("Harbor"));
    QCOMPARE(f.choice->text(), QStringLiteral("Marta Lindqvist"));
    QVERIFY(f.date->isNull());
    QCOMPARE(f.scroll->Value(), 40);
    QCOMPARE(f.memo->text(), QStringLiteral("Only"));
}

void tst_NotifyProperties::userChangesReachTheModelThroughTheNotifySignals()
{
    MappedForm f;
    f.mapper.setCurrentIndex(1);
    f.submitOnEveryNotify();
    f.show();

    // On the box itself: the row is wider than the box and its caption.
    QTest::mouseClick(f.tick, Qt::LeftButton, {}, QPoint(8, f.tick->height() / 2));
    QCOMPARE(f.at(1, Tick), QVariant(1));

    f.option->setValue(false);
    QCOMPARE(f.at(1, Option), QVariant(false));
    QTest::mouseClick(f.option, Qt::LeftButton, {}, QPoint(8, f.option->height() / 2));
    QCOMPARE(f.at(1, Option), QVariant(true));

    f.line->setFocus();
    QTest::keyClicks(f.line, QStringLiteral(" Point"));
    QCOMPARE(f.at(1, Line), QVariant(QStringLiteral("Harbor Point")));

    f.choice->setFocus();
    QTest::keyClick(f.choice->lineEdit(), Qt::Key_End);
    QTest::keyClicks(f.choice->lineEdit(), QStringLiteral(" Jr."));
    QCOMPARE(f.at(1, Choice), QVariant(QStringLiteral("Marta Lindqvist Jr.")));

    f.date->lineEdit()->setFocus();
    QTest::keyClicks(f.date->lineEdit(), QStringLiteral("03/15/2027"));
    QTest::keyClick(f.date->lineEdit(), Qt::Key_Return);
    QCOMPARE(f.at(1, Date), QVariant(QStringLiteral("2027-03-15")));

    QTest::keyClick(f.scroll, Qt::Key_Down);
    QCOMPARE(f.at(1, Scroll), QVariant(41));

    f.memo->setFocus();
    QTest::keyClick(f.memo, Qt::Key_End);
    QTest::keyClick(f.memo, Qt::Key_Return);
    QTest::keyClicks(f.memo, QStringLiteral("Next"));
    QCOMPARE(f.at(1, Memo), QVariant(QStringLiteral("Only\r\nNext")));

    // The other row is as it was.
    QCOMPARE(f.at(0, Line), QVariant(QStringLiteral("Riverside")));
    QCOMPARE(f.at(0, Scroll), QVariant(5));
}

void tst_NotifyProperties::mapperWritesRunTheControlEventsOnceAndAddNone()
{
    MappedForm f;
    f.mapper.setCurrentIndex(0);
    QSignalSpy tickClick(f.tick, &CheckBox::valueChanged);
    QSignalSpy optionClick(f.option, &OptionButton::selected);
    QSignalSpy lineChange(f.line, &TextBox::changed);
    QSignalSpy choiceChange(f.choice, &ComboBox::changed);
    QSignalSpy choiceClick(f.choice, &ComboBox::clicked);
    QSignalSpy scrollChange(f.scroll, &ScrollBar::changed);
    QSignalSpy memoChange(f.memo, &MultiLineTextBox::changed);

    f.mapper.setCurrentIndex(1);
    QCOMPARE(tickClick.count(), 1);
    QCOMPARE(optionClick.count(), 1);
    QCOMPARE(lineChange.count(), 1);
    QCOMPARE(choiceChange.count(), 1);
    QCOMPARE(choiceClick.count(), 0);
    QCOMPARE(scrollChange.count(), 1);
    QCOMPARE(memoChange.count(), 1);

    // The same row again writes the values the widgets already hold: no event at all.
    f.mapper.setCurrentIndex(1);
    f.mapper.revert();
    QCOMPARE(tickClick.count(), 1);
    QCOMPARE(optionClick.count(), 1);
    QCOMPARE(lineChange.count(), 1);
    QCOMPARE(choiceChange.count(), 1);
    QCOMPARE(scrollChange.count(), 1);
    QCOMPARE(memoChange.count(), 1);
}

QTEST_MAIN(tst_NotifyProperties)
#include "tst_notifyproperties.moc"
