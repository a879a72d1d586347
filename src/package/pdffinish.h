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
    // Another PDF whose pages follow the drawn ones: their content is copied as it is, shrunk
    // a little onto the page to free a strip at the foot for a stamp.
    struct Sheet {
        QString fileName;
        QByteArray pdf;
        // The pages the file must have; a file that has others fails.
        qint32 pageCount = 0;
        // What the stamp says before "Page n of m".
        QString stamp;
    };

    // The finished file: pdf's pages, then each sheet's pages in turn; outline and links count
    // pages over the whole; every page is labelled with its number from 1. Fails with
    // std::exception when pdf or a sheet is no PDF qpdf can read.
    static QByteArray finish(const QByteArray& pdf, const Info& info, const Navigation& navigation,
                             const QList<Sheet>& sheets = {});

    // The bookmarks of a finished file, depth first, each with its level and the page it opens
    // (-1 when it opens none). Fails with std::exception when pdf is no PDF qpdf can read.
    static QList<Bookmark> outline(const QByteArray& pdf);

    // The strip at the foot of a sheet's page that holds the stamp, in PDF points.
    static constexpr qreal StampStrip = 14.0;
};

}  // namespace ZebPackage
