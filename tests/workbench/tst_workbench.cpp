#include "contracts/failure.h"
#include "contracts/lineitems.h"
#include "contracts/textobjects.h"
#include "formdescription.h"
#include "frame/controlregistry.h"
#include "frame/usercontrol.h"
#include "workbenchdata.h"
#include "workbenchwindow.h"

#include <QFile>
#include <QImage>
#include <QPlainTextEdit>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

class tst_Workbench : public QObject {
    Q_OBJECT
private slots:
    void listPrintsEveryRegisteredIdentifier();
    void screenshotWritesThePngOfTheWindow();
    void formDescriptionReadsControlsPlacesDesignsAndBindings();
    void malformedFormDescriptionFailsNamingThePlace();
    void unknownIdentifierShowsAProblemAndTheRestOfTheForm();
    void bindingToAnUnknownSampleObjectFails();
    void savedDesignKeepsOnlyValuesThatDifferFromDefaults();
    void lineItemsPageBindsTheSampleJobAndRenders();
    void generatedJobFillsTheViewerUpToItsLimit();
    void generatedJobBeyondTheViewerShowsItsFailureInTheLogNotACrash();
    void lineItemsOptionRejectsWhatIsNotACount();
};

namespace {
QByteArray runWorkbench(const QStringList& args, int* exitCode)
{
    QProcess p;
    p.start(QStringLiteral(ZEB_WORKBENCH_EXE), args);
    if (!p.waitForFinished(60000))
        return {};
    *exitCode = p.exitCode();
    return p.readAllStandardOutput();
}
struct Run {
    int code = -1;
    QString out;
    QString err;
};

Run runWorkbenchFully(const QStringList& args)
{
    QProcess p;
    p.start(QStringLiteral(ZEB_WORKBENCH_EXE), args);
    Run run;
    if (!p.waitForFinished(120000))
        return run;
    run.code = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    run.out = QString::fromUtf8(p.readAllStandardOutput());
    run.err = QString::fromUtf8(p.readAllStandardError());
    return run;
}

// A form with the line item viewer alone, bound to "lineItems".
FormDescription lineItemsForm()
{
    return FormDescription::fromJson(R"({
        "title": "T", "width": 700, "height": 500,
        "pages": [{"title": "Line Items", "controls": [{
            "identifier": "ZebSubmittalControls.ctlSubLineDsp", "name": "ctlLineItems",
            "left": 150, "top": 150, "width": 9150, "height": 5325,
            "bind": {"LineItems": "lineItems"}}]}]})");
}

int rowsOf(ZebSubCtl::UserControl* viewer)
{
    return int(viewer->findChildren<QWidget*>(QStringLiteral("ctlSubLine")).size());
}
}  // namespace

void tst_Workbench::listPrintsEveryRegisteredIdentifier()
{
    int code = -1;
    const QByteArray out = runWorkbench({QStringLiteral("--list")}, &code);
    QCOMPARE(code, 0);
    const QStringList printed = QString::fromUtf8(out).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(printed, ZebSubCtl::ControlRegistry::instance().identifiers());
    QVERIFY(printed.contains(QStringLiteral("ZebSubmittalControls.ctlTextSelect")));
}

void tst_Workbench::screenshotWritesThePngOfTheWindow()
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("out.png"));
    int code = -1;
    runWorkbench({QStringLiteral("--screenshot"), file}, &code);
    QCOMPARE(code, 0);
    QImage image(file, "PNG");
    QVERIFY(!image.isNull());
    QCOMPARE(image.size(), QSize(980, 720));
}

void tst_Workbench::formDescriptionReadsControlsPlacesDesignsAndBindings()
{
    const FormDescription form = FormDescription::fromJson(R"({
        "title": "T", "width": 300, "height": 200,
        "pages": [{"title": "P", "controls": [{
            "identifier": "ZebSubmittalControls.ctlTextSelect", "name": "c1",
            "left": 150, "top": 300, "width": 4500, "height": 3000,
            "properties": {"AllowUpdate": true}, "bind": {"TextObjects": "coverLetterParagraphs"}}]}]})");
    QCOMPARE(form.title, QStringLiteral("T"));
    QCOMPARE(form.pages.size(), 1);
    const FormControl& c = form.pages.at(0).controls.at(0);
    QCOMPARE(c.name, QStringLiteral("c1"));
    QCOMPARE(c.left, 150);
    QCOMPARE(c.height, 3000);
    QCOMPARE(c.properties.ReadProperty(QStringLiteral("AllowUpdate"), false), QVariant(true));
    QCOMPARE(c.bindings.value(QStringLiteral("TextObjects")), QStringLiteral("coverLetterParagraphs"));
}

void tst_Workbench::malformedFormDescriptionFailsNamingThePlace()
{
    try {
        FormDescription::fromJson(R"({"title": "T", "width": 1, "height": 1,
            "pages": [{"title": "P", "controls": [{"identifier": "x", "name": "n", "left": "a"}]}]})");
        QFAIL("accepted");
    } catch (const ZebObjects::Failure& f) {
        QCOMPARE(f.Number(), 380);
        QCOMPARE(f.Description(), QStringLiteral("Invalid form description: control 1 of page 1 "
                                                 "needs \"left\" as a whole number"));
    }
    QVERIFY_THROWS_EXCEPTION(ZebObjects::Failure, FormDescription::fromJson("{nope"));
}

void tst_Workbench::unknownIdentifierShowsAProblemAndTheRestOfTheForm()
{
    const FormDescription form = FormDescription::fromJson(R"({
        "title": "T", "width": 300, "height": 200,
        "pages": [{"title": "P", "controls": [
            {"identifier": "ZebSubmittalControls.ctlNoSuch", "name": "bad", "left": 0, "top": 0, "width": 1500, "height": 1500},
            {"identifier": "ZebSubmittalControls.ctlTextSelect", "name": "good", "left": 0, "top": 1500, "width": 4500, "height": 3000}]}]})");
    WorkbenchData data;
    WorkbenchWindow window(form, data);
    QCOMPARE(window.controls().size(), 1);
    QCOMPARE(window.controls().at(0)->objectName(), QStringLiteral("good"));
    QCOMPARE(window.problems(),
             QStringList{QStringLiteral("bad: Cannot create control: no control is registered as "
                                        "\"ZebSubmittalControls.ctlNoSuch\"")});
}

void tst_Workbench::bindingToAnUnknownSampleObjectFails()
{
    WorkbenchData data;
    auto* control = ZebSubCtl::ControlRegistry::instance().create(
        QStringLiteral("ZebSubmittalControls.ctlTextSelect"));
    std::unique_ptr<ZebSubCtl::UserControl> owner(control);
    try {
        data.bind(control, QStringLiteral("TextObjects"), QStringLiteral("noSuchObject"));
        QFAIL("bound");
    } catch (const ZebObjects::Failure& f) {
        QCOMPARE(f.Number(), 438);
    }
    data.bind(control, QStringLiteral("TextObjects"), QStringLiteral("coverLetterParagraphs"));
    const auto bound =
        control->property("TextObjects").value<std::shared_ptr<ZebObjects::TextObjects>>();
    QVERIFY(bound != nullptr);
    QCOMPARE(bound, data.object(QStringLiteral("coverLetterParagraphs"))
                        .value<std::shared_ptr<ZebObjects::TextObjects>>());
}

void tst_Workbench::savedDesignKeepsOnlyValuesThatDifferFromDefaults()
{
    const FormDescription form = FormDescription::fromJson(R"({
        "title": "T", "width": 300, "height": 200,
        "pages": [{"title": "P", "controls": [
            {"identifier": "ZebSubmittalControls.ctlTextSelect", "name": "c", "left": 0, "top": 0, "width": 4500, "height": 3000,
             "properties": {"AllowReorder": true, "AllowUpdate": false}}]}]})");
    WorkbenchData data;
    WorkbenchWindow window(form, data);
    const FormDescription saved = FormDescription::fromJson(window.currentDesignJson());
    QCOMPARE(saved.pages.at(0).controls.at(0).properties.keys(),
             QStringList{QStringLiteral("AllowReorder")});
}

void tst_Workbench::lineItemsPageBindsTheSampleJobAndRenders()
{
    WorkbenchData data;
    WorkbenchWindow window(lineItemsForm(), data);
    QCOMPARE(window.problems(), QStringList());
    QCOMPARE(window.controls().size(), 1);
    ZebSubCtl::UserControl* viewer = window.controls().at(0);
    QCOMPARE(rowsOf(viewer), 20);
    QVERIFY(viewer->findChild<QWidget*>(QStringLiteral("VScroll"))->isEnabled());

    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("lines.png"));
    const Run run = runWorkbenchFully({QStringLiteral("--screenshot"), file, QStringLiteral("--page"),
                                       QStringLiteral("3")});
    QCOMPARE(run.code, 0);
    QVERIFY(!QImage(file, "PNG").isNull());
}

void tst_Workbench::generatedJobFillsTheViewerUpToItsLimit()
{
    WorkbenchData data;
    data.generateLineItems(744);
    QCOMPARE(data.object(QStringLiteral("lineItems"))
                 .value<std::shared_ptr<ZebObjects::LineItems>>()
                 ->Count(),
             qint16(744));
    WorkbenchWindow window(lineItemsForm(), data);
    QCOMPARE(window.problems(), QStringList());
    QCOMPARE(rowsOf(window.controls().at(0)), 744);
    QVERIFY_THROWS_EXCEPTION(ZebObjects::Failure, data.generateLineItems(32768));
}

void tst_Workbench::generatedJobBeyondTheViewerShowsItsFailureInTheLogNotACrash()
{
    WorkbenchData data;
    data.generateLineItems(800);
    WorkbenchWindow window(lineItemsForm(), data);
    QCOMPARE(window.problems(), QStringList{QStringLiteral("ctlLineItems.LineItems: Overflow")});
    QCOMPARE(window.controls().size(), 1);
    QCOMPARE(rowsOf(window.controls().at(0)), 745);

    QTemporaryDir dir;
    const QString shot = dir.filePath(QStringLiteral("lines.png"));
    const QString log = dir.filePath(QStringLiteral("lines.log"));
    const Run run = runWorkbenchFully({QStringLiteral("--line-items"), QStringLiteral("800"),
                                       QStringLiteral("--page"), QStringLiteral("3"),
                                       QStringLiteral("--screenshot"), shot, QStringLiteral("--log"),
                                       log});
    QCOMPARE(run.code, 0);
    QVERIFY(!QImage(shot, "PNG").isNull());
    QVERIFY2(run.err.contains(QStringLiteral("ctlLineItems.LineItems: Overflow")), qPrintable(run.err));
    QFile file(log);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    for (const char* entry :
         {"ERROR ctlSubLines addNextLine() #6 [ZebSubCtl] Overflow (line 0)",
          "ERROR ctlSubLines Populate() #6 [ZebSubCtl] Overflow (line 0)",
          "ERROR ctlSubLines LineItems() - Property Set #6 [ZebSubCtl] Overflow (line 0)",
          "ERROR ctlSubLineDsp LineItems() - Property Set #6 [ZebSubCtl] Overflow (line 0)"})
        QVERIFY2(text.contains(QLatin1String(entry)), entry);
}

void tst_Workbench::lineItemsOptionRejectsWhatIsNotACount()
{
    Run run = runWorkbenchFully({QStringLiteral("--line-items"), QStringLiteral("many"),
                                 QStringLiteral("--list")});
    QCOMPARE(run.code, 0);  // listing needs no data
    run = runWorkbenchFully({QStringLiteral("--line-items"), QStringLiteral("many"),
                             QStringLiteral("--screenshot"), QStringLiteral("/nonexistent/x.png")});
    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains(QStringLiteral("--line-items needs a whole number, not \"many\"")));
    run = runWorkbenchFully({QStringLiteral("--line-items"), QStringLiteral("40000"),
                             QStringLiteral("--screenshot"), QStringLiteral("/nonexistent/x.png")});
    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains(QStringLiteral("Overflow")));
}

QTEST_MAIN(tst_Workbench)
#include "tst_workbench.moc"
