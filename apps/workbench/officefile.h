#pragma once

#include <QString>

#include <memory>

namespace ZebObjects {
class Store;
}

// Where the workstation keeps its office and how it opens it: the user's own office in the data
// folder, made with the sample office on first start, or a file or a database on the office's
// PostgreSQL server ("postgresql://user@host:port/database") named on the command line.
class OfficeFile {
public:
    // The office in the user's data folder.
    static QString defaultPath();

    // Opens the file. A missing file is made with the sample office when create is true, else it
    // fails naming the file; so does a file that cannot be read, is not a database or was written
    // by a newer program. The default office that holds nothing yet gets the sample office. A
    // server database is made when missing and opened as it is.
    static std::shared_ptr<ZebObjects::Store> open(const QString& path, bool create);

    // Replaces the file with a new sample office. The new office is made beside it and put in
    // place only when complete, so a failure leaves the old file as it was. A server database
    // gets the sample office only while it holds nothing.
    static std::shared_ptr<ZebObjects::Store> resetSample(const QString& path);
};
