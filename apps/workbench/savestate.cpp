#include "savestate.h"

void SaveState::setOffice(const QString& server, bool readOnly)
{
    m_server = server;
    m_readOnly = readOnly;
    m_failure.clear();
}

void SaveState::writeSaved()
{
    m_failure.clear();
}

void SaveState::writeFailed(const QString& cause)
{
    m_failure = cause;
}

void SaveState::shownFromOffice()
{
    m_failure.clear();
}

QString SaveState::text() const
{
    // The first that holds wins: a read-only office never saves, a failed write outweighs
    // everything saved before it.
    if (m_readOnly)
        return QStringLiteral("Read-only: changes cannot be saved");
    if (!m_failure.isEmpty())
        return QStringLiteral("Not saved: ") + m_failure;
    // Every write is committed as it is made; only an edit still open in a field waits.
    if (!m_pending.isEmpty())
        return QStringLiteral("Not saved yet: %1 is being edited").arg(m_pending);
    if (!m_server.isEmpty())
        return QStringLiteral("All changes saved to %1").arg(m_server);
    return QStringLiteral("All changes saved");
}
