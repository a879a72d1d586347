#pragma once

#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <functional>
#include <utility>

namespace ZebTest {

// Types text key by key as a keyboard would; characters beyond ASCII arrive as key events that
// carry the character, the way a keyboard layout or compose key delivers them.
inline void typeText(QWidget* widget, const QString& text)
{
    for (const QChar c : text) {
        if (c.unicode() < 0x80 && c.isPrint())
            QTest::keyClick(widget, char(c.unicode()));
        else
            QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(c), Qt::NoModifier);
    }
}

// Answers the next modal window of type T the way a user would, once it is up: the answer
// clicks and types on its real widgets. A window the answer leaves open is closed afterwards
// (and noted), so a broken answer cannot hang the test.
template <class T>
class WhenModal {
public:
    explicit WhenModal(std::function<void(T&)> answer) : m_answer(std::move(answer))
    {
        m_timer.setInterval(10);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { poll(); });
        m_timer.start();
    }

    bool answered() const { return m_answered; }
    bool leftOpen() const { return m_leftOpen; }

private:
    void poll()
    {
        auto* window = qobject_cast<T*>(QApplication::activeModalWidget());
        if (!window || !window->isVisible()) {
            if (++m_ticks > 1000)
                m_timer.stop();
            return;
        }
        m_timer.stop();
        m_answered = true;
        QPointer<T> guard(window);
        m_answer(*window);
        if (guard && guard->isVisible()) {
            m_leftOpen = true;
            guard->reject();
        }
    }

    std::function<void(T&)> m_answer;
    QTimer m_timer;
    int m_ticks = 0;
    bool m_answered = false;
    bool m_leftOpen = false;
};

// The same for a pop-up menu.
class WhenPopup {
public:
    explicit WhenPopup(std::function<void(QMenu&)> answer) : m_answer(std::move(answer))
    {
        m_timer.setInterval(10);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { poll(); });
        m_timer.start();
    }

    bool answered() const { return m_answered; }

private:
    void poll()
    {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu || !menu->isVisible()) {
            if (++m_ticks > 1000)
                m_timer.stop();
            return;
        }
        m_timer.stop();
        m_answered = true;
        QPointer<QMenu> guard(menu);
        m_answer(*menu);
        if (guard && guard->isVisible())
            guard->close();
    }

    std::function<void(QMenu&)> m_answer;
    QTimer m_timer;
    int m_ticks = 0;
    bool m_answered = false;
};

}  // namespace ZebTest
