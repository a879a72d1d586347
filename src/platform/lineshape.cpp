#include "platform/lineshape.h"

#include <QPainter>

namespace ZebSubCtl {

LineShape::LineShape(QWidget* parent) : QWidget(parent), m_color(palette().color(QPalette::Dark))
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    place();
}

LineShape::LineShape(const QLine& line, QWidget* parent) : LineShape(parent)
{
    setPoints(line.x1(), line.y1(), line.x2(), line.y2());
}

LineShape::~LineShape() = default;

void LineShape::setX1(int x)
{
    setPoints(x, m_y1, m_x2, m_y2);
}

void LineShape::setY1(int y)
{
    setPoints(m_x1, y, m_x2, m_y2);
}

void LineShape::setX2(int x)
{
    setPoints(m_x1, m_y1, x, m_y2);
}

void LineShape::setY2(int y)
{
    setPoints(m_x1, m_y1, m_x2, y);
}

void LineShape::setPoints(int x1, int y1, int x2, int y2)
{
    m_x1 = x1;
    m_y1 = y1;
    m_x2 = x2;
    m_y2 = y2;
    place();
}

QColor LineShape::borderColor() const
{
    return m_grayText ? palette().color(QPalette::Disabled, QPalette::WindowText) : m_color;
}

void LineShape::setBorderColor(const QColor& color)
{
    m_color = color;
    m_grayText = false;
    update();
}

void LineShape::setBorderColorToGrayText()
{
    m_grayText = true;
    update();
}

void LineShape::place()
{
    // One pixel wide pen: the box includes both end pixels.
    setGeometry(QRect(QPoint(qMin(m_x1, m_x2), qMin(m_y1, m_y2)),
                      QPoint(qMax(m_x1, m_x2), qMax(m_y1, m_y2))));
    update();
}

void LineShape::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(QPen(borderColor(), 1));
    const QPoint origin = geometry().topLeft();
    painter.drawLine(QPoint(m_x1, m_y1) - origin, QPoint(m_x2, m_y2) - origin);
}

}  // namespace ZebSubCtl
