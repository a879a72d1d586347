#include "desktopopener.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

bool DesktopOpener::open(const QString& path)
{
    const QFileInfo info(path);
    const QString type = info.isDir() ? QStringLiteral("inode/directory")
                                      : QMimeDatabase().mimeTypeForFile(info).name();
    // The desktop's launcher starts and leaves before it finds out that no program takes the
    // type, so whether one does is asked first.
    const QString query = QStandardPaths::findExecutable(QStringLiteral("xdg-mime"));
    if (!query.isEmpty()) {
        QProcess p;
        p.start(query, {QStringLiteral("query"), QStringLiteral("default"), type});
        if (!p.waitForFinished(5000)) {
            p.kill();
            p.waitForFinished();
            return false;
        }
        if (p.exitCode() != 0 || p.readAllStandardOutput().trimmed().isEmpty())
            return false;
    }
    return QDesktopServices::openUrl(QUrl::fromLocalFile(info.absoluteFilePath()));
}
