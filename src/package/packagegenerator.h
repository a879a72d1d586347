#pragma once

#include "package/revisionmarks.h"
#include "zebpackage_export.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace ZebPackage {

class PackageSource;

// One entry of the package's contents page.
struct ContentsEntry {
    QString Title;
    // 1-based page of the package on which the part starts.
    // 0 when the part has no page of its own to open (a type without a cut sheet).
    qint32 Page = 0;
    // 1 for an entry inside the part above it (a type among the cut sheets).
    qint32 Level = 0;

    friend bool operator==(const ContentsEntry&, const ContentsEntry&) = default;
};

// Writes the submittal package of one job as a PDF: a contents page, then the cover letters,
// the bill of materials and the labels that the submittal includes.
//
// Everything is read from the job's objects before the file is touched; the PDF is written to a
// temporary file beside the target and renamed into place only when it is complete. A failure
// of a business object propagates as the ZebObjects::Failure it raised; a file that cannot be
// written fails with 75. Either way the target is left as it was.
//
// Runs on the thread of the QGuiApplication, which it needs for its fonts.
class ZEBPACKAGE_EXPORT PackageGenerator {
public:
    enum class PaperSize { Letter, A4 };

    // Called with the number of pages written so far and the number the package has: once
    // before the first page and once after each drawn page; the cut sheets' pages all come at
    // once, when they are merged. Answering false cancels the export.
    using Progress = std::function<bool(qint32 done, qint32 total)>;

    PackageGenerator();
    ~PackageGenerator();
    PackageGenerator(const PackageGenerator&) = delete;
    PackageGenerator& operator=(const PackageGenerator&) = delete;

    PaperSize paperSize() const;
    void setPaperSize(PaperSize size);
    void setProgress(Progress progress);
    // The revision the next packages are: a resubmittal names it on its letters and contents
    // page and marks what changed in its bill of materials. Revision 0 (the default) marks nothing.
    void setRevision(const RevisionMarks& marks);

    // Writes the package of source to path. True when the file is written; false when the
    // progress callback cancelled it (nothing is left behind then).
    bool Generate(const PackageSource& source, const QString& path);

    // What the package of source would lack, one sentence each (PackageContent::gaps); empty
    // when it is complete. Reads the objects as Generate does and fails as it does.
    static QStringList Check(const PackageSource& source);

    // What the last complete run wrote.
    qint32 pageCount() const;
    QList<ContentsEntry> contents() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

}  // namespace ZebPackage
