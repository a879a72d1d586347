#include "platform/picture.h"

#include <QAccessible>
#include <QImage>
#include <QSet>
#include <QTest>

using namespace ZebSubCtl;

namespace {

const QList<PictureImage> kImages = {
    PictureImage::Check,           PictureImage::PeopleEnabled, PictureImage::PeopleDisabled,
    PictureImage::BillOfMaterials, PictureImage::Contents,      PictureImage::Purpose,
    PictureImage::Details,         PictureImage::LabelSheet,
};

// Pixels that are not fully transparent.
int paintedPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).alpha() > 0)
                ++count;
    return count;
}

}  // namespace

class tst_Picture : public QObject {
    Q_OBJECT
private slots:
    void everyImageIsAResourceOfItsOwn();
    void pictureSizesItselfToItsImageAndKeepsItsPlace();
    void pictureShowsItsImage();
    void changingTheImageSwapsWhatIsShown();
    void noImageEmptiesThePicture();
    void disabledPeopleAreGreyAndEnabledPeopleAreNot();
    void pictureTakesNoFocusAndNoClicks();
    void pictureIsAGraphicForScreenReaders();
};

void tst_Picture::everyImageIsAResourceOfItsOwn()
{
    QSet<QString> paths;
    for (PictureImage image : kImages) {
        const QString path = Picture::resourcePath(image);
        QVERIFY2(path.startsWith(QStringLiteral(":/zeb/pictures/")), qPrintable(path));
        paths.insert(path);
        const QPixmap pixmap = Picture::pixmapOf(image);
        QVERIFY2(!pixmap.isNull(), qPrintable(path));
        QCOMPARE(pixmap.size(), QSize(32, 32));
        QVERIFY2(paintedPixels(pixmap.toImage()) > 100, qPrintable(path));
    }
    QCOMPARE(paths.size(), kImages.size());
    QVERIFY(Picture::resourcePath(PictureImage::None).isEmpty());
    QVERIFY(Picture::pixmapOf(PictureImage::None).isNull());
}

void tst_Picture::pictureSizesItselfToItsImageAndKeepsItsPlace()
{
    QWidget parent;
    Picture picture(&parent);
    picture.move(40, 25);
    picture.setImage(PictureImage::Purpose);
    QCOMPARE(picture.image(), PictureImage::Purpose);
    QCOMPARE(picture.geometry(), QRect(40, 25, 32, 32));
}

void tst_Picture::pictureShowsItsImage()
{
    QWidget parent;
    parent.resize(80, 80);
    Picture picture(PictureImage::Check, &parent);
    picture.move(10, 10);
    const QImage expected = Picture::pixmapOf(PictureImage::Check)
                                .toImage()
                                .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QImage onScreen(picture.size(), QImage::Format_ARGB32_Premultiplied);
    onScreen.fill(Qt::transparent);
    picture.render(&onScreen, QPoint(), QRegion(), QWidget::DrawChildren);
    QCOMPARE(onScreen, expected);
}

void tst_Picture::changingTheImageSwapsWhatIsShown()
{
    QWidget parent;
    Picture picture(PictureImage::PeopleEnabled, &parent);
    const QImage before = picture.pixmap().toImage();
    picture.setImage(PictureImage::PeopleDisabled);
    QCOMPARE(picture.image(), PictureImage::PeopleDisabled);
    QCOMPARE(picture.pixmap().toImage(), Picture::pixmapOf(PictureImage::PeopleDisabled).toImage());
    QVERIFY(picture.pixmap().toImage() != before);
}

void tst_Picture::noImageEmptiesThePicture()
{
    QWidget parent;
    Picture picture(PictureImage::Details, &parent);
    picture.move(7, 9);
    picture.setImage(PictureImage::None);
    QCOMPARE(picture.image(), PictureImage::None);
    QVERIFY(picture.pixmap().isNull());
    QCOMPARE(picture.geometry(), QRect(7, 9, 0, 0));
}

void tst_Picture::disabledPeopleAreGreyAndEnabledPeopleAreNot()
{
    auto greyOnly = [](const QImage& image) {
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QColor c = image.pixelColor(x, y);
                if (c.alpha() == 255 && (c.red() != c.green() || c.green() != c.blue()))
                    return false;
            }
        return true;
    };
    QVERIFY(greyOnly(Picture::pixmapOf(PictureImage::PeopleDisabled).toImage()));
    QVERIFY(!greyOnly(Picture::pixmapOf(PictureImage::PeopleEnabled).toImage()));
}

void tst_Picture::pictureTakesNoFocusAndNoClicks()
{
    QWidget parent;
    Picture picture(PictureImage::Contents, &parent);
    QCOMPARE(picture.focusPolicy(), Qt::NoFocus);
    QVERIFY(picture.testAttribute(Qt::WA_TransparentForMouseEvents));
}

void tst_Picture::pictureIsAGraphicForScreenReaders()
{
    QWidget parent;
    Picture picture(PictureImage::BillOfMaterials, &parent);
    picture.setAccessibleName(QStringLiteral("Bill of materials"));
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(&picture);
    QVERIFY(iface);
    QCOMPARE(iface->role(), QAccessible::Graphic);
    QCOMPARE(iface->text(QAccessible::Name), QStringLiteral("Bill of materials"));
}

QTEST_MAIN(tst_Picture)
#include "tst_picture.moc"
