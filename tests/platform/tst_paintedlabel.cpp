#include "platform/paintedlabel.h"

#include <QAccessible>
#include <QImage>
#include <QTest>

using ZebSubCtl::PaintedLabel;

namespace {

// Pixels of the label's image that differ from its first pixel (the background).
int inkedPixels(QWidget& w)
{
    const QImage image = w.grab().toImage();
    const QRgb background = image.pixel(image.width() - 1, image.height() - 1);
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != background)
                ++count;
    return count;
}

}  // namespace

class tst_PaintedLabel : public QObject {
    Q_OBJECT
private slots:
    void captionReadsBackAsSet();
    void paintsItsCaptionAndNothingWhenEmpty();
    void captionWiderThanTheBoxEndsInAnEllipsisInsideIt();
    void ellipsisOnlyWhenTheCaptionDoesNotFit();
    void screenReadersReadTheCaptionAsStaticText();
    void ownAccessibleNameWinsOverTheCaption();
};

void tst_PaintedLabel::captionReadsBackAsSet()
{
    PaintedLabel label(QStringLiteral("Brand"));
    QCOMPARE(label.Caption(), QStringLiteral("Brand"));
    label.setCaption(QString());
    QCOMPARE(label.Caption(), QString());
    QVERIFY(label.setProperty("Caption", QStringLiteral("Qty")));
    QCOMPARE(label.Caption(), QStringLiteral("Qty"));
    QCOMPARE(label.focusPolicy(), Qt::NoFocus);
}

void tst_PaintedLabel::paintsItsCaptionAndNothingWhenEmpty()
{
    QWidget parent;
    parent.setAutoFillBackground(true);
    parent.resize(200, 20);
    auto* label = new PaintedLabel(QStringLiteral("Catalog Number"), &parent);
    label->setGeometry(0, 0, 200, 20);
    QVERIFY(inkedPixels(parent) > 20);
    label->setCaption(QString());
    QCOMPARE(inkedPixels(parent), 0);
}

void tst_PaintedLabel::captionWiderThanTheBoxEndsInAnEllipsisInsideIt()
{
    QWidget parent;
    parent.setAutoFillBackground(true);
    parent.resize(200, 20);
    auto* label = new PaintedLabel(QStringLiteral("WWWWWWWWWWWWWWWWWWWWWWWWWWWWWW"), &parent);
    label->setGeometry(0, 0, 30, 20);
    const QImage image = parent.grab().toImage();
    const QRgb background = image.pixel(199, 19);
    for (int y = 0; y < 20; ++y)
        for (int x = 30; x < 200; ++x)
            QCOMPARE(image.pixel(x, y), background);
    // The caption itself stays whole.
    QCOMPARE(label->Caption().size(), 30);
}

void tst_PaintedLabel::ellipsisOnlyWhenTheCaptionDoesNotFit()
{
    // Drawn as a label that holds exactly the shortened caption would be.
    const auto draw = [](const QString& caption, int width) {
        QWidget parent;
        parent.setAutoFillBackground(true);
        parent.resize(width, 20);
        auto* label = new PaintedLabel(caption, &parent);
        label->setGeometry(0, 0, width, 20);
        return parent.grab().toImage();
    };
    const QString brand = QStringLiteral("Quenza Architectural");
    PaintedLabel probe(brand);
    const QString shortened = probe.fontMetrics().elidedText(brand, Qt::ElideRight, 60);
    QVERIFY(shortened.endsWith(QChar(0x2026)));
    QCOMPARE(draw(brand, 60), draw(shortened, 60));
    QVERIFY(draw(brand, 300) != draw(shortened, 300));
}

void tst_PaintedLabel::screenReadersReadTheCaptionAsStaticText()
{
    PaintedLabel label(QStringLiteral("Group"));
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(&label);
    QVERIFY(iface);
    QCOMPARE(iface->role(), QAccessible::StaticText);
    QCOMPARE(iface->text(QAccessible::Name), QStringLiteral("Group"));
    label.setCaption(QStringLiteral("LVL1"));
    QCOMPARE(iface->text(QAccessible::Name), QStringLiteral("LVL1"));
}

void tst_PaintedLabel::ownAccessibleNameWinsOverTheCaption()
{
    PaintedLabel label(QStringLiteral("0"));
    label.setAccessibleName(QStringLiteral("Line number"));
    QCOMPARE(QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name),
             QStringLiteral("Line number"));
}

QTEST_MAIN(tst_PaintedLabel)
#include "tst_paintedlabel.moc"
