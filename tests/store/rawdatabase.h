#pragma once

#include <QString>
#include <QVariant>

// A plain connection of the test's own beside the store's: to a database of a PostgreSQL server
// on 127.0.0.1, or to an SQLite file. Failures are logged as warnings and answered with false or
// an empty value.
class RawDatabase {
public:
    RawDatabase(int port, const QString& database);
    explicit RawDatabase(const QString& sqliteFile);
    ~RawDatabase();
    RawDatabase(const RawDatabase&) = delete;
    RawDatabase& operator=(const RawDatabase&) = delete;

    bool isOpen() const { return m_open; }
    bool exec(const QString& sql);
    // The first column of the first row.
    QVariant value(const QString& sql);

private:
    static inline int s_serial = 0;
    QString m_name;
    bool m_open = false;
};

// SQLite's own check of a file: "ok" when it finds nothing wrong.
QString sqliteIntegrity(const QString& file);
