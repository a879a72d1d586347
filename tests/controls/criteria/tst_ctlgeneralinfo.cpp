#include "controls/criteria/ctlgeneralinfo.h"
#include "frame/controlregistry.h"
#include "frame/units.h"
#include "contracts/runtime.h"
#include "objects/standaloneapplicationservices.h"
#include "objects/standalonesubmittal.h"
#include "platform/checkbox.h"
#include "platform/combobox.h"
#include "platform/dateedit.h"
#include "platform/lineshape.h"
#include "platform/optionbutton.h"
#include "platform/optiongroup.h"
#include "platform/picture.h"
#include "platform/textbox.h"
#include "support/controltesting.h"
#include "support/testsupport.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QMap>
#include <QCalendarWidget>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStyle>
#include <QTableView>
#include <QTest>
#include <QToolButton>

#include <functional>

using namespace ZebSubCtl;
using ZebObjects::ErrorInfo;
using ZebObjects::Failure;
using ZebObjects::StandaloneApplicationServices;
using ZebObjects::StandaloneSubmittal;
using ZebObjects::Submittal;
using ZebTest::error;
using Shown = ZebSubCtl::ScriptedMessageBoxService::Shown;

namespace {

const QString kModule = QStringLiteral("ctlGeneralInfo");
using ZebTest::kCannot;
using ZebTest::plainBox;
const QString kTip = QStringLiteral(
    "Choose the person who will be the contact for all communication regarding this submittal");
const QStringList kIssuers{QStringLiteral("Dana Whitfield"), QStringLiteral("Marcus Oyelaran"),
                           QStringLiteral("Priya Raman")};
const QStringList kPurposes{QStringLiteral("Request For Prior Approval"),
                            QStringLiteral("Request For Approval"),
                            QStringLiteral("Request For Approval As Submitted"),
                            QStringLiteral("Request For Approval As Noted"),
                            QStringLiteral("Resubmittal For Approval"),
                            QStringLiteral("Corrections"),
                            QStringLiteral("Record Only"),
                            QStringLiteral("Other")};

const ErrorInfo kStoreDown = error(-2147217843, QStringLiteral("ZebObjects.Submittal"),
                                   QStringLiteral("The submittal store is not available"));
const ErrorInfo kLogDown =
    error(70, QStringLiteral("ZebObjects.DiagnosticLog"), QStringLiteral("Permission denied"));

QString logError(const QString& label, const ErrorInfo& e)
{
    return ZebTest::logLine("LogError", kModule, label, e);
}

// A submittal that raises its change events on every write, changed or not, the way some hosts'
// objects do; it counts the writes.
class EchoingSubmittal : public StandaloneSubmittal {
public:
    int writes = 0;
    void setIncludeBOM(bool include) override
    {
        ++writes;
        const bool same = include == StandaloneSubmittal::IncludeBOM();
        StandaloneSubmittal::setIncludeBOM(include);
        if (same)
            emit BOMChanged();
    }
    void setIssuedBy(const QString& name) override
    {
        ++writes;
        const bool same = name == StandaloneSubmittal::IssuedBy();
        StandaloneSubmittal::setIssuedBy(name);
        if (same)
            emit IssuedByChanged();
    }
};

// A submittal that keeps a trail of the purpose calls, with their arguments, and answers the
// caption for "Other".
class PurposeTrailSubmittal : public StandaloneSubmittal {
public:
    QStringList trail;
    QString SelectPurpose(qint16 index) override
    {
        trail << QStringLiteral("SelectPurpose(%1)").arg(index);
        const QString text = StandaloneSubmittal::SelectPurpose(index);
        return index == OtherPurpose ? QStringLiteral("Other") : text;
    }
    void setSubmittalPurpose(const QString& purpose) override
    {
        trail << QStringLiteral("SubmittalPurpose=") + purpose;
        StandaloneSubmittal::setSubmittalPurpose(purpose);
    }
};

// One panel, shown, with its own log, message boxes, issuers and submittal.
struct Fixture {
    ZebTest::Harness h;
    std::shared_ptr<StandaloneApplicationServices> services =
        std::make_shared<StandaloneApplicationServices>();
    std::shared_ptr<StandaloneSubmittal> sub;
    std::unique_ptr<ctlGeneralInfo> ctl;

    explicit Fixture(
        std::shared_ptr<StandaloneSubmittal> submittal = std::make_shared<StandaloneSubmittal>(),
        const QStringList& issuers = kIssuers, bool show = true)
        : sub(std::move(submittal))
    {
        services->setIssuedByNames(issuers);
        ZebObjects::Runtime::setApplicationServices(services);
        ctl = std::make_unique<ctlGeneralInfo>();
        if (show) {
            ctl->show();
            ctl->activateWindow();
            if (!QTest::qWaitForWindowExposed(ctl.get()))
                qFatal("panel not exposed");
            QTRY_VERIFY(ctl->isActiveWindow());
        }
        h.log().clear();
    }

    // Binds the submittal; the log and the recorded calls start empty afterwards.
    void bind()
    {
        ctl->setCriteria(sub);
        record();
        h.log().clear();
    }
    void record()
    {
        sub->faults().setRecording(true);
        sub->faults().clearCalls();
    }
    QStringList calls() const { return sub->faults().calls(); }
    int count(const QString& member) const { return static_cast<int>(calls().count(member)); }

    CheckBox* check(const char* name) const
    {
        return ctl->findChild<CheckBox*>(QLatin1String(name));
    }
    OptionGroup* group() const
    {
        return ctl->findChild<OptionGroup*>(QStringLiteral("optSubmittalPurpose"));
    }
    OptionButton* option(int i) const { return group()->button(i); }
    TextBox* other() const { return ctl->findChild<TextBox*>(QStringLiteral("txtPurposeOther")); }
    ComboBox* issuer() const { return ctl->findChild<ComboBox*>(QStringLiteral("cmbIssuedBy")); }
    DateEdit* date() const { return ctl->findChild<DateEdit*>(QStringLiteral("pvdIssueDate")); }
    QLineEdit* dateText() const { return date()->lineEdit(); }
    LineShape* line(const char* name) const
    {
        return ctl->findChild<LineShape*>(QLatin1String(name));
    }
    QLabel* label(const char* name) const { return ctl->findChild<QLabel*>(QLatin1String(name)); }

    void click(QAbstractButton* b) const
    {
        QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(7, b->height() / 2));
    }
    // Moves the focus out of the date editor the way a user does: Tab.
    void leaveDate() const { QTest::keyClick(dateText(), Qt::Key_Tab); }
    void focusDate() const
    {
        date()->setFocus(Qt::MouseFocusReason);
        QTRY_VERIFY(dateText()->hasFocus());
    }
};

// A submittal as a host hands it over.
std::shared_ptr<StandaloneSubmittal> sample()
{
    auto s = std::make_shared<StandaloneSubmittal>();
    s->setIssuedBy(QStringLiteral("Dana Whitfield"));
    s->setSubmittalDate(QStringLiteral("2026-11-21"));
    s->setIncludeCoverLetter(true);
    s->setIncludeLabels(true);
    s->setSubmittalPurpose(s->SelectPurpose(3));
    return s;
}

}  // namespace

class tst_ctlGeneralInfo : public QObject {
    Q_OBJECT
private slots:
    void cleanup();
    void fieldsAreNamedByTheirLabelsNotByTheirValues();
    void theDatesTextBoxIsLabelledByTheSubmittalDateCaption();
    void theOtherPurposeBoxIsLabelledByTheOtherOption();
    void contentsAndPurposeAreNamedGroupingsForScreenReaders();

    // registration and design
    void isCreatedByItsIdentifier();
    void childWidgetsCarryTheirNamesAndCaptions();
    void informativeTextsKeepTheirDoubleBlanks();
    void purposeOptionsAreAnIndexedGroupOfEightInCaptionOrder();
    void freeTextBoxStartsHidden();
    void criteriaIsAPropertyByName();
    void everyCaptionFitsItsWidget();
    void nothingOverlapsAtTheDesignSize();
    void everyInteractiveElementHasANameForScreenReaders();
    void tabVisitsTheControlsInReadingOrder();

    // initialization
    void issuerListHoldsTheApplicationsNamesInOrder();
    void issuerListHoldsNoDesignTimeNames();
    void initializationFailureIsLoggedOnlyAndLeavesTheListEmpty();
    void moreIssuersThanASixteenBitCounterOverflowAndAreLoggedOnly();

    // Criteria and Populate
    void bindingShowsTheSubmittal();
    void populateReadsInOrderAndWritesThePurposeBeforeFillingTheBox();
    void populateWithOtherShowsTheCustomPurposeInTheBox();
    void bindingWritesNothingBackWhenTheWidgetsAlreadyAgree();
    void settingCriteriaToNoObjectDisconnectsTheEventsAndLeavesEveryWidget();
    void rebindingDropsTheOldSubmittalsEvents();
    void populateFailureIsLoggedOnlyAndThePanelStaysAsFarAsItGot();
    void populateWhoseLogFailsPassesTheFailureToTheHostThroughTheProperty();
    void clickWithoutASubmittalReportsObjectNotSet();

    // contents
    void tickingACheckBoxWritesItsFlagOnce();
    void greyCheckBoxWritesFalse();
    void changingAFlagInTheModelUpdatesTheCheckBoxOnceAndWritesBackOnce();
    void echoEndsAtTheComparisonWhenTheSubmittalRaisesOnEveryWrite();

    // purpose
    void choosingAPurposeWritesItsStandardTextAndHidesTheBox();
    void choosingOtherWritesSelectPurposeSevensTextFirstThenTheFirstKeyReplacesIt();
    void choosingOtherShowsRaisesAndFocusesTheFreeTextBox();
    void everyKeyReleasedInTheBoxWritesTheText();
    void customPurposeComesBackWhenOtherIsChosenAgain();
    void arrowKeysMoveThePurposeAndWriteIt();
    void purposeChangedInTheModelSelectsTheOptionAndWritesBackOnce();
    void purposeChangedToOtherInTheModelFillsTheBox();
    void purposeChangedToAnotherIndexLeavesTheBoxText();
    void purposeEventForAnOptionThatDoesNotExistIsReported();

    // issuer
    void typingAnIssuerWritesEveryChange();
    void choosingAnIssuerFromTheListWritesItOnce();
    void choosingAnIssuerWithTheArrowKeysWritesIt();
    void issuerChangedInTheModelSetsTheBoxAndWritesBackOnce();
    void issuerEventThatAgreesWithTheBoxChangesNothing();

    // date
    void dateIsWrittenOnlyWhenTheEditorIsLeft();
    void clearingTheDateWritesTheEmptyString();
    void emptySubmittalDateShowsAsNoDate();
    void dateChangedInTheModelIsShownWithoutAWriteBack();
    void invalidTypedDateNeverReachesTheSubmittal();
    void dayChosenInTheCalendarIsWrittenWhenTheEditorIsLeft();
    void calendarEscapeChangesNothingInTheSubmittal();
    void dateSteppedWithTheArrowKeysIsWrittenWhenTheEditorIsLeft();
    void validateFailureIsReportedUnderTheLiteralModuleName();

    // resize
    void resizeEndsTheThreeLinesFiveTwipsShortOfTheWidthAndMovesNothingElse();
    void narrowPanelResizesWithoutAFailure();

    // fault injection
    void everyFailingMemberInAHandlerIsReportedAndThePanelKeepsWorking();
    void failingReadsInPopulateAreLoggedOnly();
    void failureOfTheLogInAHandlerEndsAtTheLastResortHook();
    void destroyedPanelLetsGoOfTheSubmittal();
};

void tst_ctlGeneralInfo::cleanup()
{
    ZebObjects::Runtime::setApplicationServices(nullptr);
}

// --- registration and design

void tst_ctlGeneralInfo::isCreatedByItsIdentifier()
{
    ZebTest::Harness h;
    std::unique_ptr<UserControl> control(
        ControlRegistry::instance().create(QStringLiteral("ZebSubmittalControls.ctlGeneralInfo")));
    QVERIFY(qobject_cast<ctlGeneralInfo*>(control.get()));
    QCOMPARE(control->Name(), QStringLiteral("ctlGeneralInfo"));
    QVERIFY(ControlRegistry::instance().identifiers().contains(
        QStringLiteral("ZebSubmittalControls.ctlGeneralInfo")));
}

void tst_ctlGeneralInfo::childWidgetsCarryTheirNamesAndCaptions()
{
    Fixture f;
    QCOMPARE(f.check("chkCoverLetter")->text(), QStringLiteral("Cover Letter"));
    QCOMPARE(f.check("chkBOM")->text(), QStringLiteral("Bill of Materials"));
    QCOMPARE(f.check("chkLabels")->text(), QStringLiteral("Labels"));
    const QList<std::pair<const char*, const char*>> labels{
        {"lblContentsHeading", "Submittal Contents"},
        {"lblContentsInfo", "Choose which items you would like to include in your submittal."},
        {"lblSubmittalPurpose", "Submittal Purpose"},
        {"lblSubmittalDetails", "Submittal Details"},
        {"lblIssuedBy", "Issued By:"},
        {"lblIssueDate", "Submittal Date:"}};
    for (const auto& [name, caption] : labels) {
        QVERIFY2(f.label(name), name);
        QCOMPARE(f.label(name)->text(), QString::fromLatin1(caption));
    }
    QVERIFY(f.issuer()->isEditable());
    QCOMPARE(f.issuer()->toolTip(), kTip);
    QVERIFY(f.date());
    QVERIFY(f.date()->isNull());
    QVERIFY(f.other());
    for (const char* name : {"Line1", "Line2", "Line3"})
        QVERIFY2(f.line(name), name);
    const QList<std::pair<const char*, PictureImage>> pictures{{"Image1", PictureImage::Contents},
                                                               {"Image2", PictureImage::Purpose},
                                                               {"Image3", PictureImage::Details}};
    for (const auto& [name, image] : pictures) {
        auto* picture = f.ctl->findChild<Picture*>(QLatin1String(name));
        QVERIFY2(picture, name);
        QCOMPARE(picture->image(), image);
        QVERIFY(!picture->pixmap().isNull());
    }
    // Headings stand out from the texts below them.
    QVERIFY(f.label("lblContentsHeading")->font().bold());
    QVERIFY(!f.label("lblContentsInfo")->font().bold());
}

void tst_ctlGeneralInfo::informativeTextsKeepTheirDoubleBlanks()
{
    Fixture f;
    QCOMPARE(f.label("lblPurposeInfo")->text(),
             QStringLiteral("Select the purpose for your submittal.  The purpose will print at the "
                            "top of the Bill of Materials.  You may choose from the following, or "
                            "choose other to define your own."));
    QCOMPARE(f.label("lblDetailsInfo")->text(),
             QStringLiteral("Choose the person's name that will appear on documents in the "
                            "submittal.  You can also change the date that  will be used for the "
                            "submittal."));
    QVERIFY(f.label("lblDetailsInfo")->text().contains(QStringLiteral("date that  will")));
    QVERIFY(f.label("lblPurposeInfo")->text().contains(QStringLiteral("submittal.  The")));
}

void tst_ctlGeneralInfo::purposeOptionsAreAnIndexedGroupOfEightInCaptionOrder()
{
    Fixture f;
    QCOMPARE(f.group()->count(), 8);
    QCOMPARE(f.group()->indices(), (QList<int>{0, 1, 2, 3, 4, 5, 6, 7}));
    for (int i = 0; i < 8; ++i) {
        QCOMPARE(f.option(i)->text(), kPurposes.at(i));
        QCOMPARE(f.option(i)->objectName(), QStringLiteral("optSubmittalPurpose"));
        QCOMPARE(f.option(i)->property("Index").toInt(), i);
    }
    QCOMPARE(f.group()->selectedIndex(), -1);
}

void tst_ctlGeneralInfo::freeTextBoxStartsHidden()
{
    Fixture f;
    QVERIFY(f.other()->isHidden());
    QCOMPARE(f.other()->text(), QString());
}

void tst_ctlGeneralInfo::criteriaIsAPropertyByName()
{
    Fixture f(sample());
    QVERIFY(f.ctl->setProperty("Criteria", QVariant::fromValue(std::shared_ptr<Submittal>(f.sub))));
    QCOMPARE(f.ctl->Criteria().get(), f.sub.get());
    QCOMPARE(f.ctl->property("Criteria").value<std::shared_ptr<Submittal>>().get(), f.sub.get());
    QCOMPARE(f.issuer()->text(), QStringLiteral("Dana Whitfield"));
}

void tst_ctlGeneralInfo::everyCaptionFitsItsWidget()
{
    Fixture f;
    f.bind();
    f.option(7)->setValue(true);
    QStringList buttons{"chkCoverLetter", "chkBOM", "chkLabels"};
    QList<QAbstractButton*> all;
    for (const QString& n : buttons)
        all << f.check(n.toLatin1().constData());
    for (int i = 0; i < 8; ++i)
        all << f.option(i);
    for (QAbstractButton* b : all) {
        const QStyle* style = b->style();
        const bool radio = qobject_cast<QRadioButton*>(b) != nullptr;
        const int needed =
            style->pixelMetric(
                radio ? QStyle::PM_ExclusiveIndicatorWidth : QStyle::PM_IndicatorWidth, nullptr, b)
            + style->pixelMetric(radio ? QStyle::PM_RadioButtonLabelSpacing
                                       : QStyle::PM_CheckBoxLabelSpacing,
                                 nullptr, b)
            + b->fontMetrics().horizontalAdvance(b->text());
        QVERIFY2(
            needed <= b->width(),
            qPrintable(QStringLiteral("%1: %2 > %3").arg(b->text()).arg(needed).arg(b->width())));
        QVERIFY2(b->fontMetrics().height() <= b->height(), qPrintable(b->text()));
    }
    for (QLabel* l : f.ctl->findChildren<QLabel*>()) {
        if (qobject_cast<Picture*>(l))
            continue;
        const QFontMetrics fm = l->fontMetrics();
        if (l->wordWrap()) {
            const QRect needed = fm.boundingRect(QRect(0, 0, l->width(), 10000),
                                                 Qt::TextWordWrap | Qt::AlignLeft, l->text());
            QVERIFY2(needed.height() <= l->height(), qPrintable(l->objectName()));
        } else {
            QVERIFY2(fm.horizontalAdvance(l->text()) <= l->width(), qPrintable(l->objectName()));
            QVERIFY2(fm.height() <= l->height(), qPrintable(l->objectName()));
        }
    }
    // The longest issuer and a full date show whole.
    const QFontMetrics fm = f.issuer()->fontMetrics();
    for (const QString& name : kIssuers)
        QVERIFY(fm.horizontalAdvance(name) + 40 <= f.issuer()->width());
    f.date()->setIsoText(QStringLiteral("2026-12-28"));
    QVERIFY(f.dateText()->fontMetrics().horizontalAdvance(f.dateText()->text()) + 8
            <= f.dateText()->width());
}

void tst_ctlGeneralInfo::nothingOverlapsAtTheDesignSize()
{
    Fixture f;
    f.bind();
    f.option(7)->setValue(true);
    QList<QWidget*> placed;
    for (QWidget* w : f.ctl->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (w->isVisible() && !qobject_cast<LineShape*>(w))
            placed << w;
    }
    QVERIFY(placed.size() >= 25);
    for (int i = 0; i < placed.size(); ++i) {
        QVERIFY2(f.ctl->rect().contains(placed[i]->geometry()),
                 qPrintable(placed[i]->objectName()));
        for (int j = i + 1; j < placed.size(); ++j)
            QVERIFY2(!placed[i]->geometry().intersects(placed[j]->geometry()),
                     qPrintable(placed[i]->objectName() + QStringLiteral(" / ")
                                + placed[j]->objectName()));
    }
}

void tst_ctlGeneralInfo::everyInteractiveElementHasANameForScreenReaders()
{
    Fixture f(sample());
    f.bind();
    f.option(7)->setValue(true);
    QVERIFY(!f.ctl->accessibleName().isEmpty());
    QVERIFY(!f.ctl->accessibleDescription().isEmpty());
    for (QWidget* w : {static_cast<QWidget*>(f.other()), static_cast<QWidget*>(f.issuer()),
                       static_cast<QWidget*>(f.date())}) {
        QVERIFY2(!w->accessibleName().isEmpty(), qPrintable(w->objectName()));
        QVERIFY2(!w->accessibleDescription().isEmpty(), qPrintable(w->objectName()));
    }
    QStringList unnamed;
    int interactive = 0;
    std::function<void(QAccessibleInterface*)> walk = [&](QAccessibleInterface* node) {
        if (!node)
            return;
        const QAccessible::State state = node->state();
        const QAccessible::Role role = node->role();
        const bool acts = state.focusable || role == QAccessible::CheckBox
                          || role == QAccessible::RadioButton || role == QAccessible::ComboBox
                          || role == QAccessible::EditableText || role == QAccessible::Button;
        if (acts && !state.invisible) {
            ++interactive;
            if (node->text(QAccessible::Name).trimmed().isEmpty())
                unnamed << QStringLiteral("%1 (role %2)")
                               .arg(node->object() ? node->object()->objectName() : QString())
                               .arg(int(role));
        }
        for (int i = 0; i < node->childCount(); ++i)
            walk(node->child(i));
    };
    walk(QAccessible::queryAccessibleInterface(f.ctl.get()));
    QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(QStringLiteral(", "))));
    QVERIFY(interactive >= 15);
    // The calendar, once open, too.
    f.focusDate();
    QTest::keyClick(f.dateText(), Qt::Key_F4);
    QTRY_VERIFY(f.date()->isCalendarOpen());
    interactive = 0;
    walk(QAccessible::queryAccessibleInterface(f.date()->calendarPopup()));
    QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(QStringLiteral(", "))));
    QVERIFY(interactive >= 3);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QTRY_VERIFY(!f.date()->isCalendarOpen());
    // The whole tree too, the children's own parts (scroll bars, list headers) included.
    const QStringList unnamedInTree = ZebTest::unnamedAccessibleElements(f.ctl.get());
    QVERIFY2(unnamedInTree.isEmpty(), qPrintable(unnamedInTree.join(QStringLiteral("; "))));
}

void tst_ctlGeneralInfo::tabVisitsTheControlsInReadingOrder()
{
    Fixture f(sample());
    f.bind();
    f.check("chkCoverLetter")->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(f.check("chkCoverLetter")->hasFocus());
    QStringList visited;
    for (int i = 0; i < 7; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QWidget* w = QApplication::focusWidget();
        QString name = w->objectName();
        if (auto* o = qobject_cast<OptionButton*>(w))
            name += QStringLiteral("(%1)").arg(o->property("Index").toInt());
        if (w->parentWidget() != f.ctl.get())
            name = w->parentWidget()->objectName();
        visited << name;
    }
    // The date's text box, then its calendar button.
    QCOMPARE(visited, (QStringList{"chkBOM", "chkLabels", "optSubmittalPurpose(3)", "cmbIssuedBy",
                                   "pvdIssueDate", "pvdIssueDate", "chkCoverLetter"}));
}

// --- initialization

void tst_ctlGeneralInfo::issuerListHoldsTheApplicationsNamesInOrder()
{
    Fixture f;
    QStringList listed;
    for (int i = 0; i < f.issuer()->count(); ++i)
        listed << f.issuer()->itemText(i);
    QCOMPARE(listed, kIssuers);
    QCOMPARE(f.issuer()->text(), QString());
}

void tst_ctlGeneralInfo::issuerListHoldsNoDesignTimeNames()
{
    Fixture f(std::make_shared<StandaloneSubmittal>(), QStringList{});
    QCOMPARE(f.issuer()->count(), 0);
}

void tst_ctlGeneralInfo::initializationFailureIsLoggedOnlyAndLeavesTheListEmpty()
{
    ZebTest::Harness h;
    auto services = std::make_shared<StandaloneApplicationServices>();
    services->setIssuedByNames(kIssuers);
    services->faults().failNext(QStringLiteral("IssuedByNames"), kStoreDown);
    ZebObjects::Runtime::setApplicationServices(services);
    ctlGeneralInfo panel;
    QCOMPARE(panel.findChild<ComboBox*>(QStringLiteral("cmbIssuedBy"))->count(), 0);
    QCOMPARE(h.log().failureLines(),
             QStringList{logError(QStringLiteral("UserControl_Initialize()"), kStoreDown)});
    QVERIFY(h.boxes().shown().isEmpty());
    // The panel works all the same.
    auto sub = std::make_shared<StandaloneSubmittal>();
    panel.setCriteria(sub);
    panel.findChild<CheckBox*>(QStringLiteral("chkBOM"))->setValue(1);
    QVERIFY(sub->IncludeBOM());
}

void tst_ctlGeneralInfo::moreIssuersThanASixteenBitCounterOverflowAndAreLoggedOnly()
{
    QStringList many;
    for (int i = 0; i < 32768; ++i)
        many << QString::number(i);
    Fixture f(std::make_shared<StandaloneSubmittal>(), many, false);
    QCOMPARE(f.issuer()->count(), 0);
    // The counter reaches its largest value with the last name added, and cannot step on.
    {
        ZebTest::Harness h;
        auto services = std::make_shared<StandaloneApplicationServices>();
        services->setIssuedByNames(many.mid(0, 32767));
        ZebObjects::Runtime::setApplicationServices(services);
        ctlGeneralInfo panel;
        QCOMPARE(panel.findChild<ComboBox*>(QStringLiteral("cmbIssuedBy"))->count(), 32767);
        QCOMPARE(h.log().failureLines(),
                 QStringList{
                     logError(QStringLiteral("UserControl_Initialize()"),
                              error(6, QStringLiteral("ZebSubCtl"), QStringLiteral("Overflow")))});
    }
    ZebTest::Harness h;
    auto services = std::make_shared<StandaloneApplicationServices>();
    services->setIssuedByNames(many);
    ZebObjects::Runtime::setApplicationServices(services);
    ctlGeneralInfo panel;
    QCOMPARE(
        h.log().failureLines(),
        QStringList{logError(QStringLiteral("UserControl_Initialize()"),
                             error(6, QStringLiteral("ZebSubCtl"), QStringLiteral("Overflow")))});
}

// --- Criteria and Populate

void tst_ctlGeneralInfo::bindingShowsTheSubmittal()
{
    Fixture f(sample());
    f.bind();
    QCOMPARE(f.issuer()->text(), QStringLiteral("Dana Whitfield"));
    QCOMPARE(f.date()->isoText(), QStringLiteral("2026-11-21"));
    QCOMPARE(f.dateText()->text(), QStringLiteral("11/21/2026"));
    QCOMPARE(f.check("chkCoverLetter")->value(), 1);
    QCOMPARE(f.check("chkBOM")->value(), 0);
    QCOMPARE(f.check("chkLabels")->value(), 1);
    QCOMPARE(f.group()->selectedIndex(), 3);
    QVERIFY(f.other()->isHidden());
    QCOMPARE(f.ctl->Criteria().get(), f.sub.get());
    QVERIFY(f.h.log().lines().isEmpty());
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlGeneralInfo::populateReadsInOrderAndWritesThePurposeBeforeFillingTheBox()
{
    auto s = sample();
    s->SelectPurpose(7);
    s->setSubmittalPurpose(QStringLiteral("Night work"));
    Fixture f(s);
    f.record();
    f.ctl->setCriteria(f.sub);
    QCOMPARE(f.calls(), (QStringList{"IssuedBy", "IssuedBy=", "SubmittalDate", "IncludeCoverLetter",
                                     "IncludeCoverLetter=", "IncludeBOM", "IncludeLabels",
                                     "IncludeLabels=", "SubmittalPurposeIndex", "SelectPurpose",
                                     "SubmittalPurpose=", "SubmittalPurpose"}));
}

void tst_ctlGeneralInfo::populateWithOtherShowsTheCustomPurposeInTheBox()
{
    auto s = sample();
    s->SelectPurpose(7);
    s->setSubmittalPurpose(QStringLiteral("Night work"));
    Fixture f(s);
    f.bind();
    QCOMPARE(f.group()->selectedIndex(), 7);
    QVERIFY(f.other()->isVisible());
    QCOMPARE(f.other()->text(), QStringLiteral("Night work"));
    QCOMPARE(f.sub->SubmittalPurpose(), QStringLiteral("Night work"));
}

void tst_ctlGeneralInfo::bindingWritesNothingBackWhenTheWidgetsAlreadyAgree()
{
    Fixture f(sample());
    f.bind();
    // The same submittal again: every widget already shows it and the option is already
    // selected, so nothing is written.
    f.ctl->setCriteria(f.sub);
    QCOMPARE(f.calls(), (QStringList{"IssuedBy", "SubmittalDate", "IncludeCoverLetter",
                                     "IncludeBOM", "IncludeLabels", "SubmittalPurposeIndex"}));
}

void tst_ctlGeneralInfo::settingCriteriaToNoObjectDisconnectsTheEventsAndLeavesEveryWidget()
{
    auto s = sample();
    s->SelectPurpose(7);
    s->setSubmittalPurpose(QStringLiteral("Night work"));
    Fixture f(s);
    f.bind();
    f.ctl->setCriteria(nullptr);
    QCOMPARE(f.ctl->Criteria(), nullptr);
    QCOMPARE(f.calls(), QStringList{});
    f.sub->setIssuedBy(QStringLiteral("Priya Raman"));
    f.sub->setSubmittalDate(QString());
    f.sub->setIncludeCoverLetter(false);
    f.sub->setIncludeBOM(true);
    f.sub->setIncludeLabels(false);
    f.sub->setSubmittalPurpose(f.sub->SelectPurpose(2));
    QCOMPARE(f.issuer()->text(), QStringLiteral("Dana Whitfield"));
    QCOMPARE(f.date()->isoText(), QStringLiteral("2026-11-21"));
    QCOMPARE(f.check("chkCoverLetter")->value(), 1);
    QCOMPARE(f.check("chkBOM")->value(), 0);
    QCOMPARE(f.check("chkLabels")->value(), 1);
    QCOMPARE(f.group()->selectedIndex(), 7);
    QVERIFY(f.other()->isVisible());
    QCOMPARE(f.other()->text(), QStringLiteral("Night work"));
    // Only the host's own calls reached the submittal.
    QCOMPARE(f.count(QStringLiteral("IssuedBy")), 0);
    QCOMPARE(f.count(QStringLiteral("IncludeBOM")), 0);
    QVERIFY(f.h.log().lines().isEmpty());
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlGeneralInfo::rebindingDropsTheOldSubmittalsEvents()
{
    Fixture f(sample());
    f.bind();
    auto second = std::make_shared<StandaloneSubmittal>();
    f.ctl->setCriteria(second);
    QCOMPARE(f.check("chkCoverLetter")->value(), 0);
    f.sub->setIncludeBOM(true);
    QCOMPARE(f.check("chkBOM")->value(), 0);
    second->setIncludeBOM(true);
    QCOMPARE(f.check("chkBOM")->value(), 1);
    QVERIFY(f.sub->IncludeCoverLetter());  // showing the second wrote only to the second
    QVERIFY(!second->IncludeCoverLetter());
}

void tst_ctlGeneralInfo::populateFailureIsLoggedOnlyAndThePanelStaysAsFarAsItGot()
{
    Fixture f(sample());
    f.sub->faults().failNext(QStringLiteral("IncludeBOM"), kStoreDown);
    f.ctl->setCriteria(f.sub);
    QCOMPARE(f.ctl->Criteria().get(), f.sub.get());
    QCOMPARE(f.h.log().failureLines(),
             QStringList{logError(QStringLiteral("Populate()"), kStoreDown)});
    QVERIFY(f.h.boxes().shown().isEmpty());
    // As far as it got: issuer, date and cover letter shown; the rest not.
    QCOMPARE(f.issuer()->text(), QStringLiteral("Dana Whitfield"));
    QCOMPARE(f.date()->isoText(), QStringLiteral("2026-11-21"));
    QCOMPARE(f.check("chkCoverLetter")->value(), 1);
    QCOMPARE(f.check("chkLabels")->value(), 0);
    QCOMPARE(f.group()->selectedIndex(), -1);
    // Bound all the same: its events reach the panel.
    f.sub->setIncludeLabels(false);
    f.sub->setIncludeLabels(true);
    QCOMPARE(f.check("chkLabels")->value(), 1);
}

void tst_ctlGeneralInfo::populateWhoseLogFailsPassesTheFailureToTheHostThroughTheProperty()
{
    Fixture f(sample());
    f.sub->faults().failNext(QStringLiteral("SubmittalDate"), kStoreDown);
    f.h.log().faults().failNext(QStringLiteral("LogError"), kLogDown);
    try {
        f.ctl->setCriteria(f.sub);
        QFAIL("no failure reached the host");
    } catch (const Failure& e) {
        QCOMPARE(e.Number(), kLogDown.Number);
        QCOMPARE(e.Description(), kLogDown.Description);
    }
    QCOMPARE(f.h.log().failureLines(),
             QStringList{logError(QStringLiteral("Criteria() - Property Set"), kLogDown)});
    QVERIFY(f.h.boxes().shown().isEmpty());
    QCOMPARE(f.ctl->Criteria().get(), f.sub.get());
}

void tst_ctlGeneralInfo::clickWithoutASubmittalReportsObjectNotSet()
{
    Fixture f;
    f.click(f.check("chkLabels"));
    const ErrorInfo notSet =
        error(91, QStringLiteral("ZebSubCtl"),
              QStringLiteral("Object variable or With block variable not set"));
    QCOMPARE(f.h.log().failureLines(),
             QStringList{logError(QStringLiteral("chkLabels_Click()"), notSet)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(notSet)});
}

// --- contents

void tst_ctlGeneralInfo::tickingACheckBoxWritesItsFlagOnce()
{
    const QList<std::pair<const char*, const char*>> boxes{{"chkCoverLetter", "IncludeCoverLetter"},
                                                           {"chkBOM", "IncludeBOM"},
                                                           {"chkLabels", "IncludeLabels"}};
    for (const auto& [name, member] : boxes) {
        Fixture f;
        f.bind();
        const QString write = QLatin1String(member) + QLatin1Char('=');
        const QString read = QLatin1String(member);
        // The write, then the submittal's event finds box and flag equal.
        f.click(f.check(name));
        QCOMPARE(f.check(name)->value(), 1);
        QCOMPARE(f.calls(), (QStringList{write, read}));
        f.click(f.check(name));
        QCOMPARE(f.check(name)->value(), 0);
        QCOMPARE(f.calls(), (QStringList{write, read, write, read}));
        // Space on the focused box too.
        QTest::keyClick(f.check(name), Qt::Key_Space);
        QCOMPARE(f.count(write), 3);
        const std::map<QString, bool> flags{{"IncludeCoverLetter", f.sub->IncludeCoverLetter()},
                                            {"IncludeBOM", f.sub->IncludeBOM()},
                                            {"IncludeLabels", f.sub->IncludeLabels()}};
        for (const auto& [flag, value] : flags)
            QCOMPARE(value, flag == QLatin1String(member));
    }
}

void tst_ctlGeneralInfo::greyCheckBoxWritesFalse()
{
    Fixture f(sample());
    f.bind();
    f.check("chkCoverLetter")->setValue(2);
    QCOMPARE(f.calls(), (QStringList{"IncludeCoverLetter=", "IncludeCoverLetter"}));
    QVERIFY(!f.sub->IncludeCoverLetter());
}

void tst_ctlGeneralInfo::changingAFlagInTheModelUpdatesTheCheckBoxOnceAndWritesBackOnce()
{
    const QList<std::pair<const char*, void (StandaloneSubmittal::*)(bool)>> flags{
        {"chkCoverLetter", &StandaloneSubmittal::setIncludeCoverLetter},
        {"chkBOM", &StandaloneSubmittal::setIncludeBOM},
        {"chkLabels", &StandaloneSubmittal::setIncludeLabels}};
    const QStringList members{"IncludeCoverLetter", "IncludeBOM", "IncludeLabels"};
    for (int i = 0; i < 3; ++i) {
        Fixture f;
        f.bind();
        CheckBox* box = f.check(flags[i].first);
        QSignalSpy updates(box, &CheckBox::valueChanged);
        (f.sub.get()->*flags[i].second)(true);  // the host
        QCOMPARE(box->value(), 1);
        QCOMPARE(updates.count(), 1);
        const QString m = members[i];
        // The host's write, the comparison, the update, and the one write-back.
        QCOMPARE(f.calls(), (QStringList{m + "=", m, m, m + "="}));
        (f.sub.get()->*flags[i].second)(false);
        QCOMPARE(box->value(), 0);
        QCOMPARE(updates.count(), 2);
        QCOMPARE(f.count(m + "="), 4);
        QVERIFY(f.h.boxes().shown().isEmpty());
    }
}

void tst_ctlGeneralInfo::echoEndsAtTheComparisonWhenTheSubmittalRaisesOnEveryWrite()
{
    auto echoing = std::make_shared<EchoingSubmittal>();
    Fixture f(echoing);
    f.bind();
    echoing->writes = 0;
    QSignalSpy events(echoing.get(), &Submittal::BOMChanged);
    QSignalSpy updates(f.check("chkBOM"), &CheckBox::valueChanged);
    echoing->setIncludeBOM(true);  // the host
    QCOMPARE(f.check("chkBOM")->value(), 1);
    QCOMPARE(updates.count(), 1);
    QCOMPARE(echoing->writes, 2);  // the host's and the single write-back
    QCOMPARE(events.count(), 2);  // the second finds box and flag equal
}

// --- purpose

void tst_ctlGeneralInfo::choosingAPurposeWritesItsStandardTextAndHidesTheBox()
{
    Fixture f;
    f.bind();
    f.click(f.option(7));
    QVERIFY(f.other()->isVisible());
    f.record();
    f.click(f.option(3));
    QCOMPARE(f.group()->selectedIndex(), 3);
    QCOMPARE(f.sub->SubmittalPurposeIndex(), 3);
    QCOMPARE(f.sub->SubmittalPurpose(), QStringLiteral("Request For Approval As Noted"));
    QCOMPARE(f.count(QStringLiteral("SelectPurpose")), 1);
    QCOMPARE(f.count(QStringLiteral("SubmittalPurpose=")), 1);
    QVERIFY(f.other()->isHidden());
}

void tst_ctlGeneralInfo::choosingOtherWritesSelectPurposeSevensTextFirstThenTheFirstKeyReplacesIt()
{
    auto trail = std::make_shared<PurposeTrailSubmittal>();
    Fixture f(trail);
    f.bind();
    trail->trail.clear();
    f.click(f.option(7));
    QCOMPARE(trail->trail, (QStringList{"SelectPurpose(7)", "SubmittalPurpose=Other"}));
    QCOMPARE(f.other()->text(), QStringLiteral("Other"));
    QCOMPARE(trail->SubmittalPurpose(), QStringLiteral("Other"));
    f.other()->selectAll();
    QTest::keyClicks(f.other(), QStringLiteral("Site"));
    QCOMPARE(trail->trail,
             (QStringList{"SelectPurpose(7)", "SubmittalPurpose=Other", "SubmittalPurpose=S",
                          "SubmittalPurpose=Si", "SubmittalPurpose=Sit", "SubmittalPurpose=Site"}));
    QCOMPARE(trail->SubmittalPurpose(), QStringLiteral("Site"));
}

void tst_ctlGeneralInfo::choosingOtherShowsRaisesAndFocusesTheFreeTextBox()
{
    Fixture f;
    f.bind();
    // Something placed over the box stays behind it once "Other" is chosen.
    auto* cover = new QWidget(f.ctl.get());
    cover->setGeometry(f.other()->geometry());
    cover->show();
    f.click(f.option(7));
    QVERIFY(f.other()->isVisible());
    QVERIFY(f.other()->hasFocus());
    QCOMPARE(f.ctl->childAt(f.other()->geometry().center()), f.other());
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlGeneralInfo::everyKeyReleasedInTheBoxWritesTheText()
{
    Fixture f;
    f.bind();
    f.click(f.option(7));
    f.record();
    QTest::keyClicks(f.other(), QStringLiteral("Bid"));
    QTest::keyClick(f.other(), Qt::Key_Left);
    QCOMPARE(f.count(QStringLiteral("SubmittalPurpose=")), 4);
    QCOMPARE(f.sub->SubmittalPurpose(), QStringLiteral("Bid"));
    QCOMPARE(f.other()->text(), QStringLiteral("Bid"));
}

void tst_ctlGeneralInfo::customPurposeComesBackWhenOtherIsChosenAgain()
{
    Fixture f;
    f.bind();
    f.click(f.option(7));
    QTest::keyClicks(f.other(), QStringLiteral("Night work"));
    f.click(f.option(1));
    QCOMPARE(f.sub->SubmittalPurpose(), QStringLiteral("Request For Approval"));
    f.click(f.option(7));
    QCOMPARE(f.sub->SubmittalPurpose(), QStringLiteral("Night work"));
    QCOMPARE(f.other()->text(), QStringLiteral("Night work"));
}

void tst_ctlGeneralInfo::arrowKeysMoveThePurposeAndWriteIt()
{
    Fixture f;
    f.bind();
    QCOMPARE(f.group()->selectedIndex(), 0);
    f.option(0)->setFocus(Qt::TabFocusReason);
    f.record();
    QTest::keyClick(f.option(0), Qt::Key_Down);
    QCOMPARE(f.group()->selectedIndex(), 1);
    QCOMPARE(f.sub->SubmittalPurpose(), QStringLiteral("Request For Approval"));
    QTest::keyClick(f.option(1), Qt::Key_Up);
    QTest::keyClick(f.option(0), Qt::Key_Up);
    QCOMPARE(f.group()->selectedIndex(), 7);
    QVERIFY(f.other()->isVisible());
    QCOMPARE(f.count(QStringLiteral("SelectPurpose")), 3);
}

void tst_ctlGeneralInfo::purposeChangedInTheModelSelectsTheOptionAndWritesBackOnce()
{
    Fixture f;
    f.bind();
    f.sub->SelectPurpose(5);  // the host
    QCOMPARE(f.group()->selectedIndex(), 5);
    QCOMPARE(f.calls(), (QStringList{"SelectPurpose", "SelectPurpose", "SubmittalPurpose="}));
    QCOMPARE(f.sub->SubmittalPurpose(), QStringLiteral("Corrections"));
    QVERIFY(f.other()->isHidden());
}

void tst_ctlGeneralInfo::purposeChangedToOtherInTheModelFillsTheBox()
{
    Fixture f;
    f.bind();
    f.sub->SelectPurpose(7);
    f.sub->setSubmittalPurpose(QStringLiteral("Night work"));
    QCOMPARE(f.group()->selectedIndex(), 7);
    QVERIFY(f.other()->isVisible());
    QCOMPARE(f.other()->text(), QStringLiteral("Night work"));
    QCOMPARE(f.sub->SubmittalPurpose(), QStringLiteral("Night work"));
}

void tst_ctlGeneralInfo::purposeChangedToAnotherIndexLeavesTheBoxText()
{
    Fixture f;
    f.bind();
    f.click(f.option(7));
    QTest::keyClicks(f.other(), QStringLiteral("Night work"));
    f.sub->setSubmittalPurpose(f.sub->SelectPurpose(4));
    QCOMPARE(f.group()->selectedIndex(), 4);
    QVERIFY(f.other()->isHidden());
    QCOMPARE(f.other()->text(), QStringLiteral("Night work"));
}

void tst_ctlGeneralInfo::purposeEventForAnOptionThatDoesNotExistIsReported()
{
    Fixture f;
    f.bind();
    emit f.sub->SubmittalPurposeChanged(8);
    const ErrorInfo missing = error(340, QStringLiteral("ZebSubCtl"),
                                    QStringLiteral("Control array element '8' doesn't exist"));
    QCOMPARE(f.h.log().failureLines(),
             QStringList{logError(QStringLiteral("mCriteria_SubmittalPurposeChanged()"), missing)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(missing)});
}

// --- issuer

void tst_ctlGeneralInfo::typingAnIssuerWritesEveryChange()
{
    Fixture f;
    f.bind();
    f.issuer()->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(f.issuer(), QStringLiteral("Lee"));
    QCOMPARE(f.count(QStringLiteral("IssuedBy=")), 3);
    QCOMPARE(f.sub->IssuedBy(), QStringLiteral("Lee"));
}

void tst_ctlGeneralInfo::choosingAnIssuerFromTheListWritesItOnce()
{
    Fixture f;
    f.bind();
    f.issuer()->showPopup();
    QAbstractItemView* view = f.issuer()->view();
    QTRY_VERIFY(view->isVisible());
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                      view->visualRect(view->model()->index(2, 0)).center());
    QTRY_VERIFY(!view->isVisible());
    QCOMPARE(f.issuer()->text(), QStringLiteral("Priya Raman"));
    // The click's write, then the event's comparison finds the box in step.
    QCOMPARE(f.calls(), (QStringList{"IssuedBy=", "IssuedBy"}));
    QCOMPARE(f.sub->IssuedBy(), QStringLiteral("Priya Raman"));
}

void tst_ctlGeneralInfo::choosingAnIssuerWithTheArrowKeysWritesIt()
{
    Fixture f;
    f.bind();
    f.issuer()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(f.issuer(), Qt::Key_Down);
    QCOMPARE(f.sub->IssuedBy(), QStringLiteral("Dana Whitfield"));
    QTest::keyClick(f.issuer(), Qt::Key_Down);
    QCOMPARE(f.sub->IssuedBy(), QStringLiteral("Marcus Oyelaran"));
    QCOMPARE(f.count(QStringLiteral("IssuedBy=")), 2);
}

void tst_ctlGeneralInfo::issuerChangedInTheModelSetsTheBoxAndWritesBackOnce()
{
    Fixture f(sample());
    f.bind();
    QSignalSpy changes(f.issuer(), &ComboBox::changed);
    f.sub->setIssuedBy(QStringLiteral("Someone New"));  // the host
    QCOMPARE(f.issuer()->text(), QStringLiteral("Someone New"));
    QCOMPARE(changes.count(), 1);
    QCOMPARE(f.calls(), (QStringList{"IssuedBy=", "IssuedBy", "IssuedBy", "IssuedBy="}));
}

void tst_ctlGeneralInfo::issuerEventThatAgreesWithTheBoxChangesNothing()
{
    auto echoing = std::make_shared<EchoingSubmittal>();
    echoing->setIssuedBy(QStringLiteral("Dana Whitfield"));
    Fixture f(echoing);
    f.bind();
    echoing->writes = 0;
    QSignalSpy changes(f.issuer(), &ComboBox::changed);
    echoing->setIssuedBy(QStringLiteral("Dana Whitfield"));
    QCOMPARE(changes.count(), 0);
    QCOMPARE(echoing->writes, 1);
    QCOMPARE(f.issuer()->text(), QStringLiteral("Dana Whitfield"));
}

// --- date

void tst_ctlGeneralInfo::dateIsWrittenOnlyWhenTheEditorIsLeft()
{
    Fixture f;
    f.bind();
    f.focusDate();
    QTest::keyClicks(f.dateText(), QStringLiteral("12/24/2026"));
    QTest::keyClick(f.dateText(), Qt::Key_Return);
    QCOMPARE(f.date()->isoText(), QStringLiteral("2026-12-24"));
    QCOMPARE(f.calls(), QStringList{});
    f.leaveDate();
    // The write, then the event shows the date again without comparing.
    QCOMPARE(f.calls(), (QStringList{"SubmittalDate=", "SubmittalDate"}));
    QCOMPARE(f.sub->SubmittalDate(), QStringLiteral("2026-12-24"));
}

void tst_ctlGeneralInfo::clearingTheDateWritesTheEmptyString()
{
    Fixture f(sample());
    f.bind();
    f.focusDate();
    f.dateText()->selectAll();
    QTest::keyClick(f.dateText(), Qt::Key_Delete);
    QVERIFY(f.date()->isNull());
    QCOMPARE(f.calls(), QStringList{});
    f.leaveDate();
    QCOMPARE(f.calls(), (QStringList{"SubmittalDate=", "SubmittalDate"}));
    QCOMPARE(f.sub->SubmittalDate(), QString());
    QVERIFY(f.date()->isNull());
    QCOMPARE(f.dateText()->text(), QString());
}

void tst_ctlGeneralInfo::emptySubmittalDateShowsAsNoDate()
{
    Fixture f(sample());
    f.bind();
    f.sub->setSubmittalDate(QString());
    QVERIFY(f.date()->isNull());
    QCOMPARE(f.dateText()->text(), QString());
    auto blank = std::make_shared<StandaloneSubmittal>();
    Fixture g(blank);
    g.date()->setIsoText(QStringLiteral("2020-01-01"));
    g.bind();
    QVERIFY(g.date()->isNull());
}

void tst_ctlGeneralInfo::dateChangedInTheModelIsShownWithoutAWriteBack()
{
    Fixture f(sample());
    f.bind();
    f.sub->setSubmittalDate(QStringLiteral("2027-01-05"));
    QCOMPARE(f.date()->isoText(), QStringLiteral("2027-01-05"));
    QCOMPARE(f.dateText()->text(), QStringLiteral("01/05/2027"));
    // The host's write and the one read that shows it; the panel writes nothing.
    QCOMPARE(f.calls(), (QStringList{"SubmittalDate=", "SubmittalDate"}));
}

void tst_ctlGeneralInfo::invalidTypedDateNeverReachesTheSubmittal()
{
    Fixture f(sample());
    f.bind();
    QSignalSpy events(f.sub.get(), &Submittal::SubmittalDateChanged);
    f.focusDate();
    f.dateText()->selectAll();
    QTest::keyClicks(f.dateText(), QStringLiteral("02/30/2026"));
    f.leaveDate();
    QCOMPARE(f.sub->SubmittalDate(), QStringLiteral("2026-11-21"));
    QCOMPARE(f.dateText()->text(), QStringLiteral("11/21/2026"));
    QCOMPARE(events.count(), 0);
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlGeneralInfo::dayChosenInTheCalendarIsWrittenWhenTheEditorIsLeft()
{
    Fixture f(sample());
    f.bind();
    f.focusDate();
    QTest::keyClick(f.dateText(), Qt::Key_Down, Qt::AltModifier);
    QTRY_VERIFY(f.date()->isCalendarOpen());
    auto* table =
        f.date()->calendar()->findChild<QTableView*>(QStringLiteral("qt_calendar_calendarview"));
    QTest::keyClick(table, Qt::Key_Right);
    QTest::keyClick(table, Qt::Key_Return);
    QTRY_VERIFY(!f.date()->isCalendarOpen());
    QCOMPARE(f.date()->isoText(), QStringLiteral("2026-11-22"));
    QCOMPARE(f.count(QStringLiteral("SubmittalDate=")), 0);
    QTRY_VERIFY(f.dateText()->hasFocus());
    f.leaveDate();
    QCOMPARE(f.sub->SubmittalDate(), QStringLiteral("2026-11-22"));
    QCOMPARE(f.count(QStringLiteral("SubmittalDate=")), 1);
}

void tst_ctlGeneralInfo::calendarEscapeChangesNothingInTheSubmittal()
{
    Fixture f(sample());
    f.bind();
    f.focusDate();
    QTest::keyClick(f.dateText(), Qt::Key_F4);
    QTRY_VERIFY(f.date()->isCalendarOpen());
    auto* table =
        f.date()->calendar()->findChild<QTableView*>(QStringLiteral("qt_calendar_calendarview"));
    QTest::keyClick(table, Qt::Key_Down);
    QTest::keyClick(table, Qt::Key_Escape);
    QTRY_VERIFY(!f.date()->isCalendarOpen());
    QCOMPARE(f.date()->isoText(), QStringLiteral("2026-11-21"));
    QCOMPARE(f.calls(), QStringList{});
}

void tst_ctlGeneralInfo::dateSteppedWithTheArrowKeysIsWrittenWhenTheEditorIsLeft()
{
    Fixture f(sample());
    f.bind();
    f.focusDate();
    f.dateText()->setCursorPosition(4);
    QTest::keyClick(f.dateText(), Qt::Key_Up);
    QTest::keyClick(f.dateText(), Qt::Key_Up);
    QCOMPARE(f.count(QStringLiteral("SubmittalDate=")), 0);
    f.leaveDate();
    QCOMPARE(f.sub->SubmittalDate(), QStringLiteral("2026-11-23"));
    QCOMPARE(f.count(QStringLiteral("SubmittalDate=")), 1);
}

void tst_ctlGeneralInfo::validateFailureIsReportedUnderTheLiteralModuleName()
{
    Fixture f(sample());
    f.bind();
    f.sub->faults().failNext(QStringLiteral("SubmittalDate="), kStoreDown);
    f.focusDate();
    f.dateText()->selectAll();
    QTest::keyClick(f.dateText(), Qt::Key_Delete);
    f.leaveDate();
    QCOMPARE(f.h.log().failureLines(),
             QStringList{logError(QStringLiteral("pvdIssueDate_Validate"), kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QCOMPARE(f.sub->SubmittalDate(), QStringLiteral("2026-11-21"));
    // The editor keeps what the user chose; the next leave writes it.
    QVERIFY(f.date()->isNull());
    f.focusDate();
    f.leaveDate();
    QCOMPARE(f.sub->SubmittalDate(), QString());
}

// --- resize

void tst_ctlGeneralInfo::resizeEndsTheThreeLinesFiveTwipsShortOfTheWidthAndMovesNothingElse()
{
    Fixture f;
    QHash<QWidget*, QRect> before;
    for (QWidget* w : f.ctl->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        if (!qobject_cast<LineShape*>(w))
            before.insert(w, w->geometry());
    const int x1 = f.line("Line1")->X1();
    for (int width : {700, 333, 520}) {
        f.ctl->resize(width, 420);
        for (const char* name : {"Line1", "Line2", "Line3"}) {
            QCOMPARE(f.line(name)->X2(), twipsToPixels(pixelsToTwips(width) - 5));
            QCOMPARE(f.line(name)->X1(), x1);
            QCOMPARE(f.line(name)->Y2(), f.line(name)->Y1());
        }
        for (auto it = before.cbegin(); it != before.cend(); ++it)
            QCOMPARE(it.key()->geometry(), it.value());
    }
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlGeneralInfo::narrowPanelResizesWithoutAFailure()
{
    Fixture f;
    f.ctl->resize(3, 100);
    QCOMPARE(f.line("Line2")->X2(), twipsToPixels(pixelsToTwips(3) - 5));
    f.ctl->resize(0, 0);
    QCOMPARE(f.line("Line3")->X2(), 0);
    QVERIFY(f.h.log().lines().isEmpty());
}

// --- fault injection

void tst_ctlGeneralInfo::everyFailingMemberInAHandlerIsReportedAndThePanelKeepsWorking()
{
    struct Case {
        const char* member;
        const char* label;
        std::function<void(Fixture&)> act;
        std::function<bool(Fixture&)> worksAfterwards;
    };
    const QList<Case> cases{
        {"IncludeCoverLetter=", "chkCoverLetter_Click()",
         [](Fixture& f) { f.click(f.check("chkCoverLetter")); },
         [](Fixture& f) {
             f.click(f.check("chkCoverLetter"));
             return f.sub->IncludeCoverLetter() && f.check("chkCoverLetter")->value() == 1;
         }},
        {"IncludeBOM=", "chkBOM_Click()", [](Fixture& f) { f.click(f.check("chkBOM")); },
         [](Fixture& f) {
             f.click(f.check("chkBOM"));
             f.click(f.check("chkBOM"));
             return f.sub->IncludeBOM();
         }},
        {"IncludeLabels=", "chkLabels_Click()", [](Fixture& f) { f.click(f.check("chkLabels")); },
         [](Fixture& f) {
             f.click(f.check("chkLabels"));
             return f.sub->IncludeLabels() && f.check("chkLabels")->value() == 1;
         }},
        {"IncludeCoverLetter", "mCriteria_CoverLetterChanged()",
         [](Fixture& f) { f.sub->setIncludeCoverLetter(false); },
         [](Fixture& f) {
             f.sub->setIncludeCoverLetter(true);
             return f.check("chkCoverLetter")->value() == 1;
         }},
        {"IncludeBOM", "mCriteria_BOMChanged()", [](Fixture& f) { f.sub->setIncludeBOM(true); },
         [](Fixture& f) {
             f.sub->setIncludeBOM(false);
             f.sub->setIncludeBOM(true);
             return f.check("chkBOM")->value() == 1;
         }},
        {"IncludeLabels", "mCriteria_LabelsChanged()",
         [](Fixture& f) { f.sub->setIncludeLabels(false); },
         [](Fixture& f) {
             f.sub->setIncludeLabels(true);
             f.sub->setIncludeLabels(false);
             return f.check("chkLabels")->value() == 0;
         }},
        {"SubmittalDate", "mCriteria_SubmittalDateChanged()",
         [](Fixture& f) { f.sub->setSubmittalDate(QStringLiteral("2027-02-02")); },
         [](Fixture& f) {
             f.sub->setSubmittalDate(QStringLiteral("2027-03-03"));
             return f.date()->isoText() == QStringLiteral("2027-03-03");
         }},
        {"IssuedBy=", "cmbIssuedBy_Change()",
         [](Fixture& f) {
             f.issuer()->setFocus();
             QTest::keyClicks(f.issuer(), QStringLiteral("x"));
         },
         [](Fixture& f) {
             QTest::keyClicks(f.issuer(), QStringLiteral("y"));
             return f.sub->IssuedBy() == QStringLiteral("Dana Whitfieldxy");
         }},
        {"IssuedBy=", "cmbIssuedBy_Click()",
         [](Fixture& f) {
             f.issuer()->setFocus();
             QTest::keyClick(f.issuer(), Qt::Key_Down);
         },
         [](Fixture& f) {
             QTest::keyClick(f.issuer(), Qt::Key_Down);
             return f.sub->IssuedBy() == QStringLiteral("Marcus Oyelaran");
         }},
        {"IssuedBy", "mCriteria_IssuedByChanged()",
         [](Fixture& f) { f.sub->setIssuedBy(QStringLiteral("Priya Raman")); },
         [](Fixture& f) {
             f.sub->setIssuedBy(QStringLiteral("Marcus Oyelaran"));
             return f.issuer()->text() == QStringLiteral("Marcus Oyelaran");
         }},
        {"SelectPurpose", "optSubmittalPurpose_Click()", [](Fixture& f) { f.click(f.option(5)); },
         [](Fixture& f) {
             f.click(f.option(6));
             return f.sub->SubmittalPurpose() == QStringLiteral("Record Only");
         }},
        {"SubmittalPurpose=", "optSubmittalPurpose_Click()",
         [](Fixture& f) { f.click(f.option(6)); },
         [](Fixture& f) {
             f.click(f.option(2));
             return f.sub->SubmittalPurpose()
                    == QStringLiteral("Request For Approval As Submitted");
         }},
        {"SubmittalPurpose", "mCriteria_SubmittalPurposeChanged()",
         [](Fixture& f) { f.sub->SelectPurpose(7); },
         [](Fixture& f) {
             f.sub->setSubmittalPurpose(QStringLiteral("Night work"));
             return f.other()->text() == QStringLiteral("Night work");
         }},
        {"SubmittalPurpose=", "txtPurposeOther_KeyUp()",
         [](Fixture& f) {
             f.click(f.option(7));
             f.sub->faults().failNext(QStringLiteral("SubmittalPurpose="), kStoreDown);
             QTest::keyClicks(f.other(), QStringLiteral("N"));
         },
         [](Fixture& f) {
             QTest::keyClicks(f.other(), QStringLiteral("o"));
             return f.sub->SubmittalPurpose() == QStringLiteral("No");
         }},
        {"SubmittalDate=", "pvdIssueDate_Validate",
         [](Fixture& f) {
             f.focusDate();
             f.leaveDate();
         },
         [](Fixture& f) {
             f.focusDate();
             f.dateText()->selectAll();
             QTest::keyClick(f.dateText(), Qt::Key_Delete);
             f.leaveDate();
             return f.sub->SubmittalDate().isEmpty();
         }},
    };
    for (const Case& c : cases) {
        const QString member = QLatin1String(c.member);
        Fixture f(sample());
        f.bind();
        if (QLatin1String(c.label) != QLatin1String("txtPurposeOther_KeyUp()"))
            f.sub->faults().failNext(member, kStoreDown);
        c.act(f);
        QVERIFY2(f.h.log().failureLines()
                     == QStringList{logError(QLatin1String(c.label), kStoreDown)},
                 qPrintable(member + QStringLiteral(": ")
                            + f.h.log().failureLines().join(QStringLiteral(" / "))));
        QVERIFY2(f.h.boxes().shown() == QList<Shown>{plainBox(kStoreDown)}, c.label);
        QVERIFY2(f.h.lastResort().isEmpty(), c.label);
        QVERIFY2(c.worksAfterwards(f), c.label);
        QVERIFY2(f.h.boxes().shown().size() == 1, c.label);
    }
}

void tst_ctlGeneralInfo::failingReadsInPopulateAreLoggedOnly()
{
    for (const char* member :
         {"IssuedBy", "SubmittalDate", "IncludeCoverLetter", "IncludeBOM", "IncludeLabels",
          "SubmittalPurposeIndex", "SelectPurpose", "SubmittalPurpose="}) {
        Fixture f(sample());
        f.sub->faults().failNext(QLatin1String(member), kStoreDown);
        f.ctl->setCriteria(f.sub);
        // The option's own click reports its failure; every other read ends Populate quietly.
        const bool inClick = QLatin1String(member) == QLatin1String("SelectPurpose")
                             || QLatin1String(member) == QLatin1String("SubmittalPurpose=");
        const QString label =
            inClick ? QStringLiteral("optSubmittalPurpose_Click()") : QStringLiteral("Populate()");
        QCOMPARE(f.h.log().failureLines(), QStringList{logError(label, kStoreDown)});
        QCOMPARE(f.h.boxes().shown().size(), inClick ? 1 : 0);
        QCOMPARE(f.ctl->Criteria().get(), f.sub.get());
        f.ctl->setCriteria(f.sub);
        QCOMPARE(f.group()->selectedIndex(), 3);
        QCOMPARE(f.check("chkLabels")->value(), 1);
    }
    // A custom purpose that is already the submittal's text: the option's click raises no event,
    // so Populate's own read of the purpose is the first.
    Fixture f(sample());
    f.sub->SelectPurpose(7);
    f.sub->setSubmittalPurpose(QStringLiteral("Night work"));
    f.sub->faults().failNext(QStringLiteral("SubmittalPurpose"), kStoreDown);
    f.ctl->setCriteria(f.sub);
    QCOMPARE(f.h.log().failureLines(),
             QStringList{logError(QStringLiteral("Populate()"), kStoreDown)});
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlGeneralInfo::failureOfTheLogInAHandlerEndsAtTheLastResortHook()
{
    Fixture f(sample());
    f.bind();
    f.sub->faults().failNext(QStringLiteral("IncludeBOM="), kStoreDown);
    f.h.log().faults().failNext(QStringLiteral("LogError"), kLogDown);
    f.click(f.check("chkBOM"));
    QCOMPARE(f.h.lastResort().size(), 1);
    QCOMPARE(f.h.lastResort().first().Number, kLogDown.Number);
    QVERIFY(f.h.boxes().shown().isEmpty());
    f.click(f.check("chkBOM"));
    QVERIFY(!f.sub->IncludeBOM());
    f.click(f.check("chkBOM"));
    QVERIFY(f.sub->IncludeBOM());
}

void tst_ctlGeneralInfo::destroyedPanelLetsGoOfTheSubmittal()
{
    Fixture f(sample());
    f.bind();
    QCOMPARE(f.sub.use_count(), 2);
    f.ctl.reset();
    QCOMPARE(f.sub.use_count(), 1);
    f.sub->setIncludeBOM(true);  // no panel left to reach
}

void tst_ctlGeneralInfo::fieldsAreNamedByTheirLabelsNotByTheirValues()
{
    Fixture f(sample());
    f.bind();
    QVERIFY(!f.issuer()->currentText().isEmpty());
    QAccessibleInterface* issuer = QAccessible::queryAccessibleInterface(f.issuer());
    QCOMPARE(issuer->role(), QAccessible::ComboBox);
    QCOMPARE(issuer->text(QAccessible::Name), QStringLiteral("Issued By"));
    QCOMPARE(issuer->text(QAccessible::Value), f.issuer()->currentText());
    QVERIFY(issuer->state().editable);
    QCOMPARE(issuer->childCount(), 2);
    QCOMPARE(issuer->child(1)->object(), static_cast<QObject*>(f.issuer()->lineEdit()));
    // Each field is labelled by the caption beside it (Qt's Label: labelled-by).
    const std::pair<QWidget*, const char*> fields[] = {{f.issuer(), "Issued By:"},
                                                       {f.date(), "Submittal Date:"}};
    for (const auto& [field, caption] : fields) {
        const auto labels =
            QAccessible::queryAccessibleInterface(field)->relations(QAccessible::Label);
        QCOMPARE(labels.size(), 1);
        QCOMPARE(labels.front().first->text(QAccessible::Name), QLatin1String(caption));
    }
    // The reader's press drops the list down.
    issuer->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    QTRY_VERIFY(f.issuer()->view()->isVisible());
    QVERIFY(issuer->state().expanded);
    f.issuer()->hidePopup();
}

void tst_ctlGeneralInfo::theDatesTextBoxIsLabelledByTheSubmittalDateCaption()
{
    Fixture f(sample());
    f.bind();
    QAccessibleInterface* box = QAccessible::queryAccessibleInterface(f.date()->lineEdit());
    const auto labels = box->relations(QAccessible::Label);
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.front().second, QAccessible::Label);
    QCOMPARE(labels.front().first->text(QAccessible::Name), QStringLiteral("Submittal Date:"));
    // Still the text box it was: its role, and the date's text with caret and editing.
    QCOMPARE(box->role(), QAccessible::EditableText);
    QVERIFY(box->state().editable);
    QAccessibleTextInterface* text = box->textInterface();
    QVERIFY(text);
    QCOMPARE(text->text(0, text->characterCount()), f.date()->lineEdit()->text());
    QVERIFY(box->editableTextInterface());
}

void tst_ctlGeneralInfo::theOtherPurposeBoxIsLabelledByTheOtherOption()
{
    Fixture f(sample());
    f.bind();
    QAccessibleInterface* box = QAccessible::queryAccessibleInterface(f.other());
    const auto labels = box->relations(QAccessible::Label);
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.front().first->text(QAccessible::Name), QStringLiteral("Other"));
    QCOMPARE(labels.front().first->role(), QAccessible::RadioButton);
    QCOMPARE(box->text(QAccessible::Name), QStringLiteral("Other purpose"));
    QCOMPARE(box->role(), QAccessible::EditableText);
    // A reader's edit reaches the box as the user's own text would.
    box->editableTextInterface()->insertText(0, QStringLiteral("Night work"));
    QCOMPARE(f.other()->text(), QStringLiteral("Night work"));
    QCOMPARE(box->textInterface()->text(0, 5), QStringLiteral("Night"));
    QCOMPARE(box->text(QAccessible::Value), QStringLiteral("Night work"));
}

void tst_ctlGeneralInfo::contentsAndPurposeAreNamedGroupingsForScreenReaders()
{
    Fixture f(sample());
    f.bind();
    QAccessibleInterface* panel = QAccessible::queryAccessibleInterface(f.ctl.get());
    QMap<QString, QAccessibleInterface*> groups;
    for (int i = 0; i < panel->childCount(); ++i) {
        QAccessibleInterface* c = panel->child(i);
        QCOMPARE(panel->indexOfChild(c), i);
        if (c->role() == QAccessible::Grouping)
            groups.insert(c->text(QAccessible::Name), c);
    }
    QCOMPARE(groups.keys(), (QStringList{"Submittal Contents", "Submittal Purpose"}));
    QAccessibleInterface* contents = groups.value(QStringLiteral("Submittal Contents"));
    QStringList boxes;
    for (int i = 0; i < contents->childCount(); ++i) {
        QAccessibleInterface* box = contents->child(i);
        QCOMPARE(box->role(), QAccessible::CheckBox);
        QCOMPARE(box->parent(), contents);
        QVERIFY(box->state().checkable);
        boxes << box->text(QAccessible::Name);
    }
    QCOMPARE(boxes, (QStringList{"Cover Letter", "Bill of Materials", "Labels"}));
    QCOMPARE(contents->parent(), panel);
    QAccessibleInterface* purpose = groups.value(QStringLiteral("Submittal Purpose"));
    QCOMPARE(purpose->childCount(), 8);
    QCOMPARE(purpose->child(7)->role(), QAccessible::RadioButton);
    QCOMPARE(purpose->child(7)->text(QAccessible::Name), QStringLiteral("Other"));
    QCOMPARE(purpose->child(1)->state().checked,
             f.ctl->findChildren<OptionButton*>(QStringLiteral("optSubmittalPurpose"))
                 .at(1)
                 ->isChecked());
    // The members still act as boxes do: a reader's toggle writes the flag.
    const bool labels = f.sub->IncludeLabels();
    contents->child(2)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QCOMPARE(f.sub->IncludeLabels(), !labels);
}

QTEST_MAIN(tst_ctlGeneralInfo)
#include "tst_ctlgeneralinfo.moc"
