#include "contracts/customers.h"
#include "contracts/failure.h"
#include "contracts/lineitems.h"
#include "contracts/textobjects.h"
#include "formdescription.h"
#include "support/workbenchtesting.h"
#include "frame/controlregistry.h"
#include "frame/usercontrol.h"
#include "workbenchdata.h"
#include "workbenchwindow.h"

#include <QFile>
#include <QImage>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>

class tst_Workbench : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
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
    void runtimePropertiesAreSetByNameAfterBinding();
    void runtimePropertyTheControlLacksIsAProblemAndTheRestOfTheFormStays();
    void runtimePropertiesMustBeFlagsNumbersOrTexts();
    void shippedFormHasThePagesInTheOrderOfWorkWithTheCustomersSecond();

private:
    QTemporaryDir m_home;
};

namespace {
using Run = ZebTest::ProgramRun;
using ZebTest::runWorkbench;

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

void tst_Workbench::initTestCase()
{
    // The workbench started here makes its office in the data folder: a scratch one.
    QVERIFY(m_home.isValid());
    ZebTest::useScratchHome(m_home, false);
}

void tst_Workbench::listPrintsEveryRegisteredIdentifier()
{
    const Run run = runWorkbench({QStringLiteral("--list")});
    QCOMPARE(run.code, 0);
    const QStringList printed = run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(printed, ZebSubCtl::ControlRegistry::instance().identifiers());
    QVERIFY(printed.contains(QStringLiteral("ZebSubmittalControls.ctlTextSelect")));
}

void tst_Workbench::screenshotWritesThePngOfTheWindow()
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("out.png"));
    QCOMPARE(runWorkbench({QStringLiteral("--screenshot"), file}).code, 0);
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
    QCOMPARE(c.bindings.value(QStringLiteral("TextObjects")),
             QStringLiteral("coverLetterParagraphs"));
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
    const Run run = runWorkbench(
        {QStringLiteral("--screenshot"), file, QStringLiteral("--page"), QStringLiteral("8")});
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
    const Run run = runWorkbench(
        {QStringLiteral("--line-items"), QStringLiteral("800"), QStringLiteral("--page"),
         QStringLiteral("8"), QStringLiteral("--screenshot"), shot, QStringLiteral("--log"), log});
    QCOMPARE(run.code, 0);
    QVERIFY(!QImage(shot, "PNG").isNull());
    QVERIFY2(run.err.contains(QStringLiteral("ctlLineItems.LineItems: Overflow")),
             qPrintable(run.err));
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
    Run run = runWorkbench(
        {QStringLiteral("--line-items"), QStringLiteral("many"), QStringLiteral("--list")});
    QCOMPARE(run.code, 0);  // listing needs no data
    run = runWorkbench({QStringLiteral("--line-items"), QStringLiteral("many"),
                        QStringLiteral("--screenshot"), QStringLiteral("/nonexistent/x.png")});
    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains(QStringLiteral("--line-items needs a whole number, not \"many\"")));
    run = runWorkbench({QStringLiteral("--line-items"), QStringLiteral("40000"),
                        QStringLiteral("--screenshot"), QStringLiteral("/nonexistent/x.png")});
    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains(QStringLiteral("Overflow")));
}

void tst_Workbench::runtimePropertiesAreSetByNameAfterBinding()
{
    const FormDescription form = FormDescription::fromJson(R"({
        "title": "T", "width": 300, "height": 200,
        "pages": [{"title": "P", "controls": [
            {"identifier": "ZebSubmittalControls.ctlCustSelect", "name": "c", "left": 0, "top": 0, "width": 9000, "height": 6000,
             "properties": {"AllowAdd": true}, "bind": {"Customers": "customers"},
             "runtime": {"ShowCheckboxes": true}}]}]})");
    QCOMPARE(
        form.pages.at(0).controls.at(0).runtimeProperties,
        (QList<std::pair<QString, QVariant>>{{QStringLiteral("ShowCheckboxes"), QVariant(true)}}));
    WorkbenchData data;
    WorkbenchWindow window(form, data);
    QCOMPARE(window.problems(), QStringList());
    ZebSubCtl::UserControl* control = window.controls().at(0);
    QCOMPARE(control->property("ShowCheckboxes"), QVariant(true));
    QCOMPARE(control->property("AllowAdd"), QVariant(true));
    QVERIFY(control->property("Customers").value<std::shared_ptr<ZebObjects::Customers>>());
    // Not part of the saved design, but kept in the form.
    const FormDescription saved = FormDescription::fromJson(window.currentDesignJson());
    const FormControl& c = saved.pages.at(0).controls.at(0);
    QCOMPARE(c.properties.keys(), QStringList{QStringLiteral("AllowAdd")});
    QCOMPARE(c.runtimeProperties, form.pages.at(0).controls.at(0).runtimeProperties);
}

void tst_Workbench::runtimePropertyTheControlLacksIsAProblemAndTheRestOfTheFormStays()
{
    const FormDescription form = FormDescription::fromJson(R"({
        "title": "T", "width": 300, "height": 200,
        "pages": [{"title": "P", "controls": [
            {"identifier": "ZebSubmittalControls.ctlCustSelect", "name": "c", "left": 0, "top": 0, "width": 9000, "height": 6000,
             "runtime": {"NoSuchThing": 1, "ShowCheckboxes": true}}]}]})");
    WorkbenchData data;
    WorkbenchWindow window(form, data);
    QCOMPARE(window.problems(),
             QStringList{QStringLiteral("c.NoSuchThing: Object doesn't support this property or "
                                        "method: ctlCustSelect.NoSuchThing cannot be set to 1")});
    QCOMPARE(window.controls().size(), 1);
    QCOMPARE(window.controls().at(0)->property("ShowCheckboxes"), QVariant(true));
    QVERIFY(!window.controls().at(0)->dynamicPropertyNames().contains("NoSuchThing"));
}

void tst_Workbench::runtimePropertiesMustBeFlagsNumbersOrTexts()
{
    try {
        FormDescription::fromJson(R"({"title": "T", "width": 1, "height": 1,
            "pages": [{"title": "P", "controls": [{"identifier": "x", "name": "n", "left": 0,
            "top": 0, "width": 1, "height": 1, "runtime": {"ShowCheckboxes": [true]}}]}]})");
        QFAIL("accepted");
    } catch (const ZebObjects::Failure& f) {
        QCOMPARE(f.Number(), 380);
        QCOMPARE(f.Description(),
                 QStringLiteral("Invalid form description: control 1 of page 1 sets "
                                "\"ShowCheckboxes\" at run time to something that is not a flag, "
                                "number or text"));
    }
    QVERIFY_THROWS_EXCEPTION(ZebObjects::Failure, FormDescription::fromJson(R"({"title": "T",
        "width": 1, "height": 1, "pages": [{"title": "P", "controls": [{"identifier": "x",
        "name": "n", "left": 0, "top": 0, "width": 1, "height": 1, "runtime": 5}]}]})"));
}

void tst_Workbench::shippedFormHasThePagesInTheOrderOfWorkWithTheCustomersSecond()
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("design.json"));
    QCOMPARE(runWorkbench({QStringLiteral("--save-design"), file}).code, 0);
    QFile saved(file);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    const FormDescription form = FormDescription::fromJson(saved.readAll());
    QStringList titles;
    for (const FormPage& p : form.pages)
        titles.append(p.title);
    QCOMPARE(titles,
             (QStringList{
                 QStringLiteral("General Information"), QStringLiteral("Customers"),
                 QStringLiteral("Cover Letter Options"), QStringLiteral("Cover Letter Paragraphs"),
                 QStringLiteral("Cover Letter Remarks"), QStringLiteral("Bill of Materials"),
                 QStringLiteral("Labels"), QStringLiteral("Line Items")}));
    const FormPage& page = form.pages.at(1);
    QCOMPARE(page.title, QStringLiteral("Customers"));
    QCOMPARE(page.controls.size(), 1);
    const FormControl& c = page.controls.at(0);
    QCOMPARE(c.identifier, QStringLiteral("ZebSubmittalControls.ctlCustSelect"));
    QCOMPARE(c.bindings.value(QStringLiteral("Customers")), QStringLiteral("customers"));
    QCOMPARE(c.properties.ReadProperty(QStringLiteral("AllowAdd"), false), QVariant(true));
    QCOMPARE(c.properties.ReadProperty(QStringLiteral("AllowDelete"), false), QVariant(true));
    QCOMPARE(c.runtimeProperties, (QList<std::pair<QString, QVariant>>{
                                      {QStringLiteral("ShowCheckboxes"), QVariant(true)}}));
}

QTEST_MAIN(tst_Workbench)
#include "tst_workbench.moc"
