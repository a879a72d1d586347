#include "csvtable.h"

#include "contracts/failure.h"

#include <QFile>

#include <csv.h>

namespace {

const QString kSource = QStringLiteral("zeb-workbench.Import");

// The characters Windows-1252 puts at 0x80-0x9F; the rest of its upper half is Latin-1.
const char16_t kCp1252High[32] = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178,
};

QString fromCp1252(QByteArrayView bytes)
{
    QString out;
    out.reserve(bytes.size());
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        out.append(b >= 0x80 && b < 0xA0 ? QChar(kCp1252High[b - 0x80]) : QChar(b));
    }
    return out;
}

char guessDelimiter(const QByteArray& bytes)
{
    const qsizetype end = bytes.indexOf('\n');
    const QByteArray first = end < 0 ? bytes : bytes.left(end);
    const char candidates[] = {'\t', ';', ','};
    char best = ',';
    qsizetype most = 0;
    for (const char c : candidates) {
        const qsizetype n = first.count(c);
        if (n > most) {
            most = n;
            best = c;
        }
    }
    return best;
}

// Each field is decoded as the parser hands it over; a row that holds nothing but delimiters is
// no row.
struct Collector {
    bool cp1252 = false;
    QList<QStringList> rows;
    QStringList row;
    qsizetype parsedRows = 0;
    bool blank = true;
};

void onField(void* field, size_t length, void* data)
{
    auto* c = static_cast<Collector*>(data);
    const QByteArrayView bytes(static_cast<const char*>(field), qsizetype(length));
    QString cell = c->cp1252 ? fromCp1252(bytes) : QString::fromUtf8(bytes);
    c->blank = c->blank && cell.trimmed().isEmpty();
    c->row.append(std::move(cell));
}

void onRow(int, void* data)
{
    auto* c = static_cast<Collector*>(data);
    ++c->parsedRows;
    if (!c->blank)
        c->rows.append(std::move(c->row));
    c->row = QStringList();
    c->row.reserve(c->rows.isEmpty() ? 8 : c->rows.first().size());
    c->blank = true;
}

int onlySpace(unsigned char c)
{
    return c == CSV_SPACE ? 1 : 0;
}
int spaceOrTab(unsigned char c)
{
    return c == CSV_SPACE || c == CSV_TAB ? 1 : 0;
}

}  // namespace

CsvTable CsvTable::parse(const QByteArray& bytes, const QString& origin)
{
    return parse(bytes, origin, guessDelimiter(bytes));
}

CsvTable CsvTable::parse(const QByteArray& raw, const QString& origin, char delimiter)
{
    CsvTable table;
    table.delimiter = delimiter;
    QByteArray bytes = raw;
    if (bytes.startsWith("\xEF\xBB\xBF")) {
        bytes.remove(0, 3);
        table.encoding = QStringLiteral("UTF-8 with BOM");
    } else {
        table.encoding =
            bytes.isValidUtf8() ? QStringLiteral("UTF-8") : QStringLiteral("Windows-1252");
    }

    csv_parser parser;
    if (csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI) != 0)
        throw ZebObjects::Failure(ZebObjects::ErrorNumber::OutOfMemory, kSource,
                                  QStringLiteral("Out of memory reading %1").arg(origin));
    csv_set_delim(&parser, static_cast<unsigned char>(delimiter));
    // A tab that separates fields is no blank to trim.
    csv_set_space_func(&parser, delimiter == '\t' ? onlySpace : spaceOrTab);
    Collector collector;
    collector.cp1252 = table.encoding == QLatin1String("Windows-1252");
    const size_t done =
        csv_parse(&parser, bytes.constData(), size_t(bytes.size()), onField, onRow, &collector);
    int error = done == size_t(bytes.size()) ? CSV_SUCCESS : csv_error(&parser);
    if (error == CSV_SUCCESS && csv_fini(&parser, onField, onRow, &collector) != 0)
        error = csv_error(&parser);
    csv_free(&parser);
    if (error != CSV_SUCCESS)
        throw ZebObjects::Failure(ZebObjects::ErrorNumber::BadFileFormat, kSource,
                                  QStringLiteral("%1 is not a readable CSV file: row %2: %3")
                                      .arg(origin)
                                      .arg(collector.parsedRows + 1)
                                      .arg(QString::fromLatin1(csv_strerror(error))));

    table.rows = std::move(collector.rows);
    return table;
}

CsvTable CsvTable::read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ZebObjects::Failure(
            ZebObjects::ErrorNumber::PathFileAccessError, kSource,
            QStringLiteral("Cannot read \"%1\": %2").arg(path, file.errorString()));
    return parse(file.readAll(), QStringLiteral("\"%1\"").arg(path));
}

CsvTable CsvTable::fromClipboardText(const QString& text)
{
    return parse(text.toUtf8(), QStringLiteral("The clipboard"), '\t');
}
