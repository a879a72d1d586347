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
    // by a newer program. The default office that holds nothing yet gets the sample office. An
    // empty (0-byte) file fails unless create (the user's own office gets the sample) or
    // newOffice (the user chose to make a new office in it). An office that cannot be changed
    // here (the file or its folder is read-only) is opened read-only. A server database is made
    // when missing and opened as it is.
    static std::shared_ptr<ZebObjects::Store> open(const QString& path, bool create,
                                                   bool newOffice = false);
    // True for a file of 0 bytes.
    static bool isEmptyFile(const QString& path);

    // Replaces the file with a new sample office, all or nothing: the new office is made beside
    // it, checked, flushed to the disk and then renamed over it, so any failure (a full disk)
    // leaves the old file as it was and says why. A server database gets the sample office only
    // while it holds nothing.
    static std::shared_ptr<ZebObjects::Store> resetSample(const QString& path);
};
