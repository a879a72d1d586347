#include "package/sheetappender.h"

#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>

#include <set>
#include <stdexcept>

namespace ZebPackage {

namespace {

// A matrix as a content stream writes it.
struct Matrix {
    double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

    // This matrix applied after other, as a content stream's "cm" concatenates.
    Matrix after(const Matrix& other) const
    {
        return {other.a * a + other.b * c,     other.a * b + other.b * d,
                other.c * a + other.d * c,     other.c * b + other.d * d,
                other.e * a + other.f * c + e, other.e * b + other.f * d + f};
    }
    std::pair<double, double> map(double x, double y) const
    {
        return {a * x + c * y + e, b * x + d * y + f};
    }

    std::string cm() const
    {
        return QStringLiteral("%1 %2 %3 %4 %5 %6 cm\n")
            .arg(a, 0, 'f', 4)
            .arg(b, 0, 'f', 4)
            .arg(c, 0, 'f', 4)
            .arg(d, 0, 'f', 4)
            .arg(e, 0, 'f', 4)
            .arg(f, 0, 'f', 4)
            .toStdString();
    }
};

// The page as a reader shows it: its width and height after rotation, and the matrices from
// that upright view to the page's own space and back.
struct View {
    double width = 0;
    double height = 0;
    Matrix toPage;
    Matrix fromPage;
};

View viewOf(double x0, double y0, double x1, double y1, int rotate)
{
    const double w = x1 - x0;
    const double h = y1 - y0;
    switch (rotate) {
    case 90: return {h, w, {0, 1, -1, 0, x1, y0}, {0, -1, 1, 0, -y0, x1}};
    case 180: return {w, h, {-1, 0, 0, -1, x1, y1}, {-1, 0, 0, -1, x1, y1}};
    case 270: return {h, w, {0, -1, 1, 0, x0, y1}, {0, 1, -1, 0, y1, -x0}};
    default: return {w, h, {1, 0, 0, 1, x0, y0}, {1, 0, 0, 1, -x0, -y0}};
    }
}

// A literal string of the standard fonts' Latin encoding; what it lacks prints as "?".
std::string literal(const QString& text)
{
    std::string out = "(";
    for (const QChar ch : text) {
        const char16_t u = ch.unicode();
        char c = u < 0x20 || u > 0xff || (u >= 0x7f && u < 0xa0) ? '?' : char(u);
        if (c == '(' || c == ')' || c == '\\')
            out += '\\';
        out += c;
    }
    return out + ")";
}

std::runtime_error sheetFailure(const PdfFinish::Sheet& sheet, const std::string& why)
{
    return std::runtime_error("the cut sheet \"" + sheet.fileName.toStdString() + "\" " + why);
}

}  // namespace

SheetAppender::SheetAppender() = default;

SheetAppender::~SheetAppender() = default;

void SheetAppender::append(QPDF& doc, const QList<PdfFinish::Sheet>& sheets)
{
    if (sheets.isEmpty())
        return;
    QPDFPageDocumentHelper pages(doc);
    qint64 total = qint64(pages.getAllPages().size());
    for (const PdfFinish::Sheet& sheet : sheets)
        total += sheet.pageCount;
    qint64 number = qint64(pages.getAllPages().size());

    if (!m_font.isInitialized()) {
        m_font = doc.makeIndirectObject(QPDFObjectHandle::parse(
            "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>"));
    }
    std::set<QPDFObjGen> used;
    for (const PdfFinish::Sheet& sheet : sheets) {
        QPDF*& source = m_byData[sheet.pdf.constData()];
        if (!source) {
            auto opened = std::make_unique<QPDF>();
            opened->setSuppressWarnings(true);
            try {
                opened->processMemoryFile(sheet.fileName.toStdString().c_str(),
                                          sheet.pdf.constData(), std::size_t(sheet.pdf.size()));
                opened->pushInheritedAttributesToPage();
            } catch (const std::exception& e) {
                throw sheetFailure(sheet, std::string("cannot be read: ") + e.what());
            }
            source = opened.get();
            m_sources.push_back(std::move(opened));
        }
        const std::vector<QPDFPageObjectHelper> own = QPDFPageDocumentHelper(*source).getAllPages();
        if (qint64(own.size()) != sheet.pageCount)
            throw sheetFailure(sheet, "has " + std::to_string(own.size()) + " pages, not "
                                          + std::to_string(sheet.pageCount));
        // Where each of the file's pages went this time, for the links between them.
        std::vector<QPDFObjectHandle> added;
        for (const QPDFPageObjectHelper& foreign : own) {
            ++number;
            QPDFObjectHandle copied = doc.copyForeignObject(foreign.getObjectHandle());
            QPDFObjectHandle& form = m_forms[copied.getObjGen()];
            if (!form.isInitialized())
                form = QPDFPageObjectHelper(copied).getFormXObjectForPage(false);

            QPDFObjectHandle box = copied.getKey("/CropBox");
            if (!box.isRectangle())
                box = copied.getKey("/MediaBox");
            if (!box.isRectangle())
                throw sheetFailure(sheet, "has a page without a size");
            const QPDFObjectHandle::Rectangle r = box.getArrayAsRectangle();
            int rotate = 0;
            if (copied.getKey("/Rotate").isInteger())
                rotate = ((copied.getKey("/Rotate").getIntValueAsInt() % 360) + 360) % 360;
            const View view = viewOf(std::min(r.llx, r.urx), std::min(r.lly, r.ury),
                                     std::max(r.llx, r.urx), std::max(r.lly, r.ury), rotate);

            // The content shrinks toward the top, centred, so the strip at the foot is free.
            const double strip = PdfFinish::StampStrip;
            const double scale =
                view.height > 2 * strip ? (view.height - strip) / view.height : 1.0;
            const Matrix shrink{
                scale, 0, 0, scale, view.width * (1 - scale) / 2, view.height * (1 - scale)};
            std::string content =
                "q\n" + view.toPage.cm() + shrink.cm() + view.fromPage.cm() + "/ZebSheet Do\nQ\n";
            const QString stamp =
                QStringLiteral("%1Page %2 of %3").arg(sheet.stamp).arg(number).arg(total);
            content += "q\n" + view.toPage.cm() + "BT\n/ZebStamp 7 Tf\n0.25 g\n18 4.5 Td\n"
                       + literal(stamp) + " Tj\nET\nQ\n";

            QPDFObjectHandle page = doc.makeIndirectObject(copied.shallowCopy());
            page.removeKey("/Parent");
            // A page printed a second time does not share the first one's annotations; the first
            // time, its links move with the shrunk content.
            if (!used.insert(copied.getObjGen()).second) {
                page.removeKey("/Annots");
            } else if (page.getKey("/Annots").isArray()) {
                // The page's own space to the shrunk view and back: what the content went through.
                const Matrix moved = view.toPage.after(shrink).after(view.fromPage);
                for (QPDFObjectHandle annot : page.getKey("/Annots").aitems()) {
                    if (!annot.isDictionary() || !annot.getKey("/Rect").isRectangle())
                        continue;
                    const QPDFObjectHandle::Rectangle old =
                        annot.getKey("/Rect").getArrayAsRectangle();
                    const auto [x1, y1] = moved.map(old.llx, old.lly);
                    const auto [x2, y2] = moved.map(old.urx, old.ury);
                    annot.replaceKey("/Rect",
                                     QPDFObjectHandle::newArray(QPDFObjectHandle::Rectangle(
                                         std::min(x1, x2), std::min(y1, y2), std::max(x1, x2),
                                         std::max(y1, y2))));
                    if (annot.hasKey("/P"))
                        annot.replaceKey("/P", page);
                }
            }
            QPDFObjectHandle resources = QPDFObjectHandle::newDictionary();
            QPDFObjectHandle xobjects = QPDFObjectHandle::newDictionary();
            xobjects.replaceKey("/ZebSheet", form);
            resources.replaceKey("/XObject", xobjects);
            QPDFObjectHandle fonts = QPDFObjectHandle::newDictionary();
            fonts.replaceKey("/ZebStamp", m_font);
            resources.replaceKey("/Font", fonts);
            page.replaceKey("/Resources", resources);
            page.replaceKey("/Contents", QPDFObjectHandle::newStream(&doc, content));
            pages.addPage(QPDFPageObjectHelper(page), false);
            added.push_back(page);
        }
        // A link to another page of the same file opens that page where it printed. The copy
        // leaves such links without their page, so they are read from the file itself.
        std::map<QPDFObjGen, std::size_t> indexOf;
        for (std::size_t i = 0; i < own.size(); ++i)
            indexOf[QPDFObjectHandle(own[i].getObjectHandle()).getObjGen()] = i;
        const auto targetOf = [&indexOf](QPDFObjectHandle dest) -> std::ptrdiff_t {
            if (!dest.isArray() || dest.getArrayNItems() == 0)
                return -1;
            const auto at = indexOf.find(dest.getArrayItem(0).getObjGen());
            return at == indexOf.end() ? -1 : std::ptrdiff_t(at->second);
        };
        for (std::size_t i = 0; i < own.size() && i < added.size(); ++i) {
            QPDFObjectHandle theirs = QPDFObjectHandle(own[i].getObjectHandle()).getKey("/Annots");
            QPDFObjectHandle ours = added[i].getKey("/Annots");
            if (!theirs.isArray() || !ours.isArray()
                || theirs.getArrayNItems() != ours.getArrayNItems())
                continue;
            for (int j = 0; j < theirs.getArrayNItems(); ++j) {
                QPDFObjectHandle from = theirs.getArrayItem(j);
                QPDFObjectHandle to = ours.getArrayItem(j);
                if (!from.isDictionary() || !to.isDictionary())
                    continue;
                if (const std::ptrdiff_t t = targetOf(from.getKey("/Dest"));
                    t >= 0 && to.getKey("/Dest").isArray())
                    to.getKey("/Dest").setArrayItem(0, added[std::size_t(t)]);
                if (from.getKey("/A").isDictionary() && to.getKey("/A").isDictionary()) {
                    if (const std::ptrdiff_t t = targetOf(from.getKey("/A").getKey("/D"));
                        t >= 0 && to.getKey("/A").getKey("/D").isArray())
                        to.getKey("/A").getKey("/D").setArrayItem(0, added[std::size_t(t)]);
                }
            }
        }
    }
}

}  // namespace ZebPackage
