#pragma once

#include "zebsubctl_export.h"

#include <QList>
#include <QString>

#include <deque>
#include <memory>

namespace ZebSubCtl {

/// The styles of the modal message box: icon and buttons.
namespace MsgBoxStyle {
inline constexpr int Question_OKCancel = 33;  ///< question icon, OK and Cancel
inline constexpr int Exclamation = 48;  ///< warning icon, OK
inline constexpr int Information = 64;  ///< information icon, OK
}  // namespace MsgBoxStyle
/// The answers of the modal message box.
namespace MsgBoxAnswer {
inline constexpr int OK = 1;  ///< OK was chosen
inline constexpr int Cancel = 2;  ///< Cancel was chosen, or the box was closed
}  // namespace MsgBoxAnswer

/// Every message box of the library goes through one service, so a host can brand it and tests
/// can answer it.
class ZEBSUBCTL_EXPORT MessageBoxService {
public:
    /// Destroys the service.
    virtual ~MessageBoxService() = default;
    /// Shows the box modally and returns the answer (MsgBoxAnswer).
    virtual int MsgBox(const QString& prompt, int style, const QString& title) = 0;
};

/// The platform's modal QMessageBox, parented to the active window.
class ZEBSUBCTL_EXPORT QtMessageBoxService : public MessageBoxService {
public:
    /// Shows prompt under title with the icon and buttons of style, and waits for the answer.
    int MsgBox(const QString& prompt, int style, const QString& title) override;
};

/// Records every box and answers from a queue (OK when the queue is empty).
class ZEBSUBCTL_EXPORT ScriptedMessageBoxService : public MessageBoxService {
public:
    /// One box as it was asked for.
    struct Shown {
        QString prompt;  ///< the text
        int style = 0;  ///< MsgBoxStyle
        QString title;  ///< the window title
        /// Equal when prompt, style and title are.
        friend bool operator==(const Shown&, const Shown&) = default;
    };

    /// Records the box and returns the next queued answer, or OK.
    int MsgBox(const QString& prompt, int style, const QString& title) override;

    /// Queues the answer to the next box.
    void queueAnswer(int answer) { m_answers.push_back(answer); }
    /// The boxes shown so far, oldest first.
    const QList<Shown>& shown() const { return m_shown; }
    /// Forgets the boxes shown so far.
    void clear() { m_shown.clear(); }

private:
    QList<Shown> m_shown;
    std::deque<int> m_answers;
};

/// The process-wide message-box service; the Qt one unless a host or a test puts its own.
class ZEBSUBCTL_EXPORT MessageBoxes {
public:
    /// The service in place.
    static MessageBoxService& service();
    /// Puts service in place for every box from now on; none restores the Qt one.
    static void setService(std::shared_ptr<MessageBoxService> service);
    /// Shows a box through the service in place.
    static int MsgBox(const QString& prompt, int style, const QString& title)
    {
        return service().MsgBox(prompt, style, title);
    }
};

}  // namespace ZebSubCtl
