#include "package/pdffinish.h"

#include "package/sheetappender.h"

// qpdf's headers without the old pointer type.
#define POINTERHOLDER_TRANSITION 4

#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFOutlineDocumentHelper.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>
#include <qpdf/QPDFWriter.hh>

#include <functional>
#include <map>
#include <stdexcept>
#include <vector>

namespace ZebPackage {

namespace {

QPDFObjectHandle text(const QString& value)
{
    return QPDFObjectHandle::newUnicodeString(value.toStdString());
}

// Opens the top of the page.
QPDFObjectHandle destination(const std::vector<QPDFPageObjectHelper>& pages, qint32 page)
{
    if (page < 0 || std::size_t(page) >= pages.size())
        throw std::out_of_range("a bookmark or link names a page the document does not have");
    QPDFObjectHandle dest = QPDFObjectHandle::newArray();
    dest.appendItem(pages[std::size_t(page)].getObjectHandle());
    dest.appendItem(QPDFObjectHandle::newName("/Fit"));
    return dest;
}

struct Node {
    QPDFObjectHandle object;
    std::vector<std::size_t> children;
};

}  // namespace

QByteArray PdfFinish::finish(const QByteArray& pdf, const Info& info, const Navigation& navigation,
                             const QList<Sheet>& sheets)
{
    // The sheets' files are read while the package is written, so they outlive it.
    SheetAppender appender;
    QPDF doc;
    doc.setSuppressWarnings(true);
    doc.processMemoryFile("package.pdf", pdf.constData(), std::size_t(pdf.size()));
    appender.append(doc, sheets);
    const std::vector<QPDFPageObjectHelper> pages = QPDFPageDocumentHelper(doc).getAllPages();

    QPDFObjectHandle trailer = doc.getTrailer();
    QPDFObjectHandle dict = trailer.getKey("/Info");
    if (!dict.isDictionary()) {
        dict = doc.makeIndirectObject(QPDFObjectHandle::newDictionary());
        trailer.replaceKey("/Info", dict);
    }
    const std::pair<const char*, QString> facts[] = {{"/Title", info.title},
                                                     {"/Author", info.author},
                                                     {"/Subject", info.subject},
                                                     {"/Keywords", info.keywords}};
    for (const auto& [key, value] : facts) {
        if (value.isEmpty())
            dict.removeKey(key);
        else
            dict.replaceKey(key, text(value));
    }

    QPDFObjectHandle root = doc.getRoot();
    if (!navigation.outline.isEmpty()) {
        // Each bookmark under the last one of the level above it.
        QPDFObjectHandle outlines = doc.makeIndirectObject(QPDFObjectHandle::newDictionary());
        outlines.replaceKey("/Type", QPDFObjectHandle::newName("/Outlines"));
        std::vector<Node> nodes;
        nodes.push_back({outlines, {}});
        std::vector<std::size_t> parents{0};
        for (const Bookmark& mark : navigation.outline) {
            const std::size_t level = std::size_t(std::max<qint32>(0, mark.level));
            while (parents.size() > level + 1)
                parents.pop_back();
            QPDFObjectHandle item = doc.makeIndirectObject(QPDFObjectHandle::newDictionary());
            item.replaceKey("/Title", text(mark.title));
            item.replaceKey("/Dest", destination(pages, mark.page));
            nodes.push_back({item, {}});
            nodes[parents.back()].children.push_back(nodes.size() - 1);
            parents.push_back(nodes.size() - 1);
        }
        for (Node& node : nodes) {
            if (node.children.empty())
                continue;
            for (std::size_t i = 0; i < node.children.size(); ++i) {
                QPDFObjectHandle child = nodes[node.children[i]].object;
                child.replaceKey("/Parent", node.object);
                if (i > 0)
                    child.replaceKey("/Prev", nodes[node.children[i - 1]].object);
                if (i + 1 < node.children.size())
                    child.replaceKey("/Next", nodes[node.children[i + 1]].object);
            }
            node.object.replaceKey("/First", nodes[node.children.front()].object);
            node.object.replaceKey("/Last", nodes[node.children.back()].object);
            // Open: every bookmark shows.
            node.object.replaceKey("/Count", QPDFObjectHandle::newInteger(
                                                 static_cast<long long>(node.children.size())));
        }
        root.replaceKey("/Outlines", outlines);
        root.replaceKey("/PageMode", QPDFObjectHandle::newName("/UseOutlines"));
    }

    for (const Link& link : navigation.links) {
        if (link.page < 0 || std::size_t(link.page) >= pages.size())
            throw std::out_of_range("a link stands on a page the document does not have");
        QPDFObjectHandle page = pages[std::size_t(link.page)].getObjectHandle();
        QPDFObjectHandle annots = page.getKey("/Annots");
        if (!annots.isArray()) {
            annots = QPDFObjectHandle::newArray();
            page.replaceKey("/Annots", annots);
        }
        QPDFObjectHandle annot = doc.makeIndirectObject(QPDFObjectHandle::newDictionary());
        annot.replaceKey("/Type", QPDFObjectHandle::newName("/Annot"));
        annot.replaceKey("/Subtype", QPDFObjectHandle::newName("/Link"));
        annot.replaceKey("/Rect", QPDFObjectHandle::newArray(QPDFObjectHandle::Rectangle(
                                      link.rect.left(), link.rect.top(), link.rect.right(),
                                      link.rect.bottom())));
        QPDFObjectHandle border = QPDFObjectHandle::newArray();
        for (int i = 0; i < 3; ++i)
            border.appendItem(QPDFObjectHandle::newInteger(0));
        annot.replaceKey("/Border", border);
        annot.replaceKey("/Dest", destination(pages, link.target));
        annots.appendItem(annot);
    }

    // The labels a reader shows are the printed page numbers.
    QPDFObjectHandle labels = QPDFObjectHandle::newDictionary();
    QPDFObjectHandle nums = QPDFObjectHandle::newArray();
    nums.appendItem(QPDFObjectHandle::newInteger(0));
    QPDFObjectHandle decimal = QPDFObjectHandle::newDictionary();
    decimal.replaceKey("/S", QPDFObjectHandle::newName("/D"));
    nums.appendItem(decimal);
    labels.replaceKey("/Nums", nums);
    root.replaceKey("/PageLabels", labels);

    QPDFWriter writer(doc);
    writer.setOutputMemory();
    writer.write();
    const std::shared_ptr<Buffer> out = writer.getBufferSharedPointer();
    return QByteArray(reinterpret_cast<const char*>(out->getBuffer()), qsizetype(out->getSize()));
}

QList<PdfFinish::Bookmark> PdfFinish::outline(const QByteArray& pdf)
{
    QPDF doc;
    doc.setSuppressWarnings(true);
    doc.processMemoryFile("package.pdf", pdf.constData(), std::size_t(pdf.size()));
    std::map<QPDFObjGen, qint32> pageOf;
    qint32 index = 0;
    for (QPDFPageObjectHelper& page : QPDFPageDocumentHelper(doc).getAllPages())
        pageOf[page.getObjectHandle().getObjGen()] = index++;
    QList<Bookmark> out;
    QPDFOutlineDocumentHelper outlines(doc);
    const std::function<void(std::vector<QPDFOutlineObjectHelper>, qint32)> walk =
        [&](std::vector<QPDFOutlineObjectHelper> items, qint32 level) {
            for (QPDFOutlineObjectHelper& item : items) {
                QPDFObjectHandle page = item.getDestPage();
                const auto at = page.isDictionary() ? pageOf.find(page.getObjGen()) : pageOf.end();
                out.append({QString::fromStdString(item.getTitle()),
                            at == pageOf.end() ? -1 : at->second, level});
                walk(item.getKids(), level + 1);
            }
        };
    walk(outlines.getTopLevelOutlines(), 0);
    return out;
}

}  // namespace ZebPackage
