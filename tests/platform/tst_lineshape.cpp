#include "platform/lineshape.h"

#include <QImage>
#include <QTest>

using namespace ZebSubCtl;

class tst_LineShape : public QObject {
    Q_OBJECT
private slots:
    void endsAreKeptInParentPixels();
    void madeWithItsEndsItCoversThem();
    void movingTheRightEndStretchesTheLine();
    void rightEndLeftOfTheLeftEndStillCoversTheLine();
    void lineIsDrawnBetweenItsEnds();
    void mouseGoesThroughTheLine();
    void grayTextBorderIsTheDisabledTextColour();
    void grayTextBorderFollowsThePalette();
    void settingAColourEndsTheGrayTextBorder();
    void grayTextLineIsDrawnInTheDisabledTextColour();
};

void tst_LineShape::endsAreKeptInParentPixels()
{
    QWidget parent;
    LineShape line(&parent);
    line.setPoints(5, 90, 405, 90);
    QCOMPARE(line.X1(), 5);
    QCOMPARE(line.Y1(), 90);
    QCOMPARE(line.X2(), 405);
    QCOMPARE(line.Y2(), 90);
    QCOMPARE(line.geometry(), QRect(5, 90, 401, 1));
}

void tst_LineShape::madeWithItsEndsItCoversThem()
{
    QWidget parent;
    LineShape line(QLine(5, 90, 405, 90), &parent);
    QCOMPARE(line.parentWidget(), &parent);
    QCOMPARE(line.X1(), 5);
    QCOMPARE(line.Y1(), 90);
    QCOMPARE(line.X2(), 405);
    QCOMPARE(line.Y2(), 90);
    QCOMPARE(line.geometry(), QRect(5, 90, 401, 1));
}

void tst_LineShape::movingTheRightEndStretchesTheLine()
{
    QWidget parent;
    LineShape line(&parent);
    line.setPoints(5, 90, 405, 90);
    line.setX2(590);
    QCOMPARE(line.X2(), 590);
    QCOMPARE(line.X1(), 5);
    QCOMPARE(line.geometry(), QRect(5, 90, 586, 1));
}

void tst_LineShape::rightEndLeftOfTheLeftEndStillCoversTheLine()
{
    QWidget parent;
    LineShape line(&parent);
    line.setPoints(50, 10, 50, 10);
    line.setX2(-20);
    QCOMPARE(line.X2(), -20);
    QCOMPARE(line.geometry(), QRect(-20, 10, 71, 1));
}

void tst_LineShape::lineIsDrawnBetweenItsEnds()
{
    QWidget parent;
    parent.resize(100, 40);
    LineShape line(&parent);
    line.setBorderColor(Qt::red);
    line.setPoints(10, 20, 60, 20);
    const QImage image = parent.grab().toImage();
    QCOMPARE(image.pixelColor(10, 20), QColor(Qt::red));
    QCOMPARE(image.pixelColor(35, 20), QColor(Qt::red));
    QCOMPARE(image.pixelColor(60, 20), QColor(Qt::red));
    QVERIFY(image.pixelColor(61, 20) != QColor(Qt::red));
    QVERIFY(image.pixelColor(35, 21) != QColor(Qt::red));
}

void tst_LineShape::mouseGoesThroughTheLine()
{
    QWidget parent;
    LineShape line(&parent);
    QVERIFY(line.testAttribute(Qt::WA_TransparentForMouseEvents));
}

void tst_LineShape::grayTextBorderIsTheDisabledTextColour()
{
    QWidget parent;
    LineShape line(&parent);
    QVERIFY(!line.borderIsGrayText());
    line.setBorderColorToGrayText();
    QVERIFY(line.borderIsGrayText());
    QCOMPARE(line.borderColor(), line.palette().color(QPalette::Disabled, QPalette::WindowText));
}

void tst_LineShape::grayTextBorderFollowsThePalette()
{
    QWidget parent;
    LineShape line(&parent);
    line.setBorderColorToGrayText();
    QPalette palette = parent.palette();
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(0x12, 0x34, 0x56));
    parent.setPalette(palette);
    QCOMPARE(line.borderColor(), QColor(0x12, 0x34, 0x56));
}

void tst_LineShape::settingAColourEndsTheGrayTextBorder()
{
    QWidget parent;
    LineShape line(&parent);
    line.setBorderColorToGrayText();
    line.setBorderColor(Qt::blue);
    QVERIFY(!line.borderIsGrayText());
    QCOMPARE(line.borderColor(), QColor(Qt::blue));
}

void tst_LineShape::grayTextLineIsDrawnInTheDisabledTextColour()
{
    QWidget parent;
    parent.resize(100, 40);
    QPalette palette = parent.palette();
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(0x80, 0x10, 0x20));
    parent.setPalette(palette);
    LineShape line(&parent);
    line.setBorderColor(Qt::red);
    line.setBorderColorToGrayText();
    line.setPoints(10, 20, 60, 20);
    const QImage image = parent.grab().toImage();
    QCOMPARE(image.pixelColor(10, 20), QColor(0x80, 0x10, 0x20));
    QCOMPARE(image.pixelColor(60, 20), QColor(0x80, 0x10, 0x20));
}

QTEST_MAIN(tst_LineShape)
#include "tst_lineshape.moc"
