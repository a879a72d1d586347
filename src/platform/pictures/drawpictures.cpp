// Draws the panels' small pictures into PNG files, the ones kept as resources beside this file.
// Not part of the normal build: `cmake --build build --target zeb-drawpictures`, then
// `build/src/platform/zeb-drawpictures src/platform/pictures` to draw them again.
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <cstdio>
#include <functional>

namespace {

constexpr int kSize = 32;

const QColor kInk(0x33, 0x33, 0x33);
const QColor kPaper(0xff, 0xff, 0xff);
const QColor kRule(0x9a, 0xa8, 0xb8);

void drawCheck(QPainter& p)
{
    // A ticked box: the include lists pick what goes on the document.
    p.setPen(QPen(QColor(0x5b, 0x6b, 0x7d), 1.5));
    p.setBrush(kPaper);
    p.drawRoundedRect(QRectF(4.5, 6.5, 21, 21), 3, 3);
    QPainterPath tick;
    tick.moveTo(8, 16.5);
    tick.lineTo(13.5, 22.5);
    tick.lineTo(28, 4.5);
    p.setPen(QPen(QColor(0x1f, 0x8a, 0x3b), 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    p.drawPath(tick);
}

void drawPerson(QPainter& p, QPointF at, qreal scale, QColor body, QColor outline)
{
    p.setPen(QPen(outline, 1));
    p.setBrush(body);
    p.drawEllipse(QPointF(at.x(), at.y() - 7 * scale), 4.5 * scale, 4.5 * scale);
    QPainterPath shoulders;
    shoulders.moveTo(at.x() - 8 * scale, at.y() + 9 * scale);
    shoulders.cubicTo(at.x() - 8 * scale, at.y() - 2 * scale, at.x() + 8 * scale,
                      at.y() - 2 * scale, at.x() + 8 * scale, at.y() + 9 * scale);
    shoulders.closeSubpath();
    p.drawPath(shoulders);
}

void drawPeople(QPainter& p, bool enabled)
{
    // Two recipients, the one behind a little smaller.
    const QColor back = enabled ? QColor(0x4f, 0x9d, 0xd6) : QColor(0xc4, 0xc4, 0xc4);
    const QColor front = enabled ? QColor(0x23, 0x5f, 0xa8) : QColor(0x9c, 0x9c, 0x9c);
    const QColor outline = enabled ? QColor(0x1a, 0x3c, 0x66) : QColor(0x80, 0x80, 0x80);
    drawPerson(p, QPointF(21, 15), 0.85, back, outline);
    drawPerson(p, QPointF(12, 19), 1.0, front, outline);
}

void drawSheet(QPainter& p, QRectF r)
{
    p.setPen(QPen(QColor(0x5b, 0x6b, 0x7d), 1));
    p.setBrush(kPaper);
    QPainterPath sheet;
    sheet.moveTo(r.topLeft());
    sheet.lineTo(r.right() - 6, r.top());
    sheet.lineTo(r.right(), r.top() + 6);
    sheet.lineTo(r.bottomRight());
    sheet.lineTo(r.bottomLeft());
    sheet.closeSubpath();
    p.drawPath(sheet);
    p.drawLine(QPointF(r.right() - 6, r.top()), QPointF(r.right() - 6, r.top() + 6));
    p.drawLine(QPointF(r.right() - 6, r.top() + 6), QPointF(r.right(), r.top() + 6));
}

void drawBillOfMaterials(QPainter& p)
{
    // A sheet with a ruled table: the columns of the bill of materials.
    const QRectF r(5.5, 2.5, 21, 27);
    drawSheet(p, r);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x23, 0x5f, 0xa8));
    p.drawRect(QRectF(8, 9, 16, 3));
    p.setPen(QPen(kRule, 1));
    for (qreal y = 14.5; y < 27; y += 3)
        p.drawLine(QPointF(8, y), QPointF(24, y));
    p.drawLine(QPointF(12.5, 12), QPointF(12.5, 26.5));
    p.drawLine(QPointF(18.5, 12), QPointF(18.5, 26.5));
}

void drawContents(QPainter& p)
{
    // Documents stacked: what the submittal holds.
    drawSheet(p, QRectF(10.5, 2.5, 18, 22));
    drawSheet(p, QRectF(3.5, 7.5, 18, 22));
    p.setPen(QPen(kRule, 1.5));
    for (qreal y = 15; y < 28; y += 3.5)
        p.drawLine(QPointF(6.5, y), QPointF(18.5, y));
    p.setPen(QPen(kInk, 2));
    p.drawLine(QPointF(6.5, 12), QPointF(14, 12));
}

void drawPurpose(QPainter& p)
{
    // A target with a dart: what the submittal is for.
    const QPointF centre(15, 17);
    const QColor red(0xc8, 0x32, 0x2d);
    p.setPen(QPen(QColor(0x7a, 0x1d, 0x1a), 1));
    for (const auto& [radius, colour] : {std::pair{13.0, red}, std::pair{9.5, kPaper},
                                         std::pair{6.0, red}, std::pair{2.5, kPaper}}) {
        p.setBrush(colour);
        p.drawEllipse(centre, radius, radius);
    }
    p.setPen(QPen(kInk, 2, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(centre, QPointF(29, 3));
    p.setPen(QPen(QColor(0x23, 0x5f, 0xa8), 2, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(26, 3), QPointF(29, 3));
    p.drawLine(QPointF(29, 3), QPointF(29, 6));
}

void drawDetails(QPainter& p)
{
    // A calendar page and the person who issues the submittal.
    p.setPen(QPen(QColor(0x5b, 0x6b, 0x7d), 1));
    p.setBrush(kPaper);
    p.drawRect(QRectF(2.5, 4.5, 22, 21));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0xc8, 0x32, 0x2d));
    p.drawRect(QRectF(3, 5, 21, 5));
    p.setBrush(kInk);
    p.drawRect(QRectF(7, 2, 2, 5));
    p.drawRect(QRectF(18, 2, 2, 5));
    p.setBrush(kRule);
    for (int row = 0; row < 3; ++row)
        for (int col = 0; col < 4; ++col)
            p.drawRect(QRectF(5 + col * 5, 12.5 + row * 4, 3, 2.5));
    drawPerson(p, QPointF(24, 22), 0.8, QColor(0x23, 0x5f, 0xa8), QColor(0x1a, 0x3c, 0x66));
}

void drawLabelSheet(QPainter& p)
{
    // A sheet of mailing labels, the first one written on.
    p.setPen(QPen(QColor(0x60, 0x60, 0x60), 1));
    p.setBrush(kPaper);
    const QRectF sheet(4.5, 1.5, 23, 29);
    p.drawRect(sheet);
    const qreal labelHeight = sheet.height() / 5.0;
    for (int i = 0; i < 5; ++i) {
        const QRectF label(sheet.left() + 2.5, sheet.top() + i * labelHeight + 1.5,
                           sheet.width() - 5, labelHeight - 3);
        p.setPen(QPen(QColor(0x30, 0x60, 0xa0), 1));
        p.setBrush(i == 0 ? QColor(0xd8, 0xe6, 0xf6) : QColor(0xf4, 0xf4, 0xf4));
        p.drawRoundedRect(label, 1.5, 1.5);
        if (i == 0) {
            p.setPen(QPen(kInk, 1));
            const qreal y = label.center().y();
            p.drawLine(QPointF(label.left() + 2, y - 1), QPointF(label.right() - 3, y - 1));
            p.drawLine(QPointF(label.left() + 2, y + 1.5), QPointF(label.center().x(), y + 1.5));
        }
    }
}

bool draw(const QDir& dir, const char* name, const std::function<void(QPainter&)>& paint)
{
    QImage image(kSize, kSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        paint(painter);
    }
    const QString path = dir.filePath(QLatin1String(name) + QLatin1String(".png"));
    if (!image.save(path, "PNG")) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    const QDir dir(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("."));
    bool ok = true;
    ok &= draw(dir, "check", drawCheck);
    ok &= draw(dir, "people-enabled", [](QPainter& p) { drawPeople(p, true); });
    ok &= draw(dir, "people-disabled", [](QPainter& p) { drawPeople(p, false); });
    ok &= draw(dir, "bill-of-materials", drawBillOfMaterials);
    ok &= draw(dir, "contents", drawContents);
    ok &= draw(dir, "purpose", drawPurpose);
    ok &= draw(dir, "details", drawDetails);
    ok &= draw(dir, "label-sheet", drawLabelSheet);
    return ok ? 0 : 1;
}
