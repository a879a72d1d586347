// A proxy on 127.0.0.1 between the store and the test's PostgreSQL server that fails the way a
// network does, on command.
//
//   zeb_pgproxy <server port> [<seconds to live>]
//
// It prints "port <n>" once it listens, then reads commands from standard input, one a line,
// each answered by "ok <command>" and acting once, on the next matching statement of any
// connection:
//   cut-after-commit      passes COMMIT on to the server, then cuts the connection
//   drop-commit           cuts the connection instead of passing COMMIT on
//   silent-after-commit   passes COMMIT on, then passes nothing more either way (no reset)
//   silent-after-lock     passes the write lock's statement on, then passes nothing more
//   gone-after-commit     as silent-after-commit, and takes no new connection from then on
// When it acts it prints "cut", "dropped" or "silent". It ends when its input ends or after its
// time (60 seconds unless given), whichever comes first.
#include <QCoreApplication>
#include <QHostAddress>
#include <QSocketNotifier>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <cstdio>
#include <memory>
#include <unistd.h>

namespace {

enum class Command {
    None,
    CutAfterCommit,
    DropCommit,
    SilentAfterCommit,
    SilentAfterLock,
    GoneAfterCommit
};

Command g_armed = Command::None;
QTcpServer* g_listener = nullptr;

void say(const char* text)
{
    std::printf("%s\n", text);
    std::fflush(stdout);
}

quint32 be32(const char* p)
{
    return (quint32(quint8(p[0])) << 24) | (quint32(quint8(p[1])) << 16)
           | (quint32(quint8(p[2])) << 8) | quint32(quint8(p[3]));
}

// One client connection and its connection to the server. The client's bytes are read as the
// protocol's messages, so that a statement is recognised whole.
class Link : public QObject {
public:
    Link(QTcpSocket* client, quint16 serverPort) : m_client(client)
    {
        m_client->setParent(this);
        m_server = new QTcpSocket(this);
        connect(m_client, &QTcpSocket::readyRead, this, [this] { fromClient(); });
        connect(m_server, &QTcpSocket::readyRead, this, [this] { fromServer(); });
        connect(m_server, &QTcpSocket::connected, this, [this] { fromClient(); });
        connect(m_client, &QTcpSocket::disconnected, this, [this] { end(); });
        connect(m_server, &QTcpSocket::disconnected, this, [this] { end(); });
        m_server->connectToHost(QHostAddress::LocalHost, serverPort);
    }

private:
    void fromClient()
    {
        m_pending += m_client->readAll();
        if (m_silent) {
            m_pending.clear();
            return;
        }
        if (m_server->state() != QAbstractSocket::ConnectedState)
            return;
        for (;;) {
            qsizetype size = 0;
            bool startup = false;
            if (m_startup) {
                if (m_pending.size() < 8)
                    return;
                size = be32(m_pending.constData());
                startup = true;
            } else {
                if (m_pending.size() < 5)
                    return;
                size = 1 + be32(m_pending.constData() + 1);
            }
            if (m_pending.size() < size)
                return;
            const QByteArray message = m_pending.left(size);
            m_pending.remove(0, size);
            if (startup) {
                const quint32 code = be32(message.constData() + 4);
                // Encryption requests come before the startup message proper.
                if (code != 80877103 && code != 80877104)
                    m_startup = false;
                m_server->write(message);
                continue;
            }
            if (!pass(message))
                return;
        }
    }

    // Passes a message on, or acts on it; false when the link is done with.
    bool pass(const QByteArray& message)
    {
        const bool query = message.at(0) == 'Q';
        const QByteArray text = query ? message.mid(5).chopped(1).trimmed() : QByteArray();
        const bool commit = query && text.compare("COMMIT", Qt::CaseInsensitive) == 0;
        const bool lock = query && text.contains("pg_advisory_xact_lock");
        if (commit && g_armed == Command::DropCommit) {
            g_armed = Command::None;
            say("dropped");
            cut();
            return false;
        }
        m_server->write(message);
        if (commit && g_armed == Command::CutAfterCommit) {
            g_armed = Command::None;
            say("cut");
            cut();
            return false;
        }
        if ((commit && g_armed == Command::SilentAfterCommit)
            || (commit && g_armed == Command::GoneAfterCommit)
            || (lock && g_armed == Command::SilentAfterLock)) {
            if (g_armed == Command::GoneAfterCommit)
                g_listener->close();
            g_armed = Command::None;
            m_server->flush();
            m_silent = true;
            m_pending.clear();
            say("silent");
            return false;
        }
        return true;
    }

    void fromServer()
    {
        const QByteArray data = m_server->readAll();
        if (!m_silent)
            m_client->write(data);
    }

    void cut()
    {
        // What was passed on reaches the server before its end of the connection closes.
        m_server->flush();
        m_server->waitForBytesWritten(1000);
        m_server->disconnectFromHost();
        m_client->abort();
    }

    void end()
    {
        if (m_ended)
            return;
        m_ended = true;
        // A silent link stays open on the other side too: a network that drops traffic does
        // not tell either end.
        if (m_silent)
            return;
        m_server->disconnectFromHost();
        m_client->disconnectFromHost();
        deleteLater();
    }

    QTcpSocket* m_client;
    QTcpSocket* m_server;
    QByteArray m_pending;
    bool m_startup = true;
    bool m_silent = false;
    bool m_ended = false;
};

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    bool ok = false;
    const quint16 serverPort = args.size() > 1 ? args[1].toUShort(&ok) : 0;
    if (!ok) {
        std::fprintf(stderr, "usage: zeb_pgproxy <server port> [<seconds to live>]\n");
        return 2;
    }
    const int lifetime = args.size() > 2 ? args[2].toInt() : 60;
    QTcpServer listener;
    if (!listener.listen(QHostAddress::LocalHost, 0)) {
        std::fprintf(stderr, "zeb_pgproxy: cannot listen on 127.0.0.1: %s\n",
                     qPrintable(listener.errorString()));
        return 1;
    }
    g_listener = &listener;
    QObject::connect(&listener, &QTcpServer::newConnection, &listener, [&] {
        while (QTcpSocket* client = listener.nextPendingConnection())
            new Link(client, serverPort);
    });
    QTimer::singleShot(lifetime * 1000, &app, [] {
        std::fprintf(stderr, "zeb_pgproxy: its time is over\n");
        QCoreApplication::exit(3);
    });

    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QByteArray line;
    QObject::connect(&input, &QSocketNotifier::activated, &app, [&] {
        char buffer[256];
        const ssize_t n = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (n <= 0) {
            QCoreApplication::exit(0);
            return;
        }
        line.append(buffer, n);
        for (qsizetype end; (end = line.indexOf('\n')) >= 0;) {
            const QByteArray command = line.left(end).trimmed();
            line.remove(0, end + 1);
            if (command == "cut-after-commit")
                g_armed = Command::CutAfterCommit;
            else if (command == "drop-commit")
                g_armed = Command::DropCommit;
            else if (command == "silent-after-commit")
                g_armed = Command::SilentAfterCommit;
            else if (command == "silent-after-lock")
                g_armed = Command::SilentAfterLock;
            else if (command == "gone-after-commit")
                g_armed = Command::GoneAfterCommit;
            else {
                std::fprintf(stderr, "zeb_pgproxy: unknown command \"%s\"\n", command.constData());
                continue;
            }
            say(("ok " + command).constData());
        }
    });
    say(qPrintable(QStringLiteral("port %1").arg(listener.serverPort())));
    return app.exec();
}
