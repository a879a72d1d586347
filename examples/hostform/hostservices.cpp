#include "hostservices.h"

#include <QTextStream>

#include <utility>

namespace HostForm {

namespace {
class Office : public ZebObjects::CustomerSearchContext {
public:
    QVariant Value() const override { return QStringLiteral("front office"); }
};
}  // namespace

Services::Services(QList<std::shared_ptr<Client>> book) : m_book(std::move(book)) { }

bool Services::ReformatText(QString& text)
{
    bool changed = false;
    for (QChar& c : text) {
        const bool printable = c == u'\r' || c == u'\n'
                               || (c.unicode() >= 0x20 && c.unicode() < 0x7f)
                               || (c.unicode() >= 0xa0 && c.unicode() <= 0xff);
        if (!printable) {
            c = u'?';
            changed = true;
        }
    }
    return changed;
}

QStringList Services::IssuedByNames() const
{
    return {QStringLiteral("Marta Lindqvist"), QStringLiteral("Dana Whitfield")};
}

std::shared_ptr<ZebObjects::CustomerSearchContext> Services::SearchContext() const
{
    return std::make_shared<Office>();
}

std::shared_ptr<ZebObjects::CustomerFinder> Services::CreateCustomerFinder()
{
    return std::make_shared<ClientFinder>(m_book);
}

void StderrLog::write(const char* kind, const QString& module, const QString& label,
                      const ZebObjects::ErrorInfo& error)
{
    const QString entry = QStringLiteral("%1 %2.%3: %4 %5")
                              .arg(QLatin1String(kind), module, label)
                              .arg(error.Number)
                              .arg(error.Description);
    m_failures.append(entry);
    QTextStream(stderr) << entry << '\n';
}

void StderrLog::LogError(const QString& module, const QString& label,
                         const ZebObjects::ErrorInfo& error, qint32)
{
    write("error", module, label, error);
}

void StderrLog::LogNotice(const QString& module, const QString& label,
                          const ZebObjects::ErrorInfo& error, qint32)
{
    write("notice", module, label, error);
}

void StderrLog::LogWarning(const QString& module, const QString& label,
                           const ZebObjects::ErrorInfo& error, qint32)
{
    write("warning", module, label, error);
}

void StderrLog::Trace(const QString&, const QString&, QString, qint32) { }

}  // namespace HostForm
