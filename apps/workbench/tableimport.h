#pragma once

#include "csvtable.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// What rows of a table become: the fields of a record (a line item, a customer), which column of
// the table each is read from, and every problem of every row, named by row and column, before
// anything is written.
class TableImport {
public:
    enum class Kind { Text, WholeNumber, YesNo };
    struct Field {
        QString name;
        // Header texts that name this field, lower case, besides its own name.
        QStringList aliases;
        Kind kind = Kind::Text;
        // The longest text the office keeps in it.
        int maxLength = 255;
        bool required = false;
        // When the field of this index finds no column of its own, it takes the column guessed
        // for this one (a lone "Manufacturer" column names the brand); -1 for none.
        int yieldsTo = -1;
    };
    struct Problem {
        // The row as the file counts it: the header is row 1.
        int row = 0;
        QString column;
        QString text;

        // "Row 3, column "Qty" (A): ..."
        QString message() const;
    };
    // A row's values, one per field (empty where no column is mapped), and whether each is fine.
    struct Row {
        int fileRow = 0;
        QStringList values;
        QList<bool> bad;
    };

    explicit TableImport(QList<Field> fields);

    const QList<Field>& fields() const { return m_fields; }
    // For each field, the column it is read from; -1 for none.
    QList<int> mapping() const { return m_mapping; }
    void setMapping(const QList<int>& mapping);
    // Maps each field to the first column whose header names it.
    void guessMapping();
    // The mapping as the office keeps it: each field with its column's header text.
    QString mappingText() const;
    // Takes a kept mapping when every header it names is in this table; answers whether it did.
    bool useMappingText(const QString& text);

    // Sets the table to read; its first row is its header.
    void setTable(const CsvTable& table);
    const CsvTable& table() const { return m_table; }
    QStringList header() const;
    // The header of a column as a user reads it: "Qty" (A).
    QString columnName(int column) const;

    // Reads every row under the mapping.
    void check();
    const QList<Row>& rows() const { return m_rows; }
    const QList<Problem>& problems() const { return m_problems; }

    // Reads a yes/no cell: true for yes, false for no, nothing for anything else.
    static std::optional<bool> yesNo(const QString& text);

private:
    QList<Field> m_fields;
    QList<int> m_mapping;
    CsvTable m_table;
    QList<Row> m_rows;
    QList<Problem> m_problems;
};
