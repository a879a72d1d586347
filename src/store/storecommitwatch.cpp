#include "store/storecommitwatch.h"

#include "store/storeconnection.h"

#include <QSocketNotifier>
#include <QSqlDriver>
#include <QTimer>

#include <libpq-fe.h>

namespace ZebObjects {

StoreCommitWatch::StoreCommitWatch(StoreConnection& connection)
    : m_c(connection), m_check(std::make_unique<QTimer>())
{
    m_check->setInterval(1000);
    QObject::connect(m_check.get(), &QTimer::timeout, m_check.get(), [this] {
        if (!m_c.m_lost && m_c.m_depth == 0 && (!m_c.m_db.driver() || !m_c.m_db.driver()->isOpen()))
            m_c.lose();
    });
    m_check->start();
}

StoreCommitWatch::~StoreCommitWatch()
{
    // The timer takes the listener with it.
    m_listener = nullptr;
    m_check.reset();
}

void StoreCommitWatch::setOnCommit(std::function<void()> onCommit)
{
    m_onCommit = std::move(onCommit);
}

void StoreCommitWatch::tell()
{
    if (m_onCommit)
        m_onCommit();
}

// The announcements are read off the connection's socket here rather than through the driver,
// whose own notice of a readable socket does not come in every Qt version.
void StoreCommitWatch::listen()
{
    stopListening();
    PGconn* conn = m_c.serverConnection();
    if (!conn || PQsocket(conn) < 0)
        return;
    if (!m_c.execAwaited(QStringLiteral("LISTEN ") + StoreDialect::changeChannel()))
        return;
    m_listener = new QSocketNotifier(PQsocket(conn), QSocketNotifier::Read, m_check.get());
    QObject::connect(m_listener, &QSocketNotifier::activated, m_listener,
                     [this] { readAnnouncements(); });
}

void StoreCommitWatch::stopListening()
{
    if (!m_listener)
        return;
    m_listener->setEnabled(false);
    // It may be the one whose signal runs now.
    m_listener->deleteLater();
    m_listener = nullptr;
}

void StoreCommitWatch::readAnnouncements()
{
    m_readPending = false;
    PGconn* conn = m_c.m_lost ? nullptr : m_c.serverConnection();
    if (!conn)
        return;
    PQconsumeInput(conn);
    bool other = false;
    while (PGnotify* n = PQnotifies(conn)) {
        if (n->be_pid != PQbackendPID(conn)
            && StoreDialect::changeChannel() == QLatin1String(n->relname))
            other = true;
        PQfreemem(n);
    }
    // A connection the server dropped is noticed here; the next use makes it again.
    if (PQstatus(conn) != CONNECTION_OK && m_c.m_depth == 0) {
        m_c.lose();
        return;
    }
    if (other && m_onCommit)
        m_onCommit();
}

void StoreCommitWatch::announcementsMayWait()
{
    if (!m_listener || m_readPending)
        return;
    m_readPending = true;
    QTimer::singleShot(0, m_listener, [this] { readAnnouncements(); });
}

}  // namespace ZebObjects
