#include "tableimport.h"

#include <QStringList>

#include <algorithm>

namespace {

QString columnLetters(int column)
{
    QString out;
    for (int n = column + 1; n > 0; n = (n - 1) / 26)
        out.prepend(QChar(u'A' + (n - 1) % 26));
    return out;
}

QString normal(const QString& header)
{
    QString out;
    for (const QChar c : header.toLower())
        if (c.isLetterOrNumber())
            out.append(c);
    return out;
}

}  // namespace

QString TableImport::Problem::message() const
{
    return QStringLiteral("Row %1, column %2: %3").arg(row).arg(column, text);
}

TableImport::TableImport(QList<Field> fields)
    : m_fields(std::move(fields)), m_mapping(m_fields.size(), -1)
{ }

void TableImport::setMapping(const QList<int>& mapping)
{
    m_mapping = mapping;
    m_mapping.resize(m_fields.size(), -1);
}

void TableImport::setTable(const CsvTable& table)
{
    m_table = table;
    m_rows.clear();
    m_problems.clear();
}

QStringList TableImport::header() const
{
    return m_table.rows.isEmpty() ? QStringList() : m_table.rows.first();
}

QString TableImport::columnName(int column) const
{
    const QStringList h = header();
    const QString text = column < h.size() ? h[column].trimmed() : QString();
    return text.isEmpty() ? columnLetters(column)
                          : QStringLiteral("\"%1\" (%2)").arg(text, columnLetters(column));
}

void TableImport::guessMapping()
{
    const QStringList h = header();
    QList<int> mapping(m_fields.size(), -1);
    QList<bool> taken(h.size(), false);
    // Exact names first, then the aliases, so that "Type" is not taken by a "Fixture Type".
    for (int pass = 0; pass < 2; ++pass) {
        for (qsizetype f = 0; f < m_fields.size(); ++f) {
            if (mapping[f] >= 0)
                continue;
            QStringList names{normal(m_fields[f].name)};
            if (pass == 1)
                for (const QString& alias : m_fields[f].aliases)
                    names.append(normal(alias));
            for (qsizetype c = 0; c < h.size(); ++c) {
                if (!taken[c] && names.contains(normal(h[c]))) {
                    mapping[f] = int(c);
                    taken[c] = true;
                    break;
                }
            }
        }
    }
    for (qsizetype f = 0; f < m_fields.size(); ++f) {
        const int to = m_fields[f].yieldsTo;
        if (to >= 0 && to < mapping.size() && mapping[f] >= 0 && mapping[to] < 0) {
            mapping[to] = mapping[f];
            mapping[f] = -1;
        }
    }
    m_mapping = mapping;
}

QString TableImport::mappingText() const
{
    const QStringList h = header();
    QStringList parts;
    for (qsizetype f = 0; f < m_fields.size(); ++f) {
        const int c = m_mapping[f];
        if (c >= 0 && c < h.size())
            parts.append(m_fields[f].name + QLatin1Char('=') + h[c].trimmed());
    }
    return parts.join(QLatin1Char('\n'));
}

bool TableImport::useMappingText(const QString& text)
{
    if (text.isEmpty())
        return false;
    const QStringList h = header();
    QList<int> mapping(m_fields.size(), -1);
    for (const QString& part : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const qsizetype eq = part.indexOf(QLatin1Char('='));
        if (eq < 0)
            return false;
        const QString field = part.left(eq);
        const QString column = part.mid(eq + 1);
        qsizetype f = 0;
        while (f < m_fields.size() && m_fields[f].name != field)
            ++f;
        qsizetype c = 0;
        while (c < h.size() && h[c].trimmed() != column)
            ++c;
        if (f == m_fields.size() || c == h.size())
            return false;
        mapping[f] = int(c);
    }
    m_mapping = mapping;
    return true;
}

std::optional<bool> TableImport::yesNo(const QString& text)
{
    // Read in place: a file of many rows asks this for every cell of its yes/no columns.
    const QStringView t = QStringView(text).trimmed();
    const auto is = [t](QLatin1StringView word) {
        return t.compare(word, Qt::CaseInsensitive) == 0;
    };
    if (t.isEmpty() || is(QLatin1StringView("n")) || is(QLatin1StringView("no"))
        || is(QLatin1StringView("0")) || is(QLatin1StringView("false")))
        return false;
    if (is(QLatin1StringView("y")) || is(QLatin1StringView("yes")) || is(QLatin1StringView("1"))
        || is(QLatin1StringView("true")) || is(QLatin1StringView("x")))
        return true;
    return std::nullopt;
}

void TableImport::check()
{
    m_rows.clear();
    m_problems.clear();
    m_rows.reserve(std::max<qsizetype>(m_table.rows.size() - 1, 0));
    // Where each field is read from, as a problem names it.
    QStringList where;
    for (qsizetype f = 0; f < m_fields.size(); ++f)
        where.append(m_mapping[f] >= 0 ? columnName(m_mapping[f])
                                       : QStringLiteral("\"%1\"").arg(m_fields[f].name));
    for (qsizetype r = 1; r < m_table.rows.size(); ++r) {
        const QStringList& cells = m_table.rows[r];
        Row row;
        row.fileRow = int(r + 1);
        row.values.reserve(m_fields.size());
        row.bad.reserve(m_fields.size());
        for (qsizetype f = 0; f < m_fields.size(); ++f) {
            const Field& field = m_fields[f];
            const int c = m_mapping[f];
            const QString value = c >= 0 && c < cells.size() ? cells[c].trimmed() : QString();
            QString problem;
            if (field.required && value.isEmpty()) {
                problem = QStringLiteral("the %1 is missing").arg(field.name.toLower());
            } else if (field.kind == Kind::WholeNumber) {
                bool ok = false;
                const int n = value.toInt(&ok);
                if (!ok || n < 0)
                    problem = QStringLiteral("the %1 \"%2\" is not a whole number")
                                  .arg(field.name.toLower(), value);
            } else if (field.kind == Kind::YesNo) {
                if (!yesNo(value))
                    problem =
                        QStringLiteral("%1 \"%2\" is neither yes nor no").arg(field.name, value);
            } else if (value.size() > field.maxLength) {
                problem = QStringLiteral("the %1 has %2 characters; it holds at most %3")
                              .arg(field.name.toLower())
                              .arg(value.size())
                              .arg(field.maxLength);
            }
            row.values.append(value);
            row.bad.append(!problem.isEmpty());
            if (!problem.isEmpty())
                m_problems.append({row.fileRow, where[f], problem});
        }
        m_rows.append(std::move(row));
    }
}
