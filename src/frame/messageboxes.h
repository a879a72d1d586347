#pragma once

#include "zebsubctl_export.h"

#include <QList>
#include <QString>

#include <deque>
#include <memory>

namespace ZebSubCtl {

// Styles and answers of the modal message box.
namespace MsgBoxStyle {
inline constexpr int Question_OKCancel = 33;  // question icon, OK and Cancel
inline constexpr int Exclamation = 48;        // warning icon, OK
inline constexpr int Information = 64;        // information icon, OK
}  // namespace MsgBoxStyle
namespace MsgBoxAnswer {
inline constexpr int OK = 1;
inline constexpr int Cancel = 2;
}  // namespace MsgBoxAnswer

// Every message box of the library goes through one service, so a host can brand it and tests
// can answer it.
class ZEBSUBCTL_EXPORT MessageBoxService {
public:
    virtual ~MessageBoxService() = default;
    // Shows the box modally and returns the answer (MsgBoxAnswer).
    virtual int MsgBox(const QString& prompt, int style, const QString& title) = 0;
};

// The platform's modal QMessageBox, parented to the active window.
class ZEBSUBCTL_EXPORT QtMessageBoxService : public MessageBoxService {
public:
    int MsgBox(const QString& prompt, int style, const QString& title) override;
};

// Records every box and answers from a queue (OK when the queue is empty).
class ZEBSUBCTL_EXPORT ScriptedMessageBoxService : public MessageBoxService {
public:
    struct Shown {
        QString prompt;
        int style = 0;
        QString title;
        friend bool operator==(const Shown&, const Shown&) = default;
    };

    int MsgBox(const QString& prompt, int style, const QString& title) override;

    void queueAnswer(int answer) { m_answers.push_back(answer); }
    const QList<Shown>& shown() const { return m_shown; }
    void clear() { m_shown.clear(); }

private:
    QList<Shown> m_shown;
    std::deque<int> m_answers;
};

// The process-wide message-box service; the Qt one unless a host or a test puts its own.
class ZEBSUBCTL_EXPORT MessageBoxes {
public:
    static MessageBoxService& service();
    static void setService(std::shared_ptr<MessageBoxService> service);
    static int MsgBox(const QString& prompt, int style, const QString& title)
    {
        return service().MsgBox(prompt, style, title);
    }
};

}  // namespace ZebSubCtl
