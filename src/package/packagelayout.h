#pragma once

#include "package/packagegenerator.h"
#include "package/pdffinish.h"

#include <QList>

#include <memory>

class QPainter;
class QPdfWriter;
class QSizeF;

namespace ZebPackage {

struct PackageContent;

// Lays the package out on pages of one paper size and draws them: the contents first, then the
// cover letters, the bill of materials and the labels, each page with the package's footer.
class PackageLayout {
public:
    // The resolution the pages are laid out and drawn at (dots per inch).
    static constexpr int kResolution = 300;

    // Lays out on device, whose resolution is kResolution; content and device outlive the layout.
    PackageLayout(const PackageContent& content, QPdfWriter& device, const QSizeF& paperInches);
    ~PackageLayout();
    PackageLayout(const PackageLayout&) = delete;
    PackageLayout& operator=(const PackageLayout&) = delete;

    // Breaks every part into pages; the counts, contents and navigation below are known after it.
    void plan();
    // Every page of the package, the cut sheets' included.
    qint32 pageCount() const;
    // The pages drawn here; the cut sheets' pages follow them.
    qint32 drawnPageCount() const;
    // The cut sheets the merge appends after the drawn pages, in package order.
    const QList<PdfFinish::Sheet>& sheets() const;
    QList<ContentsEntry> contents() const;
    // Draws page index (0-based, the contents pages first) with its footer.
    void drawPage(QPainter& painter, qint32 index) const;
    // What the finished file gets besides its pages: bookmarks, links and the page rectangles
    // in PDF points, with pages counted from 0.
    PdfFinish::Navigation navigation() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

}  // namespace ZebPackage
