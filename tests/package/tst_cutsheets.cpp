// Cut sheets: checked when handed in, then merged after the package's own pages with qpdf, read
// back with qpdf and poppler's tools. The sheets are made here with QPdfWriter and qpdf.

#include "contracts/failure.h"
#include "contracts/lineitems.h"
#include "objects/standalonelabels.h"
#include "objects/standalonepackagesource.h"
#include "objects/standalonesubmittal.h"
#include "package/cutsheetfile.h"
#include "package/packagegenerator.h"
#include "package/pdffinish.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace ZebObjects;
using ZebPackage::CutSheet;
using ZebPackage::CutSheetFile;
using ZebPackage::PackageGenerator;

namespace {

struct Run {
    int code = -1;
    QString out;
    QString err;
};

Run run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    Run r;
    if (!process.waitForFinished(60000))
        return r;
    r.code = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    r.out = QString::fromUtf8(process.readAllStandardOutput());
    r.err = QString::fromUtf8(process.readAllStandardError());
    return r;
}

// A manufacturer's sheet: a marker word on each page near the top ("alpha-p1") and one at the
// very foot ("alpha-foot1"), where a stamp would land if it were put on top of the content.
QByteArray makeSheet(const QString& marker, QPageSize::PageSizeId size,
                     QPageLayout::Orientation orientation, int pages, bool image = false)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setPageSize(QPageSize(size));
        writer.setPageOrientation(orientation);
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        writer.setResolution(72);
        writer.setTitle(marker);
        QPainter p(&writer);
        const QRectF page(QPointF(0, 0), writer.pageLayout().fullRect(QPageLayout::Point).size());
        for (int k = 1; k <= pages; ++k) {
            if (k > 1)
                writer.newPage();
            p.setFont(QFont(QStringLiteral("DejaVu Sans"), 14));
            p.drawText(QPointF(72, 90), QStringLiteral("%1-p%2").arg(marker).arg(k));
            p.setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
            p.drawText(QPointF(24, page.height() - 3),
                       QStringLiteral("%1-foot%2").arg(marker).arg(k));
            p.drawRect(QRectF(36, 120, page.width() - 72, 60));
            if (image) {
                QImage picture(200, 120, QImage::Format_RGB32);
                for (int y = 0; y < picture.height(); ++y)
                    for (int x = 0; x < picture.width(); ++x)
                        picture.setPixel(x, y, qRgb(x, y * 2, 160));
                p.drawImage(QRectF(72, 200, 200, 120), picture);
            }
        }
    }
    return buffer.data();
}

QString pdfInfo(const QString& path, int page)
{
    return run(QStringLiteral("pdfinfo"), {QStringLiteral("-f"), QString::number(page),
                                           QStringLiteral("-l"), QString::number(page), path})
        .out;
}

struct Word {
    QRectF box;
    QString text;
};

// Word boxes come in the page as it shows, turned by its rotation; the size is the unturned one.
QList<Word> words(const QString& path, int page, QSizeF* size = nullptr)
{
    const QString html =
        run(QStringLiteral("pdftotext"),
            {QStringLiteral("-bbox"), QStringLiteral("-f"), QString::number(page),
             QStringLiteral("-l"), QString::number(page), path, QStringLiteral("-")})
            .out;
    static const QRegularExpression word(
        QStringLiteral("<word xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\" "
                       "yMax=\"([0-9.]+)\">([^<]*)</word>"));
    static const QRegularExpression pageBox(
        QStringLiteral("<page width=\"([0-9.]+)\" height=\"([0-9.]+)\""));
    if (size) {
        const auto m = pageBox.match(html);
        *size = QSizeF(m.captured(1).toDouble(), m.captured(2).toDouble());
    }
    QList<Word> out;
    for (auto it = word.globalMatch(html); it.hasNext();) {
        const auto m = it.next();
        out.append({QRectF(QPointF(m.captured(1).toDouble(), m.captured(2).toDouble()),
                           QPointF(m.captured(3).toDouble(), m.captured(4).toDouble())),
                    m.captured(5).replace(QStringLiteral("&amp;"), QStringLiteral("&"))});
    }
    return out;
}

QStringList pageTexts(const QString& path)
{
    QStringList pages =
        run(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")})
            .out.split(QLatin1Char('\f'));
    if (!pages.isEmpty() && pages.last().trimmed().isEmpty())
        pages.removeLast();
    for (QString& page : pages)
        page = page.simplified();
    return pages;
}

QJsonObject qpdfJson(const QString& path, const QStringList& keys)
{
    QStringList args{QStringLiteral("--json=2")};
    for (const QString& key : keys)
        args << QStringLiteral("--json-key=") + key;
    args << path;
    return QJsonDocument::fromJson(run(QStringLiteral("qpdf"), args).out.toUtf8()).object();
}

}  // namespace

class TestCutSheets : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;

    QString file(const QString& name) const { return m_dir->filePath(name); }

    QByteArray write(const QString& name, const QByteArray& bytes) const
    {
        QFile f(file(name));
        if (f.open(QIODevice::WriteOnly))
            f.write(bytes);
        return bytes;
    }

    QByteArray read(const QString& name) const
    {
        QFile f(file(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    // A sheet whose second page is turned a quarter: a landscape drawing in a portrait file.
    QByteArray rotatedSheet()
    {
        write(QStringLiteral("upright.pdf"),
              makeSheet(QStringLiteral("charlie"), QPageSize::Letter, QPageLayout::Portrait, 2));
        const Run r = run(QStringLiteral("qpdf"),
                          {file(QStringLiteral("upright.pdf")), QStringLiteral("--rotate=+90:2"),
                           QStringLiteral("--"), file(QStringLiteral("charlie.pdf"))});
        return r.code == 0 ? read(QStringLiteral("charlie.pdf")) : QByteArray();
    }

    // Every line of the sample job ticked, all parts included.
    static std::shared_ptr<StandalonePackageSource> job()
    {
        auto job = StandalonePackageSource::sampleJob();
        auto& submittal = static_cast<StandaloneSubmittal&>(*job->Submittal());
        submittal.setIncludeCoverLetter(true);
        submittal.setIncludeBOM(true);
        submittal.setIncludeLabels(true);
        for (const auto& line : job->LineItems()->Enumerate())
            line->setSelected(true);
        return job;
    }

    static CutSheet sheet(const QString& type, const QString& fileName, const QByteArray& pdf)
    {
        return {type, fileName, pdf, CutSheetFile::inspect(fileName, pdf).pageCount};
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
    }
    void cleanup() { m_dir.reset(); }

    // ---- handing a sheet in --------------------------------------------------------------

    void goodSheetIsTakenWithItsPageCount()
    {
        const QByteArray pdf =
            makeSheet(QStringLiteral("echo"), QPageSize::Letter, QPageLayout::Portrait, 12);
        const CutSheetFile::Inspection got = CutSheetFile::inspect(QStringLiteral("echo.pdf"), pdf);
        QCOMPARE(got.pageCount, 12);
        QCOMPARE(got.warnings, QStringList());
    }

    void badSheetIsRefusedNamingTheFileAndTheReason_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("description");
        QTest::newRow("plain text renamed .pdf")
            << "text"
            << "The cut sheet \"bad.pdf\" is refused: it is not a PDF file.";
        QTest::newRow("encrypted")
            << "encrypted"
            << "The cut sheet \"bad.pdf\" is refused: it is encrypted and needs a password.";
        QTest::newRow("no pages") << "empty"
                                  << "The cut sheet \"bad.pdf\" is refused: it has no pages.";
        QTest::newRow("truncated") << "truncated"
                                   << "The cut sheet \"bad.pdf\" is refused: it is damaged";
    }

    void badSheetIsRefusedNamingTheFileAndTheReason()
    {
        QFETCH(QString, kind);
        QFETCH(QString, description);
        const QByteArray good =
            write(QStringLiteral("good.pdf"), makeSheet(QStringLiteral("alpha"), QPageSize::A4,
                                                        QPageLayout::Portrait, 3, true));
        QByteArray bad;
        if (kind == QLatin1String("text")) {
            bad = "Fixture schedule, see the drawings.\n";
        } else if (kind == QLatin1String("encrypted")) {
            QCOMPARE(run(QStringLiteral("qpdf"),
                         {QStringLiteral("--encrypt"), QStringLiteral("user"),
                          QStringLiteral("owner"), QStringLiteral("256"), QStringLiteral("--"),
                          file(QStringLiteral("good.pdf")), file(QStringLiteral("bad.pdf"))})
                         .code,
                     0);
            bad = read(QStringLiteral("bad.pdf"));
        } else if (kind == QLatin1String("empty")) {
            QCOMPARE(run(QStringLiteral("qpdf"),
                         {QStringLiteral("--empty"), file(QStringLiteral("bad.pdf"))})
                         .code,
                     0);
            bad = read(QStringLiteral("bad.pdf"));
        } else {
            bad = good.left(good.size() * 2 / 5);
        }
        QVERIFY(!bad.isEmpty());
        try {
            CutSheetFile::inspect(QStringLiteral("bad.pdf"), bad);
            QFAIL("the bad sheet was taken");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), ErrorNumber::BadFileFormat);
            QCOMPARE(f.Source(), QStringLiteral("ZebPackage.CutSheetFile"));
            if (kind == QLatin1String("truncated")) {
                // qpdf's own words follow in brackets.
                QVERIFY2(f.Description().startsWith(description + QStringLiteral(" (")),
                         qPrintable(f.Description()));
                QVERIFY(f.Description().endsWith(QStringLiteral(").")));
            } else {
                QCOMPARE(f.Description(), description);
            }
        }
    }

    void sheetThatOpensOnlyWithWarningsIsTakenAndTheWarningsShown()
    {
        QByteArray pdf =
            makeSheet(QStringLiteral("golf"), QPageSize::Letter, QPageLayout::Portrait, 2);
        // The cross-reference table's offset points nowhere: readers rebuild it, with a warning.
        const qsizetype at = pdf.lastIndexOf("startxref");
        QVERIFY(at > 0);
        pdf = pdf.left(at) + "startxref\n999999\n%%EOF\n";
        const CutSheetFile::Inspection got = CutSheetFile::inspect(QStringLiteral("golf.pdf"), pdf);
        QCOMPARE(got.pageCount, 2);
        QVERIFY(!got.warnings.isEmpty());
        QVERIFY2(got.warnings.join(QLatin1Char('\n')).contains(QStringLiteral("xref")),
                 qPrintable(got.warnings.join(QLatin1Char('\n'))));
        // It prints like any other.
        auto j = job();
        j->setCutSheets({{QStringLiteral("A"), QStringLiteral("golf.pdf"), pdf, got.pageCount}});
        PackageGenerator generator;
        QVERIFY(generator.Generate(*j, file(QStringLiteral("package.pdf"))));
        const QStringList pages = pageTexts(file(QStringLiteral("package.pdf")));
        QVERIFY(pages.last().contains(QStringLiteral("golf-p2")));
    }

    // ---- the merged package --------------------------------------------------------------

    void packageHoldsEverySheetAfterItsOwnPagesWithContentsOutlineAndStamps()
    {
        const QByteArray alpha =
            makeSheet(QStringLiteral("alpha"), QPageSize::A4, QPageLayout::Portrait, 2);
        const QByteArray delta =
            makeSheet(QStringLiteral("delta"), QPageSize::Letter, QPageLayout::Portrait, 1, true);
        const QByteArray bravo =
            makeSheet(QStringLiteral("bravo"), QPageSize::Letter, QPageLayout::Landscape, 1);
        const QByteArray charlie = rotatedSheet();
        QVERIFY(!charlie.isEmpty());
        const QByteArray echo =
            makeSheet(QStringLiteral("echo"), QPageSize::Letter, QPageLayout::Portrait, 12);
        auto j = job();
        // Attached by type as the office did it; "C" reuses A's first sheet. Type "A1E" has none.
        j->setCutSheets({sheet(QStringLiteral("A"), QStringLiteral("alpha.pdf"), alpha),
                         sheet(QStringLiteral("A"), QStringLiteral("delta.pdf"), delta),
                         sheet(QStringLiteral("A1"), QStringLiteral("bravo.pdf"), bravo),
                         sheet(QStringLiteral("B"), QStringLiteral("charlie.pdf"), charlie),
                         sheet(QStringLiteral("B1"), QStringLiteral("echo.pdf"), echo),
                         sheet(QStringLiteral("C"), QStringLiteral("alpha.pdf"), alpha)});
        PackageGenerator generator;
        const QString path = file(QStringLiteral("package.pdf"));
        QVERIFY(generator.Generate(*j, path));

        // A well-formed file.
        const Run check = run(QStringLiteral("qpdf"), {QStringLiteral("--check"), path});
        QCOMPARE(check.code, 0);
        QVERIFY(check.out.contains(QStringLiteral("No syntax or stream encoding errors found")));

        const QStringList pages = pageTexts(path);
        QCOMPARE(qint32(pages.size()), generator.pageCount());
        QHash<QString, qint32> pageOf;
        for (const auto& entry : generator.contents())
            pageOf.insert(entry.Title, entry.Page);
        const qint32 a = pageOf.value(QStringLiteral("Type A"));
        const qint32 labels = pageOf.value(QStringLiteral("Labels"));
        // The sheets follow the labels, in the order of the types on the bill of materials.
        QVERIFY(a > labels);
        QCOMPARE(pageOf.value(QStringLiteral("Cut Sheets")), a);
        QCOMPARE(pageOf.value(QStringLiteral("Type A1")), a + 3);
        QCOMPARE(pageOf.value(QStringLiteral("Type B")), a + 4);
        QCOMPARE(pageOf.value(QStringLiteral("Type B1")), a + 6);
        QCOMPARE(pageOf.value(QStringLiteral("Type C")), a + 18);
        QCOMPARE(a + 20 - 1, generator.pageCount());
        QCOMPARE(pageOf.value(QStringLiteral("Type A1E: No cut sheet attached"), -1), 0);
        // The types stand inside the part in the contents.
        for (const auto& entry : generator.contents())
            QCOMPARE(entry.Level, entry.Title.startsWith(QStringLiteral("Type ")) ? 1 : 0);
        // Each sheet's text on the page the contents cites, and the pages after it.
        const auto on = [&](qint32 page, const QString& text) {
            return pages.value(page - 1).contains(text);
        };
        QVERIFY(on(a, QStringLiteral("alpha-p1")));
        QVERIFY(on(a + 1, QStringLiteral("alpha-p2")));
        QVERIFY(on(a + 2, QStringLiteral("delta-p1")));
        QVERIFY(on(a + 3, QStringLiteral("bravo-p1")));
        QVERIFY(on(a + 4, QStringLiteral("charlie-p1")));
        QVERIFY(on(a + 5, QStringLiteral("charlie-p2")));
        for (int k = 1; k <= 12; ++k)
            QVERIFY(on(a + 5 + k, QStringLiteral("echo-p%1").arg(k)));
        QVERIFY(on(a + 18, QStringLiteral("alpha-p1")));
        QVERIFY(on(a + 19, QStringLiteral("alpha-p2")));
        // The contents lists the parts and the types, the one without a sheet saying so.
        QVERIFY(pages[0].contains(QStringLiteral("Cut Sheets %1").arg(a)));
        QVERIFY(pages[0].contains(QStringLiteral("Type A %1").arg(a)));
        QVERIFY(pages[0].contains(QStringLiteral("Type A1E: No cut sheet attached")));
        QVERIFY(!pages[0].contains(QStringLiteral("Type A1E: No cut sheet attached 0")));

        // Each page keeps its own size and rotation.
        const auto sizeLine = [&](qint32 page) {
            static const QRegularExpression size(QStringLiteral("Page +\\d+ size: +([^\\n]+)"));
            return size.match(pdfInfo(path, page)).captured(1).trimmed();
        };
        const auto rotation = [&](qint32 page) {
            static const QRegularExpression rot(QStringLiteral("Page +\\d+ rot: +(\\d+)"));
            return rot.match(pdfInfo(path, page)).captured(1).toInt();
        };
        QCOMPARE(sizeLine(a), QStringLiteral("595 x 842 pts (A4)"));
        QCOMPARE(sizeLine(a + 2), QStringLiteral("612 x 792 pts (letter)"));
        QCOMPARE(sizeLine(a + 3), QStringLiteral("792 x 612 pts (letter)"));
        QCOMPARE(rotation(a + 4), 0);
        QCOMPARE(rotation(a + 5), 90);

        // The outline has the tree of the contents, down to each file.
        const QJsonObject json =
            qpdfJson(path, {QStringLiteral("outlines"), QStringLiteral("pages"),
                            QStringLiteral("pagelabels")});
        QStringList outline;
        const std::function<void(const QJsonArray&, int)> walk = [&](const QJsonArray& items,
                                                                     int level) {
            for (const auto& item : items) {
                const QJsonObject o = item.toObject();
                outline << QStringLiteral("%1%2 -> %3")
                               .arg(QString(level * 2, QLatin1Char(' ')),
                                    o.value(QStringLiteral("title")).toString())
                               .arg(o.value(QStringLiteral("destpageposfrom1")).toInt());
                walk(o.value(QStringLiteral("kids")).toArray(), level + 1);
            }
        };
        walk(json.value(QStringLiteral("outlines")).toArray(), 0);
        const qsizetype from = outline.indexOf(QStringLiteral("Cut Sheets -> %1").arg(a));
        QVERIFY2(from > 0, qPrintable(outline.join(QLatin1Char('\n'))));
        QCOMPARE(outline.mid(from), (QStringList{
                                        QStringLiteral("Cut Sheets -> %1").arg(a),
                                        QStringLiteral("  Type A -> %1").arg(a),
                                        QStringLiteral("    alpha.pdf -> %1").arg(a),
                                        QStringLiteral("    delta.pdf -> %1").arg(a + 2),
                                        QStringLiteral("  Type A1 -> %1").arg(a + 3),
                                        QStringLiteral("    bravo.pdf -> %1").arg(a + 3),
                                        QStringLiteral("  Type B -> %1").arg(a + 4),
                                        QStringLiteral("    charlie.pdf -> %1").arg(a + 4),
                                        QStringLiteral("  Type B1 -> %1").arg(a + 6),
                                        QStringLiteral("    echo.pdf -> %1").arg(a + 6),
                                        QStringLiteral("  Type C -> %1").arg(a + 18),
                                        QStringLiteral("    alpha.pdf -> %1").arg(a + 18),
                                    }));
        QVERIFY(outline.contains(QStringLiteral("Labels -> %1").arg(labels)));

        // The reader's page labels are the printed numbers.
        const QJsonArray pageLabels = json.value(QStringLiteral("pagelabels")).toArray();
        QCOMPARE(pageLabels.size(), 1);
        QCOMPARE(pageLabels[0].toObject().value(QStringLiteral("index")).toInt(), 0);
        QCOMPARE(pageLabels[0]
                     .toObject()
                     .value(QStringLiteral("label"))
                     .toObject()
                     .value(QStringLiteral("/S"))
                     .toString(),
                 QStringLiteral("/D"));
        QVERIFY(pages[labels - 1].contains(
            QStringLiteral("Page %1 of %2").arg(labels).arg(generator.pageCount())));

        // Each sheet page carries its stamp in the strip at its foot, clear of every word of the
        // sheet, even the one printed at the sheet's very edge.
        const QHash<qint32, QString> typeOf{
            {a, QStringLiteral("A")},      {a + 2, QStringLiteral("A")},
            {a + 3, QStringLiteral("A1")}, {a + 4, QStringLiteral("B")},
            {a + 5, QStringLiteral("B")},  {a + 6, QStringLiteral("B1")},
            {a + 18, QStringLiteral("C")}};
        QString type;
        for (qint32 page = a; page <= generator.pageCount(); ++page) {
            type = typeOf.value(page, type);
            QSizeF size;
            const QList<Word> all = words(path, page, &size);
            const qreal height = rotation(page) % 180 == 90 ? size.width() : size.height();
            QList<Word> stamp;
            QList<Word> sheet;
            for (const Word& w : all)
                (w.box.top() >= height - ZebPackage::PdfFinish::StampStrip ? stamp : sheet)
                    .append(w);
            QStringList stampText;
            for (const Word& w : stamp)
                stampText << w.text;
            QCOMPARE(stampText.join(QLatin1Char(' ')),
                     QStringLiteral("Job PDX-26-0147 \u00b7 Type %1 \u00b7 Page %2 of %3")
                         .arg(type)
                         .arg(page)
                         .arg(generator.pageCount()));
            QVERIFY2(
                std::any_of(sheet.begin(), sheet.end(),
                            [](const Word& w) { return w.text.contains(QStringLiteral("-foot")); }),
                qPrintable(QStringLiteral("page %1 lost the sheet's foot").arg(page)));
            for (const Word& s : stamp) {
                for (const Word& w : sheet)
                    QVERIFY2(!s.box.intersects(w.box),
                             qPrintable(QStringLiteral("page %1: the stamp's \"%2\" covers \"%3\"")
                                            .arg(page)
                                            .arg(s.text, w.text)));
            }
        }
    }

    // A sheet's own links (here a package's contents page, whose rows link to its pages) move
    // with the shrunk content and open the page of the sheet they opened before.
    void sheetLinksMoveWithTheContentAndOpenTheirOwnPages()
    {
        auto inner = job();
        PackageGenerator first;
        QVERIFY(first.Generate(*inner, file(QStringLiteral("inner.pdf"))));
        const QByteArray innerPdf = read(QStringLiteral("inner.pdf"));
        const auto links = [&](const QString& path) {
            // Each link as its page, rectangle and the page it opens, all from 1.
            const QJsonObject json =
                qpdfJson(path, {QStringLiteral("pages"), QStringLiteral("qpdf")});
            QHash<QString, int> pageOf;
            for (const auto& page : json.value(QStringLiteral("pages")).toArray())
                pageOf.insert(page.toObject().value(QStringLiteral("object")).toString(),
                              page.toObject().value(QStringLiteral("pageposfrom1")).toInt());
            const QJsonObject objects =
                json.value(QStringLiteral("qpdf")).toArray().at(1).toObject();
            QList<std::tuple<int, QRectF, int>> out;
            for (const auto& page : json.value(QStringLiteral("pages")).toArray()) {
                const QJsonObject dict =
                    objects
                        .value(QStringLiteral("obj:")
                               + page.toObject().value(QStringLiteral("object")).toString())
                        .toObject()
                        .value(QStringLiteral("value"))
                        .toObject();
                QJsonValue annots = dict.value(QStringLiteral("/Annots"));
                // The list itself may be an object of its own.
                if (annots.isString())
                    annots = objects.value(QStringLiteral("obj:") + annots.toString())
                                 .toObject()
                                 .value(QStringLiteral("value"));
                for (const auto& ref : annots.toArray()) {
                    const QJsonObject annot = objects.value(QStringLiteral("obj:") + ref.toString())
                                                  .toObject()
                                                  .value(QStringLiteral("value"))
                                                  .toObject();
                    if (annot.value(QStringLiteral("/Subtype")).toString()
                        != QLatin1String("/Link"))
                        continue;
                    const QJsonArray r = annot.value(QStringLiteral("/Rect")).toArray();
                    out.append(
                        {page.toObject().value(QStringLiteral("pageposfrom1")).toInt(),
                         QRectF(QPointF(r[0].toDouble(), r[1].toDouble()),
                                QPointF(r[2].toDouble(), r[3].toDouble())),
                         pageOf.value(
                             annot.value(QStringLiteral("/Dest")).toArray().at(0).toString())});
                }
            }
            return out;
        };
        const auto before = links(file(QStringLiteral("inner.pdf")));
        QVERIFY(!before.isEmpty());

        auto outer = job();
        outer->setCutSheets({sheet(QStringLiteral("A"), QStringLiteral("inner.pdf"), innerPdf)});
        PackageGenerator second;
        QVERIFY(second.Generate(*outer, file(QStringLiteral("outer.pdf"))));
        QCOMPARE(run(QStringLiteral("qpdf"),
                     {QStringLiteral("--check"), file(QStringLiteral("outer.pdf"))})
                     .code,
                 0);
        qint32 a = 0;
        for (const auto& entry : second.contents())
            a = entry.Title == QLatin1String("Type A") ? entry.Page : a;
        QVERIFY(a > 0);
        QList<std::tuple<int, QRectF, int>> after;
        for (const auto& link : links(file(QStringLiteral("outer.pdf")))) {
            if (std::get<0>(link) >= a)
                after.append(link);
        }
        QCOMPARE(after.size(), before.size());
        // Letter paper: the content shrinks by (792 - strip) / 792 toward the top, centred.
        const qreal scale = (792 - ZebPackage::PdfFinish::StampStrip) / 792;
        for (qsizetype i = 0; i < before.size(); ++i) {
            const auto& [page, rect, target] = before[i];
            const auto& [newPage, newRect, newTarget] = after[i];
            QCOMPARE(newPage, page + a - 1);
            QCOMPARE(newTarget, target + a - 1);
            const QRectF expected(rect.left() * scale + 612 * (1 - scale) / 2,
                                  rect.top() * scale + 792 * (1 - scale), rect.width() * scale,
                                  rect.height() * scale);
            QVERIFY2(qAbs(newRect.left() - expected.left()) < 0.01
                         && qAbs(newRect.top() - expected.top()) < 0.01
                         && qAbs(newRect.width() - expected.width()) < 0.01
                         && qAbs(newRect.height() - expected.height()) < 0.01,
                     qPrintable(QStringLiteral("link %1 at %2,%3 %4x%5")
                                    .arg(i)
                                    .arg(newRect.left())
                                    .arg(newRect.top())
                                    .arg(newRect.width())
                                    .arg(newRect.height())));
        }
    }

    void typeWithoutSheetIsListedByThePreExportCheck()
    {
        auto j = job();
        QVERIFY(!PackageGenerator::Check(*j).contains(
            QStringLiteral("Type A1E has no cut sheet attached.")));
        j->setCutSheets(
            {sheet(QStringLiteral("A"), QStringLiteral("alpha.pdf"),
                   makeSheet(QStringLiteral("alpha"), QPageSize::A4, QPageLayout::Portrait, 1))});
        const QStringList gaps = PackageGenerator::Check(*j);
        QVERIFY(!gaps.contains(QStringLiteral("Type A has no cut sheet attached.")));
        QVERIFY(gaps.contains(QStringLiteral("Type A1E has no cut sheet attached.")));
        QVERIFY(gaps.contains(QStringLiteral("Type B has no cut sheet attached.")));
    }

    void jobWithoutCutSheetsPrintsNoCutSheetPart()
    {
        auto j = job();
        PackageGenerator generator;
        QVERIFY(generator.Generate(*j, file(QStringLiteral("package.pdf"))));
        for (const auto& entry : generator.contents())
            QVERIFY2(!entry.Title.startsWith(QStringLiteral("Cut Sheets"))
                         && !entry.Title.startsWith(QStringLiteral("Type ")),
                     qPrintable(entry.Title));
    }

    void sheetOfAnUntickedTypeDoesNotPrint()
    {
        auto j = job();
        const auto lines = j->LineItems()->Enumerate();
        for (const auto& line : lines) {
            if (line->Type() == QLatin1String("B"))
                line->setSelected(false);
        }
        j->setCutSheets(
            {sheet(QStringLiteral("B"), QStringLiteral("bravo.pdf"),
                   makeSheet(QStringLiteral("bravo"), QPageSize::Letter, QPageLayout::Portrait, 1)),
             sheet(
                 QStringLiteral("A"), QStringLiteral("alpha.pdf"),
                 makeSheet(QStringLiteral("alpha"), QPageSize::Letter, QPageLayout::Portrait, 1))});
        PackageGenerator generator;
        QVERIFY(generator.Generate(*j, file(QStringLiteral("package.pdf"))));
        const QString all = pageTexts(file(QStringLiteral("package.pdf"))).join(QLatin1Char(' '));
        QVERIFY(all.contains(QStringLiteral("alpha-p1")));
        QVERIFY(!all.contains(QStringLiteral("bravo-p1")));
    }

    void cancellingDuringTheMergeLeavesNoFile()
    {
        auto j = job();
        j->setCutSheets({sheet(
            QStringLiteral("A"), QStringLiteral("echo.pdf"),
            makeSheet(QStringLiteral("echo"), QPageSize::Letter, QPageLayout::Portrait, 12))});
        PackageGenerator generator;
        qint32 calls = 0;
        qint32 total = 0;
        // Answers no only when every drawn page is done: at the merge.
        generator.setProgress([&](qint32 done, qint32 all) {
            ++calls;
            total = all;
            return done < all;
        });
        const QString path = file(QStringLiteral("package.pdf"));
        QVERIFY(!generator.Generate(*j, path));
        QVERIFY(!QFile::exists(path));
        QVERIFY(total > 12);
        QVERIFY(calls >= 2);
    }
};

QTEST_MAIN(TestCutSheets)
#include "tst_cutsheets.moc"
