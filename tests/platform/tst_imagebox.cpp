#include "platform/imagebox.h"

#include <QAccessible>
#include <QImage>
#include <QPainter>
#include <QTest>

using ZebSubCtl::ImageBox;

namespace {

QPixmap square(QColor colour)
{
    QPixmap pixmap(8, 8);
    pixmap.fill(colour);
    return pixmap;
}

}  // namespace

class tst_ImageBox : public QObject {
    Q_OBJECT
private slots:
    void showsItsPictureAtTheTopLeftAtItsOwnSize();
    void withoutAPictureItPaintsNothing();
    void sizeHintIsThePicturesSize();
    void screenReadersSeeAGraphicWithItsName();
};

void tst_ImageBox::showsItsPictureAtTheTopLeftAtItsOwnSize()
{
    QWidget parent;
    parent.setAutoFillBackground(true);
    parent.setPalette(QPalette(Qt::white));
    parent.resize(20, 20);
    auto* box = new ImageBox(&parent);
    box->setGeometry(0, 0, 20, 20);
    box->setPicture(square(Qt::red));
    const QImage image = parent.grab().toImage();
    QCOMPARE(QColor(image.pixel(0, 0)), QColor(Qt::red));
    QCOMPARE(QColor(image.pixel(7, 7)), QColor(Qt::red));
    QCOMPARE(QColor(image.pixel(8, 8)), QColor(Qt::white));
    QCOMPARE(box->Picture().size(), QSize(8, 8));
}

void tst_ImageBox::withoutAPictureItPaintsNothing()
{
    QWidget parent;
    parent.setAutoFillBackground(true);
    parent.setPalette(QPalette(Qt::white));
    parent.resize(20, 20);
    auto* box = new ImageBox(&parent);
    box->setGeometry(0, 0, 20, 20);
    const QImage image = parent.grab().toImage();
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x)
            QCOMPARE(QColor(image.pixel(x, y)), QColor(Qt::white));
}

void tst_ImageBox::sizeHintIsThePicturesSize()
{
    ImageBox box;
    box.setPicture(square(Qt::blue));
    QCOMPARE(box.sizeHint(), QSize(8, 8));
}

void tst_ImageBox::screenReadersSeeAGraphicWithItsName()
{
    ImageBox box;
    box.setAccessibleName(QStringLiteral("Comment"));
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(&box);
    QVERIFY(iface);
    QCOMPARE(iface->role(), QAccessible::Graphic);
    QCOMPARE(iface->text(QAccessible::Name), QStringLiteral("Comment"));
}

QTEST_MAIN(tst_ImageBox)
#include "tst_imagebox.moc"
