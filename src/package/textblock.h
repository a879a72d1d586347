#pragma once

#include "zebpackage_export.h"

#include <QFont>
#include <QString>

#include <memory>

class QPainter;
class QPaintDevice;
class QPointF;
class QTextLayout;

namespace ZebPackage {

// A text laid out once in a given width for one paint device: lines break at word boundaries,
// or inside a word that is wider than the whole width, so nothing runs past the right edge.
// Carriage returns and line feeds break lines.
class ZEBPACKAGE_EXPORT TextBlock {
public:
    TextBlock() = default;
    TextBlock(const QString& text, const QFont& font, qreal width, const QPaintDevice* device,
              Qt::Alignment alignment = Qt::AlignLeft);

    qreal height() const { return m_height; }
    bool isEmpty() const { return !m_layout; }
    void draw(QPainter& painter, const QPointF& topLeft) const;

private:
    std::shared_ptr<QTextLayout> m_layout;
    qreal m_height = 0;
};

}  // namespace ZebPackage
