#pragma once

#include <QString>
#include <QStringList>

namespace ZebObjects {
class Store;
}

// Puts a manufacturer's cut sheet from a file into the office's library and attaches it to a
// fixture type of a job, after checking that it is a PDF the package can print.
class CutSheetAttach {
public:
    struct Result {
        QString fileName;
        qint32 pageCount = 0;
        // What had to be repaired to read the file: it is attached all the same.
        QStringList warnings;
    };

    // A bad file fails with the ZebObjects::Failure that names it and the reason; nothing is
    // stored then.
    static Result attach(ZebObjects::Store& store, qint64 jobId, const QString& type,
                         const QString& path);

    // --attach-cut-sheet TYPE=FILE.pdf, each of pairs: every file is checked before any is
    // attached, then all are attached in one transaction. Says what it did on standard output,
    // warnings and failures on standard error; answers the exit code.
    static int fromCommandLine(ZebObjects::Store& store, qint64 jobId, const QStringList& pairs);

    // Who the library records as having added a sheet: the user of this workstation.
    static QString currentUser();
};
