#pragma once

#include "zebsubctl_export.h"

#include "frame/usercontrol.h"

#include <QPointer>

#include <memory>
#include <vector>

namespace ZebObjects {
class LineItems;
}

namespace ZebSubCtl {

class ctlSubLine;

/// The unscrolled stack of line item rows: one ctlSubLine per line of the bound collection,
/// numbered from 1 and striped white and grey. It grows its own height to fit its rows and
/// raises HeightChanged once for every row added beyond the first. The first row (index 1) is
/// the design-time row and is never destroyed. Registered as "ZebSubmittalControls.ctlSubLines".
class ZEBSUBCTL_EXPORT ctlSubLines : public UserControl {
    Q_OBJECT
    Q_CLASSINFO("ToolTip", "Striped rows of a submittal's line items.")
    Q_CLASSINFO("WhatsThis",
                "ctlSubLines shows a submittal's line items as striped rows with a check box "
                "each; ctlSubLineDsp scrolls it. Bind it to the line items through its LineItems "
                "property at run time.")
    Q_CLASSINFO("IncludeFile", "controls/lineitems/ctlsublines.h")
    /// The bound lines; none until the host binds them.
    Q_PROPERTY(std::shared_ptr<ZebObjects::LineItems> LineItems READ LineItems WRITE setLineItems
                   DESIGNABLE false)
    /// The height of one row in pixels (see LineHeight()).
    Q_PROPERTY(qint16 LineHeight READ LineHeight DESIGNABLE false)
public:
    /// Creates the list with its design-time row, unbound, as a child of parent.
    explicit ctlSubLines(QWidget* parent = nullptr);
    ~ctlSubLines() override;

    /// The height of row 1.
    qint16 LineHeight() const;
    /// The bound lines, or none.
    std::shared_ptr<ZebObjects::LineItems> LineItems() const;
    /// Stores the collection and rebuilds the rows from it. A failure while the rows are built
    /// leaves the rows built so far and reaches the caller.
    void setLineItems(std::shared_ptr<ZebObjects::LineItems> items);

    /// The rows of the group, in index order (row 1 first).
    int rowCount() const { return int(m_rows.size()); }
    /// The row with the given index; a row that is no longer there fails with 340.
    ctlSubLine* row(qint16 index) const;
    /// The index of the row whose check box (or any part) is w, or 0.
    qint16 indexOfRowAt(const QWidget* w) const;

signals:
    /// Raised once for every row added beyond the first, after the list has grown.
    void HeightChanged();

protected:
    void UserControl_Resize() override;
    /// Paints the list's background.
    void paintEvent(QPaintEvent* event) override;
    /// Turns on the rows that the move brings into view.
    void moveEvent(QMoveEvent* event) override;
    /// Follows the window the list is placed in.
    bool event(QEvent* event) override;
    /// Turns on the rows that a taller window brings into view.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Clear();
    qint16 addNextLine();
    void Populate();
    /// The rows' check boxes are one Tab stop, as a list is: the last one focused, else row 1's.
    void moveTabStop(ctlSubLine* row);
    /// The lowest point of the list (its own pixels) that its window can show.
    int viewBottom() const;
    /// Turns the updates of the rows now in view back on.
    void wakeRowsInView();

    std::vector<QPointer<ctlSubLine>> m_rows;
    /// Rows from this place of m_rows on were made below the window with their updates off.
    std::size_t m_quietFrom = 1;
    QPointer<ctlSubLine> m_tabStop;
    QMetaObject::Connection m_focusWatch;
    std::shared_ptr<ZebObjects::LineItems> m_lineItems;
};

}  // namespace ZebSubCtl
