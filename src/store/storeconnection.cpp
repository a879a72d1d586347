#include "store/storeconnection.h"

#include "contracts/diagnosticlog.h"
#include "contracts/runtime.h"
#include "store/storecommitwatch.h"
#include "store/storeschema.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlRecord>
#include <QDeadlineTimer>
#include <QThread>
#include <QTimer>

#include <libpq-fe.h>
#include <sqlite3.h>
#include <QRegularExpression>
#include <QUrl>
#include <QUrlQuery>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include <sys/socket.h>

#include <sys/statvfs.h>

namespace ZebObjects {

namespace {

const QString kSource = QStringLiteral("ZebObjects.Store");

// SQLite's result codes as the driver reports them: extended codes, whose low byte is the
// primary code.
enum SqliteCode {
    Perm = 3,
    Busy = 5,
    Locked = 6,
    ReadOnly = 8,
    IoErr = 10,
    Corrupt = 11,
    Full = 13,
    CantOpen = 14,
    NotADb = 26,
    ReadOnlyRecovery = 264,
    ReadOnlyCantLock = 520,
    ReadOnlyRollback = 776,
    ReadOnlyDbMoved = 1032,
    ReadOnlyCantInit = 1288,
    ReadOnlyDirectory = 1544,
    IoErrRead = 266,
    IoErrShortRead = 522,
    IoErrWrite = 778,
    IoErrFsync = 1034,
    IoErrDirFsync = 1290,
    IoErrTruncate = 1546,
    IoErrUnlock = 2058,
    IoErrRdLock = 2314,
    IoErrNoMem = 3082,
    IoErrCheckReservedLock = 3594,
    IoErrLock = 3850,
    IoErrShmOpen = 4618,
    IoErrShmSize = 4874,
    IoErrShmLock = 5130,
    IoErrShmMap = 5386,
    CantOpenNoTempDir = 270,
    CantOpenIsDir = 526,
};

// The server could not be reached (the runtime's "device unavailable").
constexpr qint32 kUnreachable = 68;
// How much longer than the server's own statement timeout the workstation waits for an answer.
constexpr int kAnswerGraceMs = 2000;

// Commits of every connection of this program: one connection's commit makes the others ask
// the database again at their next read.
std::atomic<quint64> g_commits{0};

// Less room than a few pages is a full disk.
bool diskFull(const QString& folder)
{
    struct statvfs s { };
    if (::statvfs(QFile::encodeName(folder).constData(), &s) != 0)
        return false;
    return qint64(s.f_bavail) * qint64(s.f_frsize) < 64 * 1024;
}

Failure fileFailure(qint32 number, const QString& path, const QString& cause)
{
    if (StoreDialect::isServerLocation(path))
        return Failure(number, kSource, QStringLiteral("The database \"%1\" %2").arg(path, cause));
    return Failure(
        number, kSource,
        QStringLiteral("The database file \"%1\" %2").arg(QDir::toNativeSeparators(path), cause));
}

// A value for the client library's connection settings, quoted as it reads them.
QString settingValue(const QString& value)
{
    QString quoted = value;
    quoted.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    quoted.replace(QLatin1Char('\''), QStringLiteral("\\'"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

// A name as the server reads it whole, dots and quotes included.
QString quotedIdentifier(const QString& name)
{
    QString quoted = name;
    quoted.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

}  // namespace

// Cuts the server connection when an answer is overdue, so that a call blocked on a network
// that went silent (no reset, no answer) returns as a lost connection.
class StoreConnection::AnswerWatch {
public:
    AnswerWatch() : m_thread([this] { loop(); }) { }
    ~AnswerWatch()
    {
        {
            std::lock_guard lock(m_mutex);
            m_stop = true;
        }
        m_wake.notify_all();
        m_thread.join();
    }
    AnswerWatch(const AnswerWatch&) = delete;
    AnswerWatch& operator=(const AnswerWatch&) = delete;

    void arm(int socket, std::chrono::milliseconds after)
    {
        {
            std::lock_guard lock(m_mutex);
            m_socket = socket;
            m_deadline = std::chrono::steady_clock::now() + after;
            m_armed = socket >= 0;
            m_fired = false;
        }
        m_wake.notify_all();
    }
    void disarm()
    {
        std::lock_guard lock(m_mutex);
        m_armed = false;
    }
    bool fired()
    {
        std::lock_guard lock(m_mutex);
        return m_fired;
    }

private:
    void loop()
    {
        std::unique_lock lock(m_mutex);
        while (!m_stop) {
            if (!m_armed) {
                m_wake.wait(lock);
                continue;
            }
            const auto deadline = m_deadline;
            m_wake.wait_until(lock, deadline);
            if (m_armed && !m_stop && m_deadline == deadline
                && std::chrono::steady_clock::now() >= deadline) {
                ::shutdown(m_socket, SHUT_RDWR);
                m_armed = false;
                m_fired = true;
            }
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_wake;
    int m_socket = -1;
    std::chrono::steady_clock::time_point m_deadline;
    bool m_armed = false;
    bool m_fired = false;
    bool m_stop = false;
    std::thread m_thread;
};

// While it lives, an answer of the server is awaited at most the answer timeout (the outermost
// guard counts).
class AnswerGuard {
public:
    explicit AnswerGuard(StoreConnection& c) : m_c(c)
    {
        if (m_c.m_watching++ == 0)
            m_c.armWatch();
    }
    ~AnswerGuard()
    {
        if (--m_c.m_watching == 0 && m_c.m_watch)
            m_c.m_watch->disarm();
    }
    AnswerGuard(const AnswerGuard&) = delete;
    AnswerGuard& operator=(const AnswerGuard&) = delete;

private:
    StoreConnection& m_c;
};

void StoreConnection::armWatch()
{
    if (!m_watch)
        return;
    PGconn* conn = serverConnection();
    m_watch->arm(conn ? PQsocket(conn) : -1,
                 std::chrono::milliseconds(m_timeouts.answerMs + kAnswerGraceMs));
}

StoreConnection::StoreConnection(StoreDialect dialect, QString path, QString name)
    : m_dialect(dialect), m_path(std::move(path)), m_name(std::move(name))
{ }

StoreConnection::~StoreConnection()
{
    m_commitWatch.reset();
    if (m_dialect.isServer()) {
        if (m_db.isValid() && m_depth > 0 && !m_lost) {
            AnswerGuard guard(*this);
            QSqlQuery q(m_db);
            q.exec(QStringLiteral("ROLLBACK"));
        }
        // The session's prepared statements end with it: none is freed one by one.
        dropServerConnection();
        m_watch.reset();
        return;
    }
    m_direct = QSqlQuery();
    m_nothing = QSqlQuery();
    m_statements.clear();
    // The driver closes the file only when no statement of it is left.
    finalizeFileStatements();
    if (m_db.isValid())
        m_db.close();
    m_db = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_name);
}

void StoreConnection::addServerDatabase()
{
    m_db = QSqlDatabase::addDatabase(m_dialect.driver(), m_name);
    if (!m_db.isValid())
        throw Failure(ErrorNumber::CannotCreateObject, kSource,
                      QStringLiteral("The PostgreSQL driver of Qt SQL is not installed (Debian "
                                     "package libqt6sql6-psql), so the database \"%1\" cannot be "
                                     "opened")
                          .arg(m_path));
    const StoreLocation& l = m_location;
    m_db.setUserName(l.user());
    m_db.setPassword(l.password());
    m_db.setHostName(l.host());
    m_db.setDatabaseName(l.database());
    // A server that does not answer fails the connection within seconds, and a connection
    // whose network went away is noticed by the system within seconds too. Parameters of the
    // location come after these and win (sslmode=require, keepalives_idle=30, ...).
    QStringList options{
        QStringLiteral("connect_timeout=%1").arg(m_timeouts.connectSeconds),
        QStringLiteral("keepalives=1"),
        QStringLiteral("keepalives_idle=5"),
        QStringLiteral("keepalives_interval=2"),
        QStringLiteral("keepalives_count=3"),
        QStringLiteral("tcp_user_timeout=%1").arg(m_timeouts.answerMs + kAnswerGraceMs),
        QStringLiteral("fallback_application_name=zeb-store"),
    };
    if (l.ports().size() > 1) {
        QStringList ports;
        for (int port : l.ports())
            ports << QString::number(port);
        options << QStringLiteral("port=") + settingValue(ports.join(QLatin1Char(',')));
    } else {
        m_db.setPort(l.port());
    }
    for (const auto& [key, value] : l.parameters())
        options << key + QLatin1Char('=') + settingValue(value);
    m_db.setConnectOptions(options.join(QLatin1Char(';')));
}

void StoreConnection::dropServerConnection()
{
    if (m_watch)
        m_watch->disarm();
    if (m_commitWatch)
        m_commitWatch->stopListening();
    // The driver goes before the statements: a statement outliving its driver sends nothing,
    // so a lost connection is not asked to free each of them (and does not complain of it).
    QHash<QString, QSqlQuery> statements;
    statements.swap(m_statements);
    QSqlQuery direct = std::move(m_direct);
    m_direct = QSqlQuery();
    if (m_db.isValid())
        m_db.close();
    m_db = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_name);
}

std::shared_ptr<StoreConnection> StoreConnection::open(const QString& path, Mode mode,
                                                       const Timeouts& timeouts)
{
    static std::atomic<quint64> serial{0};
    const StoreLocation location = StoreLocation::parse(path);
    if (location.isServer()) {
        std::shared_ptr<StoreConnection> c(
            new StoreConnection(StoreDialect(StoreDialect::Kind::Postgres), location.shown(),
                                QStringLiteral("ZebStore-%1").arg(++serial)));
        c->m_location = location;
        c->m_timeouts = timeouts;
        c->m_watch = std::make_unique<AnswerWatch>();
        c->addServerDatabase();
        c->openServer(mode);
        return c;
    }
    const int busyTimeoutMs = timeouts.lockMs;
    const QString absolute = QFileInfo(path).absoluteFilePath();
    std::shared_ptr<StoreConnection> c(
        new StoreConnection(StoreDialect(StoreDialect::Kind::Sqlite), absolute,
                            QStringLiteral("ZebStore-%1").arg(++serial)));

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

    c->m_db = QSqlDatabase::addDatabase(c->m_dialect.driver(), c->m_name);
    if (!c->m_db.isValid())
        throw Failure(ErrorNumber::CannotCreateObject, kSource,
                      QStringLiteral("The SQLite driver of Qt SQL is not installed, so the "
                                     "database file \"%1\" cannot be opened")
                          .arg(QDir::toNativeSeparators(absolute)));
    c->m_db.setDatabaseName(absolute);
    c->m_readOnly = mode == Mode::ReadOnly;
    QString options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(busyTimeoutMs);
    if (mode == Mode::ReadOnly) {
        options += QStringLiteral(";QSQLITE_OPEN_READONLY");
        // In a folder nobody here may write, no log is kept beside a file that was closed
        // cleanly, and none can be made: the file is read as it stands.
        if (!QFileInfo(info.absolutePath()).isWritable()
            && !QFileInfo::exists(absolute + QStringLiteral("-wal"))) {
            QUrl uri = QUrl::fromLocalFile(absolute);
            uri.setQuery(QStringLiteral("immutable=1"));
            c->m_db.setDatabaseName(uri.toString(QUrl::FullyEncoded));
            options += QStringLiteral(";QSQLITE_OPEN_URI");
        }
    }
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
    const int version = m_dialect.schemaVersion(*this);
    checkVersion(version);
    checkWhole(QStringLiteral("quick_check"));
    if (mode == Mode::ReadOnly) {
        prepareSchema(mode, version);
        return;
    }
    // Readers never wait for the writer, and a commit is one append to the log. The log is
    // flushed to the disk at checkpoints, not at every commit: a commit survives the program
    // being killed at once; a power cut may take the last commits back, never the file's
    // consistency. That keeps a check box's write within a couple of milliseconds.
    run(QStringLiteral("PRAGMA journal_mode = WAL"));
    run(QStringLiteral("PRAGMA synchronous = NORMAL"));
    prepareSchema(mode, version);
}

void StoreConnection::checkWhole(const QString& check)
{
    // The check answers "ok", or its findings: a row each, or several in one row, one a line,
    // under a heading that names the schema.
    QStringList problems;
    for (const QVariantList& r : rows(QStringLiteral("PRAGMA %1").arg(check)))
        for (const QString& line :
             r.value(0).toString().split(QLatin1Char('\n'), Qt::SkipEmptyParts))
            if (!line.startsWith(QLatin1String("*** in database")))
                problems.append(line.trimmed());
    if (problems.isEmpty() || (problems.size() == 1 && problems.first() == QLatin1String("ok")))
        return;
    // The first finding goes into the message; the rest, up to a hundred, into the log.
    QString cause = problems.first();
    if (problems.size() > 1) {
        cause += QStringLiteral("; %1 more in the diagnostic log").arg(problems.size() - 1);
        const auto log = Runtime::diagnosticLog();
        for (qsizetype i = 1; i < problems.size(); ++i)
            log->LogError(kSource, QStringLiteral("checkWhole"),
                          ErrorInfo{ErrorNumber::BadFileFormat, kSource,
                                    QStringLiteral("The database file \"%1\" is damaged: %2")
                                        .arg(QDir::toNativeSeparators(m_path), problems[i])},
                          0);
    }
    throw fileFailure(ErrorNumber::BadFileFormat, m_path,
                      QStringLiteral("is damaged (%1)").arg(cause));
}

void StoreConnection::prepareSchema(Mode mode, int version)
{
    checkVersion(version);
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
    if (version == StoreSchema::CurrentVersion)
        return;
    write([&] {
        // Asked again under the write lock: another program may have set the file up meanwhile.
        const int now = m_dialect.schemaVersion(*this);
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
    return m_dialect.hasTables(*this);
}

void StoreConnection::openServer(Mode mode)
{
    m_readOnly = mode == Mode::ReadOnly;
    if (!m_db.open()) {
        const QString cause = m_db.lastError().text();
        if (mode != Mode::OpenOrCreate)
            throw refusedOrUnreachable(cause);
        // The server may answer and lack only the database: it is made, when the user may.
        const QString maintenance = m_name + QStringLiteral("-create");
        bool made = false;
        QString failed;
        {
            QSqlDatabase admin = QSqlDatabase::cloneDatabase(m_db, maintenance);
            admin.setDatabaseName(QStringLiteral("postgres"));
            if (admin.open()) {
                QSqlQuery q(admin);
                q.prepare(QStringLiteral("SELECT 1 FROM pg_database WHERE datname = ?"));
                q.addBindValue(m_db.databaseName());
                if (q.exec() && !q.next()) {
                    made = q.exec(QStringLiteral("CREATE DATABASE %1")
                                      .arg(quotedIdentifier(m_db.databaseName())));
                    if (!made)
                        failed = q.lastError().text();
                }
                q.finish();
            }
            admin.close();
            admin = QSqlDatabase();
            QSqlDatabase::removeDatabase(maintenance);
        }
        if (!failed.isEmpty())
            throw fileFailure(
                ErrorNumber::PathFileAccessError, m_path,
                QStringLiteral("does not exist and cannot be created (%1)").arg(failed.trimmed()));
        if (!made || !m_db.open())
            throw refusedOrUnreachable(made ? m_db.lastError().text() : cause);
    }
    startSession();
    prepareSchema(mode, m_dialect.schemaVersion(*this));
}

Failure StoreConnection::refusedOrUnreachable(const QString& cause) const
{
    // The driver keeps no trace of why a connection failed: the client library is asked again
    // on its own, and tells whether the server wanted a password and did not take it.
    const StoreLocation& l = m_location;
    QList<QByteArray> keys{"host", "dbname", "user", "password", "connect_timeout"};
    QList<QByteArray> values{l.host().toUtf8(), l.database().toUtf8(), l.user().toUtf8(),
                             l.password().toUtf8(), QByteArray::number(m_timeouts.connectSeconds)};
    QStringList ports;
    for (int port : l.ports())
        ports << QString::number(port);
    keys << "port";
    values << (ports.isEmpty() ? QByteArray::number(StoreLocation::kDefaultPort)
                               : ports.join(QLatin1Char(',')).toUtf8());
    for (const auto& [key, value] : l.parameters()) {
        keys << key.toUtf8();
        values << value.toUtf8();
    }
    std::vector<const char*> k;
    std::vector<const char*> v;
    for (qsizetype i = 0; i < keys.size(); ++i)
        if (!values[i].isEmpty()) {
            k.push_back(keys[i].constData());
            v.push_back(values[i].constData());
        }
    k.push_back(nullptr);
    v.push_back(nullptr);
    PGconn* probe = PQconnectdbParams(k.data(), v.data(), 0);
    const bool refused = probe && PQstatus(probe) != CONNECTION_OK
                         && (PQconnectionUsedPassword(probe) || PQconnectionNeedsPassword(probe));
    const QString why = probe && PQstatus(probe) != CONNECTION_OK
                            ? QString::fromLocal8Bit(PQerrorMessage(probe)).trimmed()
                            : cause.trimmed();
    PQfinish(probe);
    if (refused)
        return Failure(ErrorNumber::PermissionDenied, kSource,
                       QStringLiteral("The database server of \"%1\" refused the user \"%2\": "
                                      "the password is wrong or missing. Give the right password "
                                      "in ~/.pgpass or in the location, or ask whoever runs the "
                                      "server (%3)")
                           .arg(m_path, l.user(), why));
    return Failure(kUnreachable, kSource,
                   QStringLiteral("The database server of \"%1\" cannot be reached, so the "
                                  "office cannot be opened; check the location and that the "
                                  "server runs, then start again (%2)")
                       .arg(m_path, why));
}

void StoreConnection::startSession()
{
    // Session settings run before anything else, so they never meet a lost connection twice.
    AnswerGuard guard(*this);
    QSqlQuery q(m_db);
    q.exec(QStringLiteral("SET client_min_messages = warning"));
    // A writer waits this long for the office's write lock before it fails; no statement of
    // ours runs longer than the answer timeout; a session that stops talking inside a
    // transaction is ended, so its write lock goes free; and the server notices a workstation
    // whose network went away as soon as the workstation notices the server.
    q.exec(QStringLiteral("SET lock_timeout = %1").arg(m_timeouts.lockMs));
    q.exec(QStringLiteral("SET statement_timeout = %1").arg(m_timeouts.answerMs));
    q.exec(QStringLiteral("SET idle_in_transaction_session_timeout = %1")
               .arg(m_timeouts.idleInTransactionMs));
    q.exec(QStringLiteral("SET tcp_keepalives_idle = 5"));
    q.exec(QStringLiteral("SET tcp_keepalives_interval = 2"));
    q.exec(QStringLiteral("SET tcp_keepalives_count = 3"));
    if (m_readOnly)
        q.exec(QStringLiteral("SET default_transaction_read_only = on"));
    q.finish();
    if (m_commitWatch)
        m_commitWatch->listen();
}

bool StoreConnection::connectServer()
{
    dropServerConnection();
    addServerDatabase();
    if (!m_db.open())
        return false;
    m_lost = false;
    if (m_watching > 0)
        armWatch();
    startSession();
    if (m_commitWatch)
        QTimer::singleShot(0, m_db.driver(), [this] {
            if (m_commitWatch)
                m_commitWatch->tell();
        });
    return true;
}

void StoreConnection::lose()
{
    dropServerConnection();
    m_lost = true;
    forgetState();
}

Failure StoreConnection::unreachable(const QString& cause) const
{
    const QString why = m_watch && m_watch->fired()
                            ? QStringLiteral("no answer within %1 seconds")
                                  .arg((m_timeouts.answerMs + kAnswerGraceMs) / 1000.0)
                            : cause.trimmed();
    return Failure(kUnreachable, kSource,
                   QStringLiteral("The database server of \"%1\" cannot be reached, so nothing "
                                  "was read or saved; work goes on once the server answers "
                                  "again (%2)")
                       .arg(m_path, why));
}

bool StoreConnection::watchCommits(std::function<void()> onCommit)
{
    if (!m_dialect.isServer())
        return false;
    if (!m_commitWatch)
        m_commitWatch = std::make_unique<StoreCommitWatch>(*this);
    m_commitWatch->setOnCommit(std::move(onCommit));
    if (!m_lost && !m_commitWatch->listening())
        m_commitWatch->listen();
    return true;
}

PGconn* StoreConnection::serverConnection() const
{
    const QVariant handle = m_db.driver() ? m_db.driver()->handle() : QVariant();
    // The driver names the handle's type by the client library's typedef or by its struct.
    if (!handle.isValid()
        || (qstrcmp(handle.typeName(), "PGconn*") != 0
            && qstrcmp(handle.typeName(), "pg_conn*") != 0))
        return nullptr;
    return *static_cast<PGconn* const*>(handle.constData());
}

bool StoreConnection::execAwaited(const QString& sql)
{
    AnswerGuard guard(*this);
    QSqlQuery q(m_db);
    return q.exec(sql);
}

Failure StoreConnection::anotherProgram() const
{
    return fileFailure(ErrorNumber::BadFileFormat, m_path,
                       QStringLiteral("is a database of another program"));
}

Failure StoreConnection::failure(const QSqlError& error) const
{
    const QString cause = error.databaseText().isEmpty() ? error.text() : error.databaseText();
    if (m_dialect.isServer()) {
        if (m_dialect.isConnectionLost(error))
            return unreachable(cause);
        if (m_dialect.isLockTimeout(error))
            return fileFailure(
                ErrorNumber::PermissionDenied, m_path,
                QStringLiteral("is locked by another writer (%1)").arg(cause.trimmed()));
        if (error.nativeErrorCode() == QLatin1String("25006"))
            return fileFailure(ErrorNumber::PathFileAccessError, m_path,
                               QStringLiteral("is read-only: the change cannot be saved (%1)")
                                   .arg(cause.trimmed()));
        return fileFailure(ErrorNumber::InternalError, m_path,
                           QStringLiteral("answered an error (%1)").arg(cause.trimmed()));
    }
    return sqliteFailure(error.nativeErrorCode().toInt(), m_path, cause);
}

Failure StoreConnection::sqliteFailure(int code, const QString& path, const QString& cause)
{
    const QString folder = QDir::toNativeSeparators(QFileInfo(path).absolutePath());
    const QString shm = QDir::toNativeSeparators(path + QStringLiteral("-shm"));
    const auto file = [&](qint32 number, const QString& what) {
        return fileFailure(number, path, QStringLiteral("%1 (%2)").arg(what, cause));
    };
    // A file that cannot grow on a full disk may fail as an I/O error (its shared memory, its
    // log): the disk says which it is.
    if ((code & 0xff) == IoErr && diskFull(folder))
        return file(ErrorNumber::DiskFull, QStringLiteral("cannot grow: the disk is full"));
    // The extended code says more than its primary one (its low byte): which file or folder.
    switch (code) {
    case ReadOnlyDirectory:
        return file(
            ErrorNumber::PermissionDenied,
            QStringLiteral("cannot be changed: its folder \"%1\" is read-only").arg(folder));
    case ReadOnlyDbMoved:
        return file(ErrorNumber::PathFileAccessError,
                    QStringLiteral("was moved or deleted while it was open: the change cannot be "
                                   "saved"));
    case ReadOnlyRecovery:
    case ReadOnlyCantLock:
    case ReadOnlyCantInit:
        return file(ErrorNumber::PermissionDenied,
                    QStringLiteral("cannot be changed: its shared-memory file \"%1\" cannot be "
                                   "written")
                        .arg(shm));
    case ReadOnlyRollback:
        return file(ErrorNumber::PathFileAccessError,
                    QStringLiteral("is read-only and holds an unfinished change that only a "
                                   "writer can take back"));
    case IoErrRead:
    case IoErrShortRead:
        return file(ErrorNumber::DeviceIOError, QStringLiteral("could not be read from the disk"));
    case IoErrWrite:
    case IoErrTruncate:
    case IoErrFsync:
        return file(ErrorNumber::DeviceIOError, QStringLiteral("could not be written to the disk"));
    case IoErrDirFsync:
        return file(ErrorNumber::DeviceIOError,
                    QStringLiteral("could not be made durable: its folder \"%1\" could not be "
                                   "written to the disk")
                        .arg(folder));
    case IoErrShmOpen:
    case IoErrShmSize:
    case IoErrShmLock:
    case IoErrShmMap:
        return file(ErrorNumber::DeviceIOError,
                    QStringLiteral("could not be shared: its shared-memory file \"%1\" could not "
                                   "be opened or written")
                        .arg(shm));
    case IoErrLock:
    case IoErrRdLock:
    case IoErrUnlock:
    case IoErrCheckReservedLock:
        return file(ErrorNumber::PermissionDenied, QStringLiteral("could not be locked"));
    case IoErrNoMem:
        return file(ErrorNumber::OutOfMemory, QStringLiteral("could not be read: out of memory"));
    case CantOpenIsDir:
        return file(ErrorNumber::PathFileAccessError, QStringLiteral("is a folder, not a file"));
    case CantOpenNoTempDir:
        return file(ErrorNumber::PathFileAccessError,
                    QStringLiteral("cannot be opened: there is no folder for temporary files"));
    default: break;
    }
    switch (code & 0xff) {
    case Busy:
    case Locked:
        return file(ErrorNumber::PermissionDenied, QStringLiteral("is locked by another writer"));
    case ReadOnly:
        return file(ErrorNumber::PathFileAccessError,
                    QStringLiteral("is read-only: the change cannot be saved"));
    case Perm: return file(ErrorNumber::PermissionDenied, QStringLiteral("may not be accessed"));
    case Full: return file(ErrorNumber::DiskFull, QStringLiteral("cannot grow: the disk is full"));
    case Corrupt: return file(ErrorNumber::BadFileFormat, QStringLiteral("is damaged"));
    case NotADb: return file(ErrorNumber::BadFileFormat, QStringLiteral("is not a database"));
    case CantOpen:
        return file(ErrorNumber::PathFileAccessError, QStringLiteral("cannot be opened"));
    case IoErr:
        return file(ErrorNumber::DeviceIOError, QStringLiteral("could not be read or written"));
    default: return file(ErrorNumber::InternalError, QStringLiteral("answered an error"));
    }
}

QSqlQuery& StoreConnection::exec(const QString& sql, const QVariantList& args)
{
    ++m_statementCount;
    if (m_depth > 0 && !sql.startsWith(QLatin1String("SELECT")))
        m_stateInWrite = false;
    try {
        return execOnce(sql, args);
    } catch (const Failure& f) {
        // Kept for the write this statement belongs to, which tells how it ended.
        m_writeFailure = std::make_unique<Failure>(f);
        throw;
    }
}

bool StoreConnection::changesNothing(const QString& sql, const QVariantList& args)
{
    // "UPDATE t SET a = ?, b = ? WHERE k = ?" changes nothing when the row already holds the
    // values (or is not there); any other change is taken as one.
    static const QRegularExpression update(
        QStringLiteral("^UPDATE (\\w+) SET (\\w+ = \\?(?:, \\w+ = \\?)*) WHERE (\\w+) = \\?$"));
    const QRegularExpressionMatch m = update.match(sql);
    if (!m.hasMatch())
        return false;
    const QStringList columns = m.captured(2).split(QStringLiteral(", "));
    if (columns.size() + 1 != args.size())
        return false;
    QStringList differs;
    QVariantList probe{args.last()};
    for (qsizetype i = 0; i < columns.size(); ++i) {
        differs.append(columns[i].chopped(4) + QStringLiteral(" IS NOT ?"));
        probe.append(args[i]);
    }
    return value(QStringLiteral("SELECT COUNT(*) FROM %1 WHERE %2 = ? AND (%3)")
                     .arg(m.captured(1), m.captured(3), differs.join(QStringLiteral(" OR "))),
                 probe)
               .toInt()
           == 0;
}

QSqlQuery& StoreConnection::execOnce(const QString& sql, const QVariantList& args)
{
    // A read-only file takes a write that would leave it as it is (a control writing back
    // what it shows) as done; any real change fails.
    if (m_readOnly && !m_dialect.isServer() && m_depth > 0
        && !sql.startsWith(QLatin1String("SELECT")) && !sql.startsWith(QLatin1String("PRAGMA"))
        && sql != QLatin1String("COMMIT")) {
        if (!changesNothing(sql, args))
            throw readOnlyFailure();
        m_nothing = QSqlQuery(m_db);
        m_nothing.exec(QStringLiteral("SELECT 0 WHERE 0"));
        return m_nothing;
    }
    // Outside a transaction nothing is lost by running a statement again on a new connection.
    for (bool again = m_depth == 0;; again = false) {
        if (m_lost && !connectServer()) {
            const QString cause = m_db.lastError().text();
            m_db.close();
            throw unreachable(cause);
        }
        // The server prepares only queries and changes of rows; statements without arguments
        // (transactions, announcements, tables) run as they are.
        if (args.isEmpty() && m_dialect.isServer()) {
            m_direct = QSqlQuery(m_db);
            m_direct.setForwardOnly(true);
            if (m_direct.exec(sql)) {
                if (m_commitWatch)
                    m_commitWatch->announcementsMayWait();
                return m_direct;
            }
            const QSqlError error = m_direct.lastError();
            const Failure f = failure(error);
            m_direct.finish();
            if (m_dialect.isConnectionLost(error)) {
                lose();
                if (again)
                    continue;
            }
            throw f;
        }
        auto it = m_statements.find(sql);
        if (it == m_statements.end()) {
            QSqlQuery q(m_db);
            q.setForwardOnly(true);
            if (!q.prepare(sql)) {
                const QSqlError error = q.lastError();
                if (!m_dialect.isConnectionLost(error))
                    throw failure(error);
                lose();
                if (again)
                    continue;
                throw failure(error);
            }
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
        if (q.exec()) {
            // A change of rows in a write; what SQLite answers for any other statement is the
            // count of the last change before it.
            if (m_depth > 0 && !m_dialect.isServer()
                && (sql.startsWith(QLatin1String("UPDATE"))
                    || sql.startsWith(QLatin1String("INSERT"))
                    || sql.startsWith(QLatin1String("DELETE")))
                && q.numRowsAffected() != 0)
                m_rowsChanged = true;
            if (m_commitWatch)
                m_commitWatch->announcementsMayWait();
            return q;
        }
        const QSqlError error = q.lastError();
        const Failure f = failure(error);
        q.finish();
        if (m_dialect.isConnectionLost(error)) {
            lose();
            if (again)
                continue;
        }
        throw f;
    }
}

void StoreConnection::drain(QSqlQuery& q)
{
    // The server's answer is read to its end: a server connection holds back what comes
    // after an answer read in part, announcements of other workstations' commits included.
    if (m_dialect.isServer())
        while (q.next()) { }
    q.finish();
}

void StoreConnection::run(const QString& sql, const QVariantList& args)
{
    AnswerGuard guard(*this);
    exec(sql, args).finish();
}

QVariant StoreConnection::value(const QString& sql, const QVariantList& args)
{
    AnswerGuard guard(*this);
    QSqlQuery& q = exec(sql, args);
    QVariant out;
    if (q.next())
        out = q.value(0);
    drain(q);
    return out;
}

QVariantList StoreConnection::row(const QString& sql, const QVariantList& args)
{
    AnswerGuard guard(*this);
    QSqlQuery& q = exec(sql, args);
    QVariantList out;
    if (q.next()) {
        const int columns = q.record().count();
        out.reserve(columns);
        for (int i = 0; i < columns; ++i)
            out.append(q.value(i));
    }
    drain(q);
    return out;
}

QList<QVariantList> StoreConnection::rows(const QString& sql, const QVariantList& args)
{
    AnswerGuard guard(*this);
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

namespace {

// A row of the server's answer.
class QueryRow final : public StoreRow {
public:
    explicit QueryRow(const QSqlQuery& q) : m_q(q) { }
    QVariant value(int column) const override { return m_q.value(column); }

private:
    const QSqlQuery& m_q;
};

// A row of a statement on the file, read with SQLite's own accessors: the text as the file
// holds it, turned into a string once, and numbers without a variant. Values come as the
// driver gives them: whole numbers as 64-bit integers, a NULL as a null text.
class FileRow final : public StoreRow {
public:
    explicit FileRow(sqlite3_stmt* s) : m_s(s) { }
    QVariant value(int column) const override
    {
        switch (sqlite3_column_type(m_s, column)) {
        case SQLITE_INTEGER: return QVariant(qlonglong(sqlite3_column_int64(m_s, column)));
        case SQLITE_FLOAT: return QVariant(sqlite3_column_double(m_s, column));
        case SQLITE_NULL: return QVariant(QMetaType::fromType<QString>());
        case SQLITE_BLOB:
            return QByteArray(static_cast<const char*>(sqlite3_column_blob(m_s, column)),
                              sqlite3_column_bytes(m_s, column));
        default: return text(column);
        }
    }
    QString text(int column) const override
    {
        const auto* t = reinterpret_cast<const char*>(sqlite3_column_text(m_s, column));
        return t ? QString::fromUtf8(t, sqlite3_column_bytes(m_s, column)) : QString();
    }
    qint64 integer(int column) const override { return sqlite3_column_int64(m_s, column); }
    bool isNull(int column) const override
    {
        return sqlite3_column_type(m_s, column) == SQLITE_NULL;
    }

private:
    sqlite3_stmt* m_s;
};

// Binds one argument as the driver binds it.
int bindFileArgument(sqlite3_stmt* s, int index, const QVariant& arg)
{
    if (arg.isNull() && arg.typeId() != QMetaType::QString)
        return sqlite3_bind_null(s, index);
    switch (arg.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::UChar:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::ULong:
    case QMetaType::ULongLong: return sqlite3_bind_int64(s, index, arg.toLongLong());
    case QMetaType::Double:
    case QMetaType::Float: return sqlite3_bind_double(s, index, arg.toDouble());
    case QMetaType::QByteArray: {
        const QByteArray bytes = arg.toByteArray();
        return sqlite3_bind_blob(s, index, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
    }
    default: {
        // A null text is still text: the columns take empty text, never NULL.
        const QString text = arg.toString();
        return sqlite3_bind_text16(s, index,
                                   text.isNull() ? static_cast<const void*>(u"") : text.utf16(),
                                   int(text.size() * 2), SQLITE_TRANSIENT);
    }
    }
}

// Leaves a statement ready for its next use, whatever happened while it ran.
struct FileStatementReset {
    sqlite3_stmt* s;
    ~FileStatementReset()
    {
        sqlite3_reset(s);
        sqlite3_clear_bindings(s);
    }
};

}  // namespace

void StoreConnection::eachRow(const QString& sql, const QVariantList& args,
                              const std::function<void(const StoreRow&)>& each)
{
    if (!m_dialect.isServer()) {
        eachFileRow(sql, args, each);
        return;
    }
    AnswerGuard guard(*this);
    QSqlQuery& q = exec(sql, args);
    const QueryRow row(q);
    try {
        while (q.next())
            each(row);
    } catch (...) {
        drain(q);
        throw;
    }
    q.finish();
}

sqlite3* StoreConnection::fileHandle() const
{
    const QVariant handle = m_db.driver() ? m_db.driver()->handle() : QVariant();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return nullptr;
    return *static_cast<sqlite3* const*>(handle.constData());
}

void StoreConnection::finalizeFileStatements()
{
    for (sqlite3_stmt* s : std::as_const(m_fileStatements))
        sqlite3_finalize(s);
    m_fileStatements.clear();
}

void StoreConnection::eachFileRow(const QString& sql, const QVariantList& args,
                                  const std::function<void(const StoreRow&)>& each)
{
    // The driver's own connection, read without Qt SQL's copy of every value into a variant:
    // the same file, transaction, lock wait and error codes as every other statement.
    ++m_statementCount;
    sqlite3* handle = fileHandle();
    const auto failed = [&](int code) {
        m_writeFailure = std::make_unique<Failure>(
            sqliteFailure(code, m_path, QString::fromUtf8(sqlite3_errmsg(handle))));
        return *m_writeFailure;
    };
    if (!handle)
        throw failed(SQLITE_MISUSE);
    auto it = m_fileStatements.constFind(sql);
    if (it == m_fileStatements.constEnd()) {
        const QByteArray text = sql.toUtf8();
        sqlite3_stmt* s = nullptr;
        const int code = sqlite3_prepare_v3(handle, text.constData(), int(text.size()),
                                            SQLITE_PREPARE_PERSISTENT, &s, nullptr);
        if (code != SQLITE_OK) {
            sqlite3_finalize(s);
            throw failed(code);
        }
        it = m_fileStatements.insert(sql, s);
    }
    sqlite3_stmt* s = *it;
    const FileStatementReset reset{s};
    for (qsizetype i = 0; i < args.size(); ++i) {
        const int code = bindFileArgument(s, int(i + 1), args[i]);
        if (code != SQLITE_OK)
            throw failed(code);
    }
    const FileRow row(s);
    for (;;) {
        const int code = sqlite3_step(s);
        if (code == SQLITE_DONE)
            return;
        if (code != SQLITE_ROW)
            throw failed(sqlite3_extended_errcode(handle));
        each(row);
    }
}

qint64 StoreConnection::insert(const QString& sql, const QVariantList& args)
{
    AnswerGuard guard(*this);
    QString statement = sql;
    if (m_dialect.insertAnswersId(statement))
        return value(statement, args).toLongLong();
    QSqlQuery& q = exec(sql, args);
    const qint64 id = q.lastInsertId().toLongLong();
    q.finish();
    return id;
}

void StoreConnection::seal()
{
    if (m_dialect.isServer())
        return;
    // Each step answers what it did; a full disk shows as a failed step or as a log that
    // could not be written into the file.
    const QVariantList done = row(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    if (done.size() < 3 || done[0].toInt() != 0 || done[1].toInt() != done[2].toInt())
        throw fileFailure(ErrorNumber::PermissionDenied, m_path,
                          QStringLiteral("could not take in its log: another program is using it"));
    const QString mode = value(QStringLiteral("PRAGMA journal_mode = DELETE")).toString();
    if (mode.compare(QLatin1String("delete"), Qt::CaseInsensitive) != 0
        || QFileInfo::exists(m_path + QStringLiteral("-wal")))
        throw fileFailure(ErrorNumber::DeviceIOError, m_path,
                          QStringLiteral("could not leave its log (journal mode %1)").arg(mode));
    checkWhole(QStringLiteral("quick_check"));
}

bool StoreConnection::settle(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists() || info.size() == 0)
        return false;
    static std::atomic<quint64> serial{0};
    const QString name = QStringLiteral("ZebStoreSettle-%1").arg(++serial);
    bool database = false;
    std::unique_ptr<Failure> failed;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(info.absoluteFilePath());
        db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=2000"));
        if (db.open()) {
            QSqlQuery q(db);
            if (q.exec(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)")) && q.next()) {
                database = true;
                if (q.value(0).toInt() != 0)
                    failed = std::make_unique<Failure>(
                        fileFailure(ErrorNumber::PermissionDenied, info.absoluteFilePath(),
                                    QStringLiteral("is in use by another program")));
            } else {
                const int code = q.lastError().nativeErrorCode().toInt() & 0xff;
                // A file that is no database, or a damaged one, has nothing to keep; any other
                // failure (a full disk, a read-only folder) leaves it as it is.
                if (code != NotADb && code != Corrupt)
                    failed = std::make_unique<Failure>(
                        sqliteFailure(q.lastError().nativeErrorCode().toInt(),
                                      info.absoluteFilePath(), q.lastError().databaseText()));
            }
            q.finish();
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(name);
    if (failed)
        throw *failed;
    return database;
}

Failure StoreConnection::readOnlyFailure() const
{
    return fileFailure(
        ErrorNumber::PathFileAccessError, m_path,
        QStringLiteral("is read-only: the change cannot be saved (it is open read-only)"));
}

void StoreConnection::watchWrites(std::function<void(const Failure*)> onWrite)
{
    m_onWrite = std::move(onWrite);
}

Failure StoreConnection::refused(const Failure& failure) const
{
    if (m_onWrite)
        m_onWrite(&failure);
    return failure;
}

void StoreConnection::writeEnded(bool committed)
{
    if (!m_onWrite)
        return;
    if (committed) {
        // A write that changed nothing committed nothing: there is nothing to tell.
        if (m_changedSomething)
            m_onWrite(nullptr);
    } else if (m_writeFailure)
        m_onWrite(m_writeFailure.get());
}

quint64 StoreConnection::snapshot()
{
    // Inside a write the reads see the write's own changes; and without an event loop nothing
    // would ever end the snapshot.
    if (m_depth > 0 || !QCoreApplication::instance())
        return 0;
    if (m_snapshot == 0) {
        m_snapshot = ++m_lastSnapshot;
        if (!m_snapshotEnd)
            m_snapshotEnd = std::make_unique<QObject>();
        QTimer::singleShot(0, m_snapshotEnd.get(), [this] { endSnapshot(); });
    }
    return m_snapshot;
}

void StoreConnection::endSnapshot()
{
    m_snapshot = 0;
}

quint64 StoreConnection::state()
{
    if (m_depth > 0) {
        if (m_dialect.isServer())
            return 0;
        // The write lock keeps other writers out: only this write's own changes count.
        if (!m_stateInWrite) {
            readState();
            m_stateInWrite = true;
        }
        return m_state;
    }
    const quint64 commits = g_commits.load(std::memory_order_relaxed);
    if (m_depth == 0 && m_state != 0 && holds(m_stateSnapshot) && m_stateCommits == commits)
        return m_state;
    readState();
    if (m_depth == 0) {
        m_stateSnapshot = snapshot();
        m_stateCommits = commits;
    }
    return m_state;
}

quint64 StoreConnection::stateAfterWrite()
{
    // The server's snapshot moves with this very commit: what was kept is read again.
    if (m_depth == 0 || m_dialect.isServer())
        return 0;
    return state();
}

QString StoreConnection::stateAlong() const
{
    // Outside a write on a file whose state is not known yet in this pass of the event loop.
    if (m_dialect.isServer() || m_depth > 0
        || (m_state != 0 && holds(m_stateSnapshot)
            && m_stateCommits == g_commits.load(std::memory_order_relaxed)))
        return QString();
    return QStringLiteral(", (SELECT data_version FROM pragma_data_version), total_changes()");
}

bool StoreConnection::keep(quint64& kept,
                           const std::function<void(const QString& along, quint64& state)>& read)
{
    // Nothing kept yet: the state comes along with the first read.
    const QString along = kept == 0 ? stateAlong() : QString();
    quint64 now = along.isEmpty() ? state() : 0;
    if (along.isEmpty()) {
        if (now == 0)
            return false;
        if (now == kept)
            return true;
    }
    kept = 0;
    read(along, now);
    kept = now != 0 ? now : state();
    return kept != 0;
}

quint64 StoreConnection::stateRead(const QVariantList& token)
{
    const quint64 commits = g_commits.load(std::memory_order_relaxed);
    if (token != m_stateToken || m_state == 0) {
        m_stateToken = token;
        ++m_state;
    }
    m_stateSnapshot = snapshot();
    m_stateCommits = commits;
    return m_state;
}

void StoreConnection::readState()
{
    const QVariantList token = row(m_dialect.stateQuery());
    if (token.isEmpty() || token != m_stateToken || m_state == 0) {
        m_stateToken = token;
        ++m_state;
    }
}

void StoreConnection::forgetState()
{
    m_stateInWrite = false;
    m_stateToken.clear();
    ++m_state;
    m_stateSnapshot = 0;
}

void StoreConnection::setColumn(const QString& table, const QString& column,
                                const QString& keyColumn, const QVariant& key,
                                const QVariant& value, const QVariant& current)
{
    if (current == value)
        return;
    // Another workstation may have written the same value since: then no row changes.
    write([&] {
        run(QStringLiteral("UPDATE %1 SET %2 = ? WHERE %3 = ? AND %2 <> ?")
                .arg(table, column, keyColumn),
            {value, key, value});
    });
}

void StoreConnection::begin()
{
    endSnapshot();
    if (m_depth == 0) {
        AnswerGuard guard(*this);
        m_writeFailure.reset();
        m_changedSomething = false;
        m_rowsChanged = false;
        m_stateInWrite = false;
        // A read-only file takes only a read transaction; its writes are checked one by one.
        const QStringList statements = m_readOnly && !m_dialect.isServer()
                                           ? QStringList{QStringLiteral("BEGIN")}
                                           : m_dialect.beginWrite();
        run(statements.first());
        ++m_depth;
        try {
            for (qsizetype i = 1; i < statements.size(); ++i)
                run(statements[i]);
        } catch (...) {
            rollback();
            throw;
        }
        return;
    }
    ++m_depth;
}

void StoreConnection::commit()
{
    endSnapshot();
    if (m_depth > 1) {
        --m_depth;
        return;
    }
    AnswerGuard guard(*this);
    // A transaction that changed nothing is no commit: it is not announced, not counted, not
    // told to the write watcher, and on the server it ends with a rollback. The server gives a
    // transaction its id at its first change; on SQLite the changes of rows are counted as they
    // are run. (An SQLite transaction that changed no row writes nothing at its COMMIT, which
    // keeps a schema made in it.)
    qint64 xid = 0;
    bool changed = false;
    if (m_dialect.isServer()) {
        const QVariant id = value(QStringLiteral("SELECT txid_current_if_assigned()"));
        changed = !id.isNull();
        xid = id.toLongLong();
    } else {
        changed = m_rowsChanged;
    }
    if (!changed && m_dialect.isServer()) {
        rollback();
        return;
    }
    const QString announce = m_dialect.announceCommit();
    if (!announce.isEmpty())
        run(announce);
    try {
        run(QStringLiteral("COMMIT"));
    } catch (const Failure& f) {
        if (!m_dialect.isServer() || !m_lost)
            throw;
        // The answer to COMMIT was lost: the transaction is over either way, and it may have
        // been committed all the same. Saved, or a failure that says what is known.
        m_depth = 0;
        try {
            committedAfterAll(xid, f.Description());
        } catch (const Failure& outcome) {
            m_writeFailure = std::make_unique<Failure>(outcome);
            throw;
        }
        ++m_commits;
        m_changedSomething = true;
        g_commits.fetch_add(1, std::memory_order_relaxed);
        return;
    }
    --m_depth;
    g_commits.fetch_add(1, std::memory_order_relaxed);
    if (changed) {
        ++m_commits;
        m_changedSomething = true;
    }
}

void StoreConnection::committedAfterAll(qint64 xid, const QString& cause)
{
    QString why = cause;
    QDeadlineTimer deadline(m_timeouts.answerMs + kAnswerGraceMs);
    do {
        if (!m_lost || connectServer()) {
            QSqlQuery q(m_db);
            q.prepare(QStringLiteral("SELECT txid_status(?)"));
            q.addBindValue(xid);
            AnswerGuard guard(*this);
            if (q.exec() && q.next()) {
                const QVariant status = q.value(0);
                q.finish();
                if (status.toString() == QLatin1String("committed"))
                    return;
                if (status.toString() == QLatin1String("aborted")) {
                    // The server rolled it back: saying so is the truth.
                    throw Failure(kUnreachable, kSource,
                                  QStringLiteral("The database server of \"%1\" lost the "
                                                 "connection before the change was saved, so "
                                                 "nothing of it was saved; make the change again")
                                      .arg(m_path));
                }
                if (status.isNull())
                    break;
                // "in progress": the old session has not yet finished; it does at once.
                why = QStringLiteral("the transaction was still in progress");
            } else {
                why = q.lastError().text();
                q.finish();
                if (m_dialect.isConnectionLost(q.lastError()))
                    lose();
            }
        } else {
            why = m_db.lastError().text();
            if (m_db.isValid())
                m_db.close();
            m_lost = true;
        }
        QThread::msleep(50);
    } while (!deadline.hasExpired());
    throw Failure(kUnreachable, kSource,
                  QStringLiteral("The database server of \"%1\" did not confirm the change: the "
                                 "connection was lost after it was sent, and whether it was saved "
                                 "cannot be known now. It may have been saved: once the server "
                                 "answers again, refresh (F5) and check before making it again "
                                 "(%2)")
                      .arg(m_path, why.trimmed()));
}

void StoreConnection::rollback()
{
    endSnapshot();
    // What was read inside the write may be undone now.
    forgetState();
    if (m_depth == 0)
        return;
    --m_depth;
    // A lost connection took its transaction with it: the server rolled it back.
    if (m_depth == 0 && !m_lost) {
        AnswerGuard guard(*this);
        QSqlQuery q(m_db);
        if (!q.exec(QStringLiteral("ROLLBACK")) && m_dialect.isConnectionLost(q.lastError())) {
            q = QSqlQuery();
            lose();
        }
    }
}

}  // namespace ZebObjects
