#include "store/storeconnection.h"

#include "store/storeschema.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlRecord>

#include <atomic>

namespace ZebObjects {

namespace {

const QString kSource = QStringLiteral("ZebObjects.Store");

// SQLite's primary result codes, as the driver reports them.
enum SqliteCode {
    Perm = 3, Busy = 5, Locked = 6, ReadOnly = 8, IoErr = 10, Corrupt = 11, Full = 13,
    CantOpen = 14, NotADb = 26,
};

Failure fileFailure(qint32 number, const QString& path, const QString& cause)
{
    return Failure(number, kSource,
                   QStringLiteral("The database file \"%1\" %2").arg(QDir::toNativeSeparators(path), cause));
}

}  // namespace

StoreConnection::StoreConnection(QString path, QString name)
    : m_path(std::move(path)), m_name(std::move(name))
{
}

StoreConnection::~StoreConnection()
{
    m_statements.clear();
    if (m_db.isValid()) {
        if (m_depth > 0) {
            QSqlQuery q(m_db);
            q.exec(QStringLiteral("ROLLBACK"));
        }
        m_db.close();
    }
    m_db = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_name);
}

std::shared_ptr<StoreConnection> StoreConnection::open(const QString& path, Mode mode,
                                                       int busyTimeoutMs)
{
    static std::atomic<quint64> serial{0};
    const QString absolute = QFileInfo(path).absoluteFilePath();
    std::shared_ptr<StoreConnection> c(new StoreConnection(
        absolute, QStringLiteral("ZebStore-%1").arg(++serial)));

    const QFileInfo info(absolute);
    if (mode != Mode::OpenOrCreate && !info.exists())
        throw fileFailure(ErrorNumber::PathFileAccessError, absolute,
                          QStringLiteral("does not exist"));
    if (info.exists() && !info.isFile())
        throw fileFailure(ErrorNumber::PathFileAccessError, absolute,
                          QStringLiteral("is a folder, not a file"));
    if (mode == Mode::OpenOrCreate && !info.exists() && !QDir().mkpath(info.absolutePath()))
        throw fileFailure(ErrorNumber::PathFileAccessError, absolute,
                          QStringLiteral("cannot be created: its folder cannot be made"));

    c->m_db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), c->m_name);
    if (!c->m_db.isValid())
        throw Failure(ErrorNumber::CannotCreateObject, kSource,
                      QStringLiteral("The SQLite driver of Qt SQL is not installed, so the "
                                     "database file \"%1\" cannot be opened")
                          .arg(QDir::toNativeSeparators(absolute)));
    c->m_db.setDatabaseName(absolute);
    QString options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(busyTimeoutMs);
    if (mode == Mode::ReadOnly)
        options += QStringLiteral(";QSQLITE_OPEN_READONLY");
    c->m_db.setConnectOptions(options);
    if (!c->m_db.open())
        throw c->failure(c->m_db.lastError());
    c->prepareFile(mode);
    return c;
}

void StoreConnection::prepareFile(Mode mode)
{
    run(QStringLiteral("PRAGMA foreign_keys = ON"));
    // The first read: a file that is not a database fails here.
    const int version = value(QStringLiteral("PRAGMA user_version")).toInt();
    checkVersion(version);
    const QString check = value(QStringLiteral("PRAGMA quick_check")).toString();
    if (check != QLatin1String("ok"))
        throw fileFailure(ErrorNumber::BadFileFormat, m_path,
                          QStringLiteral("is damaged (%1)").arg(check));
    if (mode == Mode::ReadOnly) {
        if (version == 0 && hasTables())
            throw anotherProgram();
        if (version < StoreSchema::CurrentVersion)
            throw fileFailure(ErrorNumber::PathFileAccessError, m_path,
                              QStringLiteral("is read-only and holds %1")
                                  .arg(version == 0 ? QStringLiteral("no data yet")
                                                    : QStringLiteral("an older schema that "
                                                                     "needs an upgrade")));
        return;
    }
    // Readers never wait for the writer, and a commit is one append to the log. The log is
    // flushed to the disk at checkpoints, not at every commit: a commit survives the program
    // being killed at once; a power cut may take the last commits back, never the file's
    // consistency. That keeps a check box's write within a couple of milliseconds.
    run(QStringLiteral("PRAGMA journal_mode = WAL"));
    run(QStringLiteral("PRAGMA synchronous = NORMAL"));
    if (version == StoreSchema::CurrentVersion)
        return;
    write([&] {
        // Asked again under the write lock: another program may have set the file up meanwhile.
        const int now = value(QStringLiteral("PRAGMA user_version")).toInt();
        checkVersion(now);
        if (now == 0) {
            if (hasTables())
                throw anotherProgram();
            StoreSchema::create(*this);
        } else if (now < StoreSchema::CurrentVersion) {
            StoreSchema::migrate(*this, now);
        }
    });
}

void StoreConnection::checkVersion(int version) const
{
    if (version > StoreSchema::CurrentVersion)
        throw fileFailure(ErrorNumber::BadFileFormat, m_path,
                          QStringLiteral("was written by a newer version of the program (schema "
                                         "version %1; this program reads up to version %2)")
                              .arg(version)
                              .arg(StoreSchema::CurrentVersion));
}

bool StoreConnection::hasTables()
{
    return value(QStringLiteral("SELECT COUNT(*) FROM sqlite_master")).toInt() > 0;
}

Failure StoreConnection::anotherProgram() const
{
    return fileFailure(ErrorNumber::BadFileFormat, m_path,
                       QStringLiteral("is a database of another program"));
}

Failure StoreConnection::failure(const QSqlError& error) const
{
    const QString cause = error.databaseText().isEmpty() ? error.text() : error.databaseText();
    switch (error.nativeErrorCode().toInt()) {
    case Busy:
    case Locked:
        return fileFailure(ErrorNumber::PermissionDenied, m_path,
                           QStringLiteral("is locked by another writer (%1)").arg(cause));
    case ReadOnly:
        return fileFailure(ErrorNumber::PathFileAccessError, m_path,
                           QStringLiteral("is read-only: the change cannot be saved (%1)")
                               .arg(cause));
    case Perm:
        return fileFailure(ErrorNumber::PermissionDenied, m_path,
                           QStringLiteral("may not be accessed (%1)").arg(cause));
    case Full:
        return fileFailure(ErrorNumber::DiskFull, m_path,
                           QStringLiteral("cannot grow: the disk is full (%1)").arg(cause));
    case Corrupt:
        return fileFailure(ErrorNumber::BadFileFormat, m_path,
                           QStringLiteral("is damaged (%1)").arg(cause));
    case NotADb:
        return fileFailure(ErrorNumber::BadFileFormat, m_path,
                           QStringLiteral("is not a database (%1)").arg(cause));
    case CantOpen:
        return fileFailure(ErrorNumber::PathFileAccessError, m_path,
                           QStringLiteral("cannot be opened (%1)").arg(cause));
    case IoErr:
        return fileFailure(ErrorNumber::DeviceIOError, m_path,
                           QStringLiteral("could not be read or written (%1)").arg(cause));
    default:
        return fileFailure(ErrorNumber::InternalError, m_path,
                           QStringLiteral("answered an error (%1)").arg(cause));
    }
}

QSqlQuery& StoreConnection::exec(const QString& sql, const QVariantList& args)
{
    auto it = m_statements.find(sql);
    if (it == m_statements.end()) {
        QSqlQuery q(m_db);
        q.setForwardOnly(true);
        if (!q.prepare(sql))
            throw failure(q.lastError());
        it = m_statements.insert(sql, q);
    }
    QSqlQuery& q = *it;
    for (qsizetype i = 0; i < args.size(); ++i) {
        // A null text is still text: the columns take empty text, never NULL.
        const QVariant& arg = args[i];
        if (arg.typeId() == QMetaType::QString && arg.toString().isNull())
            q.bindValue(int(i), QStringLiteral(""));
        else
            q.bindValue(int(i), arg);
    }
    if (!q.exec()) {
        const Failure f = failure(q.lastError());
        q.finish();
        throw f;
    }
    return q;
}

void StoreConnection::run(const QString& sql, const QVariantList& args)
{
    exec(sql, args).finish();
}

QVariant StoreConnection::value(const QString& sql, const QVariantList& args)
{
    QSqlQuery& q = exec(sql, args);
    QVariant out;
    if (q.next())
        out = q.value(0);
    q.finish();
    return out;
}

QVariantList StoreConnection::row(const QString& sql, const QVariantList& args)
{
    QSqlQuery& q = exec(sql, args);
    QVariantList out;
    if (q.next()) {
        const int columns = q.record().count();
        out.reserve(columns);
        for (int i = 0; i < columns; ++i)
            out.append(q.value(i));
    }
    q.finish();
    return out;
}

QList<QVariantList> StoreConnection::rows(const QString& sql, const QVariantList& args)
{
    QSqlQuery& q = exec(sql, args);
    QList<QVariantList> out;
    const int columns = q.record().count();
    while (q.next()) {
        QVariantList r;
        r.reserve(columns);
        for (int i = 0; i < columns; ++i)
            r.append(q.value(i));
        out.append(std::move(r));
    }
    q.finish();
    return out;
}

qint64 StoreConnection::insert(const QString& sql, const QVariantList& args)
{
    QSqlQuery& q = exec(sql, args);
    const qint64 id = q.lastInsertId().toLongLong();
    q.finish();
    return id;
}

void StoreConnection::begin()
{
    // IMMEDIATE: the write lock is taken now, so a busy file fails before anything is changed.
    if (m_depth == 0)
        run(QStringLiteral("BEGIN IMMEDIATE"));
    ++m_depth;
}

void StoreConnection::commit()
{
    if (m_depth == 1)
        run(QStringLiteral("COMMIT"));
    --m_depth;
    if (m_depth == 0)
        ++m_commits;
}

void StoreConnection::rollback()
{
    if (m_depth == 0)
        return;
    --m_depth;
    if (m_depth == 0) {
        QSqlQuery q(m_db);
        q.exec(QStringLiteral("ROLLBACK"));
    }
}

}  // namespace ZebObjects
