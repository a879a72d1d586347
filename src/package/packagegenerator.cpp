#include "package/packagegenerator.h"

#include "contracts/failure.h"
#include "package/agencylogo.h"
#include "package/packagecontent.h"
#include "package/packagesource.h"
#include "package/textblock.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>
#include <functional>
#include <vector>

namespace ZebPackage {

namespace {

const QString kSource = QStringLiteral("ZebPackage.PackageGenerator");
constexpr int kResolution = 300;
const QString kFontFamily = QStringLiteral("DejaVu Sans");

// Label stock: 1" x 2 5/8" labels, three across and ten down, 1/8" between columns.
constexpr qreal kLabelWidth = 2.625;
constexpr qreal kLabelHeight = 1.0;
constexpr qreal kLabelColumnGap = 0.125;
constexpr int kLabelColumns = 3;
constexpr int kLabelRows = 10;
constexpr qreal kLabelPadding = 0.09;
constexpr qreal kLabelFontSize = 10.0;
constexpr qreal kLabelSmallestFontSize = 6.0;

QFont makeFont(qreal points, bool bold = false, bool italic = false)
{
    QFont font(kFontFamily);
    font.setPointSizeF(points);
    font.setBold(bold);
    font.setItalic(italic);
    // Without ligatures a reader copies "fi" as two letters, not as one ligature character.
    font.setLetterSpacing(QFont::AbsoluteSpacing, 0.02);
    return font;
}

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
    if (!c.DateIso.isEmpty())
        xml += QStringLiteral("<dc:date><rdf:Seq><rdf:li>%1</rdf:li></rdf:Seq></dc:date>\n")
                   .arg(c.DateIso.toHtmlEscaped());
    xml += QStringLiteral("<pdf:Keywords>%1</pdf:Keywords>\n")
               .arg(QStringList{c.JobName, c.JobNumber, c.Purpose, c.DateText}.join(QStringLiteral("; ")).toHtmlEscaped());
    xml += QStringLiteral("<xmp:CreatorTool>ZebSubmittalControls</xmp:CreatorTool>\n"
                          "</rdf:Description>\n</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end=\"w\"?>");
    return xml.toUtf8();
}

// Lays the package out on pages of one paper size and draws them.
class PackageLayout {
public:
    PackageLayout(const PackageContent& content, QPdfWriter& device, const QSizeF& paperInches)
        : m_c(content), m_device(device)
    {
        m_pageWidth = paperInches.width() * kResolution;
        m_pageHeight = paperInches.height() * kResolution;
        m_margin = pt(54);
        m_bodyWidth = m_pageWidth - 2 * m_margin;
    }

    void plan()
    {
        if (m_c.IncludeCoverLetter)
            planLetters();
        if (m_c.IncludeBOM)
            planBOM();
        if (m_c.IncludeLabels)
            planLabels();
        planContents();
    }

    qint32 pageCount() const { return qint32(m_contentsPages.size() + m_pages.size()); }
    QList<ContentsEntry> contents() const { return m_entries; }

    void drawPage(QPainter& painter, qint32 index) const
    {
        if (index < qint32(m_contentsPages.size()))
            m_contentsPages[std::size_t(index)](painter);
        else
            m_pages[std::size_t(index) - m_contentsPages.size()](painter);
    }

private:
    using Page = std::function<void(QPainter&)>;

    qreal pt(qreal points) const { return points * kResolution / 72.0; }
    qreal inch(qreal inches) const { return inches * kResolution; }
    qreal bodyBottom() const { return m_pageHeight - m_margin; }

    TextBlock block(const QString& text, const QFont& font, qreal width,
                    Qt::Alignment alignment = Qt::AlignLeft) const
    {
        return TextBlock(text, font, width, &m_device, alignment);
    }

    void startPart(const QString& title)
    {
        m_entries.append({title, qint32(m_pages.size()) + 1});
    }

    // A page that only says why a part has nothing to print.
    void messagePage(const QString& title, const QString& message)
    {
        const TextBlock heading = block(title, makeFont(16, true), m_bodyWidth);
        const TextBlock body = block(message, makeFont(11), m_bodyWidth);
        const qreal top = m_margin;
        const qreal gap = pt(18);
        m_pages.push_back([=, this](QPainter& p) {
            heading.draw(p, QPointF(m_margin, top));
            body.draw(p, QPointF(m_margin, top + heading.height() + gap));
        });
    }

    // ---- cover letters -------------------------------------------------------------------

    void planLetters()
    {
        if (!m_c.HasLetterOptions) {
            startPart(QStringLiteral("Cover Letter"));
            messagePage(QStringLiteral("Cover Letter"),
                        QStringLiteral("The submittal has no cover letter options, so no cover "
                                       "letter is printed."));
            return;
        }
        if (m_c.Recipients.isEmpty()) {
            startPart(QStringLiteral("Cover Letter"));
            messagePage(QStringLiteral("Cover Letter"),
                        QStringLiteral("The submittal has no recipients, so no cover letter is "
                                       "printed."));
            return;
        }
        if (!m_c.SeparateLetters) {
            startPart(QStringLiteral("Cover Letter"));
            addLetter(m_c.Recipients, {});
            return;
        }
        for (qsizetype i = 0; i < m_c.Recipients.size(); ++i) {
            const auto& to = m_c.Recipients[i];
            QList<PackageContent::Recipient> copies;
            if (m_c.IncludeCarbonCopy) {
                copies = m_c.Recipients;
                copies.removeAt(i);
            }
            startPart(QStringLiteral("Cover Letter: ") + recipientLine(to));
            addLetter({to}, copies);
        }
    }

    static QString recipientLine(const PackageContent::Recipient& r)
    {
        if (r.Company.isEmpty())
            return r.Name;
        if (r.Name.isEmpty())
            return r.Company;
        return r.Name + QStringLiteral(", ") + r.Company;
    }

    static QString inOneParagraph(QString text)
    {
        text.replace(QStringLiteral("\r\n"), QString(QChar::LineSeparator));
        text.replace(QLatin1Char('\r'), QChar::LineSeparator);
        text.replace(QLatin1Char('\n'), QChar::LineSeparator);
        return text;
    }

    void addLetter(const QList<PackageContent::Recipient>& to,
                   const QList<PackageContent::Recipient>& copies)
    {
        auto doc = std::make_shared<QTextDocument>();
        doc->documentLayout()->setPaintDevice(&m_device);
        doc->setDefaultFont(makeFont(10.5));
        doc->setDocumentMargin(0);
        const qreal bodyHeight = m_pageHeight - 2 * m_margin;
        doc->setPageSize(QSizeF(m_bodyWidth, bodyHeight));

        QTextCursor cursor(doc.get());
        bool first = true;
        const qreal logoSide = inch(0.75);
        // Block spacing in the document's own units, which the layout scales to the device.
        const qreal scale = documentScale();
        const auto paragraph = [&](const QString& text, const QTextCharFormat& chars,
                                   qreal spaceAfter, qreal spaceBefore = 0) {
            QTextBlockFormat format;
            format.setBottomMargin(spaceAfter / scale);
            format.setTopMargin(spaceBefore / scale);
            if (first) {
                cursor.setBlockFormat(format);
                first = false;
            } else {
                cursor.insertBlock(format);
            }
            cursor.insertText(inOneParagraph(text), chars);
        };
        if (m_c.IncludeLogo) {
            // An empty line as tall as the mark keeps the text below it.
            QTextBlockFormat format;
            format.setLineHeight((logoSide + pt(18)) / scale, QTextBlockFormat::FixedHeight);
            cursor.setBlockFormat(format);
            first = false;
            cursor.insertBlock(QTextBlockFormat());
        }
        QTextCharFormat plain;
        plain.setFont(makeFont(10.5));
        QTextCharFormat bold;
        bold.setFont(makeFont(10.5, true));
        const qreal line = pt(12);

        if (!m_c.DateText.isEmpty())
            paragraph(m_c.DateText, plain, line * 1.5);
        if (to.size() == 1) {
            QStringList address;
            if (!to.first().Name.isEmpty())
                address << to.first().Name;
            if (!to.first().Company.isEmpty())
                address << to.first().Company;
            paragraph(address.join(QChar::LineSeparator), plain, line * 1.5);
        } else {
            paragraph(QStringLiteral("To:"), bold, pt(2));
            QStringList lines;
            for (const auto& r : to)
                lines << recipientLine(r);
            paragraph(lines.join(QChar::LineSeparator), plain, line * 1.5);
        }
        QString re = QStringLiteral("Re: ") + m_c.JobName;
        if (!m_c.JobNumber.isEmpty())
            re += QStringLiteral(" (Job ") + m_c.JobNumber + QLatin1Char(')');
        paragraph(re, bold, pt(3));
        paragraph(QStringLiteral("Purpose: ") + m_c.Purpose, bold, line * 1.5);
        for (const QString& text : m_c.Paragraphs)
            paragraph(text, plain, line);
        if (!m_c.Remarks.isEmpty()) {
            paragraph(QStringLiteral("Remarks:"), bold, pt(3), pt(4));
            for (const QString& text : m_c.Remarks)
                paragraph(QStringLiteral("\u2022  ") + text, plain, pt(4));
        }
        paragraph(QStringLiteral("Sincerely,"), plain, line * 2.5, line);
        if (!m_c.IssuedBy.isEmpty())
            paragraph(m_c.IssuedBy, plain, line);
        if (!copies.isEmpty()) {
            QStringList lines;
            for (const auto& r : copies)
                lines << recipientLine(r);
            paragraph(QStringLiteral("cc:"), bold, pt(2), line);
            paragraph(lines.join(QChar::LineSeparator), plain, 0);
        }

        const int pages = std::max(1, doc->pageCount());
        const bool logo = m_c.IncludeLogo;
        for (int page = 0; page < pages; ++page) {
            m_pages.push_back([=, this](QPainter& p) {
                if (logo && page == 0)
                    AgencyLogo::draw(p, QRectF(m_margin, m_margin, logoSide, logoSide));
                p.save();
                p.translate(m_margin, m_margin - page * bodyHeight);
                const QRectF clip(0, page * bodyHeight, m_bodyWidth, bodyHeight);
                p.setClipRect(clip);
                QAbstractTextDocumentLayout::PaintContext context;
                context.clip = clip;
                context.palette.setColor(QPalette::Text, Qt::black);
                doc->documentLayout()->draw(&p, context);
                p.restore();
            });
        }
    }

    // How many device pixels one unit of a block's spacing takes: the text layout scales spacing
    // from the screen's resolution to the device's.
    qreal documentScale() const
    {
        QTextDocument probe;
        probe.documentLayout()->setPaintDevice(&m_device);
        probe.setDocumentMargin(0);
        QTextCursor cursor(&probe);
        cursor.insertText(QStringLiteral("x"));
        QTextBlockFormat spaced;
        spaced.setTopMargin(1000);
        cursor.insertBlock(spaced);
        cursor.insertText(QStringLiteral("x"));
        probe.documentLayout()->documentSize();
        const QTextLayout* first = probe.firstBlock().layout();
        const QTextLayout* second = probe.lastBlock().layout();
        const qreal scale = (second->position().y() - first->position().y()
                             - first->boundingRect().height()) / 1000.0;
        return scale > 0 ? scale : 1.0;
    }

    // ---- bill of materials ---------------------------------------------------------------

    struct BomRow {
        std::vector<TextBlock> cells;
        TextBlock comment;
        qreal height = 0;
    };
    struct BomPage {
        std::vector<qsizetype> rows;
        std::vector<qsizetype> remarks;
        bool remarksHeading = false;
        bool message = false;
    };

    static qreal columnWeight(BomColumn column)
    {
        switch (column) {
        case BomColumn::Type: return 0.8;
        case BomColumn::Quantity: return 0.7;
        case BomColumn::Brand: return 1.6;
        case BomColumn::Manufacturer: return 1.9;
        case BomColumn::CatalogNumber: return 2.5;
        case BomColumn::Description: return 3.25;
        case BomColumn::GroupCodes: return 0.9;
        case BomColumn::MTO: return 0.75;
        }
        return 1;
    }

    void planBOM()
    {
        startPart(QStringLiteral("Bill of Materials"));
        if (!m_c.HasBOMOptions) {
            messagePage(QStringLiteral("Bill of Materials"),
                        QStringLiteral("The submittal has no bill of materials options, so no "
                                       "bill of materials is printed."));
            return;
        }
        const qreal pad = pt(3);
        const QFont cellFont = makeFont(8);
        const QFont headFont = makeFont(8, true);
        const QFont commentFont = makeFont(8, false, true);

        // Columns share the width by weight.
        qreal weights = 0;
        for (const BomColumn column : m_c.Columns)
            weights += columnWeight(column);
        auto xs = std::make_shared<std::vector<qreal>>();
        auto widths = std::make_shared<std::vector<qreal>>();
        qreal x = m_margin;
        for (const BomColumn column : m_c.Columns) {
            const qreal w = m_bodyWidth * columnWeight(column) / weights;
            xs->push_back(x);
            widths->push_back(w);
            x += w;
        }
        const auto alignmentOf = [](BomColumn column) {
            return column == BomColumn::Quantity || column == BomColumn::MTO ? Qt::AlignHCenter
                                                                             : Qt::AlignLeft;
        };

        auto header = std::make_shared<BomRow>();
        for (qsizetype i = 0; i < m_c.Columns.size(); ++i) {
            header->cells.push_back(block(PackageContent::columnTitle(m_c.Columns[i]), headFont,
                                          (*widths)[std::size_t(i)] - 2 * pad,
                                          alignmentOf(m_c.Columns[i])));
            header->height = std::max(header->height, header->cells.back().height() + 2 * pad);
        }

        const bool table = !m_c.Columns.isEmpty() && !m_c.Lines.isEmpty();
        auto rows = std::make_shared<std::vector<BomRow>>();
        if (table) {
            rows->reserve(std::size_t(m_c.Lines.size()));
            const qreal commentIndent = pt(18);
            for (const auto& line : m_c.Lines) {
                BomRow row;
                qreal h = 0;
                for (qsizetype i = 0; i < line.Cells.size(); ++i) {
                    row.cells.push_back(block(line.Cells[i], cellFont,
                                              (*widths)[std::size_t(i)] - 2 * pad,
                                              alignmentOf(m_c.Columns[i])));
                    h = std::max(h, row.cells.back().height());
                }
                row.height = h + 2 * pad;
                if (!line.Comment.trimmed().isEmpty()) {
                    row.comment = block(line.Comment, commentFont,
                                        m_bodyWidth - commentIndent - 2 * pad);
                    row.height += row.comment.height() + pad;
                }
                rows->push_back(std::move(row));
            }
        }
        auto remarks = std::make_shared<std::vector<TextBlock>>();
        for (const QString& text : m_c.DefaultRemarks)
            remarks->push_back(block(QStringLiteral("\u2022  ") + text, cellFont, m_bodyWidth));
        const TextBlock remarksHeading = block(QStringLiteral("Remarks"), headFont, m_bodyWidth);

        QString message;
        if (m_c.Columns.isEmpty())
            message = QStringLiteral("No columns are chosen for the bill of materials.");
        else if (m_c.Lines.isEmpty())
            message = QStringLiteral("The submittal has no lines.");
        const TextBlock messageBlock = block(message, makeFont(11), m_bodyWidth);

        // Page heads: title, job, and the purpose on the first page.
        const TextBlock title = block(QStringLiteral("Bill of Materials"), makeFont(15, true), m_bodyWidth);
        QString job = m_c.JobName;
        if (!m_c.JobNumber.isEmpty())
            job += QStringLiteral("  \u2014  Job ") + m_c.JobNumber;
        if (!m_c.DateText.isEmpty())
            job += QStringLiteral("  \u2014  ") + m_c.DateText;
        const TextBlock jobBlock = block(job, makeFont(9), m_bodyWidth);
        const TextBlock purpose = block(QStringLiteral("Purpose: ") + m_c.Purpose, makeFont(10.5, true), m_bodyWidth);
        const qreal headGap = pt(10);
        const auto headHeight = [&](bool first) {
            return title.height() + jobBlock.height() + (first ? pt(4) + purpose.height() : 0) + headGap;
        };
        const TextBlock footerProbe = block(QStringLiteral("Page 1 of 1"), makeFont(8), m_bodyWidth);
        const qreal footerTop = m_pageHeight - m_margin - footerProbe.height();
        const qreal limit = footerTop - pt(8);

        // Break the rows, then the remarks, into pages.
        std::vector<BomPage> pages(1);
        qreal y = m_margin + headHeight(true);
        if (table)
            y += header->height;
        else {
            pages.back().message = true;
            y += messageBlock.height() + pt(12);
        }
        const auto newPage = [&] {
            pages.emplace_back();
            y = m_margin + headHeight(false);
        };
        for (std::size_t i = 0; i < rows->size(); ++i) {
            const qreal h = (*rows)[i].height;
            if (y + h > limit && !pages.back().rows.empty()) {
                newPage();
                y += header->height;
            }
            pages.back().rows.push_back(qsizetype(i));
            y += h;
        }
        if (!remarks->empty()) {
            y += pt(12);
            for (std::size_t i = 0; i < remarks->size(); ++i) {
                const qreal need = (*remarks)[i].height() + (i == 0 ? remarksHeading.height() + pt(3) : 0);
                if (y + need > limit)
                    newPage();
                if (i == 0) {
                    pages.back().remarksHeading = true;
                    y += remarksHeading.height() + pt(3);
                }
                pages.back().remarks.push_back(qsizetype(i));
                y += (*remarks)[i].height() + pt(2);
            }
        }

        const qint32 total = qint32(pages.size());
        for (qint32 n = 0; n < total; ++n) {
            const BomPage page = pages[std::size_t(n)];
            const TextBlock footer = block(QStringLiteral("Page %1 of %2").arg(n + 1).arg(total),
                                           makeFont(8), m_bodyWidth, Qt::AlignHCenter);
            m_pages.push_back([=, this](QPainter& p) {
                qreal top = m_margin;
                title.draw(p, QPointF(m_margin, top));
                top += title.height();
                jobBlock.draw(p, QPointF(m_margin, top));
                top += jobBlock.height();
                if (n == 0) {
                    top += pt(4);
                    purpose.draw(p, QPointF(m_margin, top));
                    top += purpose.height();
                }
                top += headGap;
                if (page.message) {
                    messageBlock.draw(p, QPointF(m_margin, top));
                    top += messageBlock.height() + pt(12);
                }
                QPen rule(QColor(0x90, 0x90, 0x90));
                rule.setWidthF(pt(0.5));
                if (!page.rows.empty()) {
                    p.setPen(Qt::black);
                    p.fillRect(QRectF(m_margin, top, m_bodyWidth, header->height), QColor(0xe4, 0xe9, 0xf0));
                    for (std::size_t c = 0; c < header->cells.size(); ++c)
                        header->cells[c].draw(p, QPointF((*xs)[c] + pad, top + pad));
                    top += header->height;
                    p.setPen(rule);
                    p.drawLine(QPointF(m_margin, top), QPointF(m_margin + m_bodyWidth, top));
                    for (const qsizetype r : page.rows) {
                        const BomRow& row = (*rows)[std::size_t(r)];
                        p.setPen(Qt::black);
                        qreal cellsHeight = 0;
                        for (std::size_t c = 0; c < row.cells.size(); ++c) {
                            row.cells[c].draw(p, QPointF((*xs)[c] + pad, top + pad));
                            cellsHeight = std::max(cellsHeight, row.cells[c].height());
                        }
                        if (!row.comment.isEmpty())
                            row.comment.draw(p, QPointF(m_margin + pt(18) + pad, top + 2 * pad + cellsHeight));
                        top += row.height;
                        p.setPen(rule);
                        p.drawLine(QPointF(m_margin, top), QPointF(m_margin + m_bodyWidth, top));
                    }
                    top += pt(12);
                }
                p.setPen(Qt::black);
                if (page.remarksHeading) {
                    remarksHeading.draw(p, QPointF(m_margin, top));
                    top += remarksHeading.height() + pt(3);
                }
                for (const qsizetype r : page.remarks) {
                    (*remarks)[std::size_t(r)].draw(p, QPointF(m_margin, top));
                    top += (*remarks)[std::size_t(r)].height() + pt(2);
                }
                footer.draw(p, QPointF(m_margin, footerTop));
            });
        }
    }

    // ---- labels --------------------------------------------------------------------------

    void planLabels()
    {
        startPart(QStringLiteral("Labels"));
        if (!m_c.HasLabelFields) {
            messagePage(QStringLiteral("Labels"),
                        QStringLiteral("No label fields are chosen, so no labels are printed."));
            return;
        }
        if (m_c.Labels.isEmpty()) {
            messagePage(QStringLiteral("Labels"),
                        QStringLiteral("No customer is included, so no labels are printed."));
            return;
        }
        const qsizetype perSheet = kLabelColumns * kLabelRows;
        const qreal gridWidth = inch(kLabelColumns * kLabelWidth + (kLabelColumns - 1) * kLabelColumnGap);
        const qreal gridHeight = inch(kLabelRows * kLabelHeight);
        const qreal left = (m_pageWidth - gridWidth) / 2;
        const qreal top = (m_pageHeight - gridHeight) / 2;
        for (qsizetype first = 0; first < m_c.Labels.size(); first += perSheet) {
            const QList<QStringList> sheet = m_c.Labels.mid(first, perSheet);
            m_pages.push_back([=, this](QPainter& p) {
                for (qsizetype i = 0; i < sheet.size(); ++i) {
                    const qreal x = left + inch((i % kLabelColumns) * (kLabelWidth + kLabelColumnGap));
                    const qreal y = top + inch(qreal(i / kLabelColumns) * kLabelHeight);
                    drawLabel(p, QRectF(x, y, inch(kLabelWidth), inch(kLabelHeight)), sheet[i]);
                }
            });
        }
    }

    void drawLabel(QPainter& p, const QRectF& label, const QStringList& lines) const
    {
        if (lines.isEmpty())
            return;
        const QRectF inside = label.adjusted(inch(kLabelPadding), inch(kLabelPadding),
                                             -inch(kLabelPadding), -inch(kLabelPadding));
        // One size for the whole label, small enough for its lines to fit its height.
        qreal size = kLabelFontSize;
        while (size > kLabelSmallestFontSize
               && QFontMetricsF(makeFont(size), &m_device).height() * lines.size() > inside.height())
            size -= 0.5;
        const qreal rowHeight = QFontMetricsF(makeFont(size), &m_device).height();
        qreal y = inside.top() + (inside.height() - rowHeight * lines.size()) / 2;
        p.save();
        p.setPen(Qt::black);
        p.setClipRect(inside);
        for (qsizetype i = 0; i < lines.size(); ++i) {
            // A line too wide shrinks first; what is still too wide at the smallest size is cut.
            QFont font = makeFont(size, i == 0);
            qreal lineSize = size;
            QFontMetricsF metrics(font, &m_device);
            while (lineSize > kLabelSmallestFontSize
                   && metrics.horizontalAdvance(lines[i]) > inside.width()) {
                lineSize -= 0.5;
                font = makeFont(lineSize, i == 0);
                metrics = QFontMetricsF(font, &m_device);
            }
            const QString text = metrics.elidedText(lines[i], Qt::ElideRight, inside.width());
            p.setFont(font);
            p.drawText(QPointF(inside.left(), y + (rowHeight - metrics.height()) / 2 + metrics.ascent()), text);
            y += rowHeight;
        }
        p.restore();
    }

    // ---- contents ------------------------------------------------------------------------

    void planContents()
    {
        const QFont entryFont = makeFont(11);
        const TextBlock title = block(QStringLiteral("Submittal Package"), makeFont(20, true), m_bodyWidth);
        const TextBlock job = block(m_c.JobName, makeFont(14, true), m_bodyWidth);
        QStringList factLines;
        if (!m_c.JobNumber.isEmpty())
            factLines << QStringLiteral("Job Number: ") + m_c.JobNumber;
        factLines << QStringLiteral("Purpose: ") + m_c.Purpose;
        if (!m_c.IssuedBy.isEmpty())
            factLines << QStringLiteral("Issued By: ") + m_c.IssuedBy;
        if (!m_c.DateText.isEmpty())
            factLines << QStringLiteral("Date: ") + m_c.DateText;
        const TextBlock facts = block(factLines.join(QLatin1Char('\n')), makeFont(11), m_bodyWidth);
        const TextBlock heading = block(QStringLiteral("Contents"), makeFont(14, true), m_bodyWidth);
        const TextBlock continued = block(QStringLiteral("Contents (continued)"), makeFont(14, true), m_bodyWidth);
        const TextBlock none = block(QStringLiteral("The submittal includes no cover letter, bill of "
                                                    "materials or labels."),
                                     entryFont, m_bodyWidth);
        const qreal rowHeight = QFontMetricsF(entryFont, &m_device).height() + pt(6);
        const qreal firstTop = m_margin + title.height() + pt(6) + job.height() + pt(8)
                               + facts.height() + pt(24) + heading.height() + pt(10);
        const qreal nextTop = m_margin + continued.height() + pt(10);
        const qsizetype firstRows = std::max<qsizetype>(1, qsizetype((bodyBottom() - firstTop) / rowHeight));
        const qsizetype nextRows = std::max<qsizetype>(1, qsizetype((bodyBottom() - nextTop) / rowHeight));
        qsizetype pages = 1;
        if (m_entries.size() > firstRows)
            pages += (m_entries.size() - firstRows + nextRows - 1) / nextRows;
        for (auto& entry : m_entries)
            entry.Page += qint32(pages);

        const QList<ContentsEntry> entries = m_entries;
        const qreal numberWidth = pt(60);
        for (qsizetype page = 0; page < pages; ++page) {
            const qsizetype from = page == 0 ? 0 : firstRows + (page - 1) * nextRows;
            const qsizetype count = page == 0 ? firstRows : nextRows;
            m_contentsPages.push_back([=, this](QPainter& p) {
                qreal y = m_margin;
                if (page == 0) {
                    title.draw(p, QPointF(m_margin, y));
                    y += title.height() + pt(6);
                    job.draw(p, QPointF(m_margin, y));
                    y += job.height() + pt(8);
                    facts.draw(p, QPointF(m_margin, y));
                    y += facts.height() + pt(24);
                    heading.draw(p, QPointF(m_margin, y));
                    y += heading.height() + pt(10);
                    if (entries.isEmpty())
                        none.draw(p, QPointF(m_margin, y));
                } else {
                    continued.draw(p, QPointF(m_margin, y));
                    y += continued.height() + pt(10);
                }
                p.setFont(entryFont);
                p.setPen(Qt::black);
                const QFontMetricsF metrics(entryFont, &m_device);
                for (qsizetype i = from; i < std::min(entries.size(), from + count); ++i) {
                    const QString text = metrics.elidedText(entries[i].Title, Qt::ElideRight,
                                                            m_bodyWidth - numberWidth - pt(12));
                    p.drawText(QRectF(m_margin, y, m_bodyWidth - numberWidth, rowHeight),
                               Qt::AlignLeft | Qt::AlignVCenter, text);
                    p.drawText(QRectF(m_margin + m_bodyWidth - numberWidth, y, numberWidth, rowHeight),
                               Qt::AlignRight | Qt::AlignVCenter, QString::number(entries[i].Page));
                    y += rowHeight;
                }
            });
        }
    }

    const PackageContent& m_c;
    QPdfWriter& m_device;
    qreal m_pageWidth = 0;
    qreal m_pageHeight = 0;
    qreal m_margin = 0;
    qreal m_bodyWidth = 0;
    std::vector<Page> m_pages;
    std::vector<Page> m_contentsPages;
    QList<ContentsEntry> m_entries;
};

}  // namespace

struct PackageGenerator::Private {
    PaperSize paper = PaperSize::Letter;
    Progress progress;
    qint32 pages = 0;
    QList<ContentsEntry> contents;
};

PackageGenerator::PackageGenerator()
    : d(std::make_unique<Private>())
{
}

PackageGenerator::~PackageGenerator() = default;

PackageGenerator::PaperSize PackageGenerator::paperSize() const
{
    return d->paper;
}

void PackageGenerator::setPaperSize(PaperSize size)
{
    d->paper = size;
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

bool PackageGenerator::Generate(const PackageSource& source, const QString& path)
{
    // Every business object is read before the file is opened.
    const PackageContent content = PackageContent::read(source);

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        cannotWrite(path, file.errorString());
    const QPageSize pageSize(d->paper == PaperSize::A4 ? QPageSize::A4 : QPageSize::Letter);
    qint32 pages = 0;
    QList<ContentsEntry> contents;
    {
        QPdfWriter writer(&file);
        writer.setPageSize(pageSize);
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        writer.setResolution(kResolution);
        writer.setTitle(content.JobName);
        writer.setCreator(QStringLiteral("ZebSubmittalControls"));
        writer.setDocumentXmpMetadata(xmpMetadata(content));

        PackageLayout layout(content, writer, pageSize.size(QPageSize::Inch));
        layout.plan();
        pages = layout.pageCount();
        contents = layout.contents();

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
        for (qint32 page = 0; page < pages; ++page) {
            if (page > 0)
                writer.newPage();
            layout.drawPage(painter, page);
            if (cancelled(page + 1))
                return false;
        }
        painter.end();
    }
    if (!file.commit())
        cannotWrite(path, file.errorString());
    d->pages = pages;
    d->contents = contents;
    return true;
}

}  // namespace ZebPackage
