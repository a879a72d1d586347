#pragma once

#include "zebsubctl_export.h"

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QString>
#include <QTimer>

#include <memory>
#include <optional>

class QWidget;

namespace ZebSubCtl {

// Tool tips over rectangles of a window. A tool is a numbered rectangle of a window with a text;
// when the pointer rests over it for the delay, its text shows as a tool tip for the display
// time. Registering a tool number again replaces that tool. Tool rectangles are in the window's
// own coordinates; the owner moves them when the window's content moves (setToolRect).
//
// A window with tools gets its tips from here only: Qt's own tool-tip event is not passed on.
class ZEBSUBCTL_EXPORT ToolTipRegistry : public QObject {
    Q_OBJECT
public:
    explicit ToolTipRegistry(QObject* parent = nullptr);
    ~ToolTipRegistry() override;

    // How long the pointer must rest before a tip shows, in milliseconds.
    int delay() const { return m_delay; }
    void setDelay(int milliseconds);
    // How long a tip stays up, in milliseconds.
    int displayTime() const { return m_displayTime; }
    void setDisplayTime(int milliseconds);
    // Whether tips show at all.
    bool isActive() const { return m_active; }
    void setActive(bool active);

    void addTool(QWidget* window, int tool, const QRect& rect, const QString& text);
    // Moves a tool; a tool that is not registered is left alone.
    void setToolRect(QWidget* window, int tool, const QRect& rect);
    void removeTool(QWidget* window, int tool);
    // Removes every tool of the window numbered first or higher.
    void removeToolsFrom(QWidget* window, int first);
    void removeAllTools(QWidget* window);

    bool hasTool(QWidget* window, int tool) const;
    QRect toolRect(QWidget* window, int tool) const;
    QString toolText(QWidget* window, int tool) const;
    int toolCount(QWidget* window) const;
    // The number of the tool under pos, if any. When tools overlap, the lowest number wins.
    std::optional<int> toolAt(QWidget* window, const QPoint& pos) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Tools;
    struct Tool;
    Tools* toolsOf(QWidget* window) const;
    Tools& ensureTools(QWidget* window);
    void showPending();

    class Private;
    std::unique_ptr<Private> d;
    int m_delay = 0;
    int m_displayTime = -1;
    bool m_active = true;
    QTimer m_wakeUp;
    QPointer<QWidget> m_pendingWindow;
    QPoint m_pendingPos;
};

}  // namespace ZebSubCtl
