#pragma once

#include "contracts/failure.h"

#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <memory>
#include <type_traits>

class QSqlError;

namespace ZebObjects {

// One open database file, shared by the store and every object it hands out; the file stays
// open while any of them lives. Statements are prepared once and kept. Every failure of the
// database becomes a Failure naming the file and the cause.
class StoreConnection {
public:
    enum class Mode { OpenOrCreate, OpenExisting, ReadOnly };

    // Opens the file, checks it and brings its schema up to date. A file that is missing (unless
    // created), unreadable, damaged, not a database of this program or of a newer schema fails.
    static std::shared_ptr<StoreConnection> open(const QString& path, Mode mode,
                                                 int busyTimeoutMs);
    ~StoreConnection();
    StoreConnection(const StoreConnection&) = delete;
    StoreConnection& operator=(const StoreConnection&) = delete;

    const QString& path() const { return m_path; }
    const QString& connectionName() const { return m_name; }
    // Transactions committed through this connection since it was opened.
    quint64 commitCount() const { return m_commits; }

    // Each runs sql with args, reads what it answers and lets go of the statement at once (a
    // statement left open would pin this connection to an old view of the file); a failure
    // throws.
    void run(const QString& sql, const QVariantList& args = {});
    // The first column of the first row, or an invalid variant when there is no row.
    QVariant value(const QString& sql, const QVariantList& args = {});
    // The first row, or an empty list when there is none.
    QVariantList row(const QString& sql, const QVariantList& args = {});
    QList<QVariantList> rows(const QString& sql, const QVariantList& args = {});
    // The new row's id of an insert.
    qint64 insert(const QString& sql, const QVariantList& args = {});

    // Runs body in one write transaction and commits it before returning; a failure rolls the
    // transaction back and goes on to the caller. A body inside another one joins it.
    template <class Body>
    auto write(Body&& body) -> std::invoke_result_t<Body>
    {
        begin();
        try {
            if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
                body();
                commit();
            } else {
                auto result = body();
                commit();
                return result;
            }
        } catch (...) {
            rollback();
            throw;
        }
    }

    // The failure for an error of the database, naming the file and the cause.
    Failure failure(const QSqlError& error) const;

private:
    StoreConnection(QString path, QString name);
    void begin();
    void commit();
    void rollback();
    void prepareFile(Mode mode);
    void checkVersion(int version) const;
    bool hasTables();
    Failure anotherProgram() const;
    QSqlQuery& exec(const QString& sql, const QVariantList& args);

    QString m_path;
    QString m_name;
    QSqlDatabase m_db;
    QHash<QString, QSqlQuery> m_statements;
    int m_depth = 0;
    quint64 m_commits = 0;
};

}  // namespace ZebObjects
