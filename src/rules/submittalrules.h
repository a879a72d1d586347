#pragma once

#include "zebobjectsrules_export.h"

#include <QString>
#include <QStringList>

namespace ZebObjects {

// The rules a submittal keeps, whatever holds its data: the purpose options with the user's own
// purpose behind option 7, and the form of the submittal date.
class ZEBOBJECTSRULES_EXPORT SubmittalRules {
public:
    // The standard texts of options 0 to 6, then "Other" for option 7.
    static QStringList purposeCaptions();
    static constexpr qint16 OtherPurpose = 7;

    // The purpose as a submittal holds it. The text written while option 7 is chosen is kept
    // apart, so that choosing "Other" again brings the custom purpose back.
    struct Purpose {
        qint16 index = 0;
        QString text = purposeCaptions().first();
        QString otherText;
    };

    // SelectPurpose: records the option and answers its text (the custom purpose for 7). Any
    // index outside 0 to 7 fails with subscript out of range (9) and changes nothing. Answers
    // in indexChanged whether the option really changed.
    static QString selectPurpose(Purpose& purpose, qint16 index, bool& indexChanged);
    // A write of the purpose text; true when the text really changed.
    static bool writePurpose(Purpose& purpose, const QString& text);

    // Accepts ISO text ("2026-11-21") of a valid date, or the empty text; anything else fails
    // with type mismatch (13).
    static void checkDate(const QString& date);
};

}  // namespace ZebObjects
