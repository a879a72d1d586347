// Choice to paper: every choice a user makes on the workstation's pages, made with real mouse and
// keyboard input, is found in the exported package (pdftotext, qpdf's outline) exactly as made,
// and again after the workstation is started anew on the same office. A table of every choice
// with both results is printed at the end. Runs on an SQLite file and once on a PostgreSQL
// server of the test's own.

#include "contracts/customers.h"
#include "contracts/lineitems.h"
#include "contracts/textobject.h"
#include "store/storetextobjects.h"
#include "exportcheckdialog.h"
#include "formdescription.h"
#include "letterheaddialog.h"
#include "frame/usercontrol.h"
#include "contracts/runtime.h"
#include "officefile.h"
#include "pgserver.h"
#include "platform/dateedit.h"
#include "platform/keyedlistview.h"
#include "platform/optiongroup.h"
#include "platform/optionbutton.h"
#include "sampleoffice/sampleoffice.h"
#include "store/store.h"
#include "store/storejob.h"
#include "support/testsupport.h"
#include "support/workbenchtesting.h"
#include "userinput.h"
#include "workstation.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QAction>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using ZebObjects::Store;
using ZebSubCtl::KeyedListView;

namespace {

QString runTool(const QString& program, const QStringList& args)
{
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(60000) || p.exitCode() != 0)
        return {};
    return QString::fromUtf8(p.readAllStandardOutput());
}

// The package as read back: each part's text (footers taken off), the footers, the outline.
struct Paper {
    QStringList pages;
    QStringList footers;
    QMap<QString, QString> parts;
    QStringList outline;
    QString author;
    // The office's red test logo shows on the first letter page.
    bool logoRed = false;
    // Pictures on the first letter page: the logo is the only one.
    int letterImages = -1;

    QString all() const { return pages.join(QLatin1Char(' ')); }
    QString part(const QString& name) const { return parts.value(name); }
    // The parts, each as a whole; the contents page, which counts pages, left out.
    QMap<QString, QString> body() const
    {
        QMap<QString, QString> out = parts;
        out.remove(QStringLiteral("Contents"));
        return out;
    }
    friend bool operator==(const Paper&, const Paper&) = default;
};

Paper readBack(const QString& pdf)
{
    Paper paper;
    const QString text =
        runTool(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), QStringLiteral("-enc"),
                                              QStringLiteral("UTF-8"), pdf, QStringLiteral("-")});
    static const QRegularExpression footer(
        QStringLiteral("^Job (\\S+)\\s+(.*?)\\s{2,}(.*?)\\s{2,}Page (\\d+) of (\\d+)$"));
    QStringList pages = text.split(QLatin1Char('\f'));
    if (!pages.isEmpty() && pages.last().trimmed().isEmpty())
        pages.removeLast();
    for (const QString& page : pages) {
        QStringList lines = page.split(QLatin1Char('\n'));
        while (!lines.isEmpty() && lines.last().trimmed().isEmpty())
            lines.removeLast();
        const QString last = lines.isEmpty() ? QString() : lines.takeLast().trimmed();
        const auto m = footer.match(last);
        const QString part = m.hasMatch() ? m.captured(3) : QStringLiteral("?");
        paper.footers << last;
        const QString body = lines.join(QLatin1Char(' ')).simplified();
        paper.pages << body;
        QString& into = paper.parts[part];
        into += (into.isEmpty() ? QString() : QStringLiteral(" ")) + body;
    }
    const QJsonObject json =
        QJsonDocument::fromJson(
            runTool(QStringLiteral("qpdf"),
                    {QStringLiteral("--json=2"), QStringLiteral("--json-key=outlines"),
                     QStringLiteral("--json-key=pages"), pdf})
                .toUtf8())
            .object();
    const std::function<void(const QJsonArray&, int)> walk = [&](const QJsonArray& items,
                                                                 int level) {
        for (const auto& item : items) {
            paper.outline << QString(level * 2, QLatin1Char(' '))
                                 + item.toObject().value(QStringLiteral("title")).toString();
            walk(item.toObject().value(QStringLiteral("kids")).toArray(), level + 1);
        }
    };
    walk(json.value(QStringLiteral("outlines")).toArray(), 0);
    const QJsonArray pageObjects = json.value(QStringLiteral("pages")).toArray();
    for (int n = 0; n < int(paper.footers.size()) && n < int(pageObjects.size()); ++n) {
        if (paper.footers[n].contains(QStringLiteral("Cover Letter"))) {
            paper.letterImages =
                int(pageObjects[n].toObject().value(QStringLiteral("images")).toArray().size());
            break;
        }
    }
    for (int n = 1; n <= int(paper.pages.size()); ++n) {
        if (!paper.footers.value(n - 1).contains(QStringLiteral("Cover Letter")))
            continue;
        const QString prefix = pdf + QStringLiteral("-page");
        runTool(QStringLiteral("pdftoppm"),
                {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("30"),
                 QStringLiteral("-f"), QString::number(n), QStringLiteral("-l"), QString::number(n),
                 QStringLiteral("-singlefile"), pdf, prefix});
        const QImage image(prefix + QStringLiteral(".png"));
        int red = 0;
        for (int y = 0; y < image.height() / 4; ++y)
            for (int x = 0; x < image.width() / 3; ++x) {
                const QColor c = image.pixelColor(x, y);
                red += c.red() > 170 && c.green() < 70 && c.blue() < 70 ? 1 : 0;
            }
        paper.logoRed = red > 20;
        break;
    }
    for (const QString& line : runTool(QStringLiteral("pdfinfo"), {pdf}).split(QLatin1Char('\n')))
        if (line.startsWith(QStringLiteral("Author:")))
            paper.author = line.mid(7).trimmed();
    return paper;
}

using ZebTest::clickCheckBox;

// Clicks the check box of a row of a list as a user would.
void clickRowCheck(KeyedListView* list, int row)
{
    QVERIFY(list);
    list->scrollTo(list->model()->index(row, 0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->checkBoxRect(row).center());
}

void click(QAbstractButton* button)
{
    QVERIFY(button);
    QTest::mouseClick(button, Qt::LeftButton);
}

void clickRow(KeyedListView* list, int row)
{
    QVERIFY(list);
    list->scrollTo(list->model()->index(row, 0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->itemRect(row).center());
}

QString rowText(KeyedListView* list, int row)
{
    return list->model()->index(row, 0).data().toString();
}

}  // namespace

class tst_ChoiceToPaper : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void generalInformation();
    void coverLetterOptions();
    void paragraphsAndRemarks();
    void billOfMaterials();
    void labels();
    void lineItems();
    void customers();
    void onThePostgreSqlServer();

private:
    struct Row {
        QString office;
        QString choice;
        QString paper;
        QString restart;
    };

    void openOffice(const QString& location, bool fill);
    void startWorkstation();
    void restart();
    Paper exportNow(bool anyway = false);
    // Makes the choice, exports, checks the package against the one before; then starts the
    // workstation anew, exports again and checks that the same package comes out.
    void choose(const QString& name, const std::function<void()>& act,
                const std::function<QString(const Paper& before, const Paper& after)>& check,
                bool anyway = false);
    template <class T>
    T* find(const char* name)
    {
        return ZebTest::control<T>(*m_window, name);
    }
    KeyedListView* listOf(const char* control, const char* list = nullptr)
    {
        auto* c = find<ZebSubCtl::UserControl>(control);
        return list ? c->findChild<KeyedListView*>(QLatin1String(list))
                    : c->findChild<KeyedListView*>();
    }
    void page(int index)
    {
        m_window->showPage(index);
        QApplication::processEvents();
    }

    QTemporaryDir m_home;
    std::unique_ptr<QTemporaryDir> m_scratch;
    QString m_location;
    QString m_office = QStringLiteral("SQLite");
    qint64 m_jobId = 0;
    std::shared_ptr<Store> m_store;
    std::unique_ptr<Workstation> m_window;
    Paper m_last;
    QList<Row> m_matrix;
    QStringList m_failures;
    int m_exports = 0;
};

void tst_ChoiceToPaper::initTestCase()
{
    QVERIFY(m_home.isValid());
    ZebTest::useScratchHome(m_home, true);
}

void tst_ChoiceToPaper::init()
{
    m_scratch = std::make_unique<QTemporaryDir>();
    m_failures.clear();
    m_last = {};
    m_office = QStringLiteral("SQLite");
    openOffice(m_scratch->filePath(QStringLiteral("office.sqlite")), true);
}

void tst_ChoiceToPaper::cleanup()
{
    m_window.reset();
    ZebObjects::Runtime::setApplicationServices(nullptr);
    m_store.reset();
    m_scratch.reset();
}

void tst_ChoiceToPaper::cleanupTestCase()
{
    // The matrix: every choice, whether the package showed it, whether it survived a restart.
    int width = 6;
    for (const Row& r : std::as_const(m_matrix))
        width = std::max<int>(width, int(r.choice.size()));
    QString table = QStringLiteral("\n%1  %2  %3  %4\n")
                        .arg(QStringLiteral("office"), -10)
                        .arg(QStringLiteral("choice"), -width)
                        .arg(QStringLiteral("on paper"), -8)
                        .arg(QStringLiteral("after restart"));
    for (const Row& r : std::as_const(m_matrix))
        table += QStringLiteral("%1  %2  %3  %4\n")
                     .arg(r.office, -10)
                     .arg(r.choice, -width)
                     .arg(r.paper, -8)
                     .arg(r.restart);
    table += QStringLiteral("%1 choices, %2 exports").arg(m_matrix.size()).arg(m_exports);
    qInfo("%s", qPrintable(table));
}

void tst_ChoiceToPaper::openOffice(const QString& location, bool fill)
{
    m_location = location;
    if (fill) {
        if (location.startsWith(QStringLiteral("postgresql:"))) {
            m_store = Store::open(location);
            ZebObjects::SampleOffice::fill(*m_store);
        } else {
            m_store = OfficeFile::resetSample(location);
        }
    } else {
        m_store = OfficeFile::open(location, false);
    }
    ZebObjects::Runtime::setApplicationServices(m_store->applicationServices());
    m_jobId = Workstation::defaultJob(*m_store);
    startWorkstation();
}

void tst_ChoiceToPaper::startWorkstation()
{
    auto options = ZebTest::workstationOptions();
    options.exportProgressDelayMs = 60000;
    m_window = ZebTest::openWorkstation(m_store, options);
    m_window->openJob(m_jobId);
    m_window->resize(1100, 800);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void tst_ChoiceToPaper::restart()
{
    m_window->close();
    m_window.reset();
    ZebObjects::Runtime::setApplicationServices(nullptr);
    m_store.reset();
    openOffice(m_location, false);
}

Paper tst_ChoiceToPaper::exportNow(bool anyway)
{
    const QString path = m_scratch->filePath(QStringLiteral("package-%1.pdf").arg(++m_exports));
    // A package that lacks something is let out on purpose when the choice makes it so.
    std::unique_ptr<ZebTest::WhenModal<ExportCheckDialog>> answer;
    if (anyway)
        answer = std::make_unique<ZebTest::WhenModal<ExportCheckDialog>>([](ExportCheckDialog& d) {
            QTest::mouseClick(d.findChild<QAbstractButton*>(QStringLiteral("btnExportAnyway")),
                              Qt::LeftButton);
        });
    if (!m_window->exportPackage(path))
        return {};
    return readBack(path);
}

void tst_ChoiceToPaper::choose(const QString& name, const std::function<void()>& act,
                               const std::function<QString(const Paper&, const Paper&)>& check,
                               bool anyway)
{
    if (m_last.pages.isEmpty())
        m_last = exportNow();
    const Paper before = m_last;
    act();
    const Paper after = exportNow(anyway);
    QString why =
        after.pages.isEmpty() ? QStringLiteral("no package written") : check(before, after);
    const bool onPaper = why.isEmpty();
    if (!onPaper)
        m_failures << QStringLiteral("%1 on paper: %2").arg(name, why);
    restart();
    const Paper again = exportNow(anyway);
    QString whyAgain;
    if (again.pages.isEmpty())
        whyAgain = QStringLiteral("no package written");
    else if (!(again == after))
        whyAgain = QStringLiteral("the package differs after the restart");
    else
        whyAgain = check(before, again);
    if (!whyAgain.isEmpty())
        m_failures << QStringLiteral("%1 after restart: %2").arg(name, whyAgain);
    m_matrix.append({m_office, name, onPaper ? QStringLiteral("yes") : QStringLiteral("NO"),
                     whyAgain.isEmpty() ? QStringLiteral("yes") : QStringLiteral("NO")});
    m_last = again;
}

namespace {
// Empty when every part but the ones named is the same before and after.
QString onlyChanged(const Paper& before, const Paper& after, const QStringList& changed)
{
    auto a = before.body();
    auto b = after.body();
    for (const QString& part : changed) {
        a.remove(part);
        b.remove(part);
    }
    if (a.keys() != b.keys())
        return QStringLiteral("parts %1 became %2")
            .arg(a.keys().join(QLatin1Char(',')), b.keys().join(QLatin1Char(',')));
    for (auto it = a.begin(); it != a.end(); ++it)
        if (it.value() != b.value(it.key()))
            return QStringLiteral("part \"%1\" changed too").arg(it.key());
    return {};
}

// Empty when ok; else what went wrong, never empty.
QString expect(bool ok, const QString& what)
{
    if (ok)
        return {};
    return what.isEmpty() ? QStringLiteral("not as chosen (nothing printed)") : what;
}
}  // namespace

#define CHOICES_HELD()                                                                             \
    QVERIFY2(m_failures.isEmpty(), qPrintable(m_failures.join(QLatin1Char('\n'))))

void tst_ChoiceToPaper::generalInformation()
{
    const QString letter = QStringLiteral("Cover Letter");
    const QString bom = QStringLiteral("Bill of Materials");
    choose(
        QStringLiteral("General: cover letter off"),
        [&] {
            page(0);
            clickCheckBox(find<QAbstractButton>("chkCoverLetter"));
        },
        [&](const Paper& b, const Paper& a) {
            return expect(b.parts.contains(letter) && !a.parts.contains(letter)
                              && !a.all().contains(QStringLiteral("Sincerely,"))
                              && !a.outline.contains(letter),
                          QStringLiteral("the letter still prints"))
                   + onlyChanged(b, a, {letter});
        });
    choose(
        QStringLiteral("General: bill of materials off"),
        [&] {
            page(0);
            clickCheckBox(find<QAbstractButton>("chkBOM"));
        },
        [&](const Paper& b, const Paper& a) {
            return expect(b.parts.contains(bom) && !a.parts.contains(bom)
                              && !a.outline.contains(bom),
                          QStringLiteral("the bill of materials still prints"))
                   + onlyChanged(b, a, {bom});
        },
        true);
    choose(
        QStringLiteral("General: labels on"),
        [&] {
            page(0);
            clickCheckBox(find<QAbstractButton>("chkLabels"));
        },
        [&](const Paper& b, const Paper& a) {
            return expect(
                       !b.parts.contains(QStringLiteral("Labels"))
                           && a.outline.contains(QStringLiteral("Labels"))
                           && a.part(QStringLiteral("Labels"))
                                  .startsWith(QStringLiteral(
                                      "Halvorsen Electric Co. Cedar Ridge Architects"))
                           // The fields the sample chooses: attention, street, city, state and zip.
                           && a.part(QStringLiteral("Labels"))
                                  .contains(QStringLiteral(
                                      "Dana Whitcomb Priya Raman 2210 NW Front Avenue "
                                      "520 SW Yamhill Street Portland, OR 97210 Portland, OR "
                                      "97204")),
                       QStringLiteral("no labels"))
                   + onlyChanged(b, a, {QStringLiteral("Labels")});
        });
    choose(
        QStringLiteral("General: all three parts on again"),
        [&] {
            page(0);
            clickCheckBox(find<QAbstractButton>("chkCoverLetter"));
            clickCheckBox(find<QAbstractButton>("chkBOM"));
        },
        [&](const Paper&, const Paper& a) {
            return expect(a.outline.size() == 4 && a.outline[1] == letter && a.outline[2] == bom,
                          a.outline.join(QLatin1Char('|')));
        });
    choose(
        QStringLiteral("General: issuer"),
        [&] {
            page(0);
            auto* issuer = find<QComboBox>("cmbIssuedBy");
            QVERIFY(issuer);
            QTest::mouseClick(issuer, Qt::LeftButton);
            issuer->setFocus();
            if (issuer->lineEdit())
                issuer->lineEdit()->selectAll();
            ZebTest::typeText(issuer->lineEdit() ? static_cast<QWidget*>(issuer->lineEdit())
                                                 : issuer,
                              QStringLiteral("Tomasz Wierzbicki"));
            QTest::keyClick(issuer, Qt::Key_Tab);
        },
        [&](const Paper& b, const Paper& a) {
            const QString who =
                m_window->findChild<QComboBox*>(QStringLiteral("cmbIssuedBy"))->currentText();
            return expect(who == QStringLiteral("Tomasz Wierzbicki") && a.author == who
                              && a.part(QStringLiteral("Contents"))
                                     .contains(QStringLiteral("Issued By: ") + who)
                              && a.part(letter).contains(QStringLiteral("Sincerely, ") + who)
                              && b.author == QStringLiteral("Marta Halloran"),
                          QStringLiteral("issuer %1 not printed").arg(who));
        });
    choose(
        QStringLiteral("General: purpose"),
        [&] {
            page(0);
            auto* group =
                find<ZebSubCtl::UserControl>("ctlGeneralInfo")
                    ->findChild<ZebSubCtl::OptionGroup*>(QStringLiteral("optSubmittalPurpose"));
            QVERIFY(group);
            clickCheckBox(group->button(5));
        },
        [&](const Paper&, const Paper& a) {
            return expect(
                a.part(QStringLiteral("Contents")).contains(QStringLiteral("Purpose: Corrections"))
                    && a.part(letter).contains(QStringLiteral("Purpose: Corrections"))
                    && a.part(bom).contains(QStringLiteral("Purpose: Corrections")),
                QStringLiteral("purpose not printed"));
        });
    choose(
        QStringLiteral("General: purpose Other with its text"),
        [&] {
            page(0);
            auto* group =
                find<ZebSubCtl::UserControl>("ctlGeneralInfo")
                    ->findChild<ZebSubCtl::OptionGroup*>(QStringLiteral("optSubmittalPurpose"));
            clickCheckBox(group->button(7));
            auto* other = find<QLineEdit>("txtPurposeOther");
            QVERIFY(other);
            QTest::mouseClick(other, Qt::LeftButton);
            other->selectAll();
            ZebTest::typeText(other, QStringLiteral("Bid Review"));
            QTest::keyClick(other, Qt::Key_Tab);
        },
        [&](const Paper&, const Paper& a) {
            return expect(
                a.part(QStringLiteral("Contents")).contains(QStringLiteral("Purpose: Bid Review"))
                    && a.part(letter).contains(QStringLiteral("Purpose: Bid Review")),
                QStringLiteral("purpose not printed"));
        });
    // Typed and confirmed with Enter, focus still in the field: the export takes it.
    choose(
        QStringLiteral("General: date left in the field"),
        [&] {
            page(0);
            QLineEdit* edit = find<ZebSubCtl::DateEdit>("pvdIssueDate")->lineEdit();
            QTest::mouseClick(edit, Qt::LeftButton);
            edit->selectAll();
            ZebTest::typeText(edit, QStringLiteral("01/15/2027"));
            QTest::keyClick(edit, Qt::Key_Return);
        },
        [&](const Paper&, const Paper& a) {
            return expect(a.part(QStringLiteral("Contents"))
                              .contains(QStringLiteral("Date: January 15, 2027")),
                          a.part(QStringLiteral("Contents")).left(300));
        });
    choose(
        QStringLiteral("General: date"),
        [&] {
            page(0);
            auto* date = find<ZebSubCtl::DateEdit>("pvdIssueDate");
            QVERIFY(date);
            QLineEdit* edit = date->lineEdit();
            edit->setFocus();
            edit->selectAll();
            ZebTest::typeText(edit, QStringLiteral("12/03/2026"));
            QTest::keyClick(edit, Qt::Key_Return);
            QTest::keyClick(edit, Qt::Key_Tab);
        },
        [&](const Paper&, const Paper& a) {
            return expect(a.part(QStringLiteral("Contents"))
                                  .contains(QStringLiteral("Date: December 3, 2026"))
                              && a.part(letter).startsWith(QStringLiteral("December 3, 2026"))
                                     == false
                              && a.part(letter).contains(QStringLiteral("December 3, 2026"))
                              && !a.all().contains(QStringLiteral("November 21, 2026")),
                          QStringLiteral("date not printed"));
        });
    CHOICES_HELD();
}

void tst_ChoiceToPaper::coverLetterOptions()
{
    const QString letter = QStringLiteral("Cover Letter");
    choose(
        QStringLiteral("Letter: logo"),
        [&] {
            page(2);
            clickCheckBox(find<QAbstractButton>("chkIncludeLogo"));
        },
        [&](const Paper& b, const Paper& a) {
            // The logo is a picture: it comes or goes, the text stays.
            const bool on = find<QAbstractButton>("chkIncludeLogo")->isChecked();
            return expect(b.part(letter) == a.part(letter),
                          QStringLiteral("the letter's text changed"))
                   + expect(a.letterImages == (on ? 1 : 0) && b.letterImages == (on ? 0 : 1),
                            QStringLiteral("%1 pictures before, %2 after")
                                .arg(b.letterImages)
                                .arg(a.letterImages))
                   + onlyChanged(b, a, {});
        });
    QString paragraph;
    for (const auto& text : m_window->job()->coverLetterParagraphs()->Enumerate())
        if (text->Selected() && paragraph.isEmpty())
            paragraph = text->Text().left(30);
    choose(
        QStringLiteral("Letter: default paragraphs off"),
        [&] {
            page(2);
            clickCheckBox(find<QAbstractButton>("chkDefaultParagraph"));
        },
        [&](const Paper& b, const Paper& a) {
            return expect(!paragraph.isEmpty() && b.part(letter).contains(paragraph)
                              && !a.part(letter).contains(paragraph),
                          QStringLiteral("paragraphs still print"))
                   + onlyChanged(b, a, {letter});
        });
    choose(
        QStringLiteral("Letter: remarks on"),
        [&] {
            page(2);
            clickCheckBox(find<QAbstractButton>("chkRemarks"));
        },
        [&](const Paper& b, const Paper& a) {
            return expect(!b.part(letter).contains(QStringLiteral("Remarks:"))
                              && a.part(letter).contains(QStringLiteral("Remarks:")),
                          QStringLiteral("no remarks"))
                   + onlyChanged(b, a, {letter});
        });
    choose(
        QStringLiteral("Letter: one letter per recipient"),
        [&] {
            page(2);
            clickCheckBox(find<QAbstractButton>("optMultipleCoverLetters"));
        },
        [&](const Paper&, const Paper& a) {
            // Each letter under the office's letterhead, to its recipient's whole address.
            return expect(
                a.outline.contains(QStringLiteral("Cover Letters"))
                    && a.outline.filter(QRegularExpression(QStringLiteral("^  Cover Letter: ")))
                               .size()
                           == 3
                    && a.all().count(QStringLiteral("Northlight Lighting Sales 1120 NW Couch "
                                                    "Street Suite 450 Portland, OR 97209"))
                           == 3
                    && a.all().contains(
                        QStringLiteral("Dana Whitcomb Halvorsen Electric Co. 2210 NW Front Avenue "
                                       "Suite 300 Portland, OR 97210"))
                    && a.all().contains(
                        QStringLiteral("Tom Okafor Benton Consulting Engineers 12725 SW Millikan "
                                       "Way Floor 4 Beaverton, OR 97005")),
                a.outline.join(QLatin1Char('|')) + a.all().left(400));
        });
    // The office's own letterhead, edited in its dialog: name, address and a logo of its own.
    const QString logoFile = m_scratch->filePath(QStringLiteral("logo.png"));
    {
        QImage red(80, 40, QImage::Format_RGB32);
        red.fill(QColor(0xd0, 0x10, 0x10));
        QVERIFY(red.save(logoFile));
    }
    // The logo prints only while the letters include it.
    page(2);
    if (!find<QAbstractButton>("chkIncludeLogo")->isChecked())
        clickCheckBox(find<QAbstractButton>("chkIncludeLogo"));
    m_last = {};
    choose(
        QStringLiteral("Office: letterhead"),
        [&] {
            ZebTest::WhenModal<LetterheadDialog> answer([&](LetterheadDialog& d) {
                auto* name = d.findChild<QLineEdit*>(QStringLiteral("txtOfficeName"));
                QTest::mouseClick(name, Qt::LeftButton);
                name->selectAll();
                ZebTest::typeText(name, QStringLiteral("Harbor Light Agency"));
                auto* street = d.findChild<QLineEdit*>(QStringLiteral("txtOfficeStreet"));
                QTest::mouseClick(street, Qt::LeftButton);
                street->selectAll();
                ZebTest::typeText(street, QStringLiteral("77 Pier Road"));
                QVERIFY(d.chooseLogo(logoFile));
                // Kept for a look when asked for.
                const QByteArray keep = qgetenv("ZEB_LETTERHEAD_KEEP");
                if (!keep.isEmpty())
                    d.grab().save(QString::fromLocal8Bit(keep));
                QTest::keyClick(&d, Qt::Key_Return);
            });
            m_window->findChild<QAction*>(QStringLiteral("actOfficeLetterhead"))->trigger();
            QVERIFY(answer.answered());
            QVERIFY(!answer.leftOpen());
        },
        [&](const Paper& b, const Paper& a) {
            // Every letter's page starts with the office's head.
            const QString first = a.pages.value(1);
            return expect(
                b.pages.value(1).startsWith(
                    QStringLiteral("Northlight Lighting Sales 1120 NW Couch Street"))
                    && first.startsWith(
                        QStringLiteral("Harbor Light Agency 77 Pier Road Suite 450"))
                    && a.all().count(QStringLiteral("Harbor Light Agency 77 Pier Road Suite 450"))
                           == 3
                    && !a.all().contains(QStringLiteral("Northlight"))
                    && a.part(QStringLiteral("Contents"))
                           .contains(QStringLiteral("From: Harbor Light Agency"))
                    && a.logoRed && !b.logoRed,
                QStringLiteral("letter begins \"%1\", red logo %2")
                    .arg(first.left(120))
                    .arg(a.logoRed));
        });
    choose(
        QStringLiteral("Letter: same letter for all"),
        [&] {
            page(2);
            clickCheckBox(find<QAbstractButton>("optOneCoverLetter"));
        },
        [&](const Paper&, const Paper& a) {
            return expect(a.outline.contains(letter)
                              && !a.outline.contains(QStringLiteral("Cover Letters"))
                              && a.part(letter).contains(QStringLiteral("To:")),
                          a.outline.join(QLatin1Char('|')));
        });
    choose(
        QStringLiteral("Letter: one letter per recipient again"),
        [&] {
            page(2);
            clickCheckBox(find<QAbstractButton>("optMultipleCoverLetters"));
        },
        [&](const Paper&, const Paper& a) {
            return expect(
                a.outline.filter(QRegularExpression(QStringLiteral("^  Cover Letter: "))).size()
                    == 3,
                a.outline.join(QLatin1Char('|')));
        });
    choose(
        QStringLiteral("Letter: carbon copies"),
        [&] {
            page(2);
            clickCheckBox(find<QAbstractButton>("chkIncludeCC"));
        },
        [&](const Paper& b, const Paper& a) {
            // Each of the three letters names the other two recipients under "cc:", or none does.
            const bool on = find<QAbstractButton>("chkIncludeCC")->isChecked();
            const qsizetype was = b.all().count(QStringLiteral("cc:")),
                            now = a.all().count(QStringLiteral("cc:"));
            return expect(
                was != now && now == (on ? 3 : 0),
                QStringLiteral("%1 copies before, %2 after, box %3").arg(was).arg(now).arg(on));
        });
    CHOICES_HELD();
}

void tst_ChoiceToPaper::paragraphsAndRemarks()
{
    const QString letter = QStringLiteral("Cover Letter");
    QString ticked;
    choose(
        QStringLiteral("Paragraphs: untick the first"),
        [&] {
            page(3);
            auto* list = listOf("ctlParagraphs");
            ticked = rowText(list, 0).left(30);
            clickRowCheck(list, 0);
        },
        [&](const Paper& b, const Paper& a) {
            return expect(b.part(letter).contains(ticked) && !a.part(letter).contains(ticked),
                          ticked)
                   + onlyChanged(b, a, {letter});
        });
    choose(
        QStringLiteral("Paragraphs: tick it again"),
        [&] {
            page(3);
            clickRowCheck(listOf("ctlParagraphs"), 0);
        },
        [&](const Paper&, const Paper& a) {
            return expect(a.part(letter).contains(ticked), ticked);
        });
    QString first, second;
    choose(
        QStringLiteral("Paragraphs: order"),
        [&] {
            page(3);
            auto* list = listOf("ctlParagraphs");
            first = rowText(list, 0).left(30);
            second = rowText(list, 1).left(30);
            clickRow(list, 0);
            QTest::mouseClick(find<ZebSubCtl::UserControl>("ctlParagraphs")
                                  ->findChild<QAbstractButton*>(QStringLiteral("cmdMoveDown")),
                              Qt::LeftButton);
            if (auto* save = find<ZebSubCtl::UserControl>("ctlParagraphs")
                                 ->findChild<QAbstractButton*>(QStringLiteral("cmdSave")))
                if (save->isEnabled() && save->isVisible())
                    QTest::mouseClick(save, Qt::LeftButton);
        },
        [&](const Paper& b, const Paper& a) {
            const QString was = b.part(letter), now = a.part(letter);
            return expect(was.indexOf(first) < was.indexOf(second)
                              && now.indexOf(second) < now.indexOf(first),
                          QStringLiteral("order not printed"));
        });
    page(2);
    clickCheckBox(find<QAbstractButton>("chkRemarks"));
    m_last = {};
    QString remark;
    choose(
        QStringLiteral("Remarks: tick one"),
        [&] {
            page(4);
            auto* list = listOf("ctlRemarks");
            for (int row = 0; row < list->count(); ++row) {
                if (!list->model()->index(row, 0).data(Qt::CheckStateRole).toBool()) {
                    remark = rowText(list, row).left(30);
                    clickRowCheck(list, row);
                    break;
                }
            }
        },
        [&](const Paper& b, const Paper& a) {
            return expect(!remark.isEmpty() && !b.part(letter).contains(remark)
                              && a.part(letter).contains(remark),
                          remark)
                   + onlyChanged(b, a, {letter});
        });
    choose(
        QStringLiteral("Remarks: order"),
        [&] {
            page(4);
            auto* list = listOf("ctlRemarks");
            first = rowText(list, 0).left(30);
            second = rowText(list, 1).left(30);
            clickRow(list, 0);
            click(find<ZebSubCtl::UserControl>("ctlRemarks")
                      ->findChild<QAbstractButton*>(QStringLiteral("cmdMoveDown")));
            if (auto* save = find<ZebSubCtl::UserControl>("ctlRemarks")
                                 ->findChild<QAbstractButton*>(QStringLiteral("cmdSave")))
                if (save->isEnabled() && save->isVisible())
                    click(save);
        },
        [&](const Paper& b, const Paper& a) {
            const QString was = b.part(letter), now = a.part(letter);
            // Only ticked remarks print: the order shows when both do.
            const bool both = was.contains(first) && was.contains(second);
            return expect(
                both && was.indexOf(first) < was.indexOf(second)
                    && now.indexOf(second) < now.indexOf(first),
                QStringLiteral("order of \"%1\" and \"%2\" not printed").arg(first, second));
        });
    CHOICES_HELD();
}

void tst_ChoiceToPaper::billOfMaterials()
{
    const QString bom = QStringLiteral("Bill of Materials");
    const std::pair<const char*, const char*> columns[] = {{"chkType", "Type"},
                                                           {"chkQuantity", "Qty"},
                                                           {"chkBrand", "Brand"},
                                                           {"chkMfr", "Manufacturer"},
                                                           {"chkCatNum", "Catalog Number"},
                                                           {"chkDesc", "Description"},
                                                           {"chkGroupCode", "Group"},
                                                           {"chkMTO", "MTO"}};
    // The header row printed: the titles after "Line" up to the first line number.
    const auto header = [&](const Paper& p) {
        const QString text = p.part(bom);
        const qsizetype from = text.indexOf(QStringLiteral("Line "));
        const qsizetype to = text.indexOf(QRegularExpression(QStringLiteral(" 1 ")), from);
        return from < 0 || to < 0 ? QString() : text.mid(from + 5, to - from - 5);
    };
    for (const auto& [box, title] : columns) {
        const QString name = QString::fromLatin1(title);
        choose(
            QStringLiteral("BOM: column %1").arg(name),
            [&] {
                page(5);
                clickCheckBox(find<QAbstractButton>(box));
            },
            [&](const Paper& b, const Paper& a) {
                const bool was = header(b).contains(name), now = header(a).contains(name);
                return expect(
                           was != now,
                           QStringLiteral("header \"%1\" became \"%2\"").arg(header(b), header(a)))
                       + onlyChanged(b, a, {bom});
            });
    }
    choose(
        QStringLiteral("BOM: line comments"),
        [&] {
            page(5);
            clickCheckBox(find<QAbstractButton>("chkLineComments"));
        },
        [&](const Paper& b, const Paper& a) {
            const QString comment =
                QStringLiteral("Battery pack factory installed; 90 minute rating.");
            return expect(b.part(bom).contains(comment) != a.part(bom).contains(comment),
                          QStringLiteral("comments unchanged"));
        });
    const auto bomRemarks = [&] {
        return find<ZebSubCtl::UserControl>("ctlBOMCriteria")->findChild<KeyedListView*>();
    };
    const auto ticked = [&](KeyedListView* list, int row) {
        return list->model()->index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked;
    };
    QString remark;
    choose(
        QStringLiteral("BOM: tick a default remark"),
        [&] {
            page(5);
            auto* list = bomRemarks();
            QVERIFY(list);
            for (int row = 0; row < list->count() && remark.isEmpty(); ++row)
                if (!ticked(list, row)) {
                    remark = rowText(list, row).left(30);
                    clickRowCheck(list, row);
                }
        },
        [&](const Paper& b, const Paper& a) {
            // Printed only while the remarks are chosen.
            const bool on = find<QAbstractButton>("chkDefaultRemarks")->isChecked();
            return expect(!remark.isEmpty() && !b.part(bom).contains(remark)
                              && a.part(bom).contains(remark) == on,
                          QStringLiteral("remark \"%1\" (remarks chosen: %2)").arg(remark).arg(on));
        });
    choose(
        QStringLiteral("BOM: default remarks"),
        [&] {
            page(5);
            clickCheckBox(find<QAbstractButton>("chkDefaultRemarks"));
        },
        [&](const Paper& b, const Paper& a) {
            return expect(b.part(bom).contains(remark) != a.part(bom).contains(remark),
                          QStringLiteral("remarks unchanged"));
        });
    CHOICES_HELD();
}

void tst_ChoiceToPaper::labels()
{
    page(0);
    clickCheckBox(find<QAbstractButton>("chkLabels"));
    const QString part = QStringLiteral("Labels");
    // Looked up on every use: the workstation is started again between choices.
    const auto labelButton = [&](const char* name) {
        click(find<ZebSubCtl::UserControl>("ctlLabels")
                  ->findChild<QAbstractButton*>(QLatin1String(name)));
    };
    // Picks the field by its caption among those offered and adds it to the label.
    const auto chooseLabelField = [&](const QString& caption) {
        auto* available = listOf("ctlLabels", "lsvAvailableItems");
        for (int row = 0; row < available->count(); ++row)
            if (rowText(available, row) == caption) {
                clickRow(available, row);
                break;
            }
        labelButton("cmdAdd");
    };
    choose(
        QStringLiteral("Labels: remove a field"),
        [&] {
            page(6);
            auto* chosen = listOf("ctlLabels", "lsvSelectedItems");
            clickRow(chosen, 0);
            labelButton("cmdRemove");
        },
        [&](const Paper& b, const Paper& a) {
            return expect(b.part(part).contains(QStringLiteral("Halvorsen Electric Co."))
                              && !a.part(part).contains(QStringLiteral("Halvorsen Electric Co.")),
                          a.part(part).left(200))
                   + onlyChanged(b, a, {part});
        },
        true);
    // Every field the labels offer prints a real value: each added in turn to the three left,
    // and taken off again before the next.
    const QHash<QString, QString> values = {
        {QStringLiteral("Company"), QStringLiteral("Halvorsen Electric Co.")},
        {QStringLiteral("Attention"), QStringLiteral("Dana Whitcomb")},
        {QStringLiteral("Street Address"), QStringLiteral("2210 NW Front Avenue")},
        {QStringLiteral("Suite / Floor"), QStringLiteral("Suite 300")},
        {QStringLiteral("City, State Zip"), QStringLiteral("Portland, OR 97210")},
        {QStringLiteral("Job Name"), QStringLiteral("Riverside Medical Office Building")},
        {QStringLiteral("Job Number"), QStringLiteral("24-0131")},
        {QStringLiteral("Purchase Order"), QStringLiteral("RMOB-4471")},
        {QStringLiteral("Phone"), QStringLiteral("(503) 555-0142")},
        {QStringLiteral("Submittal Date"), QStringLiteral("November 21, 2026")},
    };
    page(6);
    QStringList offered;
    for (auto* available = listOf("ctlLabels", "lsvAvailableItems");
         offered.size() < available->count();)
        offered << rowText(available, int(offered.size()));
    const int before = listOf("ctlLabels", "lsvSelectedItems")->count();
    QVERIFY(offered.size() >= 6);
    QString previous;
    for (const QString& field : std::as_const(offered)) {
        choose(
            QStringLiteral("Labels: field %1").arg(field),
            [&] {
                page(6);
                auto* chosen = listOf("ctlLabels", "lsvSelectedItems");
                if (!previous.isEmpty()) {
                    clickRow(chosen, chosen->count() - 1);
                    labelButton("cmdRemove");
                }
                chooseLabelField(field);
                QCOMPARE(chosen->count(), before + 1);
                previous = field;
            },
            [&](const Paper&, const Paper& a) {
                // The first label's lines: the value stands as the last of them.
                const QString value = values.value(field);
                return expect(!value.isEmpty() && a.part(part).contains(value),
                              QStringLiteral("%1 prints no \"%2\": %3")
                                  .arg(field, value, a.part(part).left(160)));
            });
    }
    page(6);
    clickRow(listOf("ctlLabels", "lsvSelectedItems"),
             listOf("ctlLabels", "lsvSelectedItems")->count() - 1);
    labelButton("cmdRemove");
    m_last = {};
    // The order is the order of choosing: the first field taken off and chosen again prints last.
    QString moved;
    choose(
        QStringLiteral("Labels: order"),
        [&] {
            page(6);
            auto* chosen = listOf("ctlLabels", "lsvSelectedItems");
            moved = rowText(chosen, 0);
            clickRow(chosen, 0);
            labelButton("cmdRemove");
            chooseLabelField(moved);
        },
        [&](const Paper& b, const Paper& a) {
            return expect(b.part(part) != a.part(part)
                              && b.part(part).size() == a.part(part).size(),
                          QStringLiteral("order of %1 not printed").arg(moved))
                   + onlyChanged(b, a, {part});
        });
    CHOICES_HELD();
}

void tst_ChoiceToPaper::lineItems()
{
    const QString bom = QStringLiteral("Bill of Materials");
    const auto leftOut = [](const Paper& p) {
        static const QRegularExpression re(
            QStringLiteral("(\\d+) of the job's (\\d+) lines? (are|is) not ticked"));
        return re.match(p.part(QStringLiteral("Contents"))).captured(1).toInt();
    };
    auto lineWidget = [&](int n) {
        const auto lines = find<ZebSubCtl::UserControl>("ctlLineItems")
                               ->findChildren<QWidget*>(QStringLiteral("ctlSubLine"));
        for (QWidget* line : lines)
            if (line->property("LineNumber").toString() == QString::number(n) && line->isVisible())
                return line;
        return static_cast<QWidget*>(nullptr);
    };
    choose(
        QStringLiteral("Lines: untick line 1"),
        [&] {
            page(7);
            QWidget* line = lineWidget(1);
            QVERIFY(line);
            clickCheckBox(line->findChild<QAbstractButton*>(QStringLiteral("chkSelect")));
        },
        [&](const Paper& b, const Paper& a) {
            return expect(b.part(bom).contains(QStringLiteral(" 1 A "))
                              && !a.part(bom).contains(QStringLiteral(" 1 A "))
                              && leftOut(a) == leftOut(b) + 1,
                          QStringLiteral("line 1 still prints (%1 left out)").arg(leftOut(a)))
                   + onlyChanged(b, a, {bom});
        });
    choose(
        QStringLiteral("Lines: tick line 5"),
        [&] {
            page(7);
            QWidget* line = lineWidget(5);
            QVERIFY(line);
            clickCheckBox(line->findChild<QAbstractButton*>(QStringLiteral("chkSelect")));
        },
        [&](const Paper& b, const Paper& a) {
            return expect(!b.part(bom).contains(QStringLiteral(" 5 B1 "))
                              && a.part(bom).contains(QStringLiteral(" 5 B1 "))
                              && leftOut(a) == leftOut(b) - 1,
                          QStringLiteral("line 5 not printed"))
                   + onlyChanged(b, a, {bom});
        });
    CHOICES_HELD();
}

void tst_ChoiceToPaper::customers()
{
    page(0);
    clickCheckBox(find<QAbstractButton>("chkLabels"));
    const QString part = QStringLiteral("Labels");
    choose(
        QStringLiteral("Customers: untick one"),
        [&] {
            page(1);
            clickRowCheck(find<KeyedListView>("lsvCustomers"), 0);
        },
        [&](const Paper& b, const Paper& a) {
            return expect(b.part(part).contains(QStringLiteral("Halvorsen Electric Co."))
                              && !a.part(part).contains(QStringLiteral("Halvorsen Electric Co."))
                              && a.part(part).contains(QStringLiteral("Cedar Ridge Architects")),
                          a.part(part).left(200))
                   + onlyChanged(b, a, {part});
        });
    choose(
        QStringLiteral("Customers: tick it again"),
        [&] {
            page(1);
            clickRowCheck(find<KeyedListView>("lsvCustomers"), 0);
        },
        [&](const Paper&, const Paper& a) {
            return expect(a.part(part).contains(QStringLiteral("Halvorsen Electric Co.")),
                          a.part(part).left(200));
        });
    choose(
        QStringLiteral("Customers: remove one"),
        [&] {
            page(1);
            auto* list = find<KeyedListView>("lsvCustomers");
            clickRow(list, 1);
            QTest::mouseClick(find<ZebSubCtl::UserControl>("ctlCustomers")
                                  ->findChild<QAbstractButton*>(QStringLiteral("cmdRemove")),
                              Qt::LeftButton);
        },
        [&](const Paper& b, const Paper& a) {
            return expect(b.part(part).contains(QStringLiteral("Cedar Ridge Architects"))
                              && !a.part(part).contains(QStringLiteral("Cedar Ridge Architects")),
                          a.part(part).left(200))
                   + onlyChanged(b, a, {part});
        });
    // A customer found by account number and added gets a label with its whole address.
    choose(
        QStringLiteral("Customers: add one"),
        [&] {
            page(1);
            auto* panel = find<ZebSubCtl::UserControl>("ctlCustomers");
            auto* account = panel->findChild<QLineEdit*>(QStringLiteral("txtAcctNum"));
            QVERIFY(account);
            QTest::mouseClick(account, Qt::LeftButton);
            QTest::keyClicks(account, QStringLiteral("100601"));
            click(panel->findChild<QAbstractButton*>(QStringLiteral("cmdSearch")));
            click(panel->findChild<QAbstractButton*>(QStringLiteral("cmdAdd")));
        },
        [&](const Paper& b, const Paper& a) {
            // Labels stand side by side: each line of the new one is found, in its order.
            const QString now = a.part(part);
            qsizetype at = 0;
            bool inOrder = true;
            for (const QString& line :
                 {QStringLiteral("Willamette Valley Electric"), QStringLiteral("Luis Navarro"),
                  QStringLiteral("1880 Lancaster Drive NE"), QStringLiteral("Salem, OR 97301")}) {
                at = now.indexOf(line, at);
                inOrder &= at >= 0;
            }
            return expect(!b.part(part).contains(QStringLiteral("Willamette")) && inOrder,
                          now.left(300))
                   + onlyChanged(b, a, {part});
        });
    // Every customer leaves in one write: no label is left, in the file or on paper.
    QList<ZebSubCtl::ScriptedMessageBoxService::Shown> asked;
    choose(
        QStringLiteral("Customers: remove all"),
        [&] {
            page(1);
            auto boxes = std::make_shared<ZebSubCtl::ScriptedMessageBoxService>();
            ZebSubCtl::MessageBoxes::setService(boxes);
            clickRow(find<KeyedListView>("lsvCustomers"), 0);
            QTest::mouseClick(find<ZebSubCtl::UserControl>("ctlCustomers")
                                  ->findChild<QAbstractButton*>(QStringLiteral("cmdRemoveAll")),
                              Qt::LeftButton);
            ZebSubCtl::MessageBoxes::setService(nullptr);
            asked = boxes->shown();
        },
        [&](const Paper& b, const Paper& a) {
            bool anyLeft = false;
            for (const QString& name :
                 {QStringLiteral("Halvorsen Electric Co."), QStringLiteral("Willamette Valley "
                                                                           "Electric")})
                anyLeft |= a.part(part).contains(name);
            return expect(b.part(part).contains(QStringLiteral("Willamette Valley Electric"))
                              && !anyLeft,
                          a.part(part).left(200));
        },
        // Labels with nobody to print them for: the check before the export says so.
        true);
    QCOMPARE(asked.size(), 1);
    QCOMPARE(asked.first().title, QStringLiteral("Are you sure?"));
    // The window opened again after the restart shows the job without customers.
    page(1);
    QCOMPARE(find<KeyedListView>("lsvCustomers")->count(), 0);
    CHOICES_HELD();
}

void tst_ChoiceToPaper::onThePostgreSqlServer()
{
    PgServer server;
    QVERIFY2(server.isRunning(), qPrintable(server.error()));
    m_window.reset();
    ZebObjects::Runtime::setApplicationServices(nullptr);
    m_store.reset();
    m_last = {};
    m_office = QStringLiteral("PostgreSQL");
    openOffice(server.location(server.newDatabaseName()), true);
    // One choice of each kind: a flag, a text's tick, the issuer, a line, a part and a customer.
    const QString letter = QStringLiteral("Cover Letter");
    choose(
        QStringLiteral("Letter: remarks on"),
        [&] {
            page(2);
            clickCheckBox(find<QAbstractButton>("chkRemarks"));
        },
        [&](const Paper& b, const Paper& a) {
            return expect(!b.part(letter).contains(QStringLiteral("Remarks:"))
                              && a.part(letter).contains(QStringLiteral("Remarks:")),
                          QStringLiteral("no remarks"));
        });
    choose(
        QStringLiteral("Paragraphs: untick the first"),
        [&] {
            page(3);
            clickRowCheck(listOf("ctlParagraphs"), 0);
        },
        [&](const Paper& b, const Paper& a) {
            return expect(b.part(letter) != a.part(letter)
                              && a.part(letter).size() < b.part(letter).size(),
                          QStringLiteral("unchanged"));
        });
    choose(
        QStringLiteral("General: issuer"),
        [&] {
            page(0);
            auto* issuer = find<QComboBox>("cmbIssuedBy");
            QTest::mouseClick(issuer, Qt::LeftButton);
            issuer->setFocus();
            if (issuer->lineEdit())
                issuer->lineEdit()->selectAll();
            ZebTest::typeText(issuer->lineEdit() ? static_cast<QWidget*>(issuer->lineEdit())
                                                 : issuer,
                              QStringLiteral("Tomasz Wierzbicki"));
            QTest::keyClick(issuer, Qt::Key_Tab);
        },
        [&](const Paper& b, const Paper& a) {
            return expect(b.author != a.author && a.author == QStringLiteral("Tomasz Wierzbicki"),
                          a.author);
        });
    choose(
        QStringLiteral("Lines: untick line 1"),
        [&] {
            page(7);
            const auto lines = find<ZebSubCtl::UserControl>("ctlLineItems")
                                   ->findChildren<QWidget*>(QStringLiteral("ctlSubLine"));
            QWidget* first = nullptr;
            for (QWidget* line : lines)
                if (line->property("LineNumber").toString() == QStringLiteral("1")
                    && line->isVisible())
                    first = line;
            QVERIFY(first);
            clickCheckBox(first->findChild<QAbstractButton*>(QStringLiteral("chkSelect")));
        },
        [&](const Paper& b, const Paper& a) {
            const QString bom = QStringLiteral("Bill of Materials");
            return expect(b.part(bom).contains(QStringLiteral(" 1 A "))
                              && !a.part(bom).contains(QStringLiteral(" 1 A ")),
                          QStringLiteral("line 1 still prints"));
        });
    choose(
        QStringLiteral("Labels on, a customer unticked"),
        [&] {
            page(0);
            clickCheckBox(find<QAbstractButton>("chkLabels"));
            page(1);
            clickRowCheck(find<KeyedListView>("lsvCustomers"), 0);
        },
        [&](const Paper&, const Paper& a) {
            const QString labels = a.part(QStringLiteral("Labels"));
            return expect(!labels.contains(QStringLiteral("Halvorsen Electric Co."))
                              && labels.startsWith(QStringLiteral("Cedar Ridge Architects")),
                          labels.left(200));
        });
    CHOICES_HELD();
    m_window.reset();
    ZebObjects::Runtime::setApplicationServices(nullptr);
    m_store.reset();
}

QTEST_MAIN(tst_ChoiceToPaper)
#include "tst_choicetopaper.moc"
