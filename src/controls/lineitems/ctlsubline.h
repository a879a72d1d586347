#pragma once

#include "zebsubctl_export.h"

#include "frame/usercontrol.h"

#include <QPointer>
#include <QRgb>

#include <memory>

namespace ZebObjects {
class LineItem;
}

namespace ZebSubCtl {

class CheckBox;
class LineShape;
class PaintedLabel;
class ImageBox;

/// One row of the line item list: a numbered, possibly shaded strip with a selection check box,
/// the line's texts, its made-to-order mark and its comment picture. The check box writes the
/// line's Selected back. Registered as "ZebSubmittalControls.ctlSubLine".
class ZEBSUBCTL_EXPORT ctlSubLine : public UserControl {
    Q_OBJECT
    Q_CLASSINFO("ToolTip", "One line item row with its check box.")
    Q_CLASSINFO("WhatsThis",
                "ctlSubLine shows one line item of a submittal as a row with its check box. Rows "
                "are normally made by ctlSubLines; bind a row to its line item through its "
                "LineItem property at run time.")
    Q_CLASSINFO("IncludeFile", "controls/lineitems/ctlsubline.h")
    /// The number the row shows (see LineNumber()).
    Q_PROPERTY(QString LineNumber READ LineNumber WRITE setLineNumber DESIGNABLE false)
    /// The line the row shows; none until bound.
    Q_PROPERTY(std::shared_ptr<ZebObjects::LineItem> LineItem READ LineItem WRITE setLineItem
                   DESIGNABLE false)
    /// Whether the row is shaded grey; false by default.
    Q_PROPERTY(bool Grayed READ Grayed WRITE setGrayed DESIGNABLE false)
    /// The row's place in its list (see Index()).
    Q_PROPERTY(qint16 Index READ Index DESIGNABLE false)
public:
    /// Creates an unbound, white row numbered 1 as a child of parent.
    explicit ctlSubLine(QWidget* parent = nullptr);
    ~ctlSubLine() override;

    /// The caption of lblNumber; the row keeps no number of its own.
    QString LineNumber() const;
    /// Sets the caption of the row's number.
    void setLineNumber(const QString& number);
    /// The line the row shows, or none.
    std::shared_ptr<ZebObjects::LineItem> LineItem() const;
    /// Stores the line, then shows it. None leaves the former line's texts on show.
    void setLineItem(std::shared_ptr<ZebObjects::LineItem> item);
    /// The shading: true exactly when the background is light grey (0xE0E0E0).
    bool Grayed() const;
    /// Shades the row light grey (true) or white (false).
    void setGrayed(bool grayed);

    /// The background colour (24-bit RGB).
    QRgb BackColor() const { return m_backColor; }
    /// Sets the row's background colour.
    void setBackColor(QRgb color);

    /// The row's place in the list's group of rows (1 for the design-time row).
    qint16 Index() const { return m_index; }
    /// Sets the row's place in its list; the list numbers its rows.
    void setIndex(qint16 index) { m_index = index; }

    /// The design size of a row, in pixels.
    static constexpr int DesignWidth = 590;
    /// The design height of a row, in pixels.
    static constexpr int DesignHeight = 44;

    /// Whether Tab stops at the row's check box; the rows of a list share one stop.
    void setTabStop(bool on);
    /// The row's selection check box, for focus and keyboard handling.
    QWidget* selectBox() const;

protected:
    void UserControl_Resize() override;
    /// Paints the row's background.
    void paintEvent(QPaintEvent* event) override;

private:
    friend class LineItemAccess;
    void Populate();
    void chkSelect_Click();

    /// Null until made: a screen reader may ask about the row while it is being built.
    CheckBox* chkSelect = nullptr;
    ImageBox* imgComment = nullptr;
    QPointer<LineShape> Line1;
    PaintedLabel* lblGroup = nullptr;
    PaintedLabel* lblDescription = nullptr;
    PaintedLabel* lblCatNum = nullptr;
    PaintedLabel* lblBrand = nullptr;
    PaintedLabel* lblType = nullptr;
    PaintedLabel* lblQuantity = nullptr;
    PaintedLabel* lblNumber = nullptr;
    PaintedLabel* lblMTO = nullptr;
    PaintedLabel* lblDescHeading = nullptr;

    std::shared_ptr<ZebObjects::LineItem> m_lineItem;
    QRgb m_backColor = 0xFFFFFF;
    qint16 m_index = 1;
};

}  // namespace ZebSubCtl
