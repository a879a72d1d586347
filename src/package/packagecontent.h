#pragma once

#include "zebpackage_export.h"

#include "contracts/packagesource.h"
#include "package/revisionmarks.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace ZebPackage {

// A BOM column, in the order the columns print from left to right. The line number leads
// whenever any column is chosen.
// A resubmittal's change mark (Rev) leads before the line number.
enum class BomColumn {
    Line,
    Type,
    Quantity,
    Brand,
    Manufacturer,
    CatalogNumber,
    Description,
    GroupCodes,
    MTO,
    Rev
};

// Everything a package prints, read from the job's objects in one go, so that a failing object
// stops the export before a file is touched.
struct ZEBPACKAGE_EXPORT PackageContent {
    struct Recipient {
        QString Name;
        QString Company;
        PostalAddress Address;
    };
    struct Line {
        // The line's number as the line items show it: its place in the job.
        qint32 Number = 0;
        // One text per chosen column, in column order.
        QStringList Cells;
        // Empty when the line has no comment or comments are not chosen.
        QString Comment;
    };

    QString JobName;
    QString JobNumber;
    QString IssuedBy;
    // ISO text as the submittal holds it, and the same date as it prints.
    QString DateIso;
    QString DateText;
    QString Purpose;
    Letterhead Office;

    bool IncludeCoverLetter = false;
    bool IncludeBOM = false;
    bool IncludeLabels = false;

    // Cover letter.
    bool HasLetterOptions = false;
    bool IncludeLogo = false;
    bool SeparateLetters = false;
    bool IncludeCarbonCopy = false;
    QList<Recipient> Recipients;
    // Only the texts the letter prints: selected, in saved order, and only when chosen.
    QStringList Paragraphs;
    QStringList Remarks;

    // Bill of materials.
    bool HasBOMOptions = false;
    QList<BomColumn> Columns;
    // The ticked lines only.
    QList<Line> Lines;
    // Lines of the job that are not ticked and so not printed.
    qint32 LinesLeftOut = 0;
    QStringList DefaultRemarks;

    // Labels: one entry per included customer, its lines in print order (at most five, blank
    // values left out).
    bool HasLabelFields = false;
    qint32 LabelFieldCount = 0;
    QList<QStringList> Labels;

    // Cut sheets: each ticked line's type once, in the order of the lines, with the sheets
    // attached to it (none for a type that lacks them). Empty when the job has no cut sheet at
    // all, and then the package has no cut sheet part.
    struct SheetType {
        QString Type;
        QList<CutSheet> Sheets;
    };
    QList<SheetType> CutSheetTypes;
    // The revision the package is, and what changed since the one before.
    RevisionMarks Revision;

    static constexpr qint32 MaximumLabelLines = 5;

    static PackageContent read(const PackageSource& source);
    // What the package lacks before it goes out, one sentence each, in the package's order:
    // no date, a letter without recipients, no ticked line, a part included that prints
    // nothing. Empty when the package is complete.
    QStringList gaps() const;
    static QString columnTitle(BomColumn column);
    // Puts the revision's marks in: the "Rev" column before the line number (when the bill of
    // materials has columns) with the change mark on the lines that changed.
    void markRevision(const RevisionMarks& marks);
};

}  // namespace ZebPackage
