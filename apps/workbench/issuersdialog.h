#pragma once

#include <QDialog>
#include <QStringList>

class QPlainTextEdit;

// The office's salespeople offered under "Issued By", one a line, in the order offered.
class IssuersDialog : public QDialog {
    Q_OBJECT
public:
    explicit IssuersDialog(const QStringList& names, QWidget* parent = nullptr);

    // The names as typed: blank lines and repeats left out.
    QStringList names() const;

private:
    QPlainTextEdit* m_names = nullptr;
};
