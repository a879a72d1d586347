#pragma once

#include "zebsubctl_export.h"

#include <QLabel>
#include <QPixmap>

namespace ZebSubCtl {

// The panels' own small pictures, kept as resources of the library.
enum class PictureImage {
    None,
    Check,  // a ticked box, beside an include list
    PeopleEnabled,  // two recipients, while the recipient choice is available
    PeopleDisabled,  // the same two recipients greyed
    BillOfMaterials,  // a sheet with a ruled table
    Contents,  // documents stacked: what a submittal holds
    Purpose,  // a target: what a submittal is for
    Details,  // a calendar page and a person: who issues it and when
    LabelSheet,  // a sheet of mailing labels
};

// A picture placed at a design position: shows one PictureImage at its own size (the widget
// sizes itself to the image, its top-left corner stays). Decoration only: it takes no focus and
// no clicks.
class ZEBSUBCTL_EXPORT Picture : public QLabel {
    Q_OBJECT
public:
    explicit Picture(QWidget* parent = nullptr);
    Picture(PictureImage image, QWidget* parent = nullptr);
    ~Picture() override;

    PictureImage image() const { return m_image; }
    // PictureImage::None empties the picture.
    void setImage(PictureImage image);

    // The resource image of `image` (a null pixmap for None).
    static QPixmap pixmapOf(PictureImage image);
    // The resource path of `image` (empty for None).
    static QString resourcePath(PictureImage image);

private:
    PictureImage m_image = PictureImage::None;
};

}  // namespace ZebSubCtl
