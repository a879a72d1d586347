#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

namespace ZebPackage {

// What a package of a resubmittal tells its reader about the revision it is: its number on the
// cover letter and the contents page, a change mark on each line added or changed since the
// revision before, and the lines that revision printed which the job no longer has.
struct RevisionMarks {
    // 0 for the first submittal, which prints no revision.
    qint32 Revision = 0;
    // Numbers of the lines (as printed) that carry the change mark.
    QSet<qint32> ChangedLines;
    // One line of text each.
    QStringList RemovedLines;

    bool isResubmittal() const { return Revision > 0; }
    // "Revision 1".
    QString title() const { return QStringLiteral("Revision %1").arg(Revision); }
    // The mark in the "Rev" column.
    static QString changeMark() { return QStringLiteral("\u0394"); }
};

}  // namespace ZebPackage
