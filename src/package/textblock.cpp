#include "package/textblock.h"

#include <QPainter>
#include <QTextLayout>

namespace ZebPackage {

TextBlock::TextBlock(const QString& text, const QFont& font, qreal width,
                     const QPaintDevice* device, Qt::Alignment alignment)
{
    QString plain = text;
    plain.replace(QStringLiteral("\r\n"), QString(QChar::LineSeparator));
    plain.replace(QLatin1Char('\r'), QChar::LineSeparator);
    plain.replace(QLatin1Char('\n'), QChar::LineSeparator);
    m_layout = std::make_shared<QTextLayout>(plain, font, const_cast<QPaintDevice*>(device));
    QTextOption option(alignment);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_layout->setTextOption(option);
    m_layout->setCacheEnabled(true);
    m_layout->beginLayout();
    qreal y = 0;
    for (QTextLine line = m_layout->createLine(); line.isValid(); line = m_layout->createLine()) {
        line.setLeadingIncluded(true);
        line.setLineWidth(width);
        line.setPosition(QPointF(0, y));
        y += line.height();
    }
    m_layout->endLayout();
    m_height = y;
}

void TextBlock::draw(QPainter& painter, const QPointF& topLeft) const
{
    if (m_layout)
        m_layout->draw(&painter, topLeft);
}

}  // namespace ZebPackage
