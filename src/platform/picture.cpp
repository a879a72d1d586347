#include "platform/picture.h"

namespace ZebSubCtl {

Picture::Picture(QWidget* parent) : Picture(PictureImage::None, parent) { }

Picture::Picture(PictureImage image, QWidget* parent) : QLabel(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setImage(image);
}

Picture::~Picture() = default;

void Picture::setImage(PictureImage image)
{
    m_image = image;
    const QPixmap pixmap = pixmapOf(image);
    if (pixmap.isNull()) {
        clear();
        resize(0, 0);
        return;
    }
    setPixmap(pixmap);
    resize(pixmap.size());
}

QString Picture::resourcePath(PictureImage image)
{
    const char* file = nullptr;
    switch (image) {
    case PictureImage::None: return QString();
    case PictureImage::Check: file = "check"; break;
    case PictureImage::PeopleEnabled: file = "people-enabled"; break;
    case PictureImage::PeopleDisabled: file = "people-disabled"; break;
    case PictureImage::BillOfMaterials: file = "bill-of-materials"; break;
    case PictureImage::Contents: file = "contents"; break;
    case PictureImage::Purpose: file = "purpose"; break;
    case PictureImage::Details: file = "details"; break;
    case PictureImage::LabelSheet: file = "label-sheet"; break;
    }
    return QStringLiteral(":/zeb/pictures/%1.png").arg(QLatin1String(file));
}

QPixmap Picture::pixmapOf(PictureImage image)
{
    const QString path = resourcePath(image);
    return path.isEmpty() ? QPixmap() : QPixmap(path);
}

}  // namespace ZebSubCtl
