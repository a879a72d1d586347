#pragma once

#include <QString>

namespace ZebObjects {

// One customer as the office's directory and a submittal's customers keep it: what a submittal
// uses, and the postal code, phone number and account state the directory searches by.
struct CustomerRecord {
    QString key;
    QString displayText;
    QString name;
    QString accountNumber;
    QString city;
    QString state;
    QString type;
    QString category;
    QString zip;
    QString phone;
    // Where the mail goes, and whom it is for; the directory keeps them for labels and
    // letters.
    QString attention;
    QString street;
    QString street2;
    QString email;
    // A closed account is found only when asked for.
    bool active = true;
    bool included = false;
};

}  // namespace ZebObjects
