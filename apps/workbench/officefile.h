#pragma once

#include <QString>

#include <memory>

namespace ZebObjects {
class Store;
}

// Where the workstation keeps its office and how it opens it: the user's own office in the data
// folder, made with the sample office on first start, or a file named on the command line.
class OfficeFile {
public:
    // The office in the user's data folder.
    static QString defaultPath();

    // Opens the file. A missing file is made with the sample office when create is true, else it
    // fails naming the file; so does a file that cannot be read, is not a database or was written
    // by a newer program. The default office that holds nothing yet gets the sample office.
    static std::shared_ptr<ZebObjects::Store> open(const QString& path, bool create);

    // Replaces the file with a new sample office. The new office is made beside it and put in
    // place only when complete, so a failure leaves the old file as it was.
    static std::shared_ptr<ZebObjects::Store> resetSample(const QString& path);
};
