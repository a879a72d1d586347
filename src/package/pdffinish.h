#pragma once

#include "zebpackage_export.h"

#include <QByteArray>
#include <QList>
#include <QRectF>
#include <QString>

namespace ZebPackage {

// Gives a drawn PDF what the drawing cannot: the document's facts, bookmarks and links between
// its pages. Works on the file's objects through qpdf, so the result is a well-formed PDF with
// its cross-reference table written anew.
class ZEBPACKAGE_EXPORT PdfFinish {
public:
    struct Info {
        QString title;
        QString author;
        QString subject;
        QString keywords;
    };
    struct Bookmark {
        QString title;
        // 0-based page the bookmark opens.
        qint32 page = 0;
        // 0 at the top; 1 below the last bookmark of level 0 before it.
        qint32 level = 0;
    };
    struct Link {
        // 0-based page that holds the link, and the page it opens.
        qint32 page = 0;
        qint32 target = 0;
        // In PDF points, from the page's lower left corner.
        QRectF rect;
    };
    struct Navigation {
        QList<Bookmark> outline;
        QList<Link> links;
    };

    // The finished file. Fails with std::exception when pdf is no PDF qpdf can read.
    static QByteArray finish(const QByteArray& pdf, const Info& info, const Navigation& navigation);
};

}  // namespace ZebPackage
