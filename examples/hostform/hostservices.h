#pragma once

// What a host installs in the process-wide slots before it makes a control: its application
// services (text rule, issuers, customer search) and its diagnostic log.

#include "contracts/applicationservices.h"
#include "contracts/customersearchcontext.h"
#include "contracts/diagnosticlog.h"
#include "hostobjects.h"

#include <QStringList>

namespace HostForm {

class Services : public ZebObjects::ApplicationServices {
public:
    explicit Services(QList<std::shared_ptr<Client>> book);

    // The host's text rule: characters a letter cannot print become "?".
    bool ReformatText(QString& text) override;
    QStringList IssuedByNames() const override;
    std::shared_ptr<ZebObjects::CustomerSearchContext> SearchContext() const override;
    std::shared_ptr<ZebObjects::CustomerFinder> CreateCustomerFinder() override;

private:
    QList<std::shared_ptr<Client>> m_book;
};

// Writes failures to standard error and keeps them, so that a self-test can tell whether any
// procedure failed. Traces are dropped.
class StderrLog : public ZebObjects::DiagnosticLog {
public:
    void LogError(const QString& module, const QString& label, const ZebObjects::ErrorInfo& error,
                  qint32 line) override;
    void LogNotice(const QString& module, const QString& label, const ZebObjects::ErrorInfo& error,
                   qint32 line) override;
    void LogWarning(const QString& module, const QString& label, const ZebObjects::ErrorInfo& error,
                    qint32 line) override;
    void Trace(const QString& module, const QString& label, QString message, qint32 level) override;

    const QStringList& failures() const { return m_failures; }

private:
    void write(const char* kind, const QString& module, const QString& label,
               const ZebObjects::ErrorInfo& error);

    QStringList m_failures;
};

}  // namespace HostForm
