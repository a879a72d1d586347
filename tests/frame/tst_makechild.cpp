#include "frame/makechild.h"
#include "frame/units.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace ZebSubCtl;

class tst_MakeChild : public QObject {
    Q_OBJECT
private slots:
    void childIsNamedPlacedAndMadeWithItsArguments();
    void aNullPlaceLeavesTheChildWhereItPutsItself();
    void settingsMoveFormatAndNameTheChild();
    void settingsNotGivenLeaveTheWidgetsOwn();
    void aLineCaptionIsPlainTextFromTheTopLeft();
    void aHeadingIsBoldAndAParagraphWraps();
    void aCaptionTakesTheAlignmentItIsGiven();
    void twipsPointIsInPixels();
};

void tst_MakeChild::childIsNamedPlacedAndMadeWithItsArguments()
{
    QWidget parent;
    auto* button =
        makeChild<QPushButton>(&parent, "cmdAdd", QRect(10, 20, 30, 15), QStringLiteral(">"));
    QCOMPARE(button->parentWidget(), &parent);
    QCOMPARE(button->objectName(), QStringLiteral("cmdAdd"));
    QCOMPARE(button->geometry(), QRect(10, 20, 30, 15));
    QCOMPARE(button->text(), QStringLiteral(">"));
    QCOMPARE(parent.findChild<QPushButton*>(QStringLiteral("cmdAdd")), button);
}

void tst_MakeChild::aNullPlaceLeavesTheChildWhereItPutsItself()
{
    QWidget parent;
    QLabel reference(QStringLiteral("x"), &parent);
    auto* label = makeChild<QLabel>(&parent, "lblX", QRect(), QStringLiteral("x"));
    QCOMPARE(label->geometry(), reference.geometry());
}

void tst_MakeChild::settingsMoveFormatAndNameTheChild()
{
    QWidget parent;
    auto* label =
        makeChild<QLabel>(&parent, "lblInfo", QRect(),
                          ChildSettings()
                              .movedTo(QPoint(7, 9))
                              .plainText()
                              .aligned(Qt::AlignRight | Qt::AlignBottom)
                              .wrapped()
                              .inBold()
                              .tipped(QStringLiteral("The tip"))
                              .named(QStringLiteral("Info"), QStringLiteral("What it is")),
                          QStringLiteral("<b>x</b>"));
    QCOMPARE(label->objectName(), QStringLiteral("lblInfo"));
    QCOMPARE(label->pos(), QPoint(7, 9));
    QCOMPARE(label->textFormat(), Qt::PlainText);
    QCOMPARE(label->alignment(), Qt::AlignRight | Qt::AlignBottom);
    QVERIFY(label->wordWrap());
    QVERIFY(label->font().bold());
    QCOMPARE(label->toolTip(), QStringLiteral("The tip"));
    QCOMPARE(label->accessibleName(), QStringLiteral("Info"));
    QCOMPARE(label->accessibleDescription(), QStringLiteral("What it is"));
    QCOMPARE(label->text(), QStringLiteral("<b>x</b>"));
}

void tst_MakeChild::settingsNotGivenLeaveTheWidgetsOwn()
{
    QWidget parent;
    QLabel plain(QStringLiteral("x"), &parent);
    auto* label =
        makeChild<QLabel>(&parent, "lblX", QRect(1, 2, 30, 40),
                          ChildSettings().named(QStringLiteral("X")), QStringLiteral("x"));
    QCOMPARE(label->geometry(), QRect(1, 2, 30, 40));
    QCOMPARE(label->textFormat(), plain.textFormat());
    QCOMPARE(label->alignment(), plain.alignment());
    QCOMPARE(label->wordWrap(), plain.wordWrap());
    QCOMPARE(label->font(), plain.font());
    QCOMPARE(label->toolTip(), QString());
    QCOMPARE(label->accessibleName(), QStringLiteral("X"));
    QCOMPARE(label->accessibleDescription(), QString());
}

void tst_MakeChild::aLineCaptionIsPlainTextFromTheTopLeft()
{
    QWidget parent;
    auto* label = makeChild<QLabel>(&parent, "lblX", QRect(0, 0, 50, 16),
                                    captionSettings(Caption::Line), QStringLiteral("x"));
    QCOMPARE(label->textFormat(), Qt::PlainText);
    QCOMPARE(label->alignment(), Qt::AlignLeft | Qt::AlignTop);
    QVERIFY(!label->wordWrap());
    QVERIFY(!label->font().bold());
}

void tst_MakeChild::aHeadingIsBoldAndAParagraphWraps()
{
    QWidget parent;
    auto* heading = makeChild<QLabel>(&parent, "lblHeading", QRect(0, 0, 50, 16),
                                      captionSettings(Caption::Heading), QStringLiteral("x"));
    QVERIFY(heading->font().bold());
    QVERIFY(!heading->wordWrap());
    QCOMPARE(heading->textFormat(), Qt::PlainText);
    auto* paragraph = makeChild<QLabel>(&parent, "lblInfo", QRect(0, 20, 50, 40),
                                        captionSettings(Caption::Paragraph), QStringLiteral("x"));
    QVERIFY(paragraph->wordWrap());
    QVERIFY(!paragraph->font().bold());
    QCOMPARE(paragraph->alignment(), Qt::AlignLeft | Qt::AlignTop);
}

void tst_MakeChild::aCaptionTakesTheAlignmentItIsGiven()
{
    QWidget parent;
    auto* label = makeChild<QLabel>(
        &parent, "lblX", QRect(0, 0, 50, 16),
        captionSettings(Caption::Line, Qt::AlignLeft | Qt::AlignVCenter), QStringLiteral("x"));
    QCOMPARE(label->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
}

void tst_MakeChild::twipsPointIsInPixels()
{
    QCOMPARE(twipsPoint(75, 2445), QPoint(5, 163));
}

QTEST_MAIN(tst_MakeChild)
#include "tst_makechild.moc"
