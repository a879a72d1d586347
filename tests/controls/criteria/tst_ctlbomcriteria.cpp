#include "controls/criteria/ctlbomcriteria.h"
#include "controls/textselect/ctltextselect.h"
#include "frame/controlregistry.h"
#include "frame/propertybag.h"
#include "objects/standalonebom.h"
#include "objects/standalonetextobjects.h"
#include "platform/checkbox.h"
#include "platform/keyedlistview.h"
#include "platform/lineshape.h"
#include "platform/picture.h"
#include "support/controltesting.h"
#include "support/testsupport.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QTest>

using namespace ZebSubCtl;
using ZebObjects::ErrorInfo;
using ZebObjects::StandaloneBOM;
using ZebObjects::StandaloneTextObjects;
using ZebTest::error;
using Shown = ZebSubCtl::ScriptedMessageBoxService::Shown;

namespace {

using ZebTest::kCannot;
using ZebTest::plainBox;
const ErrorInfo kStoreDown = error(-2147217843, QStringLiteral("ZebObjects.BOM"),
                                   QStringLiteral("The options store is not available"));
const ErrorInfo kNotSet = error(91, QStringLiteral("ZebSubCtl"),
                                QStringLiteral("Object variable or With block variable not set"));

QString logError(const QString& label, const ErrorInfo& e,
                 const QString& module = QStringLiteral("ctlBOMCriteria"))
{
    return ZebTest::logLine("LogError", module, label, e);
}

QStringList errorsOnly(const QStringList& lines)
{
    QStringList out;
    for (const QString& line : lines)
        if (!line.startsWith(QLatin1String("Trace|")))
            out << line;
    return out;
}

// One column box: its name, caption, flag member (read name; the write adds "=").
struct Column {
    const char* box;
    const char* caption;
    const char* member;
    const char* label;
};

// In the order Populate shows them.
const QList<Column> kColumns = {
    {"chkBrand", "Brand", "IncludeBrand", "chkBrand_Click()"},
    {"chkCatNum", "Catalog Number", "IncludeCatalogNumber", "chkCatNum_Click()"},
    {"chkDefaultRemarks", "Default Remarks", "IncludeDefaultRemarks", "chkDefaultRemarks_Click()"},
    {"chkDesc", "Description", "IncludeDescription", "chkDesc_Click()"},
    {"chkGroupCode", "Group Codes", "IncludeGroupCodes", "chkGroupCode_Click()"},
    {"chkLineComments", "Line Comments", "IncludeLineComments", "chkLineComments_Click()"},
    {"chkMfr", "Manufacturer", "IncludeManufacturer", "chkMfr_Click()"},
    {"chkMTO", "MTO", "IncludeMTO", "chkMTO_Click()"},
    {"chkQuantity", "Quantity", "IncludeQuantity", "chkQuantity_Click()"},
    {"chkType", "Type", "IncludeType", "chkType_Click()"},
};

bool flagOf(const StandaloneBOM& bom, const QString& member)
{
    if (member == QLatin1String("IncludeBrand"))
        return bom.IncludeBrand();
    if (member == QLatin1String("IncludeCatalogNumber"))
        return bom.IncludeCatalogNumber();
    if (member == QLatin1String("IncludeDefaultRemarks"))
        return bom.IncludeDefaultRemarks();
    if (member == QLatin1String("IncludeDescription"))
        return bom.IncludeDescription();
    if (member == QLatin1String("IncludeGroupCodes"))
        return bom.IncludeGroupCodes();
    if (member == QLatin1String("IncludeLineComments"))
        return bom.IncludeLineComments();
    if (member == QLatin1String("IncludeManufacturer"))
        return bom.IncludeManufacturer();
    if (member == QLatin1String("IncludeMTO"))
        return bom.IncludeMTO();
    if (member == QLatin1String("IncludeQuantity"))
        return bom.IncludeQuantity();
    if (member == QLatin1String("IncludeType"))
        return bom.IncludeType();
    qFatal("unknown flag");
}

void setFlag(StandaloneBOM& bom, const QString& member, bool on)
{
    if (member == QLatin1String("IncludeBrand"))
        bom.setIncludeBrand(on);
    else if (member == QLatin1String("IncludeCatalogNumber"))
        bom.setIncludeCatalogNumber(on);
    else if (member == QLatin1String("IncludeDefaultRemarks"))
        bom.setIncludeDefaultRemarks(on);
    else if (member == QLatin1String("IncludeDescription"))
        bom.setIncludeDescription(on);
    else if (member == QLatin1String("IncludeGroupCodes"))
        bom.setIncludeGroupCodes(on);
    else if (member == QLatin1String("IncludeLineComments"))
        bom.setIncludeLineComments(on);
    else if (member == QLatin1String("IncludeManufacturer"))
        bom.setIncludeManufacturer(on);
    else if (member == QLatin1String("IncludeMTO"))
        bom.setIncludeMTO(on);
    else if (member == QLatin1String("IncludeQuantity"))
        bom.setIncludeQuantity(on);
    else if (member == QLatin1String("IncludeType"))
        bom.setIncludeType(on);
    else
        qFatal("unknown flag");
}

// Options that keep "Default Remarks" off whatever is written to them.
class StubbornBOM : public StandaloneBOM {
public:
    void setIncludeDefaultRemarks(bool) override { StandaloneBOM::setIncludeDefaultRemarks(false); }
};

// One panel, shown, with its own log and message boxes, and options with two remarks.
struct Fixture {
    ZebTest::Harness h;
    std::shared_ptr<StandaloneBOM> bom = std::make_shared<StandaloneBOM>();
    std::shared_ptr<StandaloneTextObjects> remarks;
    std::unique_ptr<ctlBOMCriteria> ctl;

    explicit Fixture(bool show = true)
    {
        remarks = bom->PopulateRemarks(
            {QStringLiteral("All fixtures ship with lamps."), QStringLiteral("Prices are net.")});
        ctl = std::make_unique<ctlBOMCriteria>();
        if (show) {
            ctl->show();
            if (!QTest::qWaitForWindowExposed(ctl.get()))
                qFatal("panel not exposed");
        }
        h.log().clear();
    }

    CheckBox* box(const char* name) const { return ctl->findChild<CheckBox*>(QLatin1String(name)); }
    QLabel* label(const char* name) const { return ctl->findChild<QLabel*>(QLatin1String(name)); }
    LineShape* line(const char* name) const
    {
        return ctl->findChild<LineShape*>(QLatin1String(name));
    }
    ctlTextSelect* list() const
    {
        return ctl->findChild<ctlTextSelect*>(QStringLiteral("ctlTextSelect"));
    }
    KeyedListView* listView() const
    {
        return list()->findChild<KeyedListView*>(QStringLiteral("ListView"));
    }
    bool shown(QWidget* w) const { return w->isVisibleTo(ctl.get()); }

    // Binds the options; the log and the recorded calls start empty afterwards.
    void bind()
    {
        ctl->setBOM(bom);
        h.log().clear();
        bom->faults().clearCalls();
    }
    void record() { bom->faults().setRecording(true); }
    QStringList calls() const { return bom->faults().calls(); }

    // A click on the box's indicator, as a user makes it.
    void click(const char* name) const
    {
        CheckBox* b = box(name);
        QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(6, b->height() / 2));
    }
};

}  // namespace

class tst_ctlBOMCriteria : public QObject {
    Q_OBJECT
private slots:
    // Registration and design
    void isCreatedByItsIdentifier();
    void childWidgetsCarryTheirNamesAndCaptions();
    void remarksListIsCreatedWithAllowReorderAndOtherwiseDefaults();
    void remarksPartStartsHiddenWithTheBoxUnticked();
    void panelPersistsNoProperty();
    void boxesAreReachedWithTabAndTickedWithSpace();
    void everyCaptionFitsItsWidget();
    void everyInteractiveElementHasAnAccessibleName();

    // Binding and Populate
    void bindingShowsEveryFlagAndBindsTheRemarks();
    void populateSetsTheBoxesInItsOrderThenBindsTheRemarks();
    void populateOnAFreshPanelWithAllFlagsFalseWritesNothing();
    void changedBoxWritesItsFlagBackOnceWhilePopulating();
    void populatingDefaultRemarksTrueShowsTheRemarksPart();
    void bomGetterReturnsTheBoundOptions();
    void settingNoObjectOnlyLogsPopulatesFailureAndKeepsTheWidgets();
    void eachFailingReadWhilePopulatingIsOnlyLoggedAndKeepsTheBoxesSetBefore();
    void remarksListFailureWhilePopulatingIsLoggedByTheListAndThePanel();
    void rebindingDropsTheOldOptionsEvents();
    void destroyedPanelLetsGoOfTheOptions();

    // Column boxes
    void eachColumnBoxWritesItsFlagOnClick_data();
    void eachColumnBoxWritesItsFlagOnClick();
    void eachColumnBoxWriteFailureReportsPlainAndThePanelStillWorks_data();
    void eachColumnBoxWriteFailureReportsPlainAndThePanelStillWorks();
    void clickWithoutOptionsReportsObjectNotSet();

    // Default remarks
    void tickingDefaultRemarksShowsHeadingLineAndListAndRebindsIt();
    void uncheckingDefaultRemarksHidesHeadingLineAndListButKeepsItBound();
    void defaultRemarksClickRebindsTheCurrentCollection();
    void listShowsOnlyWhenTheOptionsHoldTheFlag();
    void defaultRemarksWriteFailureShowsTheHeadingButNotTheList();
    void defaultRemarksReadBackFailureReportsPlain();
    void defaultRemarksCollectionFailureReportsPlainWithTheListShown();

    // Model event
    void remarksPopulatedRebindsTheList();
    void remarksPopulatedWhileUntickedRebindsTheHiddenListWithoutShowingIt();
    void remarksPopulatedFailureReportsPlainAndTheNextEventWorks();

    // Layout
    void resizeStretchesTheLinesAndTheListAndMovesNothingElse();
    void narrowPanelClampsNegativeWidthsWithoutAFailure();
};

// --- Registration and design

void tst_ctlBOMCriteria::isCreatedByItsIdentifier()
{
    ZebTest::Harness h;
    std::unique_ptr<UserControl> control(
        ControlRegistry::instance().create(QStringLiteral("ZebSubmittalControls.ctlBOMCriteria")));
    QVERIFY(qobject_cast<ctlBOMCriteria*>(control.get()));
    QCOMPARE(control->Name(), QStringLiteral("ctlBOMCriteria"));
    QVERIFY(control->metaObject()->indexOfProperty("BOM") >= 0);
    QVERIFY(errorsOnly(h.log().lines()).isEmpty());
}

void tst_ctlBOMCriteria::childWidgetsCarryTheirNamesAndCaptions()
{
    Fixture f(false);
    for (const Column& c : kColumns) {
        QVERIFY2(f.box(c.box), c.box);
        QCOMPARE(f.box(c.box)->text(), QLatin1String(c.caption));
    }
    QCOMPARE(f.ctl->findChildren<CheckBox*>(Qt::FindDirectChildrenOnly).size(), 10);
    QVERIFY(f.list());
    QCOMPARE(f.list()->parentWidget(), f.ctl.get());
    QCOMPARE(f.label("lblDefaultRemarks")->text(), QStringLiteral("Default Remarks"));
    QCOMPARE(f.label("lblIncludeInfo")->text(),
             QStringLiteral("Choose what you want to include on the Bill of Materials for the "
                            "Submittal.  If you choose to include Default Remarks, they will "
                            "print at the bottom of the Bill of Materials."));
    QCOMPARE(f.label("lblIncludeOnCoverLetter")->text(),
             QStringLiteral("Include On Bill of Materials"));
    QVERIFY(f.line("lineRemarks"));
    QVERIFY(f.line("lineInclude"));
    auto* picture = f.ctl->findChild<Picture*>(QStringLiteral("Image2"));
    QVERIFY(picture);
    QCOMPARE(picture->image(), PictureImage::BillOfMaterials);
    // Headings sit on their rules.
    QVERIFY(f.label("lblIncludeOnCoverLetter")->geometry().bottom() < f.line("lineInclude")->Y1());
    QVERIFY(f.label("lblDefaultRemarks")->geometry().bottom() < f.line("lineRemarks")->Y1());
    QVERIFY(f.line("lineRemarks")->Y1() < f.list()->y());
}

void tst_ctlBOMCriteria::remarksListIsCreatedWithAllowReorderAndOtherwiseDefaults()
{
    Fixture f(false);
    QVERIFY(f.list()->AllowReorder());
    QVERIFY(!f.list()->AllowUpdate());
    QVERIFY(!f.list()->AllowSave());
    QCOMPARE(f.list()->MaxLength(), qint16(0));
    QCOMPARE(f.list()->TextObjectType(), qint32(0));
    // As its saved design has it: only AllowReorder differs from the defaults.
    PropertyBag saved;
    f.list()->UserControl_WriteProperties(saved);
    QCOMPARE(saved.keys(), QStringList{QStringLiteral("AllowReorder")});
    QVERIFY(f.list()->findChild<QPushButton*>(QStringLiteral("cmdMoveUp"))->isEnabled());
    QVERIFY(f.list()->findChild<QPushButton*>(QStringLiteral("cmdMoveDown"))->isEnabled());
}

void tst_ctlBOMCriteria::remarksPartStartsHiddenWithTheBoxUnticked()
{
    Fixture f;
    QCOMPARE(f.box("chkDefaultRemarks")->value(), 0);
    QVERIFY(!f.shown(f.label("lblDefaultRemarks")));
    QVERIFY(!f.shown(f.line("lineRemarks")));
    QVERIFY(!f.shown(f.list()));
    QVERIFY(f.shown(f.label("lblIncludeOnCoverLetter")));
    QVERIFY(f.shown(f.line("lineInclude")));
}

void tst_ctlBOMCriteria::panelPersistsNoProperty()
{
    Fixture f;
    f.bind();
    PropertyBag bag;
    f.ctl->UserControl_WriteProperties(bag);
    QVERIFY(bag.isEmpty());
}

void tst_ctlBOMCriteria::boxesAreReachedWithTabAndTickedWithSpace()
{
    Fixture f;
    f.bind();
    f.ctl->activateWindow();
    f.box("chkQuantity")->setFocus();
    QVERIFY(QTest::qWaitFor([&] { return f.box("chkQuantity")->hasFocus(); }));
    const QStringList order = {"chkQuantity",  "chkType",          "chkBrand",        "chkMfr",
                               "chkCatNum",    "chkDesc",          "chkLineComments", "chkMTO",
                               "chkGroupCode", "chkDefaultRemarks"};
    for (int i = 1; i < order.size(); ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), order[i]);
    }
    QTest::keyClick(f.box("chkDefaultRemarks"), Qt::Key_Space);
    QCOMPARE(f.box("chkDefaultRemarks")->value(), 1);
    QVERIFY(f.bom->IncludeDefaultRemarks());
    QVERIFY(f.shown(f.list()));
    // Into the remarks list, the next stop.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(f.list()->isAncestorOf(QApplication::focusWidget()));
}

void tst_ctlBOMCriteria::everyCaptionFitsItsWidget()
{
    Fixture f;
    for (const Column& c : kColumns) {
        const CheckBox* box = f.box(c.box);
        const int needs = box->style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, box)
                          + box->style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, box)
                          + box->fontMetrics().horizontalAdvance(box->text());
        QVERIFY2(needs <= box->width(), qPrintable(QStringLiteral("%1: %2 > %3")
                                                       .arg(QLatin1String(c.box))
                                                       .arg(needs)
                                                       .arg(box->width())));
        QVERIFY2(box->fontMetrics().height() <= box->height(), c.box);
    }
    for (const char* name : {"lblDefaultRemarks", "lblIncludeOnCoverLetter"}) {
        const QLabel* label = f.label(name);
        QVERIFY2(label->fontMetrics().horizontalAdvance(label->text()) <= label->width(), name);
        QVERIFY2(label->fontMetrics().height() <= label->height(), name);
    }
    const QLabel* info = f.label("lblIncludeInfo");
    const QRect needed = info->fontMetrics().boundingRect(
        QRect(0, 0, info->width(), 10000), Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop,
        info->text());
    QVERIFY2(needed.height() <= info->height(),
             qPrintable(QStringLiteral("%1 > %2").arg(needed.height()).arg(info->height())));
    // Nothing reaches past the panel at its design size.
    for (QWidget* child : f.ctl->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        QVERIFY2(f.ctl->rect().contains(child->geometry()), qPrintable(child->objectName()));
}

void tst_ctlBOMCriteria::everyInteractiveElementHasAnAccessibleName()
{
    Fixture f;
    f.bind();
    f.box("chkDefaultRemarks")->setValue(1);
    QAccessibleInterface* root = QAccessible::queryAccessibleInterface(f.ctl.get());
    QVERIFY(root);
    QVERIFY(!root->text(QAccessible::Name).isEmpty());
    QVERIFY(!root->text(QAccessible::Description).isEmpty());
    QStringList unnamed;
    int interactive = 0;
    std::function<void(QAccessibleInterface*)> walk = [&](QAccessibleInterface* iface) {
        for (int i = 0; i < iface->childCount(); ++i) {
            QAccessibleInterface* child = iface->child(i);
            if (!child || child->state().invisible)
                continue;
            if (child->state().focusable) {
                ++interactive;
                if (child->text(QAccessible::Name).trimmed().isEmpty())
                    unnamed << QStringLiteral("%1 (role %2)")
                                   .arg(child->object() ? child->object()->objectName() : QString())
                                   .arg(int(child->role()));
            }
            walk(child);
        }
    };
    walk(root);
    QVERIFY(interactive >= 14);
    QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(QStringLiteral(", "))));
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(f.list());
    QCOMPARE(list->text(QAccessible::Name), QStringLiteral("Default remarks"));
    QVERIFY(!list->text(QAccessible::Description).isEmpty());
    QAccessibleInterface* picture =
        QAccessible::queryAccessibleInterface(f.ctl->findChild<Picture*>(QStringLiteral("Image2")));
    QVERIFY(!picture->text(QAccessible::Name).isEmpty());
    // The whole tree too, the children's own parts (scroll bars, list headers) included.
    const QStringList unnamedInTree = ZebTest::unnamedAccessibleElements(f.ctl.get());
    QVERIFY2(unnamedInTree.isEmpty(), qPrintable(unnamedInTree.join(QStringLiteral("; "))));
}

// --- Binding and Populate

void tst_ctlBOMCriteria::bindingShowsEveryFlagAndBindsTheRemarks()
{
    Fixture f;
    for (int i = 0; i < kColumns.size(); i += 2)
        setFlag(*f.bom, QLatin1String(kColumns[i].member), true);
    f.ctl->setBOM(f.bom);
    for (int i = 0; i < kColumns.size(); ++i)
        QCOMPARE(f.box(kColumns[i].box)->value(), i % 2 == 0 ? 1 : 0);
    QCOMPARE(f.list()->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(f.remarks));
    QCOMPARE(f.listView()->count(), 2);
    QVERIFY(f.h.boxes().shown().isEmpty());
    QVERIFY(errorsOnly(f.h.log().lines()).isEmpty());
}

void tst_ctlBOMCriteria::populateSetsTheBoxesInItsOrderThenBindsTheRemarks()
{
    Fixture f;
    f.record();
    f.ctl->setBOM(f.bom);
    QCOMPARE(f.calls(),
             (QStringList{"IncludeBrand", "IncludeCatalogNumber", "IncludeDefaultRemarks",
                          "IncludeDescription", "IncludeGroupCodes", "IncludeLineComments",
                          "IncludeManufacturer", "IncludeMTO", "IncludeQuantity", "IncludeType",
                          "DefaultRemarks"}));
}

void tst_ctlBOMCriteria::populateOnAFreshPanelWithAllFlagsFalseWritesNothing()
{
    Fixture f;
    f.record();
    f.ctl->setBOM(f.bom);
    for (const QString& call : f.calls())
        QVERIFY2(!call.endsWith(QLatin1Char('=')), qPrintable(call));
}

void tst_ctlBOMCriteria::changedBoxWritesItsFlagBackOnceWhilePopulating()
{
    Fixture f;
    f.bom->setIncludeMTO(true);
    f.bom->setIncludeBrand(true);
    f.record();
    f.ctl->setBOM(f.bom);
    QCOMPARE(f.calls(),
             (QStringList{"IncludeBrand", "IncludeBrand=", "IncludeCatalogNumber",
                          "IncludeDefaultRemarks", "IncludeDescription", "IncludeGroupCodes",
                          "IncludeLineComments", "IncludeManufacturer", "IncludeMTO",
                          "IncludeMTO=", "IncludeQuantity", "IncludeType", "DefaultRemarks"}));
    QVERIFY(f.bom->IncludeBrand());
    QVERIFY(f.bom->IncludeMTO());
    // Shown again: the boxes already agree, nothing is written.
    f.bom->faults().clearCalls();
    f.ctl->setBOM(f.bom);
    QCOMPARE(f.calls().filter(QLatin1String("=")), QStringList());
}

void tst_ctlBOMCriteria::populatingDefaultRemarksTrueShowsTheRemarksPart()
{
    Fixture f;
    f.bom->setIncludeDefaultRemarks(true);
    f.record();
    f.ctl->setBOM(f.bom);
    // The box's click runs inside Populate: write, read back, rebind; then Populate binds again.
    QCOMPARE(f.calls(),
             (QStringList{"IncludeBrand", "IncludeCatalogNumber", "IncludeDefaultRemarks",
                          "IncludeDefaultRemarks=", "IncludeDefaultRemarks", "DefaultRemarks",
                          "IncludeDescription", "IncludeGroupCodes", "IncludeLineComments",
                          "IncludeManufacturer", "IncludeMTO", "IncludeQuantity", "IncludeType",
                          "DefaultRemarks"}));
    QVERIFY(f.shown(f.label("lblDefaultRemarks")));
    QVERIFY(f.shown(f.line("lineRemarks")));
    QVERIFY(f.shown(f.list()));
    QCOMPARE(f.list()->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(f.remarks));
}

void tst_ctlBOMCriteria::bomGetterReturnsTheBoundOptions()
{
    Fixture f;
    QCOMPARE(f.ctl->BOM(), nullptr);
    f.bind();
    QCOMPARE(f.ctl->BOM(), std::shared_ptr<ZebObjects::BOM>(f.bom));
    QCOMPARE(f.ctl->property("BOM").value<std::shared_ptr<ZebObjects::BOM>>(),
             std::shared_ptr<ZebObjects::BOM>(f.bom));
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlBOMCriteria::settingNoObjectOnlyLogsPopulatesFailureAndKeepsTheWidgets()
{
    Fixture f;
    f.bom->setIncludeBrand(true);
    f.bom->setIncludeDefaultRemarks(true);
    f.bind();
    f.ctl->setBOM(nullptr);
    QCOMPARE(f.h.log().lines(), QStringList{logError(QStringLiteral("Populate()"), kNotSet)});
    QVERIFY(f.h.boxes().shown().isEmpty());
    QCOMPARE(f.ctl->BOM(), nullptr);
    QCOMPARE(f.box("chkBrand")->value(), 1);
    QCOMPARE(f.box("chkDefaultRemarks")->value(), 1);
    QVERIFY(f.shown(f.list()));
    QCOMPARE(f.list()->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(f.remarks));
}

void tst_ctlBOMCriteria::eachFailingReadWhilePopulatingIsOnlyLoggedAndKeepsTheBoxesSetBefore()
{
    for (int failing = 0; failing < kColumns.size(); ++failing) {
        Fixture f;
        for (const Column& c : kColumns)
            setFlag(*f.bom, QLatin1String(c.member), true);
        f.bom->faults().failNext(QLatin1String(kColumns[failing].member), kStoreDown);
        f.ctl->setBOM(f.bom);
        QCOMPARE(errorsOnly(f.h.log().lines()),
                 QStringList{logError(QStringLiteral("Populate()"), kStoreDown)});
        QVERIFY(f.h.boxes().shown().isEmpty());
        QCOMPARE(f.ctl->BOM(), std::shared_ptr<ZebObjects::BOM>(f.bom));
        for (int i = 0; i < kColumns.size(); ++i)
            QCOMPARE(f.box(kColumns[i].box)->value(), i < failing ? 1 : 0);
        QCOMPARE(f.list()->TextObjects() != nullptr, failing > 2);
        // Shown again, all is well.
        f.h.log().clear();
        f.ctl->setBOM(f.bom);
        QVERIFY(errorsOnly(f.h.log().lines()).isEmpty());
        for (const Column& c : kColumns)
            QCOMPARE(f.box(c.box)->value(), 1);
    }
    // The collection read last.
    Fixture f;
    f.bom->faults().failNext(QStringLiteral("DefaultRemarks"), kStoreDown);
    f.ctl->setBOM(f.bom);
    QCOMPARE(f.h.log().lines(), QStringList{logError(QStringLiteral("Populate()"), kStoreDown)});
    QCOMPARE(f.list()->TextObjects(), nullptr);
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlBOMCriteria::remarksListFailureWhilePopulatingIsLoggedByTheListAndThePanel()
{
    Fixture f;
    const ErrorInfo down = error(-2147217843, QStringLiteral("ZebObjects.TextObjects"),
                                 QStringLiteral("The text store is not available"));
    f.remarks->faults().failNext(QStringLiteral("Enumerate"), down);
    f.ctl->setBOM(f.bom);
    QCOMPARE(
        errorsOnly(f.h.log().lines()),
        (QStringList{logError(QStringLiteral("Populate"), down, QStringLiteral("ctlTextSelect")),
                     logError(QStringLiteral("TextObjects"), down, QStringLiteral("ctlTextSelect")),
                     logError(QStringLiteral("Populate()"), down)}));
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlBOMCriteria::rebindingDropsTheOldOptionsEvents()
{
    Fixture f;
    f.bind();
    auto other = std::make_shared<StandaloneBOM>();
    f.ctl->setBOM(other);
    f.h.log().clear();
    f.record();
    f.bom->PopulateRemarks({QStringLiteral("Old options")});
    QCOMPARE(f.calls(), QStringList{"PopulateRemarks"});
    QCOMPARE(f.list()->TextObjects(), other->DefaultRemarks());
    auto fresh = other->PopulateRemarks({QStringLiteral("New options")});
    QCOMPARE(f.list()->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(fresh));
}

void tst_ctlBOMCriteria::destroyedPanelLetsGoOfTheOptions()
{
    Fixture f;
    f.bind();
    QCOMPARE(f.bom.use_count(), 2);
    f.ctl.reset();
    QCOMPARE(f.bom.use_count(), 1);
    f.bom->PopulateRemarks({QStringLiteral("After")});
    QVERIFY(f.h.boxes().shown().isEmpty());
    QVERIFY(f.h.log().lines().isEmpty());
}

// --- Column boxes

void tst_ctlBOMCriteria::eachColumnBoxWritesItsFlagOnClick_data()
{
    QTest::addColumn<int>("column");
    for (int i = 0; i < kColumns.size(); ++i)
        if (i != 2)
            QTest::newRow(kColumns[i].box) << i;
}

void tst_ctlBOMCriteria::eachColumnBoxWritesItsFlagOnClick()
{
    QFETCH(int, column);
    const Column& c = kColumns[column];
    const QString write = QLatin1String(c.member) + QLatin1Char('=');
    Fixture f;
    f.bind();
    f.record();
    f.click(c.box);
    QCOMPARE(f.box(c.box)->value(), 1);
    QCOMPARE(f.calls(), QStringList{write});
    QVERIFY(flagOf(*f.bom, QLatin1String(c.member)));
    f.bom->faults().clearCalls();
    f.click(c.box);
    QCOMPARE(f.calls(), QStringList{write});
    QVERIFY(!flagOf(*f.bom, QLatin1String(c.member)));
    // A grey box counts as not ticked.
    f.bom->faults().clearCalls();
    f.box(c.box)->setValue(2);
    QCOMPARE(f.calls(), QStringList{write});
    QVERIFY(!flagOf(*f.bom, QLatin1String(c.member)));
    QVERIFY(f.h.log().lines().isEmpty());
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlBOMCriteria::eachColumnBoxWriteFailureReportsPlainAndThePanelStillWorks_data()
{
    QTest::addColumn<int>("column");
    for (int i = 0; i < kColumns.size(); ++i)
        QTest::newRow(kColumns[i].box) << i;
}

void tst_ctlBOMCriteria::eachColumnBoxWriteFailureReportsPlainAndThePanelStillWorks()
{
    QFETCH(int, column);
    const Column& c = kColumns[column];
    Fixture f;
    f.bind();
    f.bom->faults().failNext(QLatin1String(c.member) + QLatin1Char('='), kStoreDown);
    f.click(c.box);
    QCOMPARE(errorsOnly(f.h.log().lines()),
             QStringList{logError(QLatin1String(c.label), kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QCOMPARE(f.box(c.box)->value(), 1);
    QVERIFY(!flagOf(*f.bom, QLatin1String(c.member)));
    // The next click works.
    f.h.log().clear();
    f.h.boxes().clear();
    f.click(c.box);
    f.click(c.box);
    QVERIFY(flagOf(*f.bom, QLatin1String(c.member)));
    QVERIFY(errorsOnly(f.h.log().lines()).isEmpty());
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlBOMCriteria::clickWithoutOptionsReportsObjectNotSet()
{
    Fixture f;
    f.click("chkQuantity");
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("chkQuantity_Click()"), kNotSet)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kNotSet)});
    f.h.log().clear();
    f.h.boxes().clear();
    f.click("chkDefaultRemarks");
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("chkDefaultRemarks_Click()"), kNotSet)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kNotSet)});
    // The heading and line follow the box before the options are reached.
    QVERIFY(f.shown(f.label("lblDefaultRemarks")));
    QVERIFY(!f.shown(f.list()));
}

// --- Default remarks

void tst_ctlBOMCriteria::tickingDefaultRemarksShowsHeadingLineAndListAndRebindsIt()
{
    Fixture f;
    f.bind();
    f.record();
    f.click("chkDefaultRemarks");
    QCOMPARE(f.calls(),
             (QStringList{"IncludeDefaultRemarks=", "IncludeDefaultRemarks", "DefaultRemarks"}));
    QVERIFY(f.bom->IncludeDefaultRemarks());
    QVERIFY(f.shown(f.label("lblDefaultRemarks")));
    QVERIFY(f.shown(f.line("lineRemarks")));
    QVERIFY(f.shown(f.list()));
    QCOMPARE(f.list()->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(f.remarks));
    QCOMPARE(f.listView()->count(), 2);
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlBOMCriteria::uncheckingDefaultRemarksHidesHeadingLineAndListButKeepsItBound()
{
    Fixture f;
    f.bom->setIncludeDefaultRemarks(true);
    f.bind();
    QVERIFY(f.shown(f.list()));
    f.record();
    f.click("chkDefaultRemarks");
    QCOMPARE(f.box("chkDefaultRemarks")->value(), 0);
    QCOMPARE(f.calls(),
             (QStringList{"IncludeDefaultRemarks=", "IncludeDefaultRemarks", "DefaultRemarks"}));
    QVERIFY(!f.bom->IncludeDefaultRemarks());
    QVERIFY(!f.shown(f.label("lblDefaultRemarks")));
    QVERIFY(!f.shown(f.line("lineRemarks")));
    QVERIFY(!f.shown(f.list()));
    QCOMPARE(f.list()->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(f.remarks));
    // Still bound: the hidden list follows its collection.
    f.remarks->Add(QStringLiteral("Added while hidden"), false);
    QCOMPARE(f.listView()->count(), 3);
}

void tst_ctlBOMCriteria::defaultRemarksClickRebindsTheCurrentCollection()
{
    Fixture f;
    f.bind();
    auto replacement = std::make_shared<StandaloneTextObjects>();
    replacement->Add(QStringLiteral("Replacement remark"), true);
    {
        // The options take another collection without telling anyone.
        const QSignalBlocker quiet(f.bom.get());
        f.bom->setDefaultRemarks(replacement);
    }
    QCOMPARE(f.list()->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(f.remarks));
    f.click("chkDefaultRemarks");
    QCOMPARE(f.list()->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(replacement));
    QCOMPARE(f.listView()->count(), 1);
}

void tst_ctlBOMCriteria::listShowsOnlyWhenTheOptionsHoldTheFlag()
{
    Fixture f;
    auto stubborn = std::make_shared<StubbornBOM>();
    f.ctl->setBOM(stubborn);
    f.click("chkDefaultRemarks");
    QCOMPARE(f.box("chkDefaultRemarks")->value(), 1);
    QVERIFY(f.shown(f.label("lblDefaultRemarks")));
    QVERIFY(f.shown(f.line("lineRemarks")));
    QVERIFY(!f.shown(f.list()));
    QCOMPARE(f.list()->TextObjects(), stubborn->DefaultRemarks());
}

void tst_ctlBOMCriteria::defaultRemarksWriteFailureShowsTheHeadingButNotTheList()
{
    Fixture f;
    f.bind();
    f.bom->faults().failNext(QStringLiteral("IncludeDefaultRemarks="), kStoreDown);
    f.record();
    f.click("chkDefaultRemarks");
    QCOMPARE(f.calls(), QStringList{"IncludeDefaultRemarks="});
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("chkDefaultRemarks_Click()"), kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QVERIFY(f.shown(f.label("lblDefaultRemarks")));
    QVERIFY(f.shown(f.line("lineRemarks")));
    QVERIFY(!f.shown(f.list()));
    // The panel still works: untick and tick again.
    f.h.boxes().clear();
    f.click("chkDefaultRemarks");
    f.click("chkDefaultRemarks");
    QVERIFY(f.bom->IncludeDefaultRemarks());
    QVERIFY(f.shown(f.list()));
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlBOMCriteria::defaultRemarksReadBackFailureReportsPlain()
{
    Fixture f;
    f.bind();
    f.bom->faults().failNext(QStringLiteral("IncludeDefaultRemarks"), kStoreDown);
    f.record();
    f.click("chkDefaultRemarks");
    QCOMPARE(f.calls(), (QStringList{"IncludeDefaultRemarks=", "IncludeDefaultRemarks"}));
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("chkDefaultRemarks_Click()"), kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QVERIFY(f.bom->IncludeDefaultRemarks());
    QVERIFY(!f.shown(f.list()));
}

void tst_ctlBOMCriteria::defaultRemarksCollectionFailureReportsPlainWithTheListShown()
{
    Fixture f;
    f.bind();
    f.bom->faults().failNext(QStringLiteral("DefaultRemarks"), kStoreDown);
    f.click("chkDefaultRemarks");
    QCOMPARE(errorsOnly(f.h.log().lines()),
             QStringList{logError(QStringLiteral("chkDefaultRemarks_Click()"), kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QVERIFY(f.shown(f.list()));
    QCOMPARE(f.list()->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(f.remarks));
}

// --- Model event

void tst_ctlBOMCriteria::remarksPopulatedRebindsTheList()
{
    Fixture f;
    f.bom->setIncludeDefaultRemarks(true);
    f.bind();
    f.record();
    auto fresh = f.bom->PopulateRemarks(
        {QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three")});
    QCOMPARE(f.calls(), (QStringList{"PopulateRemarks", "DefaultRemarks"}));
    QCOMPARE(f.list()->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(fresh));
    QCOMPARE(f.listView()->count(), 3);
    QVERIFY(f.shown(f.list()));
    QCOMPARE(f.box("chkDefaultRemarks")->value(), 1);
    QVERIFY(errorsOnly(f.h.log().lines()).isEmpty());
}

void tst_ctlBOMCriteria::remarksPopulatedWhileUntickedRebindsTheHiddenListWithoutShowingIt()
{
    Fixture f;
    f.bind();
    QCOMPARE(f.box("chkDefaultRemarks")->value(), 0);
    auto fresh = f.bom->PopulateRemarks({QStringLiteral("Hidden remark")});
    QCOMPARE(f.list()->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(fresh));
    QCOMPARE(f.listView()->count(), 1);
    QVERIFY(!f.shown(f.list()));
    QVERIFY(!f.shown(f.label("lblDefaultRemarks")));
    QVERIFY(!f.shown(f.line("lineRemarks")));
    QCOMPARE(f.box("chkDefaultRemarks")->value(), 0);
}

void tst_ctlBOMCriteria::remarksPopulatedFailureReportsPlainAndTheNextEventWorks()
{
    Fixture f;
    f.bind();
    f.bom->faults().failNext(QStringLiteral("DefaultRemarks"), kStoreDown);
    f.bom->PopulateRemarks({QStringLiteral("Not shown")});
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("mBOM_RemarksPopulated()"), kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QCOMPARE(f.list()->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(f.remarks));
    f.h.boxes().clear();
    auto fresh = f.bom->PopulateRemarks({QStringLiteral("Shown")});
    QCOMPARE(f.list()->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(fresh));
    QVERIFY(f.h.boxes().shown().isEmpty());
    // Without options the event has nothing to read.
    Fixture g;
    g.bind();
    emit g.bom->RemarksPopulated();
    QVERIFY(g.h.boxes().shown().isEmpty());
}

// --- Layout

void tst_ctlBOMCriteria::resizeStretchesTheLinesAndTheListAndMovesNothingElse()
{
    Fixture f;
    f.bind();
    QMap<QString, QRect> before;
    for (QWidget* child : f.ctl->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        before.insert(child->objectName(), child->geometry());
    f.ctl->resize(600, 480);
    // Inner width 9000 twips: lines end at 8990 twips, the list is 8997 twips wide.
    QCOMPARE(f.line("lineInclude")->X2(), 8990 / 15);
    QCOMPARE(f.line("lineRemarks")->X2(), 8990 / 15);
    QCOMPARE(f.list()->width(), 8997 / 15);
    for (QWidget* child : f.ctl->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        const QRect was = before.value(child->objectName());
        if (qobject_cast<LineShape*>(child) || child == f.list())
            QCOMPARE(child->pos(), was.topLeft());
        else
            QCOMPARE(child->geometry(), was);
    }
    QCOMPARE(f.list()->height(), before.value(QStringLiteral("ctlTextSelect")).height());
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlBOMCriteria::narrowPanelClampsNegativeWidthsWithoutAFailure()
{
    Fixture f;
    f.bom->setIncludeDefaultRemarks(true);
    f.bind();
    for (int width : {30, 1, 0}) {
        f.ctl->resize(width, 300);
        QCOMPARE(f.line("lineInclude")->X2(), f.line("lineInclude")->X1());
        QCOMPARE(f.line("lineRemarks")->X2(), f.line("lineRemarks")->X1());
        QVERIFY(f.list()->width() >= 0);
    }
    QCOMPARE(f.list()->width(), 0);
    QVERIFY(errorsOnly(f.h.log().lines()).isEmpty());
    QVERIFY(f.h.boxes().shown().isEmpty());
    QVERIFY(f.h.lastResort().isEmpty());
    // Wide again, all follows.
    f.ctl->resize(480, 436);
    QCOMPARE(f.line("lineInclude")->X2(), (7200 - 10) / 15);
    QCOMPARE(f.list()->width(), (7200 - 3) / 15);
    f.click("chkQuantity");
    QVERIFY(f.bom->IncludeQuantity());
}

QTEST_MAIN(tst_ctlBOMCriteria)
#include "tst_ctlbomcriteria.moc"
