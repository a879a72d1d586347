#include "package/packagelayout.h"

#include "package/agencylogo.h"
#include "package/packagecontent.h"
#include "package/textblock.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QTextLayout>

#include <algorithm>
#include <functional>
#include <vector>

namespace ZebPackage {

namespace {

constexpr int kResolution = PackageLayout::kResolution;
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

}  // namespace

// Lays the package out on pages of one paper size and draws them.
class PackageLayout::Private {
public:
    Private(const PackageContent& content, QPdfWriter& device, const QSizeF& paperInches)
        : m_c(content), m_device(device)
    {
        m_pageWidth = paperInches.width() * kResolution;
        m_pageHeight = paperInches.height() * kResolution;
        m_margin = pt(54);
        m_bodyWidth = m_pageWidth - 2 * m_margin;
        m_footerFont = makeFont(7.5);
        // The footer sits below the body and above the bottom edge's unprintable strip, clear of
        // the label sheets, which leave half an inch.
        m_footerTop = m_pageHeight - inch(0.45);
    }

    void plan()
    {
        if (m_c.IncludeCoverLetter)
            planLetters();
        if (m_c.IncludeBOM)
            planBOM();
        if (m_c.IncludeLabels)
            planLabels();
        planCutSheets();
        planContents();
    }

    qint32 pageCount() const { return drawnPageCount() + m_sheetPages; }
    // The pages drawn here; the cut sheets' pages follow them.
    qint32 drawnPageCount() const { return qint32(m_contentsPages.size() + m_pages.size()); }
    const QList<PdfFinish::Sheet>& sheets() const { return m_sheets; }
    QList<ContentsEntry> contents() const { return m_entries; }

    void drawPage(QPainter& painter, qint32 index) const
    {
        const qsizetype contentsPages = qsizetype(m_contentsPages.size());
        const PageOf& page = index < contentsPages ? m_contentsPages[std::size_t(index)]
                                                   : m_pages[std::size_t(index - contentsPages)];
        page.draw(painter);
        drawFooter(painter, page.part, index + 1);
    }

    // What the finished file gets besides its pages: bookmarks, links and the page rectangles
    // in PDF points, with pages counted from 0.
    PdfFinish::Navigation navigation() const
    {
        PdfFinish::Navigation out;
        const qsizetype offset = qsizetype(m_contentsPages.size());
        out.outline.append({QStringLiteral("Contents"), 0, 0});
        for (const auto& item : m_outline)
            out.outline.append({item.title, item.page + qint32(offset), item.level});
        for (const auto& link : m_links) {
            PdfFinish::Link l;
            l.page = link.page;
            l.target = link.target + qint32(offset);
            l.rect = QRectF(link.rect.left() * 72.0 / kResolution,
                            (m_pageHeight - link.rect.bottom()) * 72.0 / kResolution,
                            link.rect.width() * 72.0 / kResolution,
                            link.rect.height() * 72.0 / kResolution);
            out.links.append(l);
        }
        return out;
    }

private:
    using Page = std::function<void(QPainter&)>;
    struct PageOf {
        Page draw;
        // The part the page belongs to, as its footer names it.
        QString part;
    };
    struct OutlineItem {
        QString title;
        qint32 page = 0;
        qint32 level = 0;
    };
    struct LinkArea {
        qint32 page = 0;
        QRectF rect;
        qint32 target = 0;
    };

    qreal pt(qreal points) const { return points * kResolution / 72.0; }
    qreal inch(qreal inches) const { return inches * kResolution; }
    qreal bodyBottom() const { return m_pageHeight - m_margin; }

    TextBlock block(const QString& text, const QFont& font, qreal width,
                    Qt::Alignment alignment = Qt::AlignLeft) const
    {
        return TextBlock(text, font, width, &m_device, alignment);
    }

    void addPage(Page page) { m_pages.push_back({std::move(page), m_part}); }

    // A part of the contents; level 1 is a letter inside the cover letter part.
    void startPart(const QString& title, qint32 level = 0)
    {
        m_entries.append({title, qint32(m_pages.size()) + 1, 0});
        m_outline.append({title, qint32(m_pages.size()), level});
        m_part = title;
    }

    // The package's footer on every page: the job, the part and the page of the whole package.
    void drawFooter(QPainter& p, const QString& part, qint32 number) const
    {
        QString job = m_c.JobName;
        if (!m_c.JobNumber.isEmpty())
            job = QStringLiteral("Job ") + m_c.JobNumber + QStringLiteral("  ") + job;
        const QString page = QStringLiteral("Page %1 of %2").arg(number).arg(pageCount());
        const QFontMetricsF metrics(m_footerFont, &m_device);
        // The job takes the left, the part the middle, the page number the right.
        const qreal jobWidth = m_bodyWidth * 0.46;
        const qreal partWidth = m_bodyWidth * 0.32;
        const qreal gap = pt(6);
        p.save();
        p.setFont(m_footerFont);
        p.setPen(QColor(0x40, 0x40, 0x40));
        QPen rule(QColor(0xb0, 0xb0, 0xb0));
        rule.setWidthF(pt(0.5));
        p.setPen(rule);
        p.drawLine(QPointF(m_margin, m_footerTop - pt(3)),
                   QPointF(m_margin + m_bodyWidth, m_footerTop - pt(3)));
        p.setPen(QColor(0x30, 0x30, 0x30));
        const qreal baseline = m_footerTop + metrics.ascent();
        p.drawText(QPointF(m_margin, baseline),
                   metrics.elidedText(job, Qt::ElideRight, jobWidth - gap));
        const QString partText = metrics.elidedText(part, Qt::ElideRight, partWidth - gap);
        p.drawText(
            QPointF(m_margin + jobWidth + (partWidth - metrics.horizontalAdvance(partText)) / 2,
                    baseline),
            partText);
        p.drawText(QPointF(m_margin + m_bodyWidth - metrics.horizontalAdvance(page), baseline),
                   page);
        p.restore();
    }

    // A page that only says why a part has nothing to print.
    void messagePage(const QString& title, const QString& message)
    {
        const TextBlock heading = block(title, makeFont(16, true), m_bodyWidth);
        const TextBlock body = block(message, makeFont(11), m_bodyWidth);
        const qreal top = m_margin;
        const qreal gap = pt(18);
        addPage([=, this](QPainter& p) {
            heading.draw(p, QPointF(m_margin, top));
            body.draw(p, QPointF(m_margin, top + heading.height() + gap));
        });
    }

    // ---- text that flows over pages, line by line ----------------------------------------

    // Paragraphs broken into lines and the lines into pages; each line is drawn on exactly one
    // page, inside the body.
    class Flow {
    public:
        struct Placed {
            std::shared_ptr<QTextLayout> layout;
            int line = 0;
            QPointF at;
        };

        Flow(const Private& owner, qreal firstTop) : m_owner(owner), m_y(firstTop), m_top(firstTop)
        {
            m_pages.emplace_back();
        }

        // Lays text out below what is there. keepWithNext keeps that much room below the first
        // line of the paragraph on its page (a heading stays with what follows it).
        void paragraph(const QString& text, const QFont& font, qreal spaceBefore, qreal spaceAfter,
                       qreal indent = 0, qreal keepWithNext = 0)
        {
            auto layout = std::make_shared<QTextLayout>(inOneParagraph(text), font,
                                                        const_cast<QPdfWriter*>(&m_owner.m_device));
            QTextOption option(Qt::AlignLeft);
            option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
            layout->setTextOption(option);
            layout->setCacheEnabled(true);
            layout->beginLayout();
            qreal local = 0;
            for (QTextLine line = layout->createLine(); line.isValid();
                 line = layout->createLine()) {
                line.setLeadingIncluded(true);
                line.setLineWidth(m_owner.m_bodyWidth - indent);
                line.setPosition(QPointF(0, local));
                local += line.height();
            }
            layout->endLayout();
            if (m_y > m_top)
                m_y += spaceBefore;
            const qreal limit = m_owner.bodyBottom();
            for (int i = 0; i < layout->lineCount(); ++i) {
                const QTextLine line = layout->lineAt(i);
                const qreal need = line.height() + (i == 0 ? keepWithNext : 0);
                if (m_y + need > limit && m_y > m_top) {
                    m_pages.emplace_back();
                    m_top = m_owner.m_margin;
                    m_y = m_top;
                }
                m_pages.back().push_back(
                    {layout, i, QPointF(m_owner.m_margin + indent, m_y - line.y())});
                m_y += line.height();
            }
            m_y += spaceAfter;
        }

        const std::vector<std::vector<Placed>>& pages() const { return m_pages; }

    private:
        const Private& m_owner;
        qreal m_y = 0;
        qreal m_top = 0;
        std::vector<std::vector<Placed>> m_pages;
    };

    static void drawPlaced(QPainter& p, const std::vector<Flow::Placed>& lines)
    {
        p.setPen(Qt::black);
        for (const auto& placed : lines)
            placed.layout->lineAt(placed.line).draw(&p, placed.at);
    }

    static QString inOneParagraph(QString text)
    {
        text.replace(QStringLiteral("\r\n"), QString(QChar::LineSeparator));
        text.replace(QLatin1Char('\r'), QChar::LineSeparator);
        text.replace(QLatin1Char('\n'), QChar::LineSeparator);
        return text;
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
        // One bookmark for the part, one below it for each letter.
        m_outline.append({QStringLiteral("Cover Letters"), qint32(m_pages.size()), 0});
        for (qsizetype i = 0; i < m_c.Recipients.size(); ++i) {
            const auto& to = m_c.Recipients[i];
            QList<PackageContent::Recipient> copies;
            if (m_c.IncludeCarbonCopy) {
                copies = m_c.Recipients;
                copies.removeAt(i);
            }
            startPart(QStringLiteral("Cover Letter: ") + recipientLine(to), 1);
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

    // "City, ST 12345" with whatever of it is known.
    static QString cityLine(const QString& city, const QString& state, const QString& zip)
    {
        QString text = city.simplified();
        if (!state.isEmpty())
            text += (text.isEmpty() ? QString() : QStringLiteral(", ")) + state.simplified();
        if (!zip.isEmpty())
            text += (text.isEmpty() ? QString() : QStringLiteral(" ")) + zip.simplified();
        return text;
    }

    static QStringList addressLines(const PostalAddress& a)
    {
        QStringList lines;
        for (const QString& line : {a.Street, a.Street2, cityLine(a.City, a.State, a.Zip)}) {
            if (!line.simplified().isEmpty())
                lines << line.simplified();
        }
        return lines;
    }

    // The office's head on a letter's first page: its logo when chosen, its name, address and
    // how to reach it, and a rule below which the letter starts.
    struct LetterheadBlocks {
        TextBlock name;
        TextBlock lines;
        qreal height = 0;
    };

    LetterheadBlocks letterhead() const
    {
        const Letterhead& o = m_c.Office;
        const bool logo = m_c.IncludeLogo;
        const qreal width = m_bodyWidth - (logo ? inch(0.75) + pt(12) : 0);
        LetterheadBlocks out;
        if (!o.Name.simplified().isEmpty())
            out.name = block(o.Name.simplified(), makeFont(13, true), width);
        QStringList lines;
        for (const QString& line : {o.Street, o.Street2, cityLine(o.City, o.State, o.Zip)}) {
            if (!line.simplified().isEmpty())
                lines << line.simplified();
        }
        QStringList reach;
        if (!o.Phone.simplified().isEmpty())
            reach << QStringLiteral("Phone ") + o.Phone.simplified();
        if (!o.Email.simplified().isEmpty())
            reach << o.Email.simplified();
        if (!reach.isEmpty())
            lines << reach.join(QStringLiteral("  \u00b7  "));
        if (!lines.isEmpty())
            out.lines = block(lines.join(QLatin1Char('\n')), makeFont(9), width);
        const qreal height =
            std::max(logo ? inch(0.75) : 0, out.name.height() + out.lines.height());
        out.height = height > 0 ? height + pt(18) : 0;
        return out;
    }

    void drawLetterhead(QPainter& p, const LetterheadBlocks& head) const
    {
        const bool logo = m_c.IncludeLogo;
        const qreal side = inch(0.75);
        if (logo) {
            const QRectF box(m_margin, m_margin, side, side);
            QImage image;
            if (!m_c.Office.Logo.isEmpty() && image.loadFromData(m_c.Office.Logo)) {
                const QSizeF fitted = QSizeF(image.size()).scaled(box.size(), Qt::KeepAspectRatio);
                p.drawImage(QRectF(box.topLeft(), fitted), image);
            } else {
                AgencyLogo::draw(p, box);
            }
        }
        const qreal x = m_margin + (logo ? side + pt(12) : 0);
        p.setPen(QColor(0x1f, 0x4e, 0x79));
        head.name.draw(p, QPointF(x, m_margin));
        p.setPen(Qt::black);
        head.lines.draw(p, QPointF(x, m_margin + head.name.height()));
        const qreal bottom = m_margin + head.height - pt(8);
        QPen rule(QColor(0x1f, 0x4e, 0x79));
        rule.setWidthF(pt(0.75));
        p.setPen(rule);
        p.drawLine(QPointF(m_margin, bottom), QPointF(m_margin + m_bodyWidth, bottom));
    }

    void addLetter(const QList<PackageContent::Recipient>& to,
                   const QList<PackageContent::Recipient>& copies)
    {
        const LetterheadBlocks head = letterhead();
        auto flow = std::make_shared<Flow>(*this, m_margin + head.height);
        const QFont plain = makeFont(10.5);
        const QFont bold = makeFont(10.5, true);
        const qreal line = pt(12);

        if (!m_c.DateText.isEmpty())
            flow->paragraph(m_c.DateText, plain, 0, line * 1.5);
        if (to.size() == 1) {
            QStringList address;
            if (!to.first().Name.isEmpty())
                address << to.first().Name;
            if (!to.first().Company.isEmpty())
                address << to.first().Company;
            address << addressLines(to.first().Address);
            flow->paragraph(address.join(QLatin1Char('\n')), plain, 0, line * 1.5);
        } else {
            flow->paragraph(QStringLiteral("To:"), bold, 0, pt(2), 0, line * 2);
            for (const auto& r : to) {
                QStringList lines{recipientLine(r)};
                const QStringList address = addressLines(r.Address);
                if (!address.isEmpty())
                    lines << address.join(QStringLiteral(", "));
                flow->paragraph(lines.join(QLatin1Char('\n')), plain, 0, pt(4));
            }
            flow->paragraph(QString(), plain, 0, line * 0.5);
        }
        QString re = QStringLiteral("Re: ") + m_c.JobName;
        if (!m_c.JobNumber.isEmpty())
            re += QStringLiteral(" (Job ") + m_c.JobNumber + QLatin1Char(')');
        flow->paragraph(re, bold, 0, pt(3));
        if (m_c.Revision.isResubmittal())
            flow->paragraph(m_c.Revision.title(), bold, 0, pt(3));
        flow->paragraph(QStringLiteral("Purpose: ") + m_c.Purpose, bold, 0, line * 1.5);
        for (const QString& text : m_c.Paragraphs)
            flow->paragraph(text, plain, 0, line);
        if (!m_c.Remarks.isEmpty()) {
            flow->paragraph(QStringLiteral("Remarks:"), bold, pt(4), pt(3), 0, line * 1.5);
            for (const QString& text : m_c.Remarks)
                flow->paragraph(QStringLiteral("\u2022  ") + text, plain, 0, pt(4));
        }
        flow->paragraph(QStringLiteral("Sincerely,"), plain, line, line * 2.5, 0, line * 3.5);
        if (!m_c.IssuedBy.isEmpty())
            flow->paragraph(m_c.IssuedBy, plain, 0, line);
        if (!m_c.Office.Name.isEmpty())
            flow->paragraph(m_c.Office.Name, plain, 0, line);
        if (!copies.isEmpty()) {
            QStringList lines;
            for (const auto& r : copies)
                lines << recipientLine(r);
            flow->paragraph(QStringLiteral("cc:"), bold, line, pt(2), 0, line * 1.5);
            flow->paragraph(lines.join(QLatin1Char('\n')), plain, 0, 0);
        }

        const std::size_t pages = flow->pages().size();
        for (std::size_t page = 0; page < pages; ++page) {
            addPage([=, this](QPainter& p) {
                if (page == 0 && head.height > 0)
                    drawLetterhead(p, head);
                drawPlaced(p, flow->pages()[page]);
            });
        }
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
        std::vector<qsizetype> removed;
        bool removedHeading = false;
        bool message = false;
    };

    static qreal columnWeight(BomColumn column)
    {
        switch (column) {
        case BomColumn::Line: return 0.85;
        case BomColumn::Type: return 0.8;
        case BomColumn::Quantity: return 0.7;
        case BomColumn::Brand: return 1.6;
        case BomColumn::Manufacturer: return 1.9;
        case BomColumn::CatalogNumber: return 2.5;
        case BomColumn::Description: return 3.25;
        case BomColumn::GroupCodes: return 0.9;
        case BomColumn::MTO: return 0.75;
        case BomColumn::Rev: return 0.5;
        }
        return 1;
    }

    // Where the columns sit across the body and how wide each is.
    struct BomColumns {
        std::vector<qreal> xs;
        std::vector<qreal> widths;
    };
    // Everything of the bill of materials that is drawn, laid out as text blocks.
    struct BomTable {
        BomColumns columns;
        qreal pad = 0;
        BomRow header;
        // Whether there is a table at all; without one, message says why.
        bool table = false;
        std::vector<BomRow> rows;
        std::vector<TextBlock> remarks;
        TextBlock remarksHeading;
        // A resubmittal's lines that the revision before printed and the job no longer has.
        std::vector<TextBlock> removed;
        TextBlock removedHeading;
        TextBlock message;
        // Page heads: title, job, and the purpose on the first page.
        TextBlock title;
        TextBlock job;
        TextBlock purpose;
        qreal headGap = 0;
    };

    void planBOM()
    {
        startPart(QStringLiteral("Bill of Materials"));
        if (!m_c.HasBOMOptions) {
            messagePage(QStringLiteral("Bill of Materials"),
                        QStringLiteral("The submittal has no bill of materials options, so no "
                                       "bill of materials is printed."));
            return;
        }
        const std::shared_ptr<const BomTable> bom = bomTable(bomColumns());
        const std::vector<BomPage> pages = paginateBOM(*bom);
        const qint32 total = qint32(pages.size());
        for (qint32 n = 0; n < total; ++n) {
            const BomPage page = pages[std::size_t(n)];
            addPage([=, this](QPainter& p) { drawBOMPage(p, *bom, page, n == 0); });
        }
    }

    // Columns share the width by weight.
    BomColumns bomColumns() const
    {
        qreal weights = 0;
        for (const BomColumn column : m_c.Columns)
            weights += columnWeight(column);
        BomColumns out;
        qreal x = m_margin;
        for (const BomColumn column : m_c.Columns) {
            const qreal w = m_bodyWidth * columnWeight(column) / weights;
            out.xs.push_back(x);
            out.widths.push_back(w);
            x += w;
        }
        return out;
    }

    static Qt::Alignment bomAlignment(BomColumn column)
    {
        return column == BomColumn::Quantity || column == BomColumn::MTO
                       || column == BomColumn::Line || column == BomColumn::Rev
                   ? Qt::AlignHCenter
                   : Qt::AlignLeft;
    }

    std::shared_ptr<const BomTable> bomTable(BomColumns columns) const
    {
        auto out = std::make_shared<BomTable>();
        BomTable& t = *out;
        t.columns = std::move(columns);
        t.pad = pt(3);
        const qreal pad = t.pad;
        const std::vector<qreal>& widths = t.columns.widths;
        const QFont cellFont = makeFont(8);
        const QFont headFont = makeFont(8, true);
        const QFont commentFont = makeFont(8, false, true);

        for (qsizetype i = 0; i < m_c.Columns.size(); ++i) {
            t.header.cells.push_back(block(PackageContent::columnTitle(m_c.Columns[i]), headFont,
                                           widths[std::size_t(i)] - 2 * pad,
                                           bomAlignment(m_c.Columns[i])));
            t.header.height = std::max(t.header.height, t.header.cells.back().height() + 2 * pad);
        }

        t.table = !m_c.Columns.isEmpty() && !m_c.Lines.isEmpty();
        if (t.table) {
            t.rows.reserve(std::size_t(m_c.Lines.size()));
            const qreal commentIndent = pt(18);
            for (const auto& line : m_c.Lines) {
                BomRow row;
                qreal h = 0;
                for (qsizetype i = 0; i < line.Cells.size(); ++i) {
                    row.cells.push_back(block(line.Cells[i], cellFont,
                                              widths[std::size_t(i)] - 2 * pad,
                                              bomAlignment(m_c.Columns[i])));
                    h = std::max(h, row.cells.back().height());
                }
                row.height = h + 2 * pad;
                if (!line.Comment.trimmed().isEmpty()) {
                    row.comment =
                        block(line.Comment, commentFont, m_bodyWidth - commentIndent - 2 * pad);
                    row.height += row.comment.height() + pad;
                }
                t.rows.push_back(std::move(row));
            }
        }
        for (const QString& text : m_c.DefaultRemarks)
            t.remarks.push_back(block(QStringLiteral("\u2022  ") + text, cellFont, m_bodyWidth));
        t.remarksHeading = block(QStringLiteral("Remarks"), headFont, m_bodyWidth);
        if (m_c.Revision.isResubmittal()) {
            for (const QString& text : m_c.Revision.RemovedLines)
                t.removed.push_back(
                    block(QStringLiteral("\u2022  ") + text, cellFont, m_bodyWidth));
            t.removedHeading =
                block(QStringLiteral("Removed Since Revision %1").arg(m_c.Revision.Revision - 1),
                      headFont, m_bodyWidth);
        }

        QString message;
        if (m_c.Columns.isEmpty())
            message = QStringLiteral("No columns are chosen for the bill of materials.");
        else if (m_c.Lines.isEmpty())
            message = QStringLiteral("The submittal has no lines.");
        t.message = block(message, makeFont(11), m_bodyWidth);

        t.title = block(QStringLiteral("Bill of Materials"), makeFont(15, true), m_bodyWidth);
        QString job = m_c.JobName;
        if (!m_c.JobNumber.isEmpty())
            job += QStringLiteral("  \u2014  Job ") + m_c.JobNumber;
        if (!m_c.DateText.isEmpty())
            job += QStringLiteral("  \u2014  ") + m_c.DateText;
        if (m_c.Revision.isResubmittal())
            job += QStringLiteral("  \u2014  ") + m_c.Revision.title();
        t.job = block(job, makeFont(9), m_bodyWidth);
        t.purpose =
            block(QStringLiteral("Purpose: ") + m_c.Purpose, makeFont(10.5, true), m_bodyWidth);
        t.headGap = pt(10);
        return out;
    }

    qreal bomHeadHeight(const BomTable& t, bool first) const
    {
        return t.title.height() + t.job.height() + (first ? pt(4) + t.purpose.height() : 0)
               + t.headGap;
    }

    // Break the rows, then the remarks, into pages.
    std::vector<BomPage> paginateBOM(const BomTable& t) const
    {
        const qreal limit = bodyBottom();
        std::vector<BomPage> pages(1);
        qreal y = m_margin + bomHeadHeight(t, true);
        if (t.table)
            y += t.header.height;
        else {
            pages.back().message = true;
            y += t.message.height() + pt(12);
        }
        const auto newPage = [&] {
            pages.emplace_back();
            y = m_margin + bomHeadHeight(t, false);
        };
        for (std::size_t i = 0; i < t.rows.size(); ++i) {
            const qreal h = t.rows[i].height;
            if (y + h > limit && !pages.back().rows.empty()) {
                newPage();
                y += t.header.height;
            }
            pages.back().rows.push_back(qsizetype(i));
            y += h;
        }
        if (!t.remarks.empty()) {
            y += pt(12);
            for (std::size_t i = 0; i < t.remarks.size(); ++i) {
                const qreal need =
                    t.remarks[i].height() + (i == 0 ? t.remarksHeading.height() + pt(3) : 0);
                if (y + need > limit)
                    newPage();
                if (i == 0) {
                    pages.back().remarksHeading = true;
                    y += t.remarksHeading.height() + pt(3);
                }
                pages.back().remarks.push_back(qsizetype(i));
                y += t.remarks[i].height() + pt(2);
            }
        }
        if (!t.removed.empty()) {
            y += pt(12);
            for (std::size_t i = 0; i < t.removed.size(); ++i) {
                const qreal need =
                    t.removed[i].height() + (i == 0 ? t.removedHeading.height() + pt(3) : 0);
                if (y + need > limit)
                    newPage();
                if (i == 0) {
                    pages.back().removedHeading = true;
                    y += t.removedHeading.height() + pt(3);
                }
                pages.back().removed.push_back(qsizetype(i));
                y += t.removed[i].height() + pt(2);
            }
        }
        return pages;
    }

    void drawBOMPage(QPainter& p, const BomTable& t, const BomPage& page, bool first) const
    {
        const qreal pad = t.pad;
        const std::vector<qreal>& xs = t.columns.xs;
        qreal top = m_margin;
        t.title.draw(p, QPointF(m_margin, top));
        top += t.title.height();
        t.job.draw(p, QPointF(m_margin, top));
        top += t.job.height();
        if (first) {
            top += pt(4);
            t.purpose.draw(p, QPointF(m_margin, top));
            top += t.purpose.height();
        }
        top += t.headGap;
        if (page.message) {
            t.message.draw(p, QPointF(m_margin, top));
            top += t.message.height() + pt(12);
        }
        QPen rule(QColor(0x90, 0x90, 0x90));
        rule.setWidthF(pt(0.5));
        if (!page.rows.empty()) {
            p.setPen(Qt::black);
            p.fillRect(QRectF(m_margin, top, m_bodyWidth, t.header.height),
                       QColor(0xe4, 0xe9, 0xf0));
            for (std::size_t c = 0; c < t.header.cells.size(); ++c)
                t.header.cells[c].draw(p, QPointF(xs[c] + pad, top + pad));
            top += t.header.height;
            p.setPen(rule);
            p.drawLine(QPointF(m_margin, top), QPointF(m_margin + m_bodyWidth, top));
            for (const qsizetype r : page.rows) {
                const BomRow& row = t.rows[std::size_t(r)];
                p.setPen(Qt::black);
                qreal cellsHeight = 0;
                for (std::size_t c = 0; c < row.cells.size(); ++c) {
                    row.cells[c].draw(p, QPointF(xs[c] + pad, top + pad));
                    cellsHeight = std::max(cellsHeight, row.cells[c].height());
                }
                if (!row.comment.isEmpty())
                    row.comment.draw(p,
                                     QPointF(m_margin + pt(18) + pad, top + 2 * pad + cellsHeight));
                top += row.height;
                p.setPen(rule);
                p.drawLine(QPointF(m_margin, top), QPointF(m_margin + m_bodyWidth, top));
            }
            top += pt(12);
        }
        p.setPen(Qt::black);
        if (page.remarksHeading) {
            t.remarksHeading.draw(p, QPointF(m_margin, top));
            top += t.remarksHeading.height() + pt(3);
        }
        for (const qsizetype r : page.remarks) {
            t.remarks[std::size_t(r)].draw(p, QPointF(m_margin, top));
            top += t.remarks[std::size_t(r)].height() + pt(2);
        }
        if (page.removedHeading) {
            if (!page.remarks.empty())
                top += pt(12);
            t.removedHeading.draw(p, QPointF(m_margin, top));
            top += t.removedHeading.height() + pt(3);
        }
        for (const qsizetype r : page.removed) {
            t.removed[std::size_t(r)].draw(p, QPointF(m_margin, top));
            top += t.removed[std::size_t(r)].height() + pt(2);
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
        const qreal gridWidth =
            inch(kLabelColumns * kLabelWidth + (kLabelColumns - 1) * kLabelColumnGap);
        const qreal gridHeight = inch(kLabelRows * kLabelHeight);
        const qreal left = (m_pageWidth - gridWidth) / 2;
        const qreal top = (m_pageHeight - gridHeight) / 2;
        for (qsizetype first = 0; first < m_c.Labels.size(); first += perSheet) {
            const QList<QStringList> sheet = m_c.Labels.mid(first, perSheet);
            addPage([=, this](QPainter& p) {
                for (qsizetype i = 0; i < sheet.size(); ++i) {
                    const qreal x =
                        left + inch((i % kLabelColumns) * (kLabelWidth + kLabelColumnGap));
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
               && QFontMetricsF(makeFont(size), &m_device).height() * lines.size()
                      > inside.height())
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
            p.drawText(
                QPointF(inside.left(), y + (rowHeight - metrics.height()) / 2 + metrics.ascent()),
                text);
            y += rowHeight;
        }
        p.restore();
    }

    // ---- cut sheets ----------------------------------------------------------------------

    // The sheets' pages come from their own files after the drawn pages; here they only take
    // their place in the contents and the outline. A type without a sheet is listed without a
    // page.
    void planCutSheets()
    {
        if (m_c.CutSheetTypes.isEmpty())
            return;
        const auto next = [this] { return qint32(m_pages.size()) + m_sheetPages; };
        const qsizetype partEntry = m_entries.size();
        m_entries.append({QStringLiteral("Cut Sheets"), next() + 1});
        m_outline.append({QStringLiteral("Cut Sheets"), next(), 0});
        for (const PackageContent::SheetType& type : m_c.CutSheetTypes) {
            const QString title = QStringLiteral("Type ") + type.Type;
            if (type.Sheets.isEmpty()) {
                m_entries.append({title + QStringLiteral(": No cut sheet attached"), 0, 1});
                continue;
            }
            m_entries.append({title, next() + 1, 1});
            m_outline.append({title, next(), 1});
            QString stamp = QStringLiteral("Type ") + type.Type + QStringLiteral("  \u00b7  ");
            if (!m_c.JobNumber.isEmpty())
                stamp =
                    QStringLiteral("Job ") + m_c.JobNumber + QStringLiteral("  \u00b7  ") + stamp;
            for (const CutSheet& sheet : type.Sheets) {
                m_outline.append({sheet.FileName, next(), 2});
                m_sheets.append({sheet.FileName, sheet.Pdf, sheet.PageCount, stamp});
                m_sheetPages += sheet.PageCount;
            }
        }
        // No type has a sheet to print: the part is listed, with no page to open.
        if (m_sheetPages == 0) {
            m_entries[partEntry].Page = 0;
            m_outline.removeLast();
        }
    }

    // ---- contents ------------------------------------------------------------------------

    void planContents()
    {
        const QFont entryFont = makeFont(11);
        const TextBlock title =
            block(QStringLiteral("Submittal Package"), makeFont(20, true), m_bodyWidth);
        const TextBlock job = block(m_c.JobName, makeFont(14, true), m_bodyWidth);
        QStringList factLines;
        if (!m_c.Office.Name.isEmpty())
            factLines << QStringLiteral("From: ") + m_c.Office.Name;
        if (!m_c.JobNumber.isEmpty())
            factLines << QStringLiteral("Job Number: ") + m_c.JobNumber;
        if (m_c.Revision.isResubmittal())
            factLines << m_c.Revision.title();
        factLines << QStringLiteral("Purpose: ") + m_c.Purpose;
        if (!m_c.IssuedBy.isEmpty())
            factLines << QStringLiteral("Issued By: ") + m_c.IssuedBy;
        if (!m_c.DateText.isEmpty())
            factLines << QStringLiteral("Date: ") + m_c.DateText;
        const TextBlock facts = block(factLines.join(QLatin1Char('\n')), makeFont(11), m_bodyWidth);
        const TextBlock heading =
            block(QStringLiteral("Contents"), makeFont(14, true), m_bodyWidth);
        const TextBlock continued =
            block(QStringLiteral("Contents (continued)"), makeFont(14, true), m_bodyWidth);
        const TextBlock none =
            block(QStringLiteral("The submittal includes no cover letter, bill of "
                                 "materials or labels."),
                  entryFont, m_bodyWidth);
        // Lines that are not ticked stay off the bill of materials; the reader learns how many.
        TextBlock leftOut;
        if (m_c.IncludeBOM && m_c.LinesLeftOut > 0) {
            const qint32 all = qint32(m_c.Lines.size()) + m_c.LinesLeftOut;
            leftOut =
                block(m_c.LinesLeftOut == 1
                          ? QStringLiteral("1 of the job's %1 lines is not ticked and is left "
                                           "out of the bill of materials.")
                                .arg(all)
                          : QStringLiteral("%1 of the job's %2 lines are not ticked and are "
                                           "left out of the bill of materials.")
                                .arg(m_c.LinesLeftOut)
                                .arg(all),
                      makeFont(10, false, true), m_bodyWidth);
        }
        const qreal noteHeight = leftOut.isEmpty() ? 0 : leftOut.height() + pt(12);
        const qreal rowHeight = QFontMetricsF(entryFont, &m_device).height() + pt(6);
        const qreal firstTop = m_margin + title.height() + pt(6) + job.height() + pt(8)
                               + facts.height() + pt(24) + heading.height() + pt(10);
        const qreal nextTop = m_margin + continued.height() + pt(10);
        const qsizetype firstRows =
            std::max<qsizetype>(1, qsizetype((bodyBottom() - noteHeight - firstTop) / rowHeight));
        const qsizetype nextRows =
            std::max<qsizetype>(1, qsizetype((bodyBottom() - nextTop) / rowHeight));
        qsizetype pages = 1;
        if (m_entries.size() > firstRows)
            pages += (m_entries.size() - firstRows + nextRows - 1) / nextRows;
        for (auto& entry : m_entries) {
            if (entry.Page > 0)
                entry.Page += qint32(pages);
        }

        const QList<ContentsEntry> entries = m_entries;
        const qreal numberWidth = pt(60);
        for (qsizetype page = 0; page < pages; ++page) {
            const qsizetype from = page == 0 ? 0 : firstRows + (page - 1) * nextRows;
            const qsizetype count = page == 0 ? firstRows : nextRows;
            const qreal top = page == 0 ? firstTop : nextTop;
            // Each entry links to the page it names.
            for (qsizetype i = from; i < std::min(entries.size(), from + count); ++i) {
                if (entries[i].Page == 0)
                    continue;
                const QRectF row(m_margin, top + qreal(i - from) * rowHeight, m_bodyWidth,
                                 rowHeight);
                m_links.append({qint32(page), row, entries[i].Page - 1 - qint32(pages)});
            }
            m_contentsPages.push_back(
                {[=, this](QPainter& p) {
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
                         const qreal indent = pt(18) * entries[i].Level;
                         const QString text =
                             metrics.elidedText(entries[i].Title, Qt::ElideRight,
                                                m_bodyWidth - numberWidth - pt(12) - indent);
                         p.drawText(QRectF(m_margin + indent, y, m_bodyWidth - numberWidth - indent,
                                           rowHeight),
                                    Qt::AlignLeft | Qt::AlignVCenter, text);
                         if (entries[i].Page > 0)
                             p.drawText(QRectF(m_margin + m_bodyWidth - numberWidth, y, numberWidth,
                                               rowHeight),
                                        Qt::AlignRight | Qt::AlignVCenter,
                                        QString::number(entries[i].Page));
                         y += rowHeight;
                     }
                     if (page == 0 && !leftOut.isEmpty())
                         leftOut.draw(p, QPointF(m_margin, y + pt(12)));
                 },
                 QStringLiteral("Contents")});
        }
    }

    const PackageContent& m_c;
    QPdfWriter& m_device;
    qreal m_pageWidth = 0;
    qreal m_pageHeight = 0;
    qreal m_margin = 0;
    qreal m_bodyWidth = 0;
    qreal m_footerTop = 0;
    QFont m_footerFont;
    QString m_part;
    std::vector<PageOf> m_pages;
    std::vector<PageOf> m_contentsPages;
    QList<ContentsEntry> m_entries;
    QList<OutlineItem> m_outline;
    QList<LinkArea> m_links;
    QList<PdfFinish::Sheet> m_sheets;
    qint32 m_sheetPages = 0;
};

PackageLayout::PackageLayout(const PackageContent& content, QPdfWriter& device,
                             const QSizeF& paperInches)
    : d(std::make_unique<Private>(content, device, paperInches))
{ }

PackageLayout::~PackageLayout() = default;

void PackageLayout::plan()
{
    d->plan();
}

qint32 PackageLayout::pageCount() const
{
    return d->pageCount();
}

qint32 PackageLayout::drawnPageCount() const
{
    return d->drawnPageCount();
}

const QList<PdfFinish::Sheet>& PackageLayout::sheets() const
{
    return d->sheets();
}

QList<ContentsEntry> PackageLayout::contents() const
{
    return d->contents();
}

void PackageLayout::drawPage(QPainter& painter, qint32 index) const
{
    d->drawPage(painter, index);
}

PdfFinish::Navigation PackageLayout::navigation() const
{
    return d->navigation();
}

}  // namespace ZebPackage
