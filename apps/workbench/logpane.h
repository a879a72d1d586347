#pragma once

#include "contracts/diagnosticlog.h"

#include <QPointer>
#include <QStringList>

#include <memory>

class QPlainTextEdit;
namespace ZebObjects {
class DefaultDiagnosticLog;
}

// The workbench's diagnostic log: every entry goes to the default log (logging category, and a
// file when named) and is shown in the window's diagnostics pane.
class LogPane : public ZebObjects::DiagnosticLog {
public:
    explicit LogPane(std::shared_ptr<ZebObjects::DefaultDiagnosticLog> inner);

    void setView(QPlainTextEdit* view);

    void LogError(const QString& module, const QString& label, const ZebObjects::ErrorInfo& error,
                  qint32 line) override;
    void LogNotice(const QString& module, const QString& label, const ZebObjects::ErrorInfo& error,
                   qint32 line) override;
    void LogWarning(const QString& module, const QString& label, const ZebObjects::ErrorInfo& error,
                    qint32 line) override;
    void Trace(const QString& module, const QString& label, QString message, qint32 level) override;

private:
    void show(const QString& line);

    std::shared_ptr<ZebObjects::DefaultDiagnosticLog> m_inner;
    QPointer<QPlainTextEdit> m_view;
    // Lines logged while the window is still being built, shown once the pane exists.
    QStringList m_pending;
};
