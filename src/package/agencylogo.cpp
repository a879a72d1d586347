#include "package/agencylogo.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <numbers>

namespace ZebPackage {

void AgencyLogo::draw(QPainter& painter, const QRectF& box)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal side = std::min(box.width(), box.height());
    const QRectF square(box.topLeft(), QSizeF(side, side));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1f, 0x4e, 0x79));
    painter.drawRoundedRect(square, side * 0.14, side * 0.14);

    // Rays fanning out below the lamp.
    const QPointF lamp(square.center().x(), square.top() + side * 0.30);
    QPen ray(QColor(0xf2, 0xb1, 0x34));
    ray.setWidthF(side * 0.045);
    ray.setCapStyle(Qt::RoundCap);
    painter.setPen(ray);
    for (int i = 0; i < 5; ++i) {
        const qreal angle = std::numbers::pi * (0.25 + 0.125 * i);
        const QPointF from = lamp + QPointF(std::cos(angle), std::sin(angle)) * side * 0.24;
        const QPointF to = lamp + QPointF(std::cos(angle), std::sin(angle)) * side * 0.52;
        painter.drawLine(from, to);
    }

    // The shade: a trapezoid on a short stem.
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRect(
        QRectF(lamp.x() - side * 0.02, square.top() + side * 0.08, side * 0.04, side * 0.12));
    QPainterPath shade;
    shade.moveTo(lamp.x() - side * 0.10, square.top() + side * 0.19);
    shade.lineTo(lamp.x() + side * 0.10, square.top() + side * 0.19);
    shade.lineTo(lamp.x() + side * 0.22, lamp.y() + side * 0.04);
    shade.lineTo(lamp.x() - side * 0.22, lamp.y() + side * 0.04);
    shade.closeSubpath();
    painter.drawPath(shade);
    painter.restore();
}

}  // namespace ZebPackage
