#include "rules/textformatter.h"

#include <QStringView>

namespace ZebObjects {

namespace {

// What an unsupported code point becomes; nullptr means "?".
const char* transliteration(char32_t c)
{
    switch (c) {
    case 0x2018:
    case 0x2019:
    case 0x201A:
    case 0x201B:
    case 0x2032:
    case 0x2035: return "'";
    case 0x201C:
    case 0x201D:
    case 0x201E:
    case 0x201F:
    case 0x2033:
    case 0x2036: return "\"";
    case 0x2010:
    case 0x2011:
    case 0x2012:
    case 0x2013:
    case 0x2014:
    case 0x2015:
    case 0x2212: return "-";
    case 0x2026: return "...";
    case 0x2022:
    case 0x2023:
    case 0x2043:
    case 0x2219:
    case 0x25E6:
    case 0x25CF: return "*";
    case 0x00A0:
    case 0x1680:
    case 0x2000:
    case 0x2001:
    case 0x2002:
    case 0x2003:
    case 0x2004:
    case 0x2005:
    case 0x2006:
    case 0x2007:
    case 0x2008:
    case 0x2009:
    case 0x200A:
    case 0x202F:
    case 0x205F:
    case 0x3000: return " ";
    case 0x200B:
    case 0x200C:
    case 0x200D:
    case 0x2060:
    case 0xFEFF: return "";
    default: return nullptr;
    }
}

}  // namespace

bool TextFormatter::isSupported(char32_t c)
{
    return c == u'\r' || c == u'\n' || c == u'\t' || (c >= 0x20 && c <= 0x7E)
           || (c >= 0xA1 && c <= 0xFF);
}

bool TextFormatter::reformat(QString& text)
{
    const QChar* data = text.constData();
    const qsizetype size = text.size();
    qsizetype first = 0;
    while (first < size && isSupported(data[first].unicode()))
        ++first;
    if (first == size)
        return false;

    QString out;
    out.reserve(size);
    out.append(QStringView(data, first));
    for (qsizetype i = first; i < size; ++i) {
        char32_t c = data[i].unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < size && data[i + 1].isLowSurrogate()) {
            c = QChar::surrogateToUcs4(data[i], data[i + 1]);
            ++i;
        }
        if (isSupported(c)) {
            out.append(QChar(char16_t(c)));
            continue;
        }
        const char* replacement = transliteration(c);
        out.append(QLatin1String(replacement ? replacement : "?"));
    }
    text = out;
    return true;
}

}  // namespace ZebObjects
