#include "rawdatabase.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

RawDatabase::RawDatabase(int port, const QString& database)
    : m_name(QStringLiteral("raw-%1").arg(++s_serial))
{
    auto db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), m_name);
    db.setHostName(QStringLiteral("127.0.0.1"));
    db.setPort(port);
    db.setUserName(QStringLiteral("zeb"));
    db.setDatabaseName(database);
    m_open = db.open();
    if (!m_open)
        qWarning("%s", qPrintable(db.lastError().text()));
}

RawDatabase::RawDatabase(const QString& sqliteFile)
    : m_name(QStringLiteral("raw-%1").arg(++s_serial))
{
    auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
    db.setDatabaseName(sqliteFile);
    m_open = db.open();
    if (!m_open)
        qWarning("%s", qPrintable(db.lastError().text()));
}

RawDatabase::~RawDatabase()
{
    QSqlDatabase::database(m_name, false).close();
    QSqlDatabase::removeDatabase(m_name);
}

bool RawDatabase::exec(const QString& sql)
{
    QSqlQuery q(QSqlDatabase::database(m_name, false));
    if (q.exec(sql))
        return true;
    qWarning("%s: %s", qPrintable(sql), qPrintable(q.lastError().text()));
    return false;
}

QVariant RawDatabase::value(const QString& sql)
{
    QSqlQuery q(QSqlDatabase::database(m_name, false));
    if (q.exec(sql) && q.next())
        return q.value(0);
    qWarning("%s: %s", qPrintable(sql), qPrintable(q.lastError().text()));
    return {};
}

QString sqliteIntegrity(const QString& file)
{
    QString answer;
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("check"));
        db.setDatabaseName(file);
        if (db.open()) {
            QSqlQuery q(db);
            if (q.exec(QStringLiteral("PRAGMA integrity_check")) && q.next())
                answer = q.value(0).toString();
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("check"));
    return answer;
}
