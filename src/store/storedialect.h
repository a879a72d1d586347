#pragma once

#include "zebstore_export.h"

#include "contracts/failure.h"

#include <QString>
#include <QStringList>

class QSqlError;

namespace ZebObjects {

class StoreConnection;

// Where the two databases a store runs on differ: an SQLite file on the workstation, or a
// PostgreSQL database on the office's server. Everything else (schema, statements, rules) is
// written once in the SQL both understand.
class ZEBSTORE_EXPORT StoreDialect {
public:
    enum class Kind { Sqlite, Postgres };

    explicit StoreDialect(Kind kind) : m_kind(kind) { }
    // A location naming a server database ("postgresql://user@host:port/db").
    static bool isServerLocation(const QString& location);

    Kind kind() const { return m_kind; }
    bool isServer() const { return m_kind == Kind::Postgres; }
    // The Qt SQL driver.
    QString driver() const;

    // The statements that open a write transaction. On the server every write takes the
    // office's write lock first, so writers follow one another as they do on a file.
    QStringList beginWrite() const;
    // A table written for SQLite, as this database takes it: ids that number themselves, and
    // 64-bit integers throughout.
    QString table(const QString& sql) const;
    // An insert that answers the new row's id through its result (true) or through the driver's
    // last insert id (false); sql is changed to answer it.
    bool insertAnswersId(QString& sql) const;

    int schemaVersion(StoreConnection& db) const;
    void setSchemaVersion(StoreConnection& db, int version) const;
    bool hasTables(StoreConnection& db) const;
    // After rows were copied with their ids, the next new id follows the highest one.
    void idsCopied(StoreConnection& db, const QString& table) const;
    // One row that changes whenever the data may have changed: another connection's commit,
    // or a change made through this one (committed or not).
    QString stateQuery() const;
    // Raised in every write transaction so other workstations learn of the commit.
    QString announceCommit() const;

    // True when the error says the database cannot be reached (server down, connection lost).
    bool isConnectionLost(const QSqlError& error) const;
    // True when the error says another writer held the lock too long.
    bool isLockTimeout(const QSqlError& error) const;

    // The notification channel other workstations' commits arrive on.
    static QString changeChannel();

private:
    Kind m_kind;
};

}  // namespace ZebObjects
