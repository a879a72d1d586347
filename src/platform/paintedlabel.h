#pragma once

#include "zebsubctl_export.h"

#include <QWidget>

namespace ZebSubCtl {

// A one-line label that paints its caption itself, top left, over whatever its parent paints; a
// caption wider than its box ends in an ellipsis. Lighter than QLabel for lists that hold many of
// them. It takes no focus; screen readers read it as static text named by its caption.
class ZEBSUBCTL_EXPORT PaintedLabel : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Caption WRITE setCaption)
public:
    explicit PaintedLabel(QWidget* parent = nullptr);
    PaintedLabel(const QString& caption, QWidget* parent = nullptr);
    ~PaintedLabel() override;

    // Makes screen readers see the class through its own accessible interface; the first one
    // made does it. A factory installed later for some of them (a row's parts) comes first.
    static void installAccessibility();

    const QString& Caption() const { return m_caption; }
    void setCaption(const QString& caption);

    // Horizontal alignment of the caption (left by default).
    void setAlignment(Qt::Alignment alignment);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_caption;
    Qt::Alignment m_alignment = Qt::AlignLeft | Qt::AlignTop;
};

}  // namespace ZebSubCtl
