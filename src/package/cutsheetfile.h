#pragma once

#include "zebpackage_export.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace ZebPackage {

// A manufacturer's cut sheet as the office hands it in, checked before it joins the library:
// only a PDF that opens without a password and has pages is taken.
class ZEBPACKAGE_EXPORT CutSheetFile {
public:
    struct Inspection {
        qint32 pageCount = 0;
        // What the reader had to repair to open the file; the sheet is still taken.
        QStringList warnings;
    };

    // Reads bytes as the file fileName. A file that is no PDF, is damaged, is encrypted or has
    // no pages fails with ZebObjects::Failure 321 whose description names the file and the
    // reason: "The cut sheet \"x.pdf\" is refused: it is encrypted."
    static Inspection inspect(const QString& fileName, const QByteArray& bytes);
    // The same for a file on disk; one that cannot be read fails with 75.
    static Inspection inspectFile(const QString& path, QByteArray* bytes);
};

}  // namespace ZebPackage
