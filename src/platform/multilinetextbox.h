#pragma once

#include "zebsubctl_export.h"

#include <QPlainTextEdit>
#include <QString>

namespace ZebSubCtl {

// A multi-line text box with a vertical scroll bar. Its text uses CR-LF line breaks, as the
// business objects store text, and a line break counts as two characters.
//
// maxLength() limits what the user can type, paste or drop (0: no limit); text set from code is
// taken whole. changed() runs whenever the text really changes, from the user or from code.
class ZEBSUBCTL_EXPORT MultiLineTextBox : public QPlainTextEdit {
    Q_OBJECT
    // The text with CR-LF breaks; QPlainTextEdit::textChanged is the notify signal.
    Q_PROPERTY(QString Text READ text WRITE setText NOTIFY textChanged USER true)
public:
    explicit MultiLineTextBox(QWidget* parent = nullptr);
    ~MultiLineTextBox() override;

    QString text() const;
    void setText(const QString& text);
    // Length of text() (a line break counts two).
    int length() const;

    int maxLength() const { return m_maxLength; }
    // A negative length fails with 380.
    void setMaxLength(int length);

signals:
    void changed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

private:
    // How many characters may still be put in place of the selection; -1 without a limit.
    int room() const;
    // Cuts text (CR-LF breaks) so that it fits the room left.
    QString fitted(const QString& text) const;
    void onTextChanged();

    int m_maxLength = 0;
    QString m_last;
};

}  // namespace ZebSubCtl
