#pragma once

#include "zebobjectsrules_export.h"

#include <QString>

namespace ZebObjects {

// The rule by which the business objects accept text.
//
// Submittal documents print with a Latin-1 font, so a text may hold only printable Latin-1
// (U+0020..U+007E and U+00A1..U+00FF) besides CR, LF and TAB. Everything else is unsupported.
// The typographic characters a word processor pastes are transliterated:
//   curly single quotes and primes         -> '
//   curly double quotes and double primes  -> "
//   en and em dashes, other dashes, minus  -> -
//   horizontal ellipsis                    -> ...
//   bullets                                -> *
//   no-break and other Unicode spaces      -> a blank
//   zero-width characters and the BOM      -> dropped
// Any other unsupported character (each code point, so a surrogate pair counts once) becomes "?".
// The output holds only supported characters, so the rule is idempotent: reformatting its own
// output answers false.
class ZEBOBJECTSRULES_EXPORT TextFormatter {
public:
    // True when text held unsupported characters; text is then rewritten in place.
    // False, and text is left untouched byte for byte, otherwise.
    static bool reformat(QString& text);
    static bool isSupported(char32_t codePoint);
};

}  // namespace ZebObjects
