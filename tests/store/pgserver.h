#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

// A PostgreSQL server of the test's own: a new cluster in a scratch folder, on a free port of
// 127.0.0.1, trusting local connections (members of the role zeb_password
// sign in with a password), stopped and removed when the object goes. As root (the
// server refuses to run as root) it runs as the unprivileged user "nobody".
class PgServer {
public:
    // Starts the server. When it cannot (no server programs, no free port, a failed start),
    // error() says why and isRunning() is false.
    PgServer();
    ~PgServer();
    PgServer(const PgServer&) = delete;
    PgServer& operator=(const PgServer&) = delete;

    bool isRunning() const { return m_running; }
    QString error() const { return m_error; }
    int port() const { return m_port; }
    // The location of a database on this server, for Store::open.
    QString location(const QString& database) const;
    // A database name not used before in this run.
    QString newDatabaseName();

    // Stops the server (fast shutdown: open connections are cut) and starts it again, on the
    // same port with the same data.
    bool stop();
    bool start();

    // The folder holding the server programs ($ZEB_PG_BINARIES when set, else the newest
    // Debian one), or empty when none is installed.
    static QString binaries();

private:
    bool run(const QString& program, const QStringList& args, int timeoutMs);

    QTemporaryDir m_dir;
    QString m_bin;
    QString m_data;
    QString m_error;
    int m_port = 0;
    int m_databases = 0;
    bool m_running = false;
};
