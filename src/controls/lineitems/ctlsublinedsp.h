#pragma once

#include "zebsubctl_export.h"

#include "frame/usercontrol.h"

#include <QMetaObject>
#include <QPointer>

#include <memory>

namespace ZebObjects {
class LineItems;
}

namespace ZebSubCtl {

class ctlSubLines;
class PaintedLabel;
class ScrollBar;

/// The scrolling line item viewer: a fixed column heading over a clipping window that holds the
/// line item list, with a vertical scroll bar that moves the list in steps of whole rows.
/// Registered as "ZebSubmittalControls.ctlSubLineDsp".
class ZEBSUBCTL_EXPORT ctlSubLineDsp : public UserControl {
    Q_OBJECT
    Q_CLASSINFO("ToolTip", "Scrolling, striped list of a submittal's line items.")
    Q_CLASSINFO("WhatsThis",
                "ctlSubLineDsp shows a submittal's line items as a scrolling, striped list with a"
                " check box on each row. Bind it to the line items through its LineItems property"
                " at run time.")
    Q_CLASSINFO("IncludeFile", "controls/lineitems/ctlsublinedsp.h")
    /// The bound lines; none until the host binds them.
    Q_PROPERTY(std::shared_ptr<ZebObjects::LineItems> LineItems READ LineItems WRITE setLineItems
                   DESIGNABLE false)
public:
    /// Creates the viewer, unbound, as a child of parent.
    explicit ctlSubLineDsp(QWidget* parent = nullptr);
    ~ctlSubLineDsp() override;

    /// The bound lines, or none.
    std::shared_ptr<ZebObjects::LineItems> LineItems() const;
    /// Hands the collection to the list, which rebuilds its rows; the scroll range follows the
    /// list's growth.
    void setLineItems(std::shared_ptr<ZebObjects::LineItems> items);

    /// The heading labels' face: "MS Sans Serif" where the system has it, else the design font.
    static QFont headingFont(const QFont& base);

protected:
    void UserControl_Resize() override;
    /// Scrolls by whole rows.
    void wheelEvent(QWheelEvent* event) override;
    /// Moves between rows with the arrow, page and Home/End keys.
    void keyPressEvent(QKeyEvent* event) override;
    /// Follows the focus among the rows so that the focused row stays in view.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Reachable by name (QMetaObject::invokeMethod), as the scroll arithmetic's inputs are.
    Q_INVOKABLE qint16 ViewableLines();
    void ctlSubLines_HeightChanged();
    void VScroll_Change();
    void scrollIntoView(QWidget* focused);
    void watchRowKeys(QWidget* focused);
    /// Up, Down, Page Up, Page Down, Home and End on a row's check box: the focus goes from row to
    /// row, the bar scrolling as it always does. True when the key was taken.
    bool moveBetweenRows(QWidget* box, QKeyEvent* event);

    QWidget* ControlHeading;
    PaintedLabel* lblQty;
    PaintedLabel* lblType;
    PaintedLabel* lblBrand;
    PaintedLabel* lblCatNum;
    PaintedLabel* lblGroup;
    QWidget* DisplayWindow;
    QPointer<ctlSubLines> mLines;
    ScrollBar* VScroll;
    QMetaObject::Connection mFocusWatch;
    QPointer<QWidget> mKeyedBox;
};

}  // namespace ZebSubCtl
