#include "store/storelocation.h"

#include "contracts/failure.h"

#include <QStringList>
#include <QUrl>

#include <algorithm>

namespace ZebObjects {

namespace {

const QString kSource = QStringLiteral("ZebObjects.Store");

int hexDigit(QChar c)
{
    if (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
        return c.unicode() - '0';
    if (c >= QLatin1Char('a') && c <= QLatin1Char('f'))
        return c.unicode() - 'a' + 10;
    if (c >= QLatin1Char('A') && c <= QLatin1Char('F'))
        return c.unicode() - 'A' + 10;
    return -1;
}

// %XX becomes the byte XX and the bytes are read as UTF-8, as the client library reads them. A
// '%' that starts no such pair stays as it is.
QString decode(const QString& text)
{
    if (!text.contains(QLatin1Char('%')))
        return text;
    QByteArray bytes;
    const QByteArray utf8 = text.toUtf8();
    for (qsizetype i = 0; i < utf8.size(); ++i) {
        if (utf8[i] == '%' && i + 2 < utf8.size()) {
            const int hi = hexDigit(QLatin1Char(utf8[i + 1]));
            const int lo = hexDigit(QLatin1Char(utf8[i + 2]));
            if (hi >= 0 && lo >= 0) {
                bytes.append(char(hi * 16 + lo));
                i += 2;
                continue;
            }
        }
        bytes.append(utf8[i]);
    }
    return QString::fromUtf8(bytes);
}

QString encode(const QString& text, const QByteArray& keep = {})
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text, keep));
}

Failure badLocation(const QString& shown, const QString& cause)
{
    return Failure(ErrorNumber::InvalidProcedureCall, kSource,
                   QStringLiteral("The location \"%1\" %2").arg(shown, cause));
}

bool isServerScheme(const QString& location, qsizetype& rest)
{
    for (const QLatin1String scheme :
         {QLatin1String("postgresql://"), QLatin1String("postgres://")})
        if (location.startsWith(scheme, Qt::CaseInsensitive)) {
            rest = scheme.size();
            return true;
        }
    return false;
}

QString hostText(const QString& host)
{
    return host.contains(QLatin1Char(':')) ? QLatin1Char('[') + host + QLatin1Char(']') : host;
}

}  // namespace

StoreLocation StoreLocation::parse(const QString& location)
{
    StoreLocation out;
    qsizetype start = 0;
    if (!isServerScheme(location, start)) {
        out.m_file = location;
        return out;
    }
    out.m_server = true;
    QString rest = location.mid(start);
    // The user's part ends at the last '@' before the parameters, so that a password holding
    // '/', '#', ':' or '@' unencoded is still read whole and never taken for a host or a name.
    const qsizetype query = rest.indexOf(QLatin1Char('?'));
    const qsizetype at = rest.left(query < 0 ? rest.size() : query).lastIndexOf(QLatin1Char('@'));
    if (at >= 0) {
        const QString userInfo = rest.left(at);
        const qsizetype colon = userInfo.indexOf(QLatin1Char(':'));
        out.m_user = decode(colon < 0 ? userInfo : userInfo.left(colon));
        if (colon >= 0)
            out.m_password = decode(userInfo.mid(colon + 1));
        rest = rest.mid(at + 1);
    }
    QString params;
    if (const qsizetype q = rest.indexOf(QLatin1Char('?')); q >= 0) {
        params = rest.mid(q + 1);
        rest = rest.left(q);
    }
    QString hostSpec = rest;
    if (const qsizetype slash = rest.indexOf(QLatin1Char('/')); slash >= 0) {
        hostSpec = rest.left(slash);
        out.m_database = decode(rest.mid(slash + 1));
    }

    // The ports are checked once the rest is read, so that the message can show the location.
    QStringList hosts;
    QStringList portTexts;
    for (const QString& one : hostSpec.split(QLatin1Char(','))) {
        QString host = one;
        QString port;
        if (host.startsWith(QLatin1Char('['))) {
            const qsizetype close = host.indexOf(QLatin1Char(']'));
            port = close >= 0 && host.mid(close + 1).startsWith(QLatin1Char(':'))
                       ? host.mid(close + 2)
                       : QString();
            host = host.mid(1, close < 0 ? -1 : close - 1);
        } else if (const qsizetype colon = host.indexOf(QLatin1Char(':')); colon >= 0) {
            port = host.mid(colon + 1);
            host = host.left(colon);
        }
        hosts << decode(host);
        portTexts << decode(port);
    }

    QList<QPair<QString, QString>> others;
    for (const QString& pair : params.split(QLatin1Char('&'), Qt::SkipEmptyParts)) {
        const qsizetype eq = pair.indexOf(QLatin1Char('='));
        const QString key = decode(eq < 0 ? pair : pair.left(eq));
        const QString value = eq < 0 ? QString() : decode(pair.mid(eq + 1));
        if (key == QLatin1String("password"))
            out.m_password = value;
        else if (key == QLatin1String("user"))
            out.m_user = value;
        else if (key == QLatin1String("dbname"))
            out.m_database = value;
        else if (key == QLatin1String("host"))
            hosts = value.split(QLatin1Char(','));
        else if (key == QLatin1String("port"))
            portTexts = value.split(QLatin1Char(','));
        else
            others.append({key, value});
    }
    out.m_host = hosts.join(QLatin1Char(','));
    out.m_parameters = others;

    for (const QString& text : portTexts) {
        if (text.isEmpty()) {
            out.m_ports.append(kDefaultPort);
            continue;
        }
        bool ok = false;
        const int port = text.toInt(&ok);
        const bool digits =
            std::all_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); });
        if (!ok || !digits || port < 1 || port > 65535)
            throw badLocation(out.shownWith(portTexts),
                              QStringLiteral("names the port \"%1\", which is not a number from "
                                             "1 to 65535")
                                  .arg(text));
        out.m_ports.append(port);
    }
    if (out.m_database.isEmpty()) {
        StoreLocation example = out;
        example.m_database = QStringLiteral("office");
        throw badLocation(out.shown(),
                          QStringLiteral("names no database: add its name after the server, as "
                                         "in \"%1\"")
                              .arg(example.shown()));
    }
    for (const auto& [key, value] : out.m_parameters)
        if (key.isEmpty() || !std::all_of(key.begin(), key.end(), [](QChar c) {
                return c.isLetterOrNumber() || c == QLatin1Char('_');
            }))
            throw badLocation(out.shown(),
                              QStringLiteral("has the parameter \"%1\", which is not a setting "
                                             "of the PostgreSQL client")
                                  .arg(key));
    return out;
}

StoreLocation StoreLocation::server(const QString& user, const QString& host, int port,
                                    const QString& database)
{
    StoreLocation out;
    out.m_server = true;
    out.m_user = user;
    out.m_host = host;
    out.m_ports = {port};
    out.m_database = database;
    return out;
}

QString StoreLocation::shown() const
{
    QStringList ports;
    for (int port : m_ports)
        ports << QString::number(port);
    return shownWith(ports);
}

QString StoreLocation::shownWith(const QStringList& ports) const
{
    if (!m_server)
        return m_file;
    QString text = QStringLiteral("postgresql://");
    if (!m_user.isEmpty())
        text += encode(m_user) + QLatin1Char('@');
    // A socket folder (a host starting with '/') goes with the parameters, as the client
    // library writes it.
    const bool socket = m_host.startsWith(QLatin1Char('/'));
    const QStringList hosts = socket ? QStringList{QString()} : m_host.split(QLatin1Char(','));
    QStringList servers;
    for (qsizetype i = 0; i < hosts.size(); ++i) {
        const QString port = i < ports.size()  ? ports[i]
                             : ports.isEmpty() ? QString::number(kDefaultPort)
                                               : ports.back();
        servers << hostText(encode(hosts[i], ":")) + QLatin1Char(':') + port;
    }
    text += servers.join(QLatin1Char(','));
    text += QLatin1Char('/') + encode(m_database, ".");
    QStringList params;
    if (socket)
        params << QStringLiteral("host=") + encode(m_host, "/,");
    for (const auto& [key, value] : m_parameters)
        params << encode(key) + QLatin1Char('=') + encode(value);
    if (!params.isEmpty())
        text += QLatin1Char('?') + params.join(QLatin1Char('&'));
    return text;
}

}  // namespace ZebObjects
