#include "pgserver.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTcpServer>

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

namespace {

const char* const kUser = "nobody";

bool asRoot()
{
    return ::geteuid() == 0;
}

// Hands the folder (and what is in it) to the unprivileged user.
bool giveAway(const QString& path)
{
    const passwd* pw = ::getpwnam(kUser);
    if (!pw)
        return false;
    return ::chown(QFile::encodeName(path).constData(), pw->pw_uid, pw->pw_gid) == 0;
}

int freePort()
{
    QTcpServer probe;
    if (!probe.listen(QHostAddress::LocalHost, 0))
        return 0;
    return probe.serverPort();
}

}  // namespace

QString PgServer::binaries()
{
    // A server of another place may be named; a folder without the programs counts as none.
    if (qEnvironmentVariableIsSet("ZEB_PG_BINARIES")) {
        const QString dir = qEnvironmentVariable("ZEB_PG_BINARIES");
        if (QFileInfo(dir + QStringLiteral("/initdb")).isExecutable()
            && QFileInfo(dir + QStringLiteral("/pg_ctl")).isExecutable())
            return dir;
        return {};
    }
    const QStringList candidates = {
        QStringLiteral("/usr/lib/postgresql/17/bin"), QStringLiteral("/usr/lib/postgresql/16/bin"),
        QStringLiteral("/usr/lib/postgresql/15/bin"), QStringLiteral("/usr/lib/postgresql/14/bin"),
        QStringLiteral("/usr/lib/postgresql/13/bin")};
    for (const QString& dir : candidates)
        if (QFileInfo(dir + QStringLiteral("/initdb")).isExecutable()
            && QFileInfo(dir + QStringLiteral("/pg_ctl")).isExecutable())
            return dir;
    return {};
}

PgServer::PgServer()
{
    m_bin = binaries();
    if (m_bin.isEmpty()) {
        m_error = QStringLiteral("the PostgreSQL server programs (initdb, pg_ctl) are not "
                                 "installed in /usr/lib/postgresql/*/bin (or in "
                                 "$ZEB_PG_BINARIES): install the Debian package postgresql");
        return;
    }
    if (!m_dir.isValid()) {
        m_error = QStringLiteral("no scratch folder: %1").arg(m_dir.errorString());
        return;
    }
    if (asRoot() && !giveAway(m_dir.path())) {
        m_error = QStringLiteral("the scratch folder cannot be handed to the user \"%1\"")
                      .arg(QString::fromLatin1(kUser));
        return;
    }
    m_data = m_dir.filePath(QStringLiteral("data"));
    m_port = freePort();
    if (m_port == 0) {
        m_error = QStringLiteral("no free port on 127.0.0.1");
        return;
    }
    // No fsync: the cluster lives only as long as the test.
    if (!run(m_bin + QStringLiteral("/initdb"),
             {QStringLiteral("-D"), m_data, QStringLiteral("-U"), QStringLiteral("zeb"),
              QStringLiteral("-A"), QStringLiteral("trust"), QStringLiteral("-E"),
              QStringLiteral("UTF8"), QStringLiteral("--locale=C"), QStringLiteral("--no-sync")},
             120000))
        return;
    // Members of the role zeb_password sign in with a password, as in an office; every other
    // user is trusted.
    QFile hba(QDir(m_data).filePath(QStringLiteral("pg_hba.conf")));
    QByteArray rules;
    if (hba.open(QIODevice::ReadOnly))
        rules = hba.readAll();
    hba.close();
    if (!hba.open(QIODevice::WriteOnly | QIODevice::Truncate)
        || hba.write("host all +zeb_password 127.0.0.1/32 scram-sha-256\n" + rules) < 0) {
        m_error = QStringLiteral("pg_hba.conf cannot be written: %1").arg(hba.errorString());
        return;
    }
    hba.close();
    start();
}

PgServer::~PgServer()
{
    if (m_running)
        stop();
}

bool PgServer::start()
{
    const QString options = QStringLiteral("-p %1 -k %2 -c listen_addresses=127.0.0.1 -c fsync=off "
                                           "-c synchronous_commit=off -c full_page_writes=off")
                                .arg(m_port)
                                .arg(m_dir.path());
    m_running =
        run(m_bin + QStringLiteral("/pg_ctl"),
            {QStringLiteral("-D"), m_data, QStringLiteral("-o"), options, QStringLiteral("-l"),
             m_dir.filePath(QStringLiteral("server.log")), QStringLiteral("-w"),
             QStringLiteral("-t"), QStringLiteral("60"), QStringLiteral("start")},
            90000);
    return m_running;
}

bool PgServer::stop()
{
    const bool stopped = run(m_bin + QStringLiteral("/pg_ctl"),
                             {QStringLiteral("-D"), m_data, QStringLiteral("-m"),
                              QStringLiteral("fast"), QStringLiteral("-w"), QStringLiteral("stop")},
                             90000);
    if (stopped)
        m_running = false;
    return stopped;
}

QString PgServer::location(const QString& database) const
{
    return QStringLiteral("postgresql://zeb@127.0.0.1:%1/%2").arg(m_port).arg(database);
}

QString PgServer::newDatabaseName()
{
    return QStringLiteral("office%1").arg(++m_databases);
}

bool PgServer::run(const QString& program, const QStringList& args, int timeoutMs)
{
    QProcess p;
    p.setProcessChannelMode(QProcess::MergedChannels);
    if (asRoot()) {
        // The server refuses to run as root.
        p.setProgram(QStringLiteral("setpriv"));
        p.setArguments(QStringList{QStringLiteral("--reuid=%1").arg(QString::fromLatin1(kUser)),
                                   QStringLiteral("--regid=nogroup"),
                                   QStringLiteral("--clear-groups"), program}
                       + args);
    } else {
        p.setProgram(program);
        p.setArguments(args);
    }
    // The server's children must not inherit the test's sanitizer settings or a stray locale.
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("LD_PRELOAD"));
    env.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    p.setProcessEnvironment(env);
    p.setWorkingDirectory(m_dir.path());
    p.start();
    if (!p.waitForFinished(timeoutMs) || p.exitStatus() != QProcess::NormalExit
        || p.exitCode() != 0) {
        if (p.state() != QProcess::NotRunning) {
            p.kill();
            p.waitForFinished();
        }
        QString log;
        QFile file(m_dir.filePath(QStringLiteral("server.log")));
        if (file.open(QIODevice::ReadOnly))
            log = QString::fromLocal8Bit(file.readAll().right(2000));
        m_error = QStringLiteral("%1 %2 failed: %3%4")
                      .arg(QFileInfo(program).fileName(), args.join(QLatin1Char(' ')),
                           QString::fromLocal8Bit(p.readAll()), log);
        return false;
    }
    return true;
}
