#include "startupfailure.h"

#include <QGuiApplication>
#include <QMessageBox>

bool StartupFailure::hasDisplay()
{
    const QString platform = QGuiApplication::platformName();
    return !platform.isEmpty() && platform != QLatin1String("offscreen")
           && platform != QLatin1String("minimal");
}

int StartupFailure::report(const QString& message, bool dialog, std::FILE* terminal)
{
    std::fprintf(terminal, "zeb-workbench: %s\n", qPrintable(message));
    std::fflush(terminal);
    if (dialog) {
        QMessageBox box(QMessageBox::Critical, title(), message, QMessageBox::Ok);
        box.setObjectName(QStringLiteral("msgStartupFailure"));
        box.exec();
    }
    return 1;
}
