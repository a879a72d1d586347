#include "platform/tooltipregistry.h"

#include <QEvent>
#include <QHash>
#include <QMouseEvent>
#include <QToolTip>
#include <QWidget>

#include <optional>
#include <vector>

namespace ZebSubCtl {

namespace {
// Tool numbers from 0 up to this live in a vector indexed by number: the owners number their
// tools after list positions, and a move of the pointer refreshes every rectangle.
constexpr int kDenseLimit = 1 << 22;
}  // namespace

struct ToolTipRegistry::Tool {
    QRect rect;
    QString text;
};

struct ToolTipRegistry::Tools {
    std::vector<std::optional<Tool>> dense;
    QHash<int, Tool> sparse;
    int count = 0;

    Tool* find(int tool)
    {
        if (tool >= 0 && tool < kDenseLimit) {
            if (std::size_t(tool) < dense.size() && dense[std::size_t(tool)])
                return &*dense[std::size_t(tool)];
            return nullptr;
        }
        const auto it = sparse.find(tool);
        return it == sparse.end() ? nullptr : &*it;
    }
};

class ToolTipRegistry::Private {
public:
    QHash<QWidget*, Tools> windows;
    // The window last looked up and its tools: a pass over every item registers one window's
    // tools one after the other. Cleared whenever windows gains or loses an entry, which may
    // move the others.
    QWidget* lastWindow = nullptr;
    Tools* lastTools = nullptr;
    void forgetLast()
    {
        lastWindow = nullptr;
        lastTools = nullptr;
    }
    QPointer<QWidget> shownWindow;
    int shownTool = -1;
};

ToolTipRegistry::ToolTipRegistry(QObject* parent)
    : QObject(parent), d(std::make_unique<Private>()), m_delay(700)
{
    m_wakeUp.setSingleShot(true);
    connect(&m_wakeUp, &QTimer::timeout, this, [this] { showPending(); });
}

ToolTipRegistry::~ToolTipRegistry() = default;

void ToolTipRegistry::setDelay(int milliseconds)
{
    m_delay = qMax(0, milliseconds);
}

void ToolTipRegistry::setDisplayTime(int milliseconds)
{
    m_displayTime = milliseconds;
}

void ToolTipRegistry::setActive(bool active)
{
    m_active = active;
    if (!active) {
        m_wakeUp.stop();
        if (d->shownWindow && QToolTip::isVisible())
            QToolTip::hideText();
        d->shownWindow = nullptr;
    }
}

ToolTipRegistry::Tools* ToolTipRegistry::toolsOf(QWidget* window) const
{
    if (window && window == d->lastWindow)
        return d->lastTools;
    const auto it = d->windows.find(window);
    if (it == d->windows.end())
        return nullptr;
    d->lastWindow = window;
    d->lastTools = &*it;
    return d->lastTools;
}

ToolTipRegistry::Tools& ToolTipRegistry::ensureTools(QWidget* window)
{
    if (Tools* tools = toolsOf(window))
        return *tools;
    window->installEventFilter(this);
    connect(window, &QObject::destroyed, this, [this, window] {
        d->forgetLast();
        d->windows.remove(window);
    });
    d->forgetLast();
    return *d->windows.insert(window, Tools{});
}

void ToolTipRegistry::addTool(QWidget* window, int tool, const QRect& rect, const QString& text)
{
    if (!window)
        return;
    Tools& tools = ensureTools(window);
    if (tool >= 0 && tool < kDenseLimit) {
        if (std::size_t(tool) >= tools.dense.size())
            tools.dense.resize(std::size_t(tool) + 1);
        auto& slot = tools.dense[std::size_t(tool)];
        if (!slot)
            ++tools.count;
        slot = Tool{rect, text};
        return;
    }
    if (!tools.sparse.contains(tool))
        ++tools.count;
    tools.sparse.insert(tool, Tool{rect, text});
}

void ToolTipRegistry::setToolRect(QWidget* window, int tool, const QRect& rect)
{
    if (Tools* tools = toolsOf(window))
        if (Tool* t = tools->find(tool))
            t->rect = rect;
}

void ToolTipRegistry::removeTool(QWidget* window, int tool)
{
    Tools* tools = toolsOf(window);
    if (!tools)
        return;
    if (tool >= 0 && tool < kDenseLimit) {
        if (std::size_t(tool) < tools->dense.size() && tools->dense[std::size_t(tool)]) {
            tools->dense[std::size_t(tool)].reset();
            --tools->count;
        }
        return;
    }
    if (tools->sparse.remove(tool))
        --tools->count;
}

void ToolTipRegistry::removeToolsFrom(QWidget* window, int first)
{
    Tools* tools = toolsOf(window);
    if (!tools)
        return;
    const std::size_t from = std::size_t(qBound(0, first, kDenseLimit));
    for (std::size_t i = from; i < tools->dense.size(); ++i)
        if (tools->dense[i])
            --tools->count;
    if (from < tools->dense.size())
        tools->dense.resize(from);
    for (auto it = tools->sparse.begin(); it != tools->sparse.end();) {
        if (it.key() >= first) {
            it = tools->sparse.erase(it);
            --tools->count;
        } else {
            ++it;
        }
    }
}

void ToolTipRegistry::removeAllTools(QWidget* window)
{
    if (Tools* tools = toolsOf(window))
        *tools = Tools{};
}

bool ToolTipRegistry::hasTool(QWidget* window, int tool) const
{
    Tools* tools = toolsOf(window);
    return tools && tools->find(tool);
}

QRect ToolTipRegistry::toolRect(QWidget* window, int tool) const
{
    Tools* tools = toolsOf(window);
    const Tool* t = tools ? tools->find(tool) : nullptr;
    return t ? t->rect : QRect();
}

QString ToolTipRegistry::toolText(QWidget* window, int tool) const
{
    Tools* tools = toolsOf(window);
    const Tool* t = tools ? tools->find(tool) : nullptr;
    return t ? t->text : QString();
}

int ToolTipRegistry::toolCount(QWidget* window) const
{
    Tools* tools = toolsOf(window);
    return tools ? tools->count : 0;
}

std::optional<int> ToolTipRegistry::toolAt(QWidget* window, const QPoint& pos) const
{
    Tools* tools = toolsOf(window);
    if (!tools)
        return std::nullopt;
    std::optional<int> best;
    for (auto it = tools->sparse.cbegin(); it != tools->sparse.cend(); ++it)
        if ((!best || it.key() < *best) && it->rect.contains(pos))
            best = it.key();
    if (best && *best < 0)
        return best;
    for (std::size_t i = 0; i < tools->dense.size() && (!best || int(i) < *best); ++i) {
        const auto& slot = tools->dense[i];
        if (slot && slot->rect.contains(pos))
            return int(i);
    }
    return best;
}

bool ToolTipRegistry::eventFilter(QObject* watched, QEvent* event)
{
    auto* window = static_cast<QWidget*>(watched);
    switch (event->type()) {
    case QEvent::ToolTip:
        // The window's tips are ours.
        return d->windows.contains(window);
    case QEvent::MouseMove: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->buttons() != Qt::NoButton || !m_active)
            break;
        m_pendingWindow = window;
        m_pendingPos = mouse->position().toPoint();
        // A tip already up for the tool under the pointer stays; otherwise the pointer has to
        // rest again.
        if (d->shownWindow == window && QToolTip::isVisible()
            && toolAt(window, m_pendingPos) == d->shownTool)
            break;
        m_wakeUp.start(m_delay);
        break;
    }
    case QEvent::Leave:
    case QEvent::Hide:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
        if (m_pendingWindow == window)
            m_wakeUp.stop();
        if (d->shownWindow == window) {
            QToolTip::hideText();
            d->shownWindow = nullptr;
        }
        break;
    default: break;
    }
    return QObject::eventFilter(watched, event);
}

void ToolTipRegistry::showPending()
{
    QWidget* window = m_pendingWindow;
    if (!window || !window->isVisible())
        return;
    const std::optional<int> tool = toolAt(window, m_pendingPos);
    if (!tool) {
        if (d->shownWindow == window)
            QToolTip::hideText();
        d->shownWindow = nullptr;
        return;
    }
    const Tool* t = toolsOf(window)->find(*tool);
    QToolTip::showText(window->mapToGlobal(m_pendingPos), t->text, window, t->rect, m_displayTime);
    d->shownWindow = window;
    d->shownTool = *tool;
}

}  // namespace ZebSubCtl
