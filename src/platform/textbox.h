#pragma once

#include "zebsubctl_export.h"

#include <QLineEdit>

namespace ZebSubCtl {

// A single-line text box that tells when a key is released in it (keyUp, once per key stroke,
// also for keys that change nothing) and when its text really changes, from the user or from
// code (changed). Setting the text from code releases no key.
class ZEBSUBCTL_EXPORT TextBox : public QLineEdit {
    Q_OBJECT
    Q_PROPERTY(QString Text READ text WRITE setText NOTIFY textChanged USER true)
public:
    explicit TextBox(QWidget* parent = nullptr);
    ~TextBox() override;

signals:
    void keyUp(int key, Qt::KeyboardModifiers modifiers);
    void changed();
    // The Text property's notify signal. It stands in for QLineEdit's own, which a property of
    // this class cannot name, and runs with it.
    void textChanged(const QString& text);

protected:
    void keyReleaseEvent(QKeyEvent* event) override;
};

}  // namespace ZebSubCtl
