#include "package/packagegenerator.h"

#include "contracts/failure.h"
#include "package/packagecontent.h"
#include "contracts/packagesource.h"
#include "package/packagelayout.h"

#include "package/pdffinish.h"

#include <QBuffer>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

namespace ZebPackage {

namespace {

const QString kSource = QStringLiteral("ZebPackage.PackageGenerator");

[[noreturn]] void cannotWrite(const QString& path, const QString& why)
{
    throw ZebObjects::Failure(ZebObjects::ErrorNumber::PathFileAccessError, kSource,
                              QStringLiteral("Path/File access error: %1 (%2)").arg(path, why));
}

QByteArray xmpMetadata(const PackageContent& c)
{
    const auto alt = [](const QString& text) {
        return QStringLiteral("<rdf:Alt><rdf:li xml:lang=\"x-default\">%1</rdf:li></rdf:Alt>")
            .arg(text.toHtmlEscaped());
    };
    QString xml = QStringLiteral(
        "<?xpacket begin=\"\uFEFF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
        "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
        "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
        "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\" "
        "xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\" xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\">\n");
    xml += QStringLiteral("<dc:title>%1</dc:title>\n").arg(alt(c.JobName));
    xml += QStringLiteral("<dc:description>%1</dc:description>\n").arg(alt(c.Purpose));
    if (!c.IssuedBy.isEmpty())
        xml += QStringLiteral("<dc:creator><rdf:Seq><rdf:li>%1</rdf:li></rdf:Seq></dc:creator>\n")
                   .arg(c.IssuedBy.toHtmlEscaped());
    if (!c.DateIso.isEmpty())
        xml += QStringLiteral("<dc:date><rdf:Seq><rdf:li>%1</rdf:li></rdf:Seq></dc:date>\n")
                   .arg(c.DateIso.toHtmlEscaped());
    xml += QStringLiteral("<pdf:Keywords>%1</pdf:Keywords>\n")
               .arg(QStringList{c.JobName, c.JobNumber, c.Purpose, c.DateText}
                        .join(QStringLiteral("; "))
                        .toHtmlEscaped());
    xml += QStringLiteral("<xmp:CreatorTool>ZebSubmittalControls</xmp:CreatorTool>\n"
                          "</rdf:Description>\n</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end=\"w\"?>");
    return xml.toUtf8();
}

}  // namespace

struct PackageGenerator::Private {
    PaperSize paper = PaperSize::Letter;
    Progress progress;
    qint32 pages = 0;
    QList<ContentsEntry> contents;
    RevisionMarks revision;
};

PackageGenerator::PackageGenerator() : d(std::make_unique<Private>()) { }

PackageGenerator::~PackageGenerator() = default;

PackageGenerator::PaperSize PackageGenerator::paperSize() const
{
    return d->paper;
}

void PackageGenerator::setPaperSize(PaperSize size)
{
    d->paper = size;
}

void PackageGenerator::setRevision(const RevisionMarks& marks)
{
    d->revision = marks;
}

void PackageGenerator::setProgress(Progress progress)
{
    d->progress = std::move(progress);
}

qint32 PackageGenerator::pageCount() const
{
    return d->pages;
}

QList<ContentsEntry> PackageGenerator::contents() const
{
    return d->contents;
}

QStringList PackageGenerator::Check(const PackageSource& source)
{
    return PackageContent::read(source).gaps();
}

bool PackageGenerator::Generate(const PackageSource& source, const QString& path)
{
    // Every business object is read before the file is opened.
    PackageContent content = PackageContent::read(source);
    content.markRevision(d->revision);

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        cannotWrite(path, file.errorString());
    const QPageSize pageSize(d->paper == PaperSize::A4 ? QPageSize::A4 : QPageSize::Letter);
    qint32 pages = 0;
    qint32 drawnPages = 0;
    QList<PdfFinish::Sheet> sheets;
    QList<ContentsEntry> contents;
    QBuffer drawn;
    drawn.open(QIODevice::WriteOnly);
    PdfFinish::Navigation navigation;
    {
        QPdfWriter writer(&drawn);
        writer.setPageSize(pageSize);
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        writer.setResolution(PackageLayout::kResolution);
        writer.setTitle(content.JobName);
        writer.setCreator(QStringLiteral("ZebSubmittalControls"));
        writer.setDocumentXmpMetadata(xmpMetadata(content));

        PackageLayout layout(content, writer, pageSize.size(QPageSize::Inch));
        layout.plan();
        pages = layout.pageCount();
        drawnPages = layout.drawnPageCount();
        sheets = layout.sheets();
        contents = layout.contents();
        navigation = layout.navigation();

        QPainter painter;
        if (!painter.begin(&writer))
            cannotWrite(path, QStringLiteral("the PDF could not be started"));
        const auto cancelled = [&](qint32 done) {
            if (!d->progress || d->progress(done, pages))
                return false;
            painter.end();
            file.cancelWriting();
            return true;
        };
        if (cancelled(0))
            return false;
        for (qint32 page = 0; page < drawnPages; ++page) {
            if (page > 0)
                writer.newPage();
            layout.drawPage(painter, page);
            if (cancelled(page + 1))
                return false;
        }
        painter.end();
    }
    drawn.close();

    // The drawn pages get their bookmarks, links and document facts.
    PdfFinish::Info info;
    info.title = content.JobName;
    info.author = content.IssuedBy;
    info.subject =
        content.JobNumber.isEmpty()
            ? QStringLiteral("Submittal: ") + content.Purpose
            : QStringLiteral("Submittal of job %1: %2").arg(content.JobNumber, content.Purpose);
    QStringList keywords{QStringLiteral("submittal"), content.JobNumber, content.JobName,
                         content.Purpose};
    if (!content.Office.Name.isEmpty())
        keywords << content.Office.Name;
    keywords.removeAll(QString());
    info.keywords = keywords.join(QStringLiteral("; "));
    QByteArray finished;
    try {
        finished = PdfFinish::finish(drawn.data(), info, navigation, sheets);
    } catch (const std::exception& e) {
        file.cancelWriting();
        cannotWrite(path, QString::fromLocal8Bit(e.what()));
    }
    // The cut sheets' pages are written by the merge, the last step; a cancel then still
    // leaves nothing.
    if (drawnPages < pages && d->progress && !d->progress(pages, pages)) {
        file.cancelWriting();
        return false;
    }
    if (file.write(finished) != finished.size()) {
        const QString why = file.errorString();
        file.cancelWriting();
        cannotWrite(path, why);
    }
    if (!file.commit())
        cannotWrite(path, file.errorString());
    d->pages = pages;
    d->contents = contents;
    return true;
}

}  // namespace ZebPackage
