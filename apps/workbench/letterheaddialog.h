#pragma once

#include "contracts/packagesource.h"

#include <QDialog>

class QLabel;
class QLineEdit;

// The office's own name, address and logo, printed at the head of its cover letters.
class LetterheadDialog : public QDialog {
    Q_OBJECT
public:
    explicit LetterheadDialog(const ZebPackage::Letterhead& letterhead, QWidget* parent = nullptr);

    ZebPackage::Letterhead letterhead() const;
    // Takes the logo from an image file; false (and the logo kept) when it is no image.
    bool chooseLogo(const QString& path);

private:
    void showLogo();

    QLineEdit* m_name = nullptr;
    QLineEdit* m_street = nullptr;
    QLineEdit* m_street2 = nullptr;
    QLineEdit* m_city = nullptr;
    QLineEdit* m_state = nullptr;
    QLineEdit* m_zip = nullptr;
    QLineEdit* m_phone = nullptr;
    QLineEdit* m_email = nullptr;
    QLabel* m_logoView = nullptr;
    QByteArray m_logo;
};
