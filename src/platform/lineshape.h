#pragma once

#include "zebsubctl_export.h"

#include <QColor>
#include <QLine>
#include <QWidget>

namespace ZebSubCtl {

// A line drawn between two points of its parent, (X1, Y1) and (X2, Y2), in the parent's
// pixels. Either end can be moved; the widget covers the line's bounding box, so ends given in
// any order (a right end left of the left one, say) still draw.
class ZEBSUBCTL_EXPORT LineShape : public QWidget {
    Q_OBJECT
public:
    explicit LineShape(QWidget* parent = nullptr);
    // A line between the points of line.
    explicit LineShape(const QLine& line, QWidget* parent = nullptr);
    ~LineShape() override;

    int X1() const { return m_x1; }
    int Y1() const { return m_y1; }
    int X2() const { return m_x2; }
    int Y2() const { return m_y2; }
    void setX1(int x);
    void setY1(int y);
    void setX2(int x);
    void setY2(int y);
    void setPoints(int x1, int y1, int x2, int y2);

    // The colour the line is drawn in.
    QColor borderColor() const;
    void setBorderColor(const QColor& color);
    // Draws the line in the system colour of disabled text (system colour 17) and keeps
    // following it when the palette changes; setBorderColor() ends that.
    void setBorderColorToGrayText();
    bool borderIsGrayText() const { return m_grayText; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void place();

    int m_x1 = 0;
    int m_y1 = 0;
    int m_x2 = 0;
    int m_y2 = 0;
    QColor m_color;
    bool m_grayText = false;
};

}  // namespace ZebSubCtl
