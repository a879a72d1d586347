// The submittal package: generated from the stand-alone sample job under many criteria and read
// back with poppler's pdftotext, pdfinfo and pdftoppm.

#include "contracts/failure.h"
#include "objects/standalonebom.h"
#include "objects/standalonecoverletter.h"
#include "objects/standalonecustomer.h"
#include "objects/standalonecustomers.h"
#include "objects/standalonelabelfield.h"
#include "objects/standalonelabelfields.h"
#include "objects/standalonelabels.h"
#include "objects/standalonelineitems.h"
#include "objects/standalonepackagesource.h"
#include "objects/standalonerecipients.h"
#include "objects/standalonesubmittal.h"
#include "objects/standalonetextobjects.h"
#include "package/packagegenerator.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace ZebObjects;
using ZebPackage::PackageGenerator;
using ZebPackage::RevisionMarks;

namespace {

QString run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(120000) || process.exitCode() != 0) {
        qWarning("%s failed: %s", qPrintable(program), process.readAllStandardError().constData());
        return QString();
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

// The text of each page, whitespace collapsed, so that phrases match across wrapped lines.
struct Pdf {
    QString path;
    QStringList pages;

    qsizetype count() const { return pages.size(); }
    QString page(qsizetype n) const { return pages.value(n - 1); }
    QString all() const { return pages.join(QLatin1Char(' ')); }
    // Pages whose text starts with the heading.
    QList<qsizetype> pagesStartingWith(const QString& heading) const
    {
        QList<qsizetype> out;
        for (qsizetype i = 0; i < pages.size(); ++i) {
            if (pages[i].startsWith(heading))
                out << i + 1;
        }
        return out;
    }
};

Pdf readPdf(const QString& path)
{
    Pdf pdf;
    pdf.path = path;
    const QString text =
        run(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), QStringLiteral("-enc"),
                                          QStringLiteral("UTF-8"), path, QStringLiteral("-")});
    QStringList pages = text.split(QLatin1Char('\f'));
    if (!pages.isEmpty() && pages.last().trimmed().isEmpty())
        pages.removeLast();
    for (const QString& page : pages)
        pdf.pages << page.simplified();
    return pdf;
}

// True when every needle occurs in text, each after the one before.
bool inOrder(const QString& text, const QStringList& needles, QString* missing = nullptr)
{
    qsizetype from = 0;
    for (const QString& needle : needles) {
        const qsizetype at = text.indexOf(needle, from);
        if (at < 0) {
            if (missing)
                *missing = needle;
            return false;
        }
        from = at + needle.size();
    }
    return true;
}

#define VERIFY_IN_ORDER(text, ...)                                                                 \
    do {                                                                                           \
        QString missing_;                                                                          \
        QVERIFY2(inOrder((text), QStringList{__VA_ARGS__}, &missing_),                             \
                 qPrintable(QStringLiteral("missing or out of order: ") + missing_));              \
    } while (false)

StandaloneSubmittal& submittalOf(const StandalonePackageSource& job)
{
    return static_cast<StandaloneSubmittal&>(*job.Submittal());
}
StandaloneCoverLetter& letterOf(const StandalonePackageSource& job)
{
    return *submittalOf(job).standaloneCoverLetter();
}
StandaloneBOM& bomOf(const StandalonePackageSource& job)
{
    return static_cast<StandaloneBOM&>(*job.BOM());
}
StandaloneLabelFields& fieldsOf(const StandalonePackageSource& job)
{
    return *static_cast<StandaloneLabels&>(*job.Labels()).standaloneFields();
}

// Sets fields on the label in this order and every other field off it.
void chooseLabelFields(const StandalonePackageSource& job, const QStringList& keys)
{
    auto& fields = fieldsOf(job);
    fields.setMaximumIncluded(qint16(std::max<qsizetype>(5, keys.size())));
    for (const auto& field : fields.Enumerate())
        field->setPrintOrder(0);
    for (qsizetype i = 0; i < keys.size(); ++i)
        fields.Item(keys[i])->setPrintOrder(qint16(i + 1));
}

void onlyPart(StandalonePackageSource& job, bool letter, bool bom, bool labels)
{
    submittalOf(job).setIncludeCoverLetter(letter);
    submittalOf(job).setIncludeBOM(bom);
    submittalOf(job).setIncludeLabels(labels);
}

QStringList fileNames(const QString& dir)
{
    return QDir(dir).entryList(QDir::Files | QDir::Hidden | QDir::System);
}

// The non-white pixels of a region of a rendered page.
int inkIn(const QImage& image, const QRect& region)
{
    int ink = 0;
    const QRect r = region.intersected(image.rect());
    for (int y = r.top(); y <= r.bottom(); ++y) {
        for (int x = r.left(); x <= r.right(); ++x) {
            if (qGray(image.pixel(x, y)) < 200)
                ++ink;
        }
    }
    return ink;
}

struct Word {
    QRectF box;
    QString text;
};

// Every word of one page with its box in points; without the package's footer (the bottom half
// inch) unless asked for.
QList<Word> wordsOnPage(const QString& path, int page, bool footer = false)
{
    const QString html =
        run(QStringLiteral("pdftotext"),
            {QStringLiteral("-bbox"), QStringLiteral("-f"), QString::number(page),
             QStringLiteral("-l"), QString::number(page), path, QStringLiteral("-")});
    static const QRegularExpression word(
        QStringLiteral("<word xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\" "
                       "yMax=\"([0-9.]+)\">([^<]*)</word>"));
    static const QRegularExpression pageBox(
        QStringLiteral("<page width=\"([0-9.]+)\" height=\"([0-9.]+)\""));
    const qreal height = pageBox.match(html).captured(2).toDouble();
    QList<Word> out;
    for (auto it = word.globalMatch(html); it.hasNext();) {
        const auto m = it.next();
        const QPointF from(m.captured(1).toDouble(), m.captured(2).toDouble());
        const QPointF to(m.captured(3).toDouble(), m.captured(4).toDouble());
        if (!footer && from.y() >= height - 36)
            continue;
        out.append({QRectF(from, to), m.captured(5)});
    }
    return out;
}

}  // namespace

class TestPackage : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;

    QString target(const QString& name = QStringLiteral("package.pdf")) const
    {
        return m_dir->filePath(name);
    }

    Pdf generate(const StandalonePackageSource& job,
                 PackageGenerator::PaperSize paper = PackageGenerator::PaperSize::Letter,
                 PackageGenerator* generatorOut = nullptr)
    {
        PackageGenerator local;
        PackageGenerator& generator = generatorOut ? *generatorOut : local;
        generator.setPaperSize(paper);
        const QString path = target();
        if (!generator.Generate(job, path))
            return {};
        return readPdf(path);
    }

    QImage render(const QString& path, int page, int dpi = 60)
    {
        const QString prefix = m_dir->filePath(QStringLiteral("render"));
        run(QStringLiteral("pdftoppm"),
            {QStringLiteral("-png"), QStringLiteral("-r"), QString::number(dpi),
             QStringLiteral("-f"), QString::number(page), QStringLiteral("-l"),
             QString::number(page), QStringLiteral("-singlefile"), path, prefix});
        QImage image(prefix + QStringLiteral(".png"));
        return image.convertToFormat(QImage::Format_RGB32);
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
    }
    void cleanup() { m_dir.reset(); }

    // ---- the stand-alone job -------------------------------------------------------------

    void sampleJobOfAnyLengthWithItsFacts()
    {
        auto job = StandalonePackageSource::sampleJob(744);
        const auto lines = job->LineItems()->Enumerate();
        QCOMPARE(lines.size(), 744);
        QSet<QString> types;
        for (const auto& line : lines)
            types.insert(line->Type());
        QCOMPARE(types.size(), 744);
        QCOMPARE(lines[20]->Type(), QStringLiteral("A-2"));
        QCOMPARE(lines[743]->CatalogNumber(), lines[3]->CatalogNumber());
        QCOMPARE(job->Manufacturer(*lines[0]), QStringLiteral("Varnholt Lighting Works"));
        QCOMPARE(job->JobName(), QStringLiteral("Riverside Medical Office Building"));
        const ZebPackage::PostalAddress address = job->Address(*job->Customers()->Item(2));
        QCOMPARE(address,
                 (ZebPackage::PostalAddress{
                     QStringLiteral("Priya Raman"), QStringLiteral("520 SW Yamhill Street"),
                     QStringLiteral("Suite 1100"), QStringLiteral("Portland"), QStringLiteral("OR"),
                     QStringLiteral("97204"), QStringLiteral("(503) 555-0119"),
                     QStringLiteral("priya.raman@cedarridge.example")}));
        // Facts the job does not know are empty, not failures.
        StandaloneLineItem unknown(StandaloneLineItem::Data{
            1, QStringLiteral("Z"), QStringLiteral("Nobody"), {}, {}, {}, false, {}, false});
        QVERIFY(job->Manufacturer(unknown).isEmpty());
        StandaloneCustomer::Data strangerData;
        strangerData.key = QStringLiteral("NONE");
        strangerData.included = true;
        StandaloneCustomer stranger(strangerData);
        QCOMPARE(job->Address(stranger), ZebPackage::PostalAddress());
        QCOMPARE(StandalonePackageSource::sampleJob()->LineItems()->Count(), qint16(20));
    }

    // ---- the whole package ---------------------------------------------------------------

    void contentsPageListsEveryPartWithItsPage()
    {
        auto job = StandalonePackageSource::sampleJob();
        submittalOf(*job).setIncludeLabels(true);
        letterOf(*job).setSeparateLetters(true);
        PackageGenerator generator;
        const Pdf pdf = generate(*job, PackageGenerator::PaperSize::Letter, &generator);
        QVERIFY(pdf.count() >= 6);
        QCOMPARE(generator.pageCount(), qint32(pdf.count()));
        VERIFY_IN_ORDER(pdf.page(1), "Submittal Package", "Riverside Medical Office Building",
                        "Job Number: PDX-26-0147", "Purpose: Request For Approval",
                        "Issued By: Marta Halloran", "Date: November 21, 2026", "Contents",
                        "Cover Letter: Dana Whitcomb, Halvorsen Electric Co.",
                        "Cover Letter: Priya Raman, Cedar Ridge Architects",
                        "Cover Letter: Tom Okafor, Benton Consulting Engineers",
                        "Bill of Materials", "Labels");
        const auto contents = generator.contents();
        QCOMPARE(contents.size(), 5);
        for (const auto& entry : contents) {
            // The page number stands beside the title, and the page holds that part.
            QVERIFY2(
                pdf.page(1).contains(entry.Title + QLatin1Char(' ') + QString::number(entry.Page)),
                qPrintable(entry.Title));
            const QString page = pdf.page(entry.Page);
            if (entry.Title.startsWith(QStringLiteral("Cover Letter: ")))
                QVERIFY(page.contains(entry.Title.mid(14).section(QStringLiteral(", "), 0, 0)));
            else if (entry.Title == QLatin1String("Labels"))
                QVERIFY(page.startsWith(
                    QStringLiteral("Halvorsen Electric Co. Cedar Ridge Architects")));
            else
                QVERIFY2(page.startsWith(entry.Title), qPrintable(page.left(80)));
        }
        QCOMPARE(contents[0].Page, 2);
        QVERIFY(contents[1].Page > contents[0].Page);
        QVERIFY(contents[4].Page == pdf.count());
    }

    void contentsPageOfAnEmptySubmittalSaysSo()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, false, false, false);
        const Pdf pdf = generate(*job);
        QCOMPARE(pdf.count(), 1);
        VERIFY_IN_ORDER(pdf.page(1), "Submittal Package", "Contents",
                        "The submittal includes no cover letter, bill of materials or labels.");
    }

    void metadataHoldsJobNamePurposeAndDate()
    {
        auto job = StandalonePackageSource::sampleJob();
        const Pdf pdf = generate(*job);
        const QString info = run(QStringLiteral("pdfinfo"), {pdf.path});
        QVERIFY2(info.contains(QRegularExpression(
                     QStringLiteral("Title:\\s+Riverside Medical Office Building\\n"))),
                 qPrintable(info));
        const QString meta = run(QStringLiteral("pdfinfo"), {QStringLiteral("-meta"), pdf.path});
        QVERIFY(meta.contains(
            QStringLiteral("<dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">Riverside Medical "
                           "Office Building</rdf:li>")));
        QVERIFY(
            meta.contains(QStringLiteral("<dc:description><rdf:Alt><rdf:li "
                                         "xml:lang=\"x-default\">Request For Approval</rdf:li>")));
        QVERIFY(meta.contains(QStringLiteral("<dc:date><rdf:Seq><rdf:li>2026-11-21</rdf:li>")));
    }

    void letterPaperByDefaultA4AsOption()
    {
        auto job = StandalonePackageSource::sampleJob();
        PackageGenerator generator;
        QCOMPARE(generator.paperSize(), PackageGenerator::PaperSize::Letter);
        Pdf pdf = generate(*job);
        QVERIFY(run(QStringLiteral("pdfinfo"), {pdf.path})
                    .contains(QStringLiteral("612 x 792 pts (letter)")));
        pdf = generate(*job, PackageGenerator::PaperSize::A4);
        QVERIFY(run(QStringLiteral("pdfinfo"), {pdf.path}).contains(QStringLiteral("(A4)")));
        VERIFY_IN_ORDER(pdf.all(), "Contents", "Request For Approval", "Bill of Materials");
    }

    void eachPartOnlyWhenIncluded_data()
    {
        QTest::addColumn<bool>("letter");
        QTest::addColumn<bool>("bom");
        QTest::addColumn<bool>("labels");
        for (int mask = 0; mask < 8; ++mask)
            QTest::addRow("letter%d bom%d labels%d", mask & 1, (mask >> 1) & 1, (mask >> 2) & 1)
                << bool(mask & 1) << bool(mask & 2) << bool(mask & 4);
    }
    void eachPartOnlyWhenIncluded()
    {
        QFETCH(bool, letter);
        QFETCH(bool, bom);
        QFETCH(bool, labels);
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, letter, bom, labels);
        const Pdf pdf = generate(*job);
        const QString all = pdf.all();
        QCOMPARE(all.contains(QStringLiteral("Sincerely,")), letter);
        QCOMPARE(pdf.pagesStartingWith(QStringLiteral("Bill of Materials")).isEmpty(), !bom);
        QCOMPARE(all.contains(QStringLiteral("Dana Whitcomb Priya Raman 2210 NW Front Avenue")),
                 labels);
        // Parts follow one another in the package's order.
        QStringList order;
        if (letter)
            order << QStringLiteral("Sincerely,");
        if (bom)
            order << QStringLiteral("Bill of Materials Riverside");
        if (labels)
            order << QStringLiteral("Dana Whitcomb Priya Raman 2210 NW Front Avenue");
        VERIFY_IN_ORDER(all, order);
    }

    // ---- cover letters -------------------------------------------------------------------

    void singleLetterNamesEveryRecipient()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, true, false, false);
        letterOf(*job).setSeparateLetters(false);
        const Pdf pdf = generate(*job);
        QCOMPARE(pdf.count(), 2);
        VERIFY_IN_ORDER(
            pdf.page(2), "November 21, 2026", "To:", "Dana Whitcomb, Halvorsen Electric Co.",
            "Priya Raman, Cedar Ridge Architects", "Tom Okafor, Benton Consulting Engineers",
            "Re: Riverside Medical Office Building (Job PDX-26-0147)",
            "Purpose: Request For Approval", "Sincerely,", "Marta Halloran");
        QVERIFY(!pdf.all().contains(QStringLiteral("cc:")));
    }

    void separateLettersOnePerRecipientWithCarbonCopy()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, true, false, false);
        letterOf(*job).setSeparateLetters(true);
        letterOf(*job).setIncludeCarbonCopy(true);
        const Pdf pdf = generate(*job);
        QCOMPARE(pdf.count(), 4);
        const QStringList names = {QStringLiteral("Dana Whitcomb"), QStringLiteral("Priya Raman"),
                                   QStringLiteral("Tom Okafor")};
        const QStringList companies = {QStringLiteral("Halvorsen Electric Co."),
                                       QStringLiteral("Cedar Ridge Architects"),
                                       QStringLiteral("Benton Consulting Engineers")};
        for (int i = 0; i < 3; ++i) {
            const QString page = pdf.page(i + 2);
            VERIFY_IN_ORDER(page, "November 21, 2026", names[i] + QLatin1Char(' ') + companies[i],
                            "Re: Riverside", "Sincerely,", "Marta Halloran", "cc:");
            QVERIFY(!page.contains(QStringLiteral("To:")));
            const QString copies = page.mid(page.indexOf(QStringLiteral("cc:")));
            for (int j = 0; j < 3; ++j) {
                const QString line = names[j] + QStringLiteral(", ") + companies[j];
                QCOMPARE(copies.contains(line), i != j);
                // The letter is addressed to its recipient alone.
                QCOMPARE(page.left(page.indexOf(QStringLiteral("cc:"))).contains(names[j]), i == j);
            }
        }
    }

    void separateLettersWithoutCarbonCopy()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, true, false, false);
        letterOf(*job).setSeparateLetters(true);
        letterOf(*job).setIncludeCarbonCopy(false);
        const Pdf pdf = generate(*job);
        QCOMPARE(pdf.count(), 4);
        QVERIFY(!pdf.all().contains(QStringLiteral("cc:")));
        QVERIFY(!pdf.page(2).contains(QStringLiteral("Priya Raman")));
    }

    void singleLetterHasNoCarbonCopyEvenWhenChosen()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, true, false, false);
        letterOf(*job).setSeparateLetters(false);
        letterOf(*job).setIncludeCarbonCopy(true);
        QVERIFY(!generate(*job).all().contains(QStringLiteral("cc:")));
    }

    void defaultParagraphsSelectedInSavedOrder()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, true, false, false);
        auto& paragraphs = static_cast<StandaloneTextObjects&>(*job->CoverLetterParagraphs());
        Pdf pdf = generate(*job);
        VERIFY_IN_ORDER(pdf.page(2), "Purpose: Request For Approval",
                        "Enclosed please find our submittal", "Fixtures are submitted as specified",
                        "Made to order fixtures cannot be cancelled", "Sincerely,");
        // Not ticked: left out.
        QVERIFY(!pdf.all().contains(QStringLiteral("Mounting heights")));
        QVERIFY(!pdf.all().contains(QStringLiteral("Thank you for the opportunity")));
        // A new order, saved, prints in that order; a newly ticked paragraph with its line breaks.
        const auto items = paragraphs.Enumerate();
        paragraphs.MoveUp(items[3]->Key());
        paragraphs.MoveUp(items[3]->Key());
        paragraphs.SaveOrder();
        items[2]->setSelected(true);
        pdf = generate(*job);
        VERIFY_IN_ORDER(pdf.page(2), "Enclosed please find our submittal",
                        "Made to order fixtures cannot be cancelled",
                        "Fixtures are submitted as specified",
                        "Please note the following before release:",
                        "- Mounting heights must be confirmed by the architect.",
                        "- Lead times start at receipt of approved drawings.", "Sincerely,");
    }

    void defaultParagraphsLeftOutWhenNotChosen()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, true, false, false);
        letterOf(*job).setIncludeDefaultParagraphs(false);
        const Pdf pdf = generate(*job);
        QVERIFY(!pdf.all().contains(QStringLiteral("Enclosed please find")));
        VERIFY_IN_ORDER(pdf.page(2), "Purpose: Request For Approval", "Sincerely,",
                        "Marta Halloran");
    }

    void remarksOnlyWhenChosenAndSelected_data()
    {
        QTest::addColumn<bool>("include");
        QTest::newRow("on") << true;
        QTest::newRow("off") << false;
    }
    void remarksOnlyWhenChosenAndSelected()
    {
        QFETCH(bool, include);
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, true, false, false);
        letterOf(*job).setIncludeRemarks(include);
        const Pdf pdf = generate(*job);
        const QString page = pdf.page(2);
        QCOMPARE(page.contains(QStringLiteral("Remarks:")), include);
        QCOMPARE(page.contains(QStringLiteral("Approval is required within 10 working days")),
                 include);
        QCOMPARE(page.contains(QStringLiteral("Dimming is 0-10V throughout")), include);
        QVERIFY(!page.contains(QStringLiteral("Emergency battery packs")));
        QVERIFY(!page.contains(QStringLiteral("Exterior poles")));
        if (include)
            VERIFY_IN_ORDER(page, "Made to order fixtures", "Remarks:", "Approval is required",
                            "Dimming is 0-10V", "Sincerely,");
    }

    void logoOnlyWhenChosen_data()
    {
        QTest::addColumn<bool>("include");
        QTest::newRow("on") << true;
        QTest::newRow("off") << false;
    }
    void logoOnlyWhenChosen()
    {
        QFETCH(bool, include);
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, true, false, false);
        letterOf(*job).setIncludeLogo(include);
        // A logo of the office's own: a red square, to be told from everything else on the page.
        QImage red(64, 64, QImage::Format_RGB32);
        red.fill(QColor(0xff, 0, 0));
        QByteArray png;
        {
            QBuffer buffer(&png);
            buffer.open(QIODevice::WriteOnly);
            red.save(&buffer, "PNG");
        }
        ZebPackage::Letterhead office = job->Office();
        office.Logo = png;
        job->setOffice(office);
        const Pdf pdf = generate(*job);
        const QImage page = render(pdf.path, 2);
        QCOMPARE(page.size(), QSize(510, 660));
        // The logo sits in the top left corner, 3/4" square inside the 3/4" margins.
        int redInk = 0;
        for (int y = 0; y < page.height(); ++y)
            for (int x = 0; x < page.width(); ++x) {
                const QColor c = page.pixelColor(x, y);
                redInk += c.red() > 200 && c.green() < 60 && c.blue() < 60 ? 1 : 0;
            }
        QVERIFY2(include ? redInk > 1500 : redInk == 0, qPrintable(QString::number(redInk)));
        if (include)
            QVERIFY(inkIn(page, QRect(46, 46, 42, 42)) > 1500);
        // The letterhead's text stands right of the logo, or at the margin without it; the
        // letter starts below the letterhead.
        const auto words = wordsOnPage(pdf.path, 2);
        QVERIFY(!words.isEmpty());
        QCOMPARE(words.first().text, QStringLiteral("Northlight"));
        QVERIFY2(include ? words.first().box.left() > 54 + 54 + 11
                         : qAbs(words.first().box.left() - 54) < 2,
                 qPrintable(QString::number(words.first().box.left())));
        QVERIFY(words.first().box.top() < 54 + 6);
        for (const Word& w : words) {
            if (w.text == QLatin1String("November"))
                QVERIFY2(w.box.top() > 54 + 54, qPrintable(QString::number(w.box.top())));
        }
    }

    void letterheadAndRecipientAddressPrint()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, true, false, false);
        letterOf(*job).setSeparateLetters(true);
        const Pdf pdf = generate(*job);
        // The office at the head of every letter, the recipient's whole address under the date.
        VERIFY_IN_ORDER(pdf.page(2), "Northlight Lighting Sales", "1120 NW Couch Street",
                        "Suite 450", "Portland, OR 97209", "Phone (503) 555-0100",
                        "submittals@northlight.example", "November 21, 2026", "Dana Whitcomb",
                        "Halvorsen Electric Co.", "2210 NW Front Avenue", "Suite 300",
                        "Portland, OR 97210", "Re: Riverside", "Sincerely,", "Marta Halloran",
                        "Northlight Lighting Sales");
        bool found = false;
        for (const QString& page : pdf.pages) {
            if (page.contains(QStringLiteral("Priya Raman Cedar Ridge Architects"))) {
                VERIFY_IN_ORDER(page, "Northlight Lighting Sales", "Priya Raman",
                                "Cedar Ridge Architects", "520 SW Yamhill Street", "Suite 1100",
                                "Portland, OR 97204");
                found = true;
            }
        }
        QVERIFY(found);
        // An office without a letterhead prints none, and the letter still starts at the top.
        job->setOffice({});
        const Pdf plain = generate(*job);
        QVERIFY(!plain.all().contains(QStringLiteral("Northlight")));
        QVERIFY(plain.page(2).startsWith(QStringLiteral("November 21, 2026 Dana Whitcomb")));
    }

    void noRecipientsGivesAPageSayingSo()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, true, false, false);
        auto recipients = submittalOf(*job).standaloneRecipients();
        while (recipients->Count() > 0)
            recipients->Remove(1);
        for (bool separate : {false, true}) {
            letterOf(*job).setSeparateLetters(separate);
            const Pdf pdf = generate(*job);
            QCOMPARE(pdf.count(), 2);
            VERIFY_IN_ORDER(pdf.page(2), "Cover Letter",
                            "The submittal has no recipients, so no cover letter is printed.");
        }
    }

    void noCoverLetterOptionsGivesAPageSayingSo()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, true, false, false);
        submittalOf(*job).setCoverLetter(nullptr);
        const Pdf pdf = generate(*job);
        QCOMPARE(pdf.count(), 2);
        VERIFY_IN_ORDER(
            pdf.page(2), "Cover Letter",
            "The submittal has no cover letter options, so no cover letter is printed.");
    }

    void noDateLeavesTheDateOut()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, true, false, false);
        submittalOf(*job).setSubmittalDate(QString());
        const Pdf pdf = generate(*job);
        QVERIFY(!pdf.all().contains(QStringLiteral("2026")));
        QVERIFY(!pdf.page(1).contains(QStringLiteral("Date:")));
        QVERIFY(pdf.page(2).contains(QStringLiteral("Dana Whitcomb")));
    }

    void longLetterRunsOverPages()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, true, false, false);
        auto& paragraphs = static_cast<StandaloneTextObjects&>(*job->CoverLetterParagraphs());
        for (int i = 1; i <= 40; ++i)
            paragraphs.Add(
                QStringLiteral("Paragraph number %1 of the long letter, long enough to take "
                               "two lines of the page at the letter's size of type.")
                    .arg(i),
                true);
        const Pdf pdf = generate(*job);
        QVERIFY(pdf.count() >= 3);
        QList<QString> expected;
        for (int i = 1; i <= 40; ++i)
            expected << QStringLiteral("Paragraph number %1 of").arg(i);
        expected << QStringLiteral("Sincerely,");
        VERIFY_IN_ORDER(pdf.all(), expected);
    }

    // ---- bill of materials ---------------------------------------------------------------

    void bomColumnsExactlyAsChosen_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("value");
        QTest::newRow("Type") << "Type"
                              << "Type"
                              << "A1E";
        QTest::newRow("Quantity") << "Quantity"
                                  << "Qty"
                                  << " 22 ";
        QTest::newRow("Brand") << "Brand"
                               << "Brand"
                               << "Quenza Architectural";
        QTest::newRow("Manufacturer") << "Manufacturer"
                                      << "Manufacturer"
                                      << "Quenza Lighting Group";
        QTest::newRow("CatalogNumber") << "CatalogNumber"
                                       << "Catalog Number"
                                       << "QA-DL4-15L";
        QTest::newRow("Description") << "Description"
                                     << "Description"
                                     << "LED downlight, 1500 lm";
        QTest::newRow("GroupCodes") << "GroupCodes"
                                    << "Group"
                                    << "EGRESS";
        QTest::newRow("MTO") << "MTO"
                             << "MTO"
                             << "MTO";
    }
    void bomColumnsExactlyAsChosen()
    {
        QFETCH(QString, column);
        QFETCH(QString, title);
        QFETCH(QString, value);
        const QStringList columns = {
            QStringLiteral("Type"),          QStringLiteral("Quantity"),
            QStringLiteral("Brand"),         QStringLiteral("Manufacturer"),
            QStringLiteral("CatalogNumber"), QStringLiteral("Description"),
            QStringLiteral("GroupCodes"),    QStringLiteral("MTO")};
        const QStringList titles = {
            QStringLiteral("Type"),           QStringLiteral("Qty"),
            QStringLiteral("Brand"),          QStringLiteral("Manufacturer"),
            QStringLiteral("Catalog Number"), QStringLiteral("Description"),
            QStringLiteral("Group"),          QStringLiteral("MTO")};
        for (bool alone : {true, false}) {
            auto job = StandalonePackageSource::sampleJob();
            onlyPart(*job, false, true, false);
            auto& bom = bomOf(*job);
            bom.setIncludeLineComments(false);
            bom.setIncludeDefaultRemarks(false);
            // Alone: only this column. Otherwise: every column but this one.
            bom.setIncludeType(alone ? column == QLatin1String("Type")
                                     : column != QLatin1String("Type"));
            bom.setIncludeQuantity(alone ? column == QLatin1String("Quantity")
                                         : column != QLatin1String("Quantity"));
            bom.setIncludeBrand(alone ? column == QLatin1String("Brand")
                                      : column != QLatin1String("Brand"));
            bom.setIncludeManufacturer(alone ? column == QLatin1String("Manufacturer")
                                             : column != QLatin1String("Manufacturer"));
            bom.setIncludeCatalogNumber(alone ? column == QLatin1String("CatalogNumber")
                                              : column != QLatin1String("CatalogNumber"));
            bom.setIncludeDescription(alone ? column == QLatin1String("Description")
                                            : column != QLatin1String("Description"));
            bom.setIncludeGroupCodes(alone ? column == QLatin1String("GroupCodes")
                                           : column != QLatin1String("GroupCodes"));
            bom.setIncludeMTO(alone ? column == QLatin1String("MTO")
                                    : column != QLatin1String("MTO"));
            const Pdf pdf = generate(*job);
            QCOMPARE(pdf.count(), 2);
            const QString page = pdf.page(2);
            // The header row: exactly the chosen titles, in the columns' order.
            QStringList header;
            for (qsizetype i = 0; i < titles.size(); ++i) {
                if ((columns[i] == column) == alone)
                    header << titles[i];
            }
            // The line's number leads whenever a column prints.
            const QString headerRow = QStringLiteral("Line ") + header.join(QLatin1Char(' '));
            QVERIFY2(page.contains(QStringLiteral("Request For Approval ") + headerRow
                                   + QLatin1Char(' ')),
                     qPrintable(page.left(300)));
            QCOMPARE(page.contains(value), alone);
        }
    }

    void bomRowsInLineOrderWithCommentsUnderTheirLines()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, false, true, false);
        bomOf(*job).setIncludeLineComments(true);
        Pdf pdf = generate(*job);
        VERIFY_IN_ORDER(pdf.all(), "A1E", "Battery pack factory installed; 90 minute rating.", "C1",
                        "X1", "X2", "EM1");
        // B1 and the last line are not ticked: they print neither their rows nor their comments.
        QVERIFY(!pdf.all().contains(QStringLiteral("Made to order: shop drawings follow")));
        QVERIFY(!pdf.all().contains(QStringLiteral(" B1 ")));
        bomOf(*job).setIncludeLineComments(false);
        pdf = generate(*job);
        QVERIFY(pdf.all().contains(QStringLiteral("A1E")));
        QVERIFY(!pdf.all().contains(QStringLiteral("Battery pack factory installed")));
        QVERIFY(!pdf.all().contains(QStringLiteral("Run lengths per")));
    }

    void bomPurposeAtTheTop()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, false, true, false);
        const Pdf pdf = generate(*job);
        VERIFY_IN_ORDER(pdf.page(2), "Bill of Materials", "Riverside Medical Office Building",
                        "Purpose: Request For Approval",
                        "Type Qty Brand Catalog Number Description MTO");
        QVERIFY(pdf.page(2).startsWith(QStringLiteral("Bill of Materials")));
    }

    void bomDefaultRemarksAtTheBottomWhenChosen_data()
    {
        QTest::addColumn<bool>("include");
        QTest::newRow("on") << true;
        QTest::newRow("off") << false;
    }
    void bomDefaultRemarksAtTheBottomWhenChosen()
    {
        QFETCH(bool, include);
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, false, true, false);
        bomOf(*job).setIncludeDefaultRemarks(include);
        const auto remarks = bomOf(*job).DefaultRemarks()->Enumerate();
        remarks[0]->setSelected(true);
        remarks[3]->setSelected(true);
        const Pdf pdf = generate(*job);
        const QString all = pdf.all();
        QCOMPARE(all.contains(QStringLiteral("Remarks")), include);
        QCOMPARE(all.contains(QStringLiteral("All fixtures are 120-277V unless noted otherwise.")),
                 include);
        QCOMPARE(
            all.contains(QStringLiteral("Colour temperature 3500K, CRI 80 minimum unless noted.")),
            include);
        QVERIFY(!all.contains(QStringLiteral("Lamps are included where listed.")));
        if (include)
            VERIFY_IN_ORDER(all, "EM1", "Remarks", "All fixtures are 120-277V",
                            "Colour temperature 3500K", "Page 2 of 2");
    }

    void bomHeaderRowOnEveryPageAndPageNOfM()
    {
        auto job = StandalonePackageSource::sampleJob(100);
        onlyPart(*job, false, true, false);
        bomOf(*job).setIncludeManufacturer(true);
        bomOf(*job).setIncludeGroupCodes(true);
        const Pdf pdf = generate(*job);
        const auto bomPages = pdf.pagesStartingWith(QStringLiteral("Bill of Materials"));
        QVERIFY(bomPages.size() >= 3);
        QCOMPARE(bomPages.first(), 2);
        QCOMPARE(bomPages.last(), pdf.count());
        const qsizetype total = bomPages.size();
        for (qsizetype n = 0; n < total; ++n) {
            const QString page = pdf.page(bomPages[n]);
            QVERIFY2(page.contains(QStringLiteral(
                         "Type Qty Brand Manufacturer Catalog Number Description Group MTO")),
                     qPrintable(page.left(300)));
            // The package's page, not the part's.
            QVERIFY2(
                page.endsWith(QStringLiteral("Page %1 of %2").arg(bomPages[n]).arg(pdf.count())),
                qPrintable(page.right(80)));
            // The purpose heads the first page only.
            QCOMPARE(page.contains(QStringLiteral("Purpose:")), n == 0);
        }
        // Every line once, in order: the last round's types close the list.
        QStringList types;
        for (const auto& line : job->LineItems()->Enumerate()) {
            if (line->Selected() && line->Type().startsWith(QStringLiteral("A1E-")))
                types << line->Type();
        }
        QCOMPARE(types.size(), 4);
        VERIFY_IN_ORDER(pdf.all(), types);
        QCOMPARE(pdf.all().count(QStringLiteral("X2-5 ")), 1);
    }

    void bomWithoutLinesSaysSo()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, false, true, false);
        static_cast<StandaloneLineItems&>(*job->LineItems()).Clear();
        Pdf pdf = generate(*job);
        QCOMPARE(pdf.count(), 2);
        VERIFY_IN_ORDER(pdf.page(2), "Bill of Materials", "Purpose:", "The submittal has no lines.",
                        "Page 2 of 2");
        QVERIFY(!pdf.page(2).contains(QStringLiteral("Catalog Number")));
        job->setLineItems(nullptr);
        pdf = generate(*job);
        VERIFY_IN_ORDER(pdf.page(2), "The submittal has no lines.");
    }

    void bomWithoutColumnsSaysSo()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, false, true, false);
        auto& bom = bomOf(*job);
        bom.setIncludeType(false);
        bom.setIncludeQuantity(false);
        bom.setIncludeBrand(false);
        bom.setIncludeCatalogNumber(false);
        bom.setIncludeDescription(false);
        bom.setIncludeMTO(false);
        const Pdf pdf = generate(*job);
        QCOMPARE(pdf.count(), 2);
        VERIFY_IN_ORDER(pdf.page(2), "Bill of Materials",
                        "No columns are chosen for the bill of materials.");
    }

    void bomWithoutOptionsSaysSo()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, false, true, false);
        job->setBOM(nullptr);
        const Pdf pdf = generate(*job);
        QCOMPARE(pdf.count(), 2);
        VERIFY_IN_ORDER(
            pdf.page(2), "Bill of Materials",
            "The submittal has no bill of materials options, so no bill of materials is printed.");
    }

    // ---- labels --------------------------------------------------------------------------

    void labelFieldsInPrintOrder_data()
    {
        QTest::addColumn<QStringList>("keys");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("1 field") << QStringList{"STREET"} << QStringList{"2210 NW Front Avenue"};
        QTest::newRow("5 fields") << QStringList{"CITYSTATEZIP", "COMPANY", "ATTENTION", "STREET",
                                                 "PHONE"}
                                  << QStringList{"Portland, OR 97210", "Halvorsen Electric Co.",
                                                 "Dana Whitcomb", "2210 NW Front Avenue",
                                                 "(503) 555-0142"};
        QTest::newRow("job fields")
            << QStringList{"JOBNAME", "JOBNUMBER", "PONUMBER", "SUBMITTALDATE", "STREET2"}
            << QStringList{"Riverside Medical Office Building", "PDX-26-0147", "RMOB-4471",
                           "November 21, 2026", "Suite 300"};
        QTest::newRow("6 fields print 5")
            << QStringList{"COMPANY", "ATTENTION", "STREET", "STREET2", "CITYSTATEZIP", "PHONE"}
            << QStringList{"Halvorsen Electric Co.", "Dana Whitcomb", "2210 NW Front Avenue",
                           "Suite 300", "Portland, OR 97210"};
    }
    void labelFieldsInPrintOrder()
    {
        QFETCH(QStringList, keys);
        QFETCH(QStringList, lines);
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, false, false, true);
        chooseLabelFields(*job, keys);
        QCOMPARE(fieldsOf(*job).includedCount(), qint16(keys.size()));
        const Pdf pdf = generate(*job);
        QCOMPARE(pdf.count(), 2);
        // One label per included customer, lines one under the other.
        const auto words = wordsOnPage(pdf.path, 2);
        QStringList firstLabel;
        qreal lastTop = -1;
        for (const Word& w : words) {
            if (w.box.left() > 13.5 + 189)
                continue;
            if (w.box.top() > lastTop + 1)
                firstLabel << w.text;
            else
                firstLabel.last() += QLatin1Char(' ') + w.text;
            lastTop = w.box.top();
        }
        QCOMPARE(firstLabel, lines);
        QVERIFY(!pdf.page(2).contains(QStringLiteral("(503) 555-0142")) || keys.size() <= 5);
        QVERIFY(pdf.page(2).contains(QStringLiteral("Cedar Ridge Architects"))
                || !keys.contains(QStringLiteral("COMPANY")));
    }

    void noLabelFieldsGivesAPageSayingSo()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, false, false, true);
        chooseLabelFields(*job, {});
        const Pdf pdf = generate(*job);
        QCOMPARE(pdf.count(), 2);
        VERIFY_IN_ORDER(pdf.page(2), "Labels",
                        "No label fields are chosen, so no labels are printed.");
    }

    void oneLabelPerIncludedCustomer()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, false, false, true);
        chooseLabelFields(*job, {QStringLiteral("COMPANY")});
        job->Customers()->Item(1)->setIncluded(false);
        Pdf pdf = generate(*job);
        QCOMPARE(pdf.page(2),
                 QStringLiteral("Cedar Ridge Architects Job PDX-26-0147 Riverside Medical "
                                "Office Building Labels Page 2 of 2"));
        job->Customers()->Item(2)->setIncluded(false);
        pdf = generate(*job);
        VERIFY_IN_ORDER(pdf.page(2), "Labels",
                        "No customer is included, so no labels are printed.");
    }

    void labelsThreeAcrossTenDownOnLetter()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, false, false, true);
        chooseLabelFields(*job, {QStringLiteral("COMPANY"), QStringLiteral("ATTENTION")});
        auto& customers = static_cast<StandaloneCustomers&>(*job->Customers());
        customers.RemoveAll();
        for (int i = 1; i <= 32; ++i) {
            StandaloneCustomer::Data data;
            data.key = QStringLiteral("K%1").arg(i);
            data.name = QStringLiteral("Customer%1").arg(i, 2, 10, QLatin1Char('0'));
            data.included = true;
            customers.Add(data.key, std::make_shared<StandaloneCustomer>(data));
            ZebPackage::PostalAddress address;
            address.Attention = QStringLiteral("Attn%1").arg(i, 2, 10, QLatin1Char('0'));
            job->setAddress(data.key, address);
        }
        const Pdf pdf = generate(*job);
        QCOMPARE(pdf.count(), 3);
        // Letter: 3/16" side margins, 1/2" top, 2 5/8" x 1" labels, 1/8" between columns.
        for (int page = 2; page <= 3; ++page) {
            const auto words = wordsOnPage(pdf.path, page);
            QCOMPARE(words.size(), page == 2 ? 60 : 4);
            for (const Word& w : words) {
                const int n = w.text.right(2).toInt() - 1 - (page - 2) * 30;
                const QRectF label(13.5 + (n % 3) * 198.0, 36 + (n / 3) * 72.0, 189, 72);
                QVERIFY2(label.contains(w.box), qPrintable(w.text));
            }
        }
    }

    void labelsOnA4KeepTheirSizeCentredOnThePage()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, false, false, true);
        chooseLabelFields(*job, {QStringLiteral("COMPANY"), QStringLiteral("ATTENTION"),
                                 QStringLiteral("STREET"), QStringLiteral("CITYSTATEZIP")});
        const Pdf pdf = generate(*job, PackageGenerator::PaperSize::A4);
        QCOMPARE(pdf.count(), 2);
        // A4 is 595.28 x 841.89 points; the 3 x 10 grid of 2 5/8" x 1" labels sits in its middle.
        const qreal left = (595.28 - (3 * 189 + 2 * 9)) / 2;
        const qreal top = (841.89 - 720) / 2;
        const QRectF first(left, top, 189, 72);
        const QRectF second(left + 198, top, 189, 72);
        const auto words = wordsOnPage(pdf.path, 2);
        QCOMPARE(words.size(), 24);
        for (const Word& w : words) {
            QVERIFY2(first.contains(w.box) || second.contains(w.box), qPrintable(w.text));
            QCOMPARE(first.contains(w.box), w.box.left() < left + 189);
        }
    }

    void labelTextShrinksOrIsCutToFit()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, false, false, true);
        chooseLabelFields(*job, {QStringLiteral("COMPANY"), QStringLiteral("ATTENTION"),
                                 QStringLiteral("STREET"), QStringLiteral("STREET2"),
                                 QStringLiteral("CITYSTATEZIP")});
        ZebPackage::PostalAddress address;
        address.Attention = QStringLiteral("Attention of the purchasing department, second floor");
        address.Street = QStringLiteral("12345 Northwest Industrial Boulevard Extension");
        address.Street2 =
            QStringLiteral("Building C, receiving dock 4, ask for the night supervisor on duty");
        address.Zip = QStringLiteral("97210");
        job->setAddress(QStringLiteral("C1001"), address);
        const Pdf pdf = generate(*job);
        // The longest line is cut with an ellipsis; nothing runs past the label.
        QVERIFY(pdf.page(2).contains(QStringLiteral("\u2026")));
        QVERIFY(
            pdf.page(2).contains(QStringLiteral("12345 Northwest Industrial Boulevard Extension")));
        const auto words = wordsOnPage(pdf.path, 2);
        const QRectF first(13.5, 36, 189, 72);
        const QRectF second(13.5 + 198, 36, 189, 72);
        for (const Word& w : words)
            QVERIFY2(first.contains(w.box) || second.contains(w.box), qPrintable(w.text));
        // The picture agrees: no ink in the gaps between labels.
        const QImage image = render(pdf.path, 2, 144);
        QCOMPARE(inkIn(image, QRect(int((13.5 + 189) * 2) + 1, 0, int(9 * 2) - 2, (36 + 720) * 2)),
                 0);
        QCOMPARE(inkIn(image, QRect(0, 36 * 2 + 1, image.width(), int(0.09 * 144) - 2)), 0);
    }

    // ---- text ----------------------------------------------------------------------------

    void unicodeEndToEnd()
    {
        auto job = StandalonePackageSource::sampleJob();
        submittalOf(*job).setIncludeLabels(true);
        job->setJobName(QStringLiteral("Ørestad Klinik \u2013 Bâtiment Été"));
        auto recipients = submittalOf(*job).standaloneRecipients();
        recipients->Add(QStringLiteral("Zoë Ångström"), QStringLiteral("Łódź Światło Sp. z o.o."));
        recipients->Add(QStringLiteral("Μαρία Παπαδοπούλου"), QStringLiteral("Фонарь и Ко"));
        static_cast<StandaloneTextObjects&>(*job->CoverLetterParagraphs())
            .Add(QStringLiteral("Prices in € and £; 25 °C ± 5 °C; “quoted”."), true);
        chooseLabelFields(*job, {QStringLiteral("COMPANY")});
        auto& customers = static_cast<StandaloneCustomers&>(*job->Customers());
        StandaloneCustomer::Data data;
        data.key = QStringLiteral("U1");
        data.name = QStringLiteral("Ärzte Größe & Søn");
        data.included = true;
        customers.Add(data.key, std::make_shared<StandaloneCustomer>(data));
        const Pdf pdf = generate(*job);
        const QString all = pdf.all();
        for (const QString& text : {QStringLiteral("Ørestad Klinik \u2013 Bâtiment Été"),
                                    QStringLiteral("Zoë Ångström, Łódź Światło Sp. z o.o."),
                                    QStringLiteral("Μαρία Παπαδοπούλου, Фонарь и Ко"),
                                    QStringLiteral("Prices in € and £; 25 °C ± 5 °C; “quoted”."),
                                    QStringLiteral("Ärzte Größe & Søn")})
            QVERIFY2(all.contains(text), qPrintable(text));
        const QString info = run(QStringLiteral("pdfinfo"), {pdf.path});
        QVERIFY(info.contains(QStringLiteral("Ørestad Klinik \u2013 Bâtiment Été")));
    }

    // ---- failures, cancelling, progress --------------------------------------------------

    void failureOfABusinessObjectPropagatesAndLeavesNoFile_data()
    {
        QTest::addColumn<QString>("object");
        QTest::addColumn<QString>("member");
        const QList<std::pair<const char*, QStringList>> members = {
            {"source",
             {"Submittal", "CoverLetterParagraphs", "CoverLetterRemarks", "BOM", "Labels",
              "LineItems", "Customers", "JobName", "JobNumber", "PurchaseOrder", "Manufacturer",
              "Address", "RecipientAddress", "Office"}},
            {"submittal",
             {"IssuedBy", "SubmittalDate", "IncludeCoverLetter", "CoverLetter", "IncludeBOM",
              "IncludeLabels", "Recipients", "SubmittalPurpose"}},
            {"coverLetter",
             {"IncludeLogo", "IncludeDefaultParagraphs", "IncludeRemarks", "SeparateLetters",
              "IncludeCarbonCopy"}},
            {"recipients", {"Enumerate"}},
            {"recipient", {"Name", "Company"}},
            {"paragraphs", {"Enumerate"}},
            {"paragraph", {"Selected", "Text"}},
            {"remarks", {"Enumerate"}},
            {"remark", {"Selected", "Text"}},
            {"bom",
             {"IncludeQuantity", "IncludeType", "IncludeDefaultRemarks", "DefaultRemarks",
              "IncludeBrand", "IncludeManufacturer", "IncludeCatalogNumber", "IncludeDescription",
              "IncludeLineComments", "IncludeMTO", "IncludeGroupCodes"}},
            {"bomRemarks", {"Enumerate"}},
            {"lineItems", {"Enumerate"}},
            {"lineItem",
             {"Selected", "Type", "Quantity", "Brand", "CatalogNumber", "Description", "Group",
              "MTO", "Comment"}},
            {"comment", {"Text"}},
            {"labels", {"LabelFields"}},
            {"labelFields", {"Enumerate"}},
            {"labelField", {"Included", "PrintOrder", "Key"}},
            {"customers", {"Enumerate"}},
            {"customer", {"Included", "Name", "City", "State", "Key"}},
        };
        for (const auto& [object, names] : members) {
            for (const QString& member : names)
                QTest::addRow("%s.%s", object, qPrintable(member))
                    << QString::fromLatin1(object) << member;
        }
    }
    void failureOfABusinessObjectPropagatesAndLeavesNoFile()
    {
        QFETCH(QString, object);
        QFETCH(QString, member);
        auto job = StandalonePackageSource::sampleJob();
        submittalOf(*job).setIncludeLabels(true);
        letterOf(*job).setIncludeRemarks(true);
        bomOf(*job).setIncludeManufacturer(true);
        bomOf(*job).setIncludeGroupCodes(true);
        bomOf(*job).DefaultRemarks()->Enumerate().first()->setSelected(true);
        auto recipients = submittalOf(*job).standaloneRecipients();
        auto& lines = static_cast<StandaloneLineItems&>(*job->LineItems());
        auto& customers = static_cast<StandaloneCustomers&>(*job->Customers());
        const QHash<QString, FaultInjector*> injectors = {
            {QStringLiteral("source"), &job->faults()},
            {QStringLiteral("submittal"), &submittalOf(*job).faults()},
            {QStringLiteral("coverLetter"), &letterOf(*job).faults()},
            {QStringLiteral("recipients"), &recipients->faults()},
            {QStringLiteral("recipient"),
             &dynamic_cast<StandaloneRecipient&>(*recipients->Item(2)).faults()},
            {QStringLiteral("paragraphs"),
             &static_cast<StandaloneTextObjects&>(*job->CoverLetterParagraphs()).faults()},
            {QStringLiteral("paragraph"),
             &static_cast<StandaloneTextObjects&>(*job->CoverLetterParagraphs())
                  .object(QStringLiteral("2"))
                  ->faults()},
            {QStringLiteral("remarks"),
             &static_cast<StandaloneTextObjects&>(*job->CoverLetterRemarks()).faults()},
            {QStringLiteral("remark"),
             &static_cast<StandaloneTextObjects&>(*job->CoverLetterRemarks())
                  .object(QStringLiteral("1"))
                  ->faults()},
            {QStringLiteral("bom"), &bomOf(*job).faults()},
            {QStringLiteral("bomRemarks"),
             &static_cast<StandaloneTextObjects&>(*bomOf(*job).DefaultRemarks()).faults()},
            {QStringLiteral("lineItems"), &lines.faults()},
            {QStringLiteral("lineItem"), &lines.line(3)->faults()},
            {QStringLiteral("comment"),
             &dynamic_cast<StandaloneLineItemComment&>(*lines.line(3)->Comment()).faults()},
            {QStringLiteral("labels"), &static_cast<StandaloneLabels&>(*job->Labels()).faults()},
            {QStringLiteral("labelFields"), &fieldsOf(*job).faults()},
            {QStringLiteral("labelField"),
             &fieldsOf(*job).field(QStringLiteral("STREET"))->faults()},
            {QStringLiteral("customers"), &customers.faults()},
            {QStringLiteral("customer"),
             &dynamic_cast<StandaloneCustomer&>(*customers.Item(2)).faults()},
        };
        // A package written before stays as it was.
        QFile before(target());
        QVERIFY(before.open(QIODevice::WriteOnly));
        before.write("earlier package");
        before.close();

        const ErrorInfo error{ErrorNumber::InternalError, QStringLiteral("Test.") + object,
                              QStringLiteral("injected ") + member};
        injectors.value(object)->failNext(member, error);
        PackageGenerator generator;
        bool raised = false;
        try {
            generator.Generate(*job, target());
        } catch (const Failure& failure) {
            raised = true;
            QCOMPARE(failure.info(), error);
        }
        QVERIFY2(raised, "the failure did not reach the caller");
        QCOMPARE(fileNames(m_dir->path()), QStringList{QStringLiteral("package.pdf")});
        QFile after(target());
        QVERIFY(after.open(QIODevice::ReadOnly));
        QCOMPARE(after.readAll(), QByteArray("earlier package"));
        after.close();

        // The generator works again once the object does.
        QVERIFY(generator.Generate(*job, target()));
        QVERIFY(readPdf(target()).count() >= 4);
    }

    void failureWhileWritingLeavesTheEarlierFile()
    {
        auto job = StandalonePackageSource::sampleJob(100);
        PackageGenerator generator;
        QVERIFY(generator.Generate(*job, target()));
        QFile first(target());
        QVERIFY(first.open(QIODevice::ReadOnly));
        const QByteArray earlier = first.readAll();
        first.close();
        submittalOf(*job).setIncludeLabels(true);
        generator.setProgress([](qint32 done, qint32) {
            if (done == 3)
                throw Failure(ErrorNumber::InternalError, QStringLiteral("Test.Host"),
                              QStringLiteral("host stopped"));
            return true;
        });
        QVERIFY_THROWS_EXCEPTION(Failure, generator.Generate(*job, target()));
        QCOMPARE(fileNames(m_dir->path()), QStringList{QStringLiteral("package.pdf")});
        QVERIFY(first.open(QIODevice::ReadOnly));
        QCOMPARE(first.readAll(), earlier);
    }

    void missingSubmittalFailsWithObjectNotSet()
    {
        auto job = StandalonePackageSource::sampleJob();
        job->setSubmittal(nullptr);
        PackageGenerator generator;
        try {
            generator.Generate(*job, target());
            QFAIL("no failure");
        } catch (const Failure& failure) {
            QCOMPARE(failure.Number(), ErrorNumber::ObjectNotSet);
            QCOMPARE(failure.Source(), QStringLiteral("ZebPackage.PackageGenerator"));
        }
        QVERIFY(fileNames(m_dir->path()).isEmpty());
    }

    void unwritableTargetFailsWithPathFileAccessError()
    {
        auto job = StandalonePackageSource::sampleJob();
        PackageGenerator generator;
        const QString path = m_dir->filePath(QStringLiteral("no such folder/package.pdf"));
        try {
            generator.Generate(*job, path);
            QFAIL("no failure");
        } catch (const Failure& failure) {
            QCOMPARE(failure.Number(), ErrorNumber::PathFileAccessError);
            QVERIFY(failure.Description().startsWith(QStringLiteral("Path/File access error: ")
                                                     + path));
        }
        QVERIFY(fileNames(m_dir->path()).isEmpty());
    }

    void progressReportsEveryPage()
    {
        auto job = StandalonePackageSource::sampleJob();
        submittalOf(*job).setIncludeLabels(true);
        PackageGenerator generator;
        QList<std::pair<qint32, qint32>> calls;
        generator.setProgress([&](qint32 done, qint32 total) {
            calls.append({done, total});
            return true;
        });
        QVERIFY(generator.Generate(*job, target()));
        const qint32 pages = generator.pageCount();
        QCOMPARE(pages, qint32(readPdf(target()).count()));
        QCOMPARE(calls.size(), pages + 1);
        for (qint32 i = 0; i <= pages; ++i)
            QCOMPARE(calls[i], std::make_pair(i, pages));
    }

    void cancellingLeavesNoFile_data()
    {
        QTest::addColumn<int>("at");
        QTest::newRow("before the first page") << 0;
        QTest::newRow("after the second page") << 2;
    }
    void cancellingLeavesNoFile()
    {
        QFETCH(int, at);
        auto job = StandalonePackageSource::sampleJob(100);
        PackageGenerator generator;
        int calls = 0;
        generator.setProgress([&](qint32 done, qint32) {
            ++calls;
            return done < at;
        });
        QVERIFY(!generator.Generate(*job, target()));
        QCOMPARE(calls, at + 1);
        QVERIFY(fileNames(m_dir->path()).isEmpty());
        // Without the hook the same job is written.
        generator.setProgress({});
        QVERIFY(generator.Generate(*job, target()));
        QCOMPARE(fileNames(m_dir->path()), QStringList{QStringLiteral("package.pdf")});
    }

    // ---- ticked lines, page breaks, footer, outline and links -----------------------------

    void onlyTickedLinesPrintNumberedAsShownAndTheContentsSaysHowManyAreLeftOut()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, false, true, false);
        auto& bom = bomOf(*job);
        bom.setIncludeDefaultRemarks(false);
        bom.setIncludeLineComments(false);
        const auto lines = job->LineItems()->Enumerate();
        // Every line's ticking as the job holds it, and one more unticked and one ticked again.
        lines[1]->setSelected(false);
        lines[4]->setSelected(true);
        QStringList printed;
        QStringList leftOut;
        for (qsizetype i = 0; i < lines.size(); ++i)
            (lines[i]->Selected() ? printed : leftOut)
                << QStringLiteral("%1 %2 %3")
                       .arg(i + 1)
                       .arg(lines[i]->Type(), lines[i]->Quantity());
        QCOMPARE(lines.size(), 20);
        QCOMPARE(leftOut.size(), 4);
        const Pdf pdf = generate(*job);
        const QString bomText = pdf.pages.mid(1).join(QLatin1Char(' '));
        VERIFY_IN_ORDER(bomText, printed);
        for (const QString& row : leftOut)
            QVERIFY2(!bomText.contains(row), qPrintable(row));
        QVERIFY(pdf.page(1).contains(
            QStringLiteral("4 of the job's 20 lines are not ticked and are left out "
                           "of the bill of materials.")));
        // One line left out says so in the singular; none left out says nothing.
        for (const auto& line : lines)
            line->setSelected(true);
        lines[7]->setSelected(false);
        QVERIFY(generate(*job).page(1).contains(
            QStringLiteral("1 of the job's 20 lines is not ticked and is left out "
                           "of the bill of materials.")));
        lines[7]->setSelected(true);
        QVERIFY(!generate(*job).page(1).contains(QStringLiteral("left out")));
    }

    // Remarks of every length land on every place of a page, the page break included: each
    // prints once, inside the page's body.
    void remarkAtAPageBreakPrintsOnceInsideThePage()
    {
        auto job = StandalonePackageSource::sampleJob();
        onlyPart(*job, true, false, false);
        letterOf(*job).setIncludeRemarks(true);
        letterOf(*job).setIncludeDefaultParagraphs(true);
        auto& remarks = static_cast<StandaloneTextObjects&>(*job->CoverLetterRemarks());
        auto& paragraphs = static_cast<StandaloneTextObjects&>(*job->CoverLetterParagraphs());
        for (const auto& text : remarks.Enumerate())
            text->setSelected(false);
        for (int i = 1; i <= 12; ++i) {
            QString text = QStringLiteral("Remark%1 ").arg(i, 2, 10, QLatin1Char('0'));
            for (int w = 0; w < 6 + i * 3; ++w)
                text += QStringLiteral("w%1x%2 ").arg(i).arg(w);
            remarks.Add(text.trimmed(), true);
        }
        bool crossed = false;
        for (int extra = 0; extra < 14; ++extra) {
            paragraphs.Add(
                QStringLiteral(
                    "Filler paragraph %1 that moves the remarks down the page by a few lines "
                    "each round, so that over the rounds every remark meets the break.")
                    .arg(extra),
                true);
            const Pdf pdf = generate(*job);
            QVERIFY(pdf.count() >= 3);
            for (qsizetype n = 1; n <= pdf.count(); ++n) {
                for (const Word& w : wordsOnPage(pdf.path, int(n), true)) {
                    // Inside the body of letter paper; the footer's band is the only text below it.
                    QVERIFY2(w.box.left() >= 54 - 0.5 && w.box.right() <= 612 - 54 + 0.5,
                             qPrintable(w.text));
                    QVERIFY2(w.box.top() >= 54 - 0.5 && w.box.bottom() <= 792 - 18,
                             qPrintable(w.text));
                    if (w.box.bottom() > 792 - 54 + 0.5)
                        QVERIFY2(w.box.top() >= 792 - 36, qPrintable(w.text));
                }
            }
            for (int i = 1; i <= 12; ++i) {
                const QString first = QStringLiteral("Remark%1").arg(i, 2, 10, QLatin1Char('0'));
                const QString last = QStringLiteral("w%1x%2").arg(i).arg(5 + i * 3);
                QCOMPARE(pdf.all().count(first), 1);
                QCOMPARE(pdf.all().count(last + QLatin1Char(' '))
                             + (pdf.all().endsWith(last) ? 1 : 0),
                         1);
                // A remark whose start and end are on different pages met the break.
                qsizetype from = -1, to = -1;
                for (qsizetype n = 0; n < pdf.count(); ++n) {
                    if (pdf.pages[n].contains(first))
                        from = n;
                    if (pdf.pages[n].contains(last + QLatin1Char(' ')))
                        to = n;
                }
                crossed |= from >= 0 && to > from;
            }
        }
        QVERIFY(crossed);
    }

    void everyPageCarriesThePackageFooter()
    {
        auto job = StandalonePackageSource::sampleJob(100);
        submittalOf(*job).setIncludeLabels(true);
        letterOf(*job).setSeparateLetters(true);
        PackageGenerator generator;
        const Pdf pdf = generate(*job, PackageGenerator::PaperSize::Letter, &generator);
        const auto contents = generator.contents();
        QVERIFY(pdf.count() >= 8);
        for (qsizetype n = 1; n <= pdf.count(); ++n) {
            // The part a page belongs to: the last one that starts on it or before it.
            QString part = QStringLiteral("Contents");
            for (const auto& entry : contents) {
                if (entry.Page <= n)
                    part = entry.Title;
            }
            const QString footer =
                QStringLiteral("Job PDX-26-0147 Riverside Medical Office Building %1 Page %2 of %3")
                    .arg(part)
                    .arg(n)
                    .arg(pdf.count());
            // A long part name is shortened in the footer, never the page number.
            if (part.size() > 40)
                QVERIFY2(
                    pdf.page(n).endsWith(QStringLiteral("Page %1 of %2").arg(n).arg(pdf.count())),
                    qPrintable(pdf.page(n).right(120)));
            else
                QVERIFY2(pdf.page(n).endsWith(footer), qPrintable(pdf.page(n).right(120)));
            // The footer stands in the bottom band of the page, nothing else does.
            const auto all = wordsOnPage(pdf.path, int(n), true);
            const auto body = wordsOnPage(pdf.path, int(n));
            QVERIFY(all.size() > body.size());
            for (qsizetype i = body.size(); i < all.size(); ++i)
                QVERIFY(all[i].box.bottom() < 792 - 18);
        }
    }

    void outlineInfoAndContentsLinks()
    {
        auto job = StandalonePackageSource::sampleJob();
        submittalOf(*job).setIncludeLabels(true);
        letterOf(*job).setSeparateLetters(true);
        PackageGenerator generator;
        const Pdf pdf = generate(*job, PackageGenerator::PaperSize::Letter, &generator);
        const auto contents = generator.contents();
        QCOMPARE(contents.size(), 5);

        const QString info = run(QStringLiteral("pdfinfo"), {pdf.path});
        QHash<QString, QString> facts;
        for (const QString& line : info.split(QLatin1Char('\n')))
            facts.insert(line.section(QLatin1Char(':'), 0, 0),
                         line.section(QLatin1Char(':'), 1).trimmed());
        QCOMPARE(facts.value(QStringLiteral("Title")),
                 QStringLiteral("Riverside Medical Office Building"));
        QCOMPARE(facts.value(QStringLiteral("Author")), QStringLiteral("Marta Halloran"));
        QCOMPARE(facts.value(QStringLiteral("Subject")),
                 QStringLiteral("Submittal of job PDX-26-0147: Request For Approval"));
        QCOMPARE(
            facts.value(QStringLiteral("Keywords")),
            QStringLiteral(
                "submittal; PDX-26-0147; Riverside Medical Office Building; Request For Approval; "
                "Northlight Lighting Sales"));

        const QJsonObject json =
            QJsonDocument::fromJson(
                run(QStringLiteral("qpdf"),
                    {QStringLiteral("--json=2"), QStringLiteral("--json-key=outlines"),
                     QStringLiteral("--json-key=pages"), QStringLiteral("--json-key=qpdf"),
                     pdf.path})
                    .toUtf8())
                .object();
        // Page objects by their place in the document.
        QHash<QString, int> pageOf;
        for (const auto& page : json.value(QStringLiteral("pages")).toArray())
            pageOf.insert(page.toObject().value(QStringLiteral("object")).toString(),
                          page.toObject().value(QStringLiteral("pageposfrom1")).toInt());
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
        QCOMPARE(outline,
                 (QStringList{
                     QStringLiteral("Contents -> 1"),
                     QStringLiteral("Cover Letters -> %1").arg(contents[0].Page),
                     QStringLiteral("  Cover Letter: Dana Whitcomb, Halvorsen Electric Co. -> %1")
                         .arg(contents[0].Page),
                     QStringLiteral("  Cover Letter: Priya Raman, Cedar Ridge Architects -> %1")
                         .arg(contents[1].Page),
                     QStringLiteral("  Cover Letter: Tom Okafor, Benton Consulting Engineers -> %1")
                         .arg(contents[2].Page),
                     QStringLiteral("Bill of Materials -> %1").arg(contents[3].Page),
                     QStringLiteral("Labels -> %1").arg(contents[4].Page),
                 }));

        // Each contents entry links to the page it names, from the row that shows it.
        const auto words = wordsOnPage(pdf.path, 1);
        const QJsonObject objects = json.value(QStringLiteral("qpdf")).toArray().at(1).toObject();
        QList<QPair<QRectF, int>> links;
        for (auto it = objects.begin(); it != objects.end(); ++it) {
            const QJsonObject dict =
                it.value().toObject().value(QStringLiteral("value")).toObject();
            if (dict.value(QStringLiteral("/Subtype")).toString() != QLatin1String("/Link"))
                continue;
            const QJsonArray r = dict.value(QStringLiteral("/Rect")).toArray();
            // PDF points from the bottom, turned into pdftotext's from the top.
            const QRectF rect(QPointF(r[0].toDouble(), 792 - r[3].toDouble()),
                              QPointF(r[2].toDouble(), 792 - r[1].toDouble()));
            links.append(
                {rect,
                 pageOf.value(dict.value(QStringLiteral("/Dest")).toArray().at(0).toString())});
        }
        QCOMPARE(links.size(), contents.size());
        for (const auto& entry : contents) {
            const QString number = QString::number(entry.Page);
            const QString firstWord = entry.Title.section(QLatin1Char(' '), -1);
            bool linked = false;
            for (const Word& w : words) {
                if (w.text != firstWord)
                    continue;
                for (const auto& [rect, target] : links)
                    linked |= rect.contains(w.box.center()) && target == entry.Page;
            }
            QVERIFY2(linked, qPrintable(entry.Title));
        }
    }

    void checkListsWhatThePackageLacks()
    {
        auto job = StandalonePackageSource::sampleJob();
        QCOMPARE(PackageGenerator::Check(*job), QStringList());
        submittalOf(*job).setIncludeLabels(true);
        QCOMPARE(PackageGenerator::Check(*job), QStringList());
        submittalOf(*job).setSubmittalDate(QString());
        QCOMPARE(PackageGenerator::Check(*job),
                 QStringList{QStringLiteral("The submittal has no date.")});
        auto recipients = submittalOf(*job).standaloneRecipients();
        while (recipients->Count() > 0)
            recipients->Remove(1);
        for (const auto& line : job->LineItems()->Enumerate())
            line->setSelected(false);
        for (const auto& customer : job->Customers()->Enumerate())
            customer->setIncluded(false);
        QCOMPARE(
            PackageGenerator::Check(*job),
            (QStringList{
                QStringLiteral("The submittal has no date."),
                QStringLiteral("The submittal has no recipients, so no cover letter is printed."),
                QStringLiteral("No line item is ticked, so the bill of materials lists no lines."),
                QStringLiteral("No customer is included, so no labels are printed.")}));
        // Parts that would print empty for lack of options, columns or fields.
        job = StandalonePackageSource::sampleJob();
        submittalOf(*job).setIncludeLabels(true);
        chooseLabelFields(*job, {});
        auto& bom = bomOf(*job);
        for (auto set :
             {&StandaloneBOM::setIncludeType, &StandaloneBOM::setIncludeQuantity,
              &StandaloneBOM::setIncludeBrand, &StandaloneBOM::setIncludeManufacturer,
              &StandaloneBOM::setIncludeCatalogNumber, &StandaloneBOM::setIncludeDescription,
              &StandaloneBOM::setIncludeGroupCodes, &StandaloneBOM::setIncludeMTO})
            (bom.*set)(false);
        static_cast<StandaloneLineItems&>(*job->LineItems()).Clear();
        QCOMPARE(
            PackageGenerator::Check(*job),
            (QStringList{QStringLiteral("No columns are chosen for the bill of materials."),
                         QStringLiteral("The submittal has no lines."),
                         QStringLiteral("No label fields are chosen, so no labels are printed.")}));
        job->setBOM(nullptr);
        submittalOf(*job).setCoverLetter(nullptr);
        QCOMPARE(
            PackageGenerator::Check(*job).mid(0, 2),
            (QStringList{
                QStringLiteral(
                    "The submittal has no cover letter options, so no cover letter is printed."),
                QStringLiteral("The submittal has no bill of materials options, so no bill of "
                               "materials is printed.")}));
        onlyPart(*job, false, false, false);
        QCOMPARE(PackageGenerator::Check(*job),
                 QStringList{QStringLiteral(
                     "The submittal includes no cover letter, bill of materials or labels.")});
    }

    // ---- pictures ------------------------------------------------------------------------

    void everyKindOfPageRendersInsideItsPaper()
    {
        auto job = StandalonePackageSource::sampleJob(60);
        submittalOf(*job).setIncludeLabels(true);
        letterOf(*job).setIncludeRemarks(true);
        bomOf(*job).DefaultRemarks()->Enumerate().first()->setSelected(true);
        PackageGenerator generator;
        const Pdf pdf = generate(*job, PackageGenerator::PaperSize::Letter, &generator);
        for (qsizetype n = 1; n <= pdf.count(); ++n) {
            const QImage page = render(pdf.path, int(n));
            QCOMPARE(page.size(), QSize(510, 660));
            // Something on every page, and nothing in the outer eighth inch.
            QVERIFY(inkIn(page, page.rect()) > 100);
            const QRect inner = page.rect().adjusted(8, 8, -8, -8);
            QCOMPARE(inkIn(page, page.rect()) - inkIn(page, inner), 0);
        }
        // Kept for a look when asked for.
        const QByteArray keep = qgetenv("ZEB_PACKAGE_KEEP");
        if (!keep.isEmpty()) {
            QFile::remove(QString::fromLocal8Bit(keep));
            QVERIFY(QFile::copy(pdf.path, QString::fromLocal8Bit(keep)));
        }
    }

    // ---- revisions -----------------------------------------------------------------------

    void aResubmittalNamesItsRevisionAndMarksWhatChanged()
    {
        auto job = StandalonePackageSource::sampleJob();
        PackageGenerator generator;
        RevisionMarks marks;
        marks.Revision = 2;
        marks.ChangedLines = {1, 3};
        marks.RemovedLines = {QStringLiteral("Line 21: Type Z, 2 x ZZ-100")};
        generator.setRevision(marks);
        const Pdf pdf = generate(*job, PackageGenerator::PaperSize::Letter, &generator);
        VERIFY_IN_ORDER(pdf.page(1), QStringLiteral("Job Number:"), QStringLiteral("Revision 2"),
                        QStringLiteral("Purpose:"));
        const QString letter = pdf.all().mid(pdf.all().indexOf(QStringLiteral("Re: ")));
        VERIFY_IN_ORDER(letter, QStringLiteral("Re: "), QStringLiteral("Revision 2"),
                        QStringLiteral("Purpose:"), QStringLiteral("Sincerely,"));
        const QList<qsizetype> bom = pdf.pagesStartingWith(QStringLiteral("Bill of Materials"));
        QVERIFY(!bom.isEmpty());
        const QString first = pdf.page(bom.first());
        QVERIFY(first.contains(QStringLiteral("\u2014 Revision 2")));
        QVERIFY(first.contains(QStringLiteral("Rev Line ")));
        QVERIFY(first.contains(QStringLiteral("\u0394 1 ")));
        QVERIFY(first.contains(QStringLiteral("\u0394 3 ")));
        QCOMPARE(pdf.all().count(QStringLiteral("\u0394")), 2);
        VERIFY_IN_ORDER(pdf.page(bom.last()), QStringLiteral("Removed Since Revision 1"),
                        QStringLiteral("\u2022 Line 21: Type Z, 2 x ZZ-100"));
    }

    void theFirstSubmittalPrintsNoRevisionMarks()
    {
        auto job = StandalonePackageSource::sampleJob();
        PackageGenerator generator;
        RevisionMarks marks;
        marks.ChangedLines = {1};
        marks.RemovedLines = {QStringLiteral("Line 21: Type Z, 2 x ZZ-100")};
        generator.setRevision(marks);
        const Pdf pdf = generate(*job, PackageGenerator::PaperSize::Letter, &generator);
        const Pdf plain = generate(*job);
        QCOMPARE(pdf.pages, plain.pages);
        QVERIFY(!pdf.all().contains(QStringLiteral("Revision")));
        QVERIFY(!pdf.all().contains(QStringLiteral("Rev Line")));
        QVERIFY(!pdf.all().contains(QStringLiteral("Removed Since")));
    }
};

QTEST_MAIN(TestPackage)
#include "tst_package.moc"
