#include "platform/imagebox.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPainter>

namespace ZebSubCtl {

namespace {

QAccessibleInterface* imageBoxFactory(const QString& className, QObject* object)
{
    if (className == QLatin1String("ZebSubCtl::ImageBox") && object && object->isWidgetType())
        return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Graphic);
    return nullptr;
}

void installFactoryOnce()
{
    static const bool installed = [] {
        QAccessible::installFactory(imageBoxFactory);
        return true;
    }();
    (void)installed;
}

}  // namespace

void ImageBox::installAccessibility()
{
    installFactoryOnce();
}

ImageBox::ImageBox(QWidget* parent) : QWidget(parent)
{
    installFactoryOnce();
}

ImageBox::~ImageBox() = default;

void ImageBox::setPicture(const QPixmap& picture)
{
    m_picture = picture;
    update();
}

QSize ImageBox::sizeHint() const
{
    return m_picture.deviceIndependentSize().toSize();
}

void ImageBox::paintEvent(QPaintEvent*)
{
    if (m_picture.isNull())
        return;
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_picture);
}

}  // namespace ZebSubCtl
