#pragma once

#include "zebsubctl_export.h"

#include <QLineEdit>

namespace ZebSubCtl {

// A single-line text box that tells when a key is released in it (keyUp, once per key stroke,
// also for keys that change nothing) and when its text really changes, from the user or from
// code (changed). Setting the text from code releases no key.
class ZEBSUBCTL_EXPORT TextBox : public QLineEdit {
    Q_OBJECT
    Q_PROPERTY(QString Text READ text WRITE setText)
public:
    explicit TextBox(QWidget* parent = nullptr);
    ~TextBox() override;

signals:
    void keyUp(int key, Qt::KeyboardModifiers modifiers);
    void changed();

protected:
    void keyReleaseEvent(QKeyEvent* event) override;
};

}  // namespace ZebSubCtl
