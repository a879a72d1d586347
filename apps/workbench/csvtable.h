#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// Rows read from a CSV file or from a spreadsheet's clipboard (tab-separated): quoted fields with
// delimiters, quotes and line breaks in them, UTF-8 with or without a byte order mark, or
// Windows-1252 when the bytes are not UTF-8. A file that cannot be read or parsed fails with a
// Failure naming it and, for a parse error, the row.
struct CsvTable {
    QList<QStringList> rows;
    // "UTF-8", "UTF-8 with BOM" or "Windows-1252".
    QString encoding;
    char delimiter = ',';

    // The delimiter is the one the first row uses most of tab, semicolon and comma.
    static CsvTable parse(const QByteArray& bytes, const QString& origin);
    static CsvTable parse(const QByteArray& bytes, const QString& origin, char delimiter);
    static CsvTable read(const QString& path);
    // Text a spreadsheet put on the clipboard: tab-separated.
    static CsvTable fromClipboardText(const QString& text);
};
