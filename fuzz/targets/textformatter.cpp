// The text reformatting rule on any text. The input's bytes are read as UTF-16 code units, so
// lone and mismatched surrogates are reached as well as every code point.
//
// The rule's promises checked here:
// - The answer is true exactly when the text holds a character that is not printable Latin-1;
//   on false the text is left untouched.
// - The output is printable Latin-1: U+0020..U+007E and U+00A1..U+00FF, plus CR, LF and TAB as
//   the only control characters. U+007F..U+00A0 (DEL, the C1 controls and the no-break space)
//   and anything above U+00FF are not.
// - It is idempotent: its output passes a second check with false, unchanged.
// - The output is never longer than needed: every printable character stays as it is, in its
//   place, and every other code point (a surrogate pair counts as one) becomes its own
//   replacement alone, whatever stands around it: nothing, or one character, or three for the
//   ellipsis ("..."), the only replacement longer than one character.
#include "fuzzcheck.h"

#include "rules/textformatter.h"

#include <QString>

#include <cstddef>
#include <cstdint>

using ZebObjects::TextFormatter;

namespace {

bool printableLatin1(char16_t c)
{
    return c == u'\t' || c == u'\n' || c == u'\r' || (c >= 0x20 && c <= 0x7E)
           || (c >= 0xA1 && c <= 0xFF);
}

bool allPrintable(const QString& s)
{
    for (const QChar c : s)
        if (!printableLatin1(c.unicode()))
            return false;
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QString input;
    input.reserve(qsizetype(size / 2));
    for (std::size_t i = 0; i + 1 < size; i += 2)
        input.append(QChar(char16_t(data[i] | (data[i + 1] << 8))));

    QString text = input;
    const bool changed = TextFormatter::reformat(text);
    ZEB_FUZZ_CHECK(changed == !allPrintable(input), "true exactly for unsupported text");
    if (!changed) {
        ZEB_FUZZ_CHECK(text == input, "supported text is left untouched");
        return 0;
    }
    ZEB_FUZZ_CHECK(allPrintable(text), "the output is printable Latin-1");

    QString again = text;
    ZEB_FUZZ_CHECK(!TextFormatter::reformat(again), "the output passes a second check");
    ZEB_FUZZ_CHECK(again == text, "the second check leaves the output alone");

    // Walk the input code point by code point along the output.
    qsizetype out = 0;
    for (qsizetype i = 0; i < input.size(); ++i) {
        const QChar c = input.at(i);
        if (printableLatin1(c.unicode())) {
            ZEB_FUZZ_CHECK(out < text.size() && text.at(out) == c,
                           "a printable character stays in its place");
            ++out;
            continue;
        }
        QString one(c);
        if (c.isHighSurrogate() && i + 1 < input.size() && input.at(i + 1).isLowSurrogate())
            one.append(input.at(++i));
        const bool ellipsis = one == QString(QChar(0x2026));
        QString replacement = one;
        ZEB_FUZZ_CHECK(TextFormatter::reformat(replacement),
                       "an unsupported code point is rewritten");
        ZEB_FUZZ_CHECK(replacement.size() <= (ellipsis ? 3 : 1),
                       "a code point becomes at most one character, the ellipsis three");
        ZEB_FUZZ_CHECK(text.mid(out, replacement.size()) == replacement,
                       "a code point becomes its own replacement wherever it stands");
        out += replacement.size();
    }
    ZEB_FUZZ_CHECK(out == text.size(), "the output holds nothing more");
    return 0;
}
