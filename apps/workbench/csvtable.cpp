#include "csvtable.h"

#include "contracts/failure.h"

#include <QFile>
#include <QStringDecoder>

#include <csv.h>

namespace {

const QString kSource = QStringLiteral("zeb-workbench.Import");

// The characters Windows-1252 puts at 0x80-0x9F; the rest of its upper half is Latin-1.
const char16_t kCp1252High[32] = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178,
};

QString fromCp1252(const QByteArray& bytes)
{
    QString out;
    out.reserve(bytes.size());
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        out.append(b >= 0x80 && b < 0xA0 ? QChar(kCp1252High[b - 0x80]) : QChar(b));
    }
    return out;
}

bool isUtf8(const QByteArray& bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder.decode(bytes);
    Q_UNUSED(text);
    return !decoder.hasError();
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

struct Collector {
    QList<QList<QByteArray>> rows;
    QList<QByteArray> row;
};

void onField(void* field, size_t length, void* data)
{
    auto* c = static_cast<Collector*>(data);
    c->row.append(QByteArray(static_cast<const char*>(field), qsizetype(length)));
}

void onRow(int, void* data)
{
    auto* c = static_cast<Collector*>(data);
    c->rows.append(std::move(c->row));
    c->row.clear();
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
        table.encoding = isUtf8(bytes) ? QStringLiteral("UTF-8") : QStringLiteral("Windows-1252");
    }
    const bool cp1252 = table.encoding == QLatin1String("Windows-1252");

    csv_parser parser;
    if (csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI) != 0)
        throw ZebObjects::Failure(ZebObjects::ErrorNumber::OutOfMemory, kSource,
                                  QStringLiteral("Out of memory reading %1").arg(origin));
    csv_set_delim(&parser, static_cast<unsigned char>(delimiter));
    // A tab that separates fields is no blank to trim.
    csv_set_space_func(&parser, delimiter == '\t' ? onlySpace : spaceOrTab);
    Collector collector;
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
                                      .arg(collector.rows.size() + 1)
                                      .arg(QString::fromLatin1(csv_strerror(error))));

    table.rows.reserve(collector.rows.size());
    for (const QList<QByteArray>& r : collector.rows) {
        QStringList cells;
        cells.reserve(r.size());
        for (const QByteArray& cell : r)
            cells.append(cp1252 ? fromCp1252(cell) : QString::fromUtf8(cell));
        // A line that holds nothing but delimiters is no row.
        bool empty = true;
        for (const QString& cell : cells)
            empty = empty && cell.trimmed().isEmpty();
        if (!empty)
            table.rows.append(cells);
    }
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
