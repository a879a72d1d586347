#pragma once

#include "zebsubctl_export.h"

#include <QPixmap>
#include <QWidget>

namespace ZebSubCtl {

// A picture shown at its own size at the top left of its box. Copies of one pixmap share its
// data, so many boxes with the same picture cost little.
class ZEBSUBCTL_EXPORT ImageBox : public QWidget {
    Q_OBJECT
public:
    explicit ImageBox(QWidget* parent = nullptr);
    ~ImageBox() override;

    // Makes screen readers see the class through its own accessible interface; the first one
    // made does it. A factory installed later for some of them (a row's parts) comes first.
    static void installAccessibility();

    const QPixmap& Picture() const { return m_picture; }
    void setPicture(const QPixmap& picture);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap m_picture;
};

}  // namespace ZebSubCtl
