#include "controls/criteria/ctlcvrltrcriteria.h"
#include "frame/controlregistry.h"
#include "frame/propertybag.h"
#include "objects/standalonecoverletter.h"
#include "objects/standalonerecipients.h"
#include "objects/standalonesubmittal.h"
#include "platform/checkbox.h"
#include "platform/lineshape.h"
#include "platform/optionbutton.h"
#include "platform/picture.h"
#include "support/controltesting.h"
#include "support/testsupport.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QStyle>
#include <QTest>

#include <optional>

using namespace ZebSubCtl;
using ZebObjects::ErrorInfo;
using ZebObjects::Failure;
using ZebObjects::StandaloneCoverLetter;
using ZebObjects::StandaloneRecipients;
using ZebObjects::StandaloneSubmittal;
using ZebTest::error;
using Shown = ZebSubCtl::ScriptedMessageBoxService::Shown;

namespace {

using ZebTest::kCannot;
using ZebTest::plainBox;
const ErrorInfo kStoreDown = error(-2147217843, QStringLiteral("ZebObjects.Submittal"),
                                   QStringLiteral("The submittal store is not available"));
const ErrorInfo kNotSet = error(91, QStringLiteral("ZebSubCtl"),
                                QStringLiteral("Object variable or With block variable not set"));

QString logError(const QString& label, const ErrorInfo& e)
{
    return ZebTest::logLine("LogError", QStringLiteral("ctlCvrLtrCriteria"), label, e);
}

// Cover letter options whose n-th read or n-th write of SeparateLetters fails (1-based; 0 never).
class FlakyCoverLetter : public StandaloneCoverLetter {
public:
    int failRead = 0;
    int failWrite = 0;
    mutable int reads = 0;
    int writes = 0;

    bool SeparateLetters() const override
    {
        if (++reads == failRead)
            throw Failure(kStoreDown);
        return StandaloneCoverLetter::SeparateLetters();
    }
    void setSeparateLetters(bool separate) override
    {
        if (++writes == failWrite)
            throw Failure(kStoreDown);
        StandaloneCoverLetter::setSeparateLetters(separate);
    }
};

// What a person sees of the panel's widgets: shown, enabled, value.
struct Look {
    QMap<QString, QString> parts;
    friend bool operator==(const Look&, const Look&) = default;
};

// One panel, shown, with its own log and message boxes, and a submittal with two recipients.
struct Fixture {
    ZebTest::Harness h;
    std::shared_ptr<StandaloneSubmittal> sub = std::make_shared<StandaloneSubmittal>();
    std::shared_ptr<StandaloneCoverLetter> letter = sub->standaloneCoverLetter();
    std::shared_ptr<StandaloneRecipients> people = sub->standaloneRecipients();
    std::unique_ptr<ctlCvrLtrCriteria> ctl;

    explicit Fixture(int recipients = 2, bool show = true)
    {
        for (int i = 1; i <= recipients; ++i)
            people->Add(QStringLiteral("Recipient %1").arg(i), QStringLiteral("Company %1").arg(i));
        ctl = std::make_unique<ctlCvrLtrCriteria>();
        if (show) {
            ctl->show();
            if (!QTest::qWaitForWindowExposed(ctl.get()))
                qFatal("panel not exposed");
        }
        h.log().clear();
    }

    // Puts other cover letter options in the submittal's place.
    void useLetter(std::shared_ptr<StandaloneCoverLetter> other)
    {
        letter = std::move(other);
        sub->setCoverLetter(letter);
    }

    CheckBox* box(const char* name) const { return ctl->findChild<CheckBox*>(QLatin1String(name)); }
    OptionButton* option(const char* name) const
    {
        return ctl->findChild<OptionButton*>(QLatin1String(name));
    }
    OptionButton* separate() const { return option("optMultipleCoverLetters"); }
    OptionButton* same() const { return option("optOneCoverLetter"); }
    CheckBox* cc() const { return box("chkIncludeCC"); }
    QLabel* label(const char* name) const { return ctl->findChild<QLabel*>(QLatin1String(name)); }
    LineShape* line(const char* name) const
    {
        return ctl->findChild<LineShape*>(QLatin1String(name));
    }
    Picture* picture(const char* name) const
    {
        return ctl->findChild<Picture*>(QLatin1String(name));
    }
    bool shown(QWidget* w) const { return w->isVisibleTo(ctl.get()); }

    // Records the calls on the cover letter, the submittal and the recipients from now on.
    void record()
    {
        for (ZebObjects::FaultInjectable* o : std::initializer_list<ZebObjects::FaultInjectable*>{
                 letter.get(), sub.get(), people.get()}) {
            o->faults().clearCalls();
            o->faults().setRecording(true);
        }
    }
    QStringList letterCalls() const { return letter->faults().calls(); }
    int count(const QString& call) const { return int(letterCalls().count(call)); }

    // Binds the submittal; the log and the recorded calls start empty afterwards.
    void bind()
    {
        ctl->setSubmittal(sub);
        h.log().clear();
        h.boxes().clear();
        record();
    }

    void click(QAbstractButton* b) const
    {
        QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(6, b->height() / 2));
    }

    Look look() const
    {
        Look out;
        for (QWidget* w : ctl->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            QString v;
            if (auto* b = qobject_cast<CheckBox*>(w))
                v = QString::number(b->value());
            else if (auto* o = qobject_cast<OptionButton*>(w))
                v = o->value() ? QStringLiteral("on") : QStringLiteral("off");
            else if (auto* l = qobject_cast<LineShape*>(w))
                v = l->borderColor().name();
            out.parts.insert(w->objectName(), QStringLiteral("%1 %2 %3")
                                                  .arg(shown(w) ? "shown" : "hidden")
                                                  .arg(w->isEnabled() ? "enabled" : "disabled")
                                                  .arg(v));
        }
        return out;
    }
};

// The setter's failure as the host receives it.
std::optional<ErrorInfo> setterFailure(Fixture& f, std::shared_ptr<ZebObjects::Submittal> s)
{
    try {
        f.ctl->setSubmittal(std::move(s));
    } catch (const Failure& failure) {
        return failure.info();
    }
    return std::nullopt;
}

}  // namespace

class tst_ctlCvrLtrCriteria : public QObject {
    Q_OBJECT
private slots:
    void multipleRecipientsIsANamedGroupingForScreenReaders();
    // Registration and design
    void isCreatedByItsIdentifier();
    void childWidgetsCarryTheirNamesAndCaptions();
    void freshPanelHasNeitherOptionSelectedAndTheCarbonCopyBoxShown();
    void panelPersistsNoProperty();
    void everyCaptionFitsItsWidget();
    void everyInteractiveElementHasAnAccessibleName();
    void panelIsUsableByKeyboard();

    // Binding and Populate
    void populateShowsTheCoverLetterOptionsInItsOrder();
    void checkBoxesChangedWhilePopulatingWriteTheirValuesBackOnce();
    void separateLettersTrueIsWrittenBackTwiceWhilePopulating();
    void separateLettersFalseHidesCarbonCopyAndWritesFalseBackOnce();
    void submittalGetterReturnsTheBoundSubmittal();
    void submittalWithoutCoverLetterLeavesEveryWidgetUnchanged();
    void settingNoSubmittalFailsOnTheFirstReadAndPassesTheFailureToTheCaller();
    void eachFailingReadWhilePopulatingIsLoggedTwiceAndReachesTheCaller();
    void clickFailureWhilePopulatingIsReportedAndPopulateGoesOn();
    void panelFollowsNoEventsOfTheSubmittal();

    // Recipient count
    void oneRecipientDisablesBothOptionsAndSelectsAndWritesSeparateLetters();
    void noRecipientsIsTreatedAsOne();
    void oneRecipientGreysTheHeadingTextAndRuleAndSwapsThePicture();
    void twoOrMoreRecipientsLeaveTheRecipientWidgetsAsTheyAre();

    // Clicks
    void eachCheckBoxWritesItsFlagOnClick_data();
    void eachCheckBoxWritesItsFlagOnClick();
    void carbonCopyBoxIsNeverWritten();
    void clickingSeparateWritesSeparateLettersTrueTwice();
    void clickingSameLetterWritesFalseOnce();
    void clickingSameLetterHidesCarbonCopyAndSeparateDoesNotShowItAgain();
    void eachCheckBoxFailureReportsPlainAndThePanelStillWorks_data();
    void eachCheckBoxFailureReportsPlainAndThePanelStillWorks();
    void separateFirstWriteFailureSkipsTheSecondAndIsReported();
    void separateSecondWriteFailureIsReported();
    void sameLetterWriteFailureIsReportedWithCarbonCopyAlreadyHidden();
    void clicksWithoutCoverLetterReportObjectNotSet();
};

// --- Registration and design

void tst_ctlCvrLtrCriteria::isCreatedByItsIdentifier()
{
    ZebTest::Harness h;
    std::unique_ptr<UserControl> control(ControlRegistry::instance().create(
        QStringLiteral("ZebSubmittalControls.ctlCvrLtrCriteria")));
    QVERIFY(qobject_cast<ctlCvrLtrCriteria*>(control.get()));
    QCOMPARE(control->Name(), QStringLiteral("ctlCvrLtrCriteria"));
    QVERIFY(control->metaObject()->indexOfProperty("Submittal") >= 0);
    QVERIFY(h.log().lines().isEmpty());
}

void tst_ctlCvrLtrCriteria::childWidgetsCarryTheirNamesAndCaptions()
{
    Fixture f(2, false);
    QCOMPARE(f.cc()->text(), QStringLiteral("Print Carbon Copy Information"));
    QCOMPARE(f.separate()->text(), QStringLiteral("Separate Cover Letter For Each Recipient"));
    QCOMPARE(f.same()->text(), QStringLiteral("Same Letter For All Recipients"));
    QCOMPARE(f.box("chkDefaultParagraph")->text(),
             QStringLiteral("Default Cover Letter Paragraphs"));
    QCOMPARE(f.box("chkRemarks")->text(), QStringLiteral("Default Cover Letter Remarks"));
    QCOMPARE(f.box("chkIncludeLogo")->text(), QStringLiteral("Agency Logo"));
    QCOMPARE(f.picture("imgCheck")->image(), PictureImage::Check);
    QCOMPARE(f.picture("imgPeopleEnabled")->image(), PictureImage::PeopleEnabled);
    QCOMPARE(f.picture("imgPeopleDisabled")->image(), PictureImage::PeopleDisabled);
    QCOMPARE(f.label("lblMultipleInstructions")->text(),
             QStringLiteral("Choose how you want to handle multiple recipients for the cover "
                            "letter.  You can choose to send all recipients the same cover letter "
                            "or send each recipient a cover letter with their company name and "
                            "address printed on the cover letter."));
    QCOMPARE(f.label("lblMultipleRecipients")->text(), QStringLiteral("Multiple Recipients"));
    QCOMPARE(f.label("lblIncludeInfo")->text(),
             QStringLiteral("Choose what you want to include on the cover letter for the "
                            "Submittal.  If you choose to include Default Verbiage or Remarks, "
                            "you will choose them in the next steps."));
    QCOMPARE(f.label("lblIncludeOnCoverLetter")->text(), QStringLiteral("Include On Cover Letter"));
    QVERIFY(f.line("Line1"));
    QVERIFY(f.line("Line2"));
    QCOMPARE(f.ctl->findChildren<CheckBox*>().size(), 4);
    QCOMPARE(f.ctl->findChildren<OptionButton*>().size(), 2);
    // The two pictures of the recipient choice share one place.
    QCOMPARE(f.picture("imgPeopleEnabled")->geometry(), f.picture("imgPeopleDisabled")->geometry());
    QVERIFY(f.label("lblIncludeOnCoverLetter")->geometry().bottom() < f.line("Line1")->Y1());
    QVERIFY(f.label("lblMultipleRecipients")->geometry().bottom() < f.line("Line2")->Y1());
}

void tst_ctlCvrLtrCriteria::freshPanelHasNeitherOptionSelectedAndTheCarbonCopyBoxShown()
{
    Fixture f;
    QVERIFY(!f.separate()->value());
    QVERIFY(!f.same()->value());
    QVERIFY(f.separate()->isEnabled());
    QVERIFY(f.same()->isEnabled());
    QVERIFY(f.shown(f.cc()));
    QVERIFY(f.shown(f.picture("imgPeopleEnabled")));
    QVERIFY(!f.shown(f.picture("imgPeopleDisabled")));
    QVERIFY(!f.line("Line2")->borderIsGrayText());
    for (const char* name : {"chkIncludeCC", "chkDefaultParagraph", "chkRemarks", "chkIncludeLogo"})
        QCOMPARE(f.box(name)->value(), 0);
}

void tst_ctlCvrLtrCriteria::panelPersistsNoProperty()
{
    Fixture f;
    f.bind();
    PropertyBag bag;
    f.ctl->UserControl_WriteProperties(bag);
    QVERIFY(bag.isEmpty());
}

void tst_ctlCvrLtrCriteria::everyCaptionFitsItsWidget()
{
    Fixture f;
    for (QAbstractButton* b : f.ctl->findChildren<QAbstractButton*>()) {
        const bool isBox = qobject_cast<CheckBox*>(b) != nullptr;
        const int needs =
            b->style()->pixelMetric(
                isBox ? QStyle::PM_IndicatorWidth : QStyle::PM_ExclusiveIndicatorWidth, nullptr, b)
            + b->style()->pixelMetric(isBox ? QStyle::PM_CheckBoxLabelSpacing
                                            : QStyle::PM_RadioButtonLabelSpacing,
                                      nullptr, b)
            + b->fontMetrics().horizontalAdvance(b->text());
        QVERIFY2(
            needs <= b->width(),
            qPrintable(
                QStringLiteral("%1: %2 > %3").arg(b->objectName()).arg(needs).arg(b->width())));
        QVERIFY2(b->fontMetrics().height() <= b->height(), qPrintable(b->objectName()));
    }
    for (const char* name : {"lblMultipleRecipients", "lblIncludeOnCoverLetter"}) {
        const QLabel* label = f.label(name);
        QVERIFY2(label->fontMetrics().horizontalAdvance(label->text()) <= label->width(), name);
        QVERIFY2(label->fontMetrics().height() <= label->height(), name);
    }
    for (const char* name : {"lblMultipleInstructions", "lblIncludeInfo"}) {
        const QLabel* info = f.label(name);
        const QRect needed = info->fontMetrics().boundingRect(
            QRect(0, 0, info->width(), 10000), Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop,
            info->text());
        QVERIFY2(needed.height() <= info->height(), qPrintable(QStringLiteral("%1: %2 > %3")
                                                                   .arg(QLatin1String(name))
                                                                   .arg(needed.height())
                                                                   .arg(info->height())));
    }
    for (QWidget* child : f.ctl->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        QVERIFY2(f.ctl->rect().contains(child->geometry()), qPrintable(child->objectName()));
    // Nothing overlaps what sits below it.
    const QList<const char*> column = {"lblIncludeOnCoverLetter",
                                       "lblIncludeInfo",
                                       "chkIncludeLogo",
                                       "chkDefaultParagraph",
                                       "chkRemarks",
                                       "chkIncludeCC",
                                       "lblMultipleRecipients",
                                       "lblMultipleInstructions",
                                       "optMultipleCoverLetters",
                                       "optOneCoverLetter"};
    for (int i = 1; i < column.size(); ++i) {
        const QRect above = f.ctl->findChild<QWidget*>(QLatin1String(column[i - 1]))->geometry();
        const QRect below = f.ctl->findChild<QWidget*>(QLatin1String(column[i]))->geometry();
        QVERIFY2(above.bottom() < below.top(), column[i]);
    }
}

void tst_ctlCvrLtrCriteria::everyInteractiveElementHasAnAccessibleName()
{
    Fixture f;
    f.bind();
    QAccessibleInterface* root = QAccessible::queryAccessibleInterface(f.ctl.get());
    QVERIFY(root);
    QVERIFY(!root->text(QAccessible::Name).isEmpty());
    QVERIFY(!root->text(QAccessible::Description).isEmpty());
    QStringList unnamed;
    int interactive = 0;
    // The panel's children, with the members of its named groupings in their place.
    QList<QAccessibleInterface*> children;
    for (int i = 0; i < root->childCount(); ++i) {
        QAccessibleInterface* child = root->child(i);
        if (child && child->role() == QAccessible::Grouping)
            for (int j = 0; j < child->childCount(); ++j)
                children.append(child->child(j));
        else
            children.append(child);
    }
    for (QAccessibleInterface* child : children) {
        if (!child || child->state().invisible)
            continue;
        if (child->state().focusable) {
            ++interactive;
            if (child->text(QAccessible::Name).trimmed().isEmpty())
                unnamed << child->object()->objectName();
        }
        if (child->role() == QAccessible::Graphic && child->text(QAccessible::Name).isEmpty())
            unnamed << child->object()->objectName();
    }
    QCOMPARE(interactive, 5);  // three boxes (the carbon copy box is hidden) and two options
    QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(QStringLiteral(", "))));
    for (const char* name : {"imgCheck", "imgPeopleEnabled", "imgPeopleDisabled"}) {
        QAccessibleInterface* picture = QAccessible::queryAccessibleInterface(f.picture(name));
        QVERIFY2(!picture->text(QAccessible::Name).isEmpty(), name);
        QVERIFY2(!picture->text(QAccessible::Description).isEmpty(), name);
    }
    // The whole tree too, the children's own parts (scroll bars, list headers) included.
    const QStringList unnamedInTree = ZebTest::unnamedAccessibleElements(f.ctl.get());
    QVERIFY2(unnamedInTree.isEmpty(), qPrintable(unnamedInTree.join(QStringLiteral("; "))));
}

void tst_ctlCvrLtrCriteria::panelIsUsableByKeyboard()
{
    Fixture f;
    f.letter->setSeparateLetters(true);
    f.bind();
    f.ctl->activateWindow();
    f.box("chkIncludeLogo")->setFocus();
    QVERIFY(QTest::qWaitFor([&] { return f.box("chkIncludeLogo")->hasFocus(); }));
    const QStringList order = {"chkIncludeLogo", "chkDefaultParagraph", "chkRemarks",
                               "chkIncludeCC", "optMultipleCoverLetters"};
    for (int i = 1; i < order.size(); ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), order[i]);
    }
    // Down moves to the other option and selects it: one write of false.
    QTest::keyClick(f.separate(), Qt::Key_Down);
    QVERIFY(f.same()->value());
    QVERIFY(f.same()->hasFocus());
    QCOMPARE(f.letterCalls(), QStringList{"SeparateLetters="});
    QVERIFY(!f.letter->SeparateLetters());
    // Up moves back: two writes of true.
    f.record();
    QTest::keyClick(f.same(), Qt::Key_Up);
    QVERIFY(f.separate()->value());
    QCOMPARE(f.letterCalls(), (QStringList{"SeparateLetters=", "SeparateLetters="}));
    QVERIFY(f.letter->SeparateLetters());
    // Space ticks a box.
    f.record();
    QTest::keyClick(f.box("chkRemarks"), Qt::Key_Space);
    QCOMPARE(f.letterCalls(), QStringList{"IncludeRemarks="});
    QVERIFY(f.letter->IncludeRemarks());
}

// --- Binding and Populate

void tst_ctlCvrLtrCriteria::populateShowsTheCoverLetterOptionsInItsOrder()
{
    Fixture f;
    f.letter->setIncludeCarbonCopy(true);
    f.letter->setIncludeRemarks(true);
    f.record();
    f.ctl->setSubmittal(f.sub);
    // The clicks that write back read the cover letter options each.
    QCOMPARE(f.sub->faults().calls(),
             (QStringList{"CoverLetter", "CoverLetter", "CoverLetter", "Recipients"}));
    QCOMPARE(f.people->faults().calls(), QStringList{"Count"});
    QCOMPARE(f.letterCalls(),
             (QStringList{"IncludeDefaultParagraphs", "IncludeCarbonCopy", "IncludeLogo",
                          "IncludeRemarks", "IncludeRemarks=", "SeparateLetters",
                          "SeparateLetters=", "SeparateLetters"}));
    QCOMPARE(f.box("chkDefaultParagraph")->value(), 0);
    QCOMPARE(f.cc()->value(), 1);
    QCOMPARE(f.box("chkIncludeLogo")->value(), 0);
    QCOMPARE(f.box("chkRemarks")->value(), 1);
    QVERIFY(f.same()->value());
    QVERIFY(!f.separate()->value());
    QVERIFY(f.h.log().lines().isEmpty());
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlCvrLtrCriteria::checkBoxesChangedWhilePopulatingWriteTheirValuesBackOnce()
{
    Fixture f;
    f.letter->setIncludeDefaultParagraphs(true);
    f.letter->setIncludeLogo(true);
    f.letter->setIncludeRemarks(true);
    f.letter->setIncludeCarbonCopy(true);
    f.record();
    f.ctl->setSubmittal(f.sub);
    QCOMPARE(f.count(QStringLiteral("IncludeDefaultParagraphs=")), 1);
    QCOMPARE(f.count(QStringLiteral("IncludeLogo=")), 1);
    QCOMPARE(f.count(QStringLiteral("IncludeRemarks=")), 1);
    QVERIFY(f.letter->IncludeDefaultParagraphs());
    QVERIFY(f.letter->IncludeLogo());
    QVERIFY(f.letter->IncludeRemarks());
    // Shown again, the boxes agree: nothing is written but the option's own echo.
    f.record();
    f.ctl->setSubmittal(f.sub);
    QCOMPARE(f.letterCalls().filter(QStringLiteral("Include")).filter(QStringLiteral("=")),
             QStringList());
}

void tst_ctlCvrLtrCriteria::separateLettersTrueIsWrittenBackTwiceWhilePopulating()
{
    Fixture f;
    f.letter->setSeparateLetters(true);
    f.record();
    f.ctl->setSubmittal(f.sub);
    QCOMPARE(f.letterCalls(),
             (QStringList{"IncludeDefaultParagraphs", "IncludeCarbonCopy", "IncludeLogo",
                          "IncludeRemarks", "SeparateLetters", "SeparateLetters",
                          "SeparateLetters=", "SeparateLetters="}));
    QVERIFY(f.separate()->value());
    QVERIFY(!f.same()->value());
    QVERIFY(f.letter->SeparateLetters());
    QVERIFY(f.shown(f.cc()));
    // Shown again: the option already agrees, nothing is written.
    f.record();
    f.ctl->setSubmittal(f.sub);
    QCOMPARE(f.count(QStringLiteral("SeparateLetters=")), 0);
}

void tst_ctlCvrLtrCriteria::separateLettersFalseHidesCarbonCopyAndWritesFalseBackOnce()
{
    Fixture f;
    f.letter->setIncludeCarbonCopy(true);
    f.record();
    f.ctl->setSubmittal(f.sub);
    QCOMPARE(f.count(QStringLiteral("SeparateLetters=")), 1);
    QVERIFY(!f.letter->SeparateLetters());
    QVERIFY(f.same()->value());
    QVERIFY(!f.shown(f.cc()));
    QCOMPARE(f.cc()->value(), 1);
}

void tst_ctlCvrLtrCriteria::submittalGetterReturnsTheBoundSubmittal()
{
    Fixture f;
    QCOMPARE(f.ctl->Submittal(), nullptr);
    f.bind();
    QCOMPARE(f.ctl->Submittal(), std::shared_ptr<ZebObjects::Submittal>(f.sub));
    QCOMPARE(f.ctl->property("Submittal").value<std::shared_ptr<ZebObjects::Submittal>>(),
             std::shared_ptr<ZebObjects::Submittal>(f.sub));
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlCvrLtrCriteria::submittalWithoutCoverLetterLeavesEveryWidgetUnchanged()
{
    Fixture f(1);
    f.sub->setCoverLetter(nullptr);
    const Look before = f.look();
    f.record();
    f.ctl->setSubmittal(f.sub);
    QCOMPARE(f.look(), before);
    QCOMPARE(f.sub->faults().calls(), QStringList{"CoverLetter"});
    QCOMPARE(f.people->faults().calls(), QStringList());
    QCOMPARE(f.ctl->Submittal(), std::shared_ptr<ZebObjects::Submittal>(f.sub));
    QVERIFY(f.h.log().lines().isEmpty());
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlCvrLtrCriteria::settingNoSubmittalFailsOnTheFirstReadAndPassesTheFailureToTheCaller()
{
    Fixture f;
    f.letter->setIncludeLogo(true);
    f.bind();
    const Look before = f.look();
    const std::optional<ErrorInfo> failure = setterFailure(f, nullptr);
    QVERIFY(failure);
    QCOMPARE(*failure, kNotSet);
    QCOMPARE(f.h.log().lines(), (QStringList{logError(QStringLiteral("Populate()"), kNotSet),
                                             logError(QStringLiteral("Submittal()"), kNotSet)}));
    QVERIFY(f.h.boxes().shown().isEmpty());
    QCOMPARE(f.look(), before);
    QCOMPARE(f.ctl->Submittal(), nullptr);
    // Bound again, it works.
    f.h.log().clear();
    QVERIFY(!setterFailure(f, f.sub));
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlCvrLtrCriteria::eachFailingReadWhilePopulatingIsLoggedTwiceAndReachesTheCaller()
{
    // Each read of Populate in turn; "SeparateLetters" twice, its first and its second read.
    const QList<std::pair<QString, int>> reads = {
        {QStringLiteral("CoverLetter"), 0},
        {QStringLiteral("IncludeDefaultParagraphs"), 0},
        {QStringLiteral("IncludeCarbonCopy"), 0},
        {QStringLiteral("IncludeLogo"), 0},
        {QStringLiteral("IncludeRemarks"), 0},
        {QStringLiteral("SeparateLetters"), 1},
        {QStringLiteral("SeparateLetters"), 2},
        {QStringLiteral("Recipients"), 0},
        {QStringLiteral("Count"), 0},
    };
    for (const auto& [member, nth] : reads) {
        const QByteArray what = (member + QString::number(nth)).toLatin1();
        Fixture f(1);
        auto flaky = std::make_shared<FlakyCoverLetter>();
        flaky->setIncludeLogo(true);
        f.useLetter(flaky);
        if (nth > 0)
            flaky->failRead = nth;
        else if (member == QLatin1String("CoverLetter") || member == QLatin1String("Recipients"))
            f.sub->faults().failNext(member, kStoreDown);
        else if (member == QLatin1String("Count"))
            f.people->faults().failNext(member, kStoreDown);
        else
            flaky->faults().failNext(member, kStoreDown);
        const std::optional<ErrorInfo> failure = setterFailure(f, f.sub);
        QVERIFY2(failure, what.constData());
        QCOMPARE(*failure, kStoreDown);
        QCOMPARE(f.h.log().lines(),
                 (QStringList{logError(QStringLiteral("Populate()"), kStoreDown),
                              logError(QStringLiteral("Submittal()"), kStoreDown)}));
        QVERIFY(f.h.boxes().shown().isEmpty());
        // Still bound, and shown again without a failure.
        QCOMPARE(f.ctl->Submittal(), std::shared_ptr<ZebObjects::Submittal>(f.sub));
        f.h.log().clear();
        QVERIFY2(!setterFailure(f, f.sub), what.constData());
        QVERIFY(f.h.log().lines().isEmpty());
        QCOMPARE(f.box("chkIncludeLogo")->value(), 1);
        QVERIFY(f.separate()->value());
        QVERIFY(!f.separate()->isEnabled());
    }
}

void tst_ctlCvrLtrCriteria::clickFailureWhilePopulatingIsReportedAndPopulateGoesOn()
{
    Fixture f(1);
    f.letter->setIncludeLogo(true);
    f.letter->faults().failNext(QStringLiteral("IncludeLogo="), kStoreDown);
    QVERIFY(!setterFailure(f, f.sub));
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("chkIncludeLogo_Click()"), kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QCOMPARE(f.box("chkIncludeLogo")->value(), 1);
    // The rest ran: the single recipient's choice is made.
    QVERIFY(f.separate()->value());
    QVERIFY(!f.separate()->isEnabled());
    QVERIFY(f.letter->SeparateLetters());
}

void tst_ctlCvrLtrCriteria::panelFollowsNoEventsOfTheSubmittal()
{
    Fixture f;
    f.bind();
    f.letter->setIncludeLogo(true);
    f.letter->setSeparateLetters(true);
    f.people->Remove(1);
    emit f.sub->CoverLetterChanged();
    emit f.sub->BOMChanged();
    QCOMPARE(f.box("chkIncludeLogo")->value(), 0);
    QVERIFY(f.same()->value());
    QVERIFY(f.same()->isEnabled());
}

// --- Recipient count

void tst_ctlCvrLtrCriteria::oneRecipientDisablesBothOptionsAndSelectsAndWritesSeparateLetters()
{
    Fixture f(1);
    f.record();
    f.ctl->setSubmittal(f.sub);
    // False shown first (one write from "Same Letter"), then the single recipient's choice
    // (two writes from "Separate").
    QCOMPARE(f.letterCalls(), (QStringList{"IncludeDefaultParagraphs", "IncludeCarbonCopy",
                                           "IncludeLogo", "IncludeRemarks", "SeparateLetters",
                                           "SeparateLetters=", "SeparateLetters",
                                           "SeparateLetters=", "SeparateLetters="}));
    QVERIFY(!f.separate()->isEnabled());
    QVERIFY(!f.same()->isEnabled());
    QVERIFY(f.separate()->value());
    QVERIFY(!f.same()->value());
    QVERIFY(f.letter->SeparateLetters());
    QVERIFY(f.h.log().lines().isEmpty());
    // The user cannot change it.
    f.record();
    f.click(f.same());
    QVERIFY(f.separate()->value());
    QCOMPARE(f.letterCalls(), QStringList());
}

void tst_ctlCvrLtrCriteria::noRecipientsIsTreatedAsOne()
{
    Fixture f(0);
    f.ctl->setSubmittal(f.sub);
    QVERIFY(!f.separate()->isEnabled());
    QVERIFY(!f.same()->isEnabled());
    QVERIFY(f.separate()->value());
    QVERIFY(f.letter->SeparateLetters());
}

void tst_ctlCvrLtrCriteria::oneRecipientGreysTheHeadingTextAndRuleAndSwapsThePicture()
{
    Fixture f(1);
    f.ctl->setSubmittal(f.sub);
    QVERIFY(!f.label("lblMultipleRecipients")->isEnabled());
    QVERIFY(!f.label("lblMultipleInstructions")->isEnabled());
    QVERIFY(f.line("Line2")->borderIsGrayText());
    QCOMPARE(f.line("Line2")->borderColor(),
             f.line("Line2")->palette().color(QPalette::Disabled, QPalette::WindowText));
    QVERIFY(!f.shown(f.picture("imgPeopleEnabled")));
    QVERIFY(f.shown(f.picture("imgPeopleDisabled")));
    // The include part stays as it was.
    QVERIFY(f.label("lblIncludeOnCoverLetter")->isEnabled());
    QVERIFY(!f.line("Line1")->borderIsGrayText());
    QVERIFY(f.shown(f.picture("imgCheck")));
}

void tst_ctlCvrLtrCriteria::twoOrMoreRecipientsLeaveTheRecipientWidgetsAsTheyAre()
{
    Fixture f(3);
    f.letter->setSeparateLetters(true);
    f.ctl->setSubmittal(f.sub);
    QVERIFY(f.separate()->isEnabled());
    QVERIFY(f.same()->isEnabled());
    QVERIFY(f.label("lblMultipleRecipients")->isEnabled());
    QVERIFY(!f.line("Line2")->borderIsGrayText());
    QVERIFY(f.shown(f.picture("imgPeopleEnabled")));
    // A submittal of one recipient greys the choice; one of three shown later leaves it grey.
    Fixture g(1);
    g.ctl->setSubmittal(g.sub);
    auto three = std::make_shared<StandaloneSubmittal>();
    for (int i = 0; i < 3; ++i)
        three->standaloneRecipients()->Add(QStringLiteral("R"), QStringLiteral("C"));
    g.ctl->setSubmittal(three);
    QVERIFY(!g.separate()->isEnabled());
    QVERIFY(!g.same()->isEnabled());
    QVERIFY(!g.label("lblMultipleRecipients")->isEnabled());
    QVERIFY(g.line("Line2")->borderIsGrayText());
    QVERIFY(g.shown(g.picture("imgPeopleDisabled")));
    // Its SeparateLetters false still selects "Same Letter" from code.
    QVERIFY(g.same()->value());
    QVERIFY(!three->standaloneCoverLetter()->SeparateLetters());
}

// --- Clicks

void tst_ctlCvrLtrCriteria::eachCheckBoxWritesItsFlagOnClick_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("member");
    QTest::newRow("chkDefaultParagraph") << "chkDefaultParagraph"
                                         << "IncludeDefaultParagraphs";
    QTest::newRow("chkIncludeLogo") << "chkIncludeLogo"
                                    << "IncludeLogo";
    QTest::newRow("chkRemarks") << "chkRemarks"
                                << "IncludeRemarks";
}

void tst_ctlCvrLtrCriteria::eachCheckBoxWritesItsFlagOnClick()
{
    QFETCH(QString, box);
    QFETCH(QString, member);
    Fixture f;
    f.bind();
    const auto flag = [&] {
        if (member == QLatin1String("IncludeDefaultParagraphs"))
            return f.letter->IncludeDefaultParagraphs();
        if (member == QLatin1String("IncludeLogo"))
            return f.letter->IncludeLogo();
        return f.letter->IncludeRemarks();
    };
    CheckBox* b = f.box(box.toLatin1().constData());
    f.click(b);
    QCOMPARE(f.letterCalls(), QStringList{member + QLatin1Char('=')});
    QVERIFY(flag());
    f.record();
    f.click(b);
    QCOMPARE(f.letterCalls(), QStringList{member + QLatin1Char('=')});
    QVERIFY(!flag());
    f.record();
    b->setValue(2);
    QCOMPARE(f.letterCalls(), QStringList{member + QLatin1Char('=')});
    QVERIFY(!flag());
    QCOMPARE(f.sub->faults().calls(), (QStringList{"CoverLetter"}));
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlCvrLtrCriteria::carbonCopyBoxIsNeverWritten()
{
    Fixture f;
    f.letter->setSeparateLetters(true);
    f.letter->setIncludeCarbonCopy(true);
    f.bind();
    QCOMPARE(f.cc()->value(), 1);
    QVERIFY(f.shown(f.cc()));
    f.click(f.cc());
    QCOMPARE(f.cc()->value(), 0);
    f.click(f.cc());
    QCOMPARE(f.letterCalls(), QStringList());
    QCOMPARE(f.sub->faults().calls(), QStringList());
    QVERIFY(f.letter->IncludeCarbonCopy());
}

void tst_ctlCvrLtrCriteria::clickingSeparateWritesSeparateLettersTrueTwice()
{
    Fixture f;
    f.bind();
    QVERIFY(f.same()->value());
    f.click(f.separate());
    QVERIFY(f.separate()->value());
    QVERIFY(!f.same()->value());
    QCOMPARE(f.letterCalls(), (QStringList{"SeparateLetters=", "SeparateLetters="}));
    QCOMPARE(f.sub->faults().calls(), (QStringList{"CoverLetter", "CoverLetter"}));
    QVERIFY(f.letter->SeparateLetters());
    // Clicking the selected option again changes nothing.
    f.record();
    f.click(f.separate());
    QCOMPARE(f.letterCalls(), QStringList());
}

void tst_ctlCvrLtrCriteria::clickingSameLetterWritesFalseOnce()
{
    Fixture f;
    f.letter->setSeparateLetters(true);
    f.bind();
    f.click(f.same());
    QVERIFY(f.same()->value());
    QVERIFY(!f.separate()->value());
    QCOMPARE(f.letterCalls(), QStringList{"SeparateLetters="});
    QVERIFY(!f.letter->SeparateLetters());
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlCvrLtrCriteria::clickingSameLetterHidesCarbonCopyAndSeparateDoesNotShowItAgain()
{
    Fixture f;
    f.letter->setSeparateLetters(true);
    f.bind();
    QVERIFY(f.shown(f.cc()));
    f.click(f.same());
    QVERIFY(!f.shown(f.cc()));
    f.click(f.separate());
    QVERIFY(f.separate()->value());
    QVERIFY(f.letter->SeparateLetters());
    QVERIFY(!f.shown(f.cc()));
    // Shown again with separate letters: still hidden, only "Same Letter" changes it.
    f.ctl->setSubmittal(f.sub);
    QVERIFY(!f.shown(f.cc()));
}

void tst_ctlCvrLtrCriteria::eachCheckBoxFailureReportsPlainAndThePanelStillWorks_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("member");
    QTest::addColumn<QString>("label");
    for (const auto& [box, member, label] :
         {std::tuple{"chkDefaultParagraph", "IncludeDefaultParagraphs",
                     "chkDefaultParagraph_Click()"},
          std::tuple{"chkIncludeLogo", "IncludeLogo", "chkIncludeLogo_Click()"},
          std::tuple{"chkRemarks", "IncludeRemarks", "chkRemarks_Click()"}}) {
        QTest::addRow("%s write", box) << box << (QString::fromLatin1(member) + "=") << label;
        QTest::addRow("%s cover letter", box) << box << "CoverLetter" << label;
    }
}

void tst_ctlCvrLtrCriteria::eachCheckBoxFailureReportsPlainAndThePanelStillWorks()
{
    QFETCH(QString, box);
    QFETCH(QString, member);
    QFETCH(QString, label);
    Fixture f;
    f.bind();
    if (member == QLatin1String("CoverLetter"))
        f.sub->faults().failNext(member, kStoreDown);
    else
        f.letter->faults().failNext(member, kStoreDown);
    CheckBox* b = f.box(box.toLatin1().constData());
    f.click(b);
    QCOMPARE(f.h.log().lines(), QStringList{logError(label, kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QCOMPARE(b->value(), 1);
    f.h.log().clear();
    f.h.boxes().clear();
    f.click(b);
    f.click(b);
    QVERIFY(f.h.log().lines().isEmpty());
    QVERIFY(f.h.boxes().shown().isEmpty());
    QCOMPARE(b->value(), 1);
}

void tst_ctlCvrLtrCriteria::separateFirstWriteFailureSkipsTheSecondAndIsReported()
{
    Fixture f;
    f.bind();
    f.letter->faults().failNext(QStringLiteral("SeparateLetters="), kStoreDown);
    f.click(f.separate());
    QCOMPARE(f.letterCalls(), QStringList{"SeparateLetters="});
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("optMultipleCoverLetters_Click()"), kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QVERIFY(f.separate()->value());
    QVERIFY(!f.letter->SeparateLetters());
    // The panel still works.
    f.h.boxes().clear();
    f.click(f.same());
    f.click(f.separate());
    QVERIFY(f.letter->SeparateLetters());
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlCvrLtrCriteria::separateSecondWriteFailureIsReported()
{
    Fixture f;
    auto flaky = std::make_shared<FlakyCoverLetter>();
    f.useLetter(flaky);
    f.bind();
    flaky->failWrite = flaky->writes + 2;
    f.click(f.separate());
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("optMultipleCoverLetters_Click()"), kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    // The first write stays.
    QVERIFY(flaky->SeparateLetters());
}

void tst_ctlCvrLtrCriteria::sameLetterWriteFailureIsReportedWithCarbonCopyAlreadyHidden()
{
    Fixture f;
    f.letter->setSeparateLetters(true);
    f.bind();
    f.letter->faults().failNext(QStringLiteral("SeparateLetters="), kStoreDown);
    f.click(f.same());
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("optOneCoverLetter_Click()"), kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QVERIFY(!f.shown(f.cc()));
    QVERIFY(f.same()->value());
    QVERIFY(f.letter->SeparateLetters());
    // The cover letter read fails the same way.
    f.h.log().clear();
    f.h.boxes().clear();
    f.click(f.separate());
    f.sub->faults().failNext(QStringLiteral("CoverLetter"), kStoreDown);
    f.click(f.same());
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("optOneCoverLetter_Click()"), kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
}

void tst_ctlCvrLtrCriteria::clicksWithoutCoverLetterReportObjectNotSet()
{
    Fixture f;
    f.bind();
    f.sub->setCoverLetter(nullptr);
    struct Click {
        QAbstractButton* button;
        const char* label;
    };
    for (const Click& c : {Click{f.box("chkDefaultParagraph"), "chkDefaultParagraph_Click()"},
                           Click{f.box("chkIncludeLogo"), "chkIncludeLogo_Click()"},
                           Click{f.box("chkRemarks"), "chkRemarks_Click()"},
                           Click{f.separate(), "optMultipleCoverLetters_Click()"},
                           Click{f.same(), "optOneCoverLetter_Click()"}}) {
        f.h.log().clear();
        f.h.boxes().clear();
        f.click(c.button);
        QCOMPARE(f.h.log().lines(), QStringList{logError(QLatin1String(c.label), kNotSet)});
        QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kNotSet)});
    }
}

void tst_ctlCvrLtrCriteria::multipleRecipientsIsANamedGroupingForScreenReaders()
{
    Fixture f;
    QAccessibleInterface* panel = QAccessible::queryAccessibleInterface(f.ctl.get());
    QAccessibleInterface* group = nullptr;
    for (int i = 0; i < panel->childCount(); ++i)
        if (panel->child(i)->role() == QAccessible::Grouping)
            group = panel->child(i);
    QVERIFY(group);
    QCOMPARE(group->text(QAccessible::Name), QStringLiteral("Multiple Recipients"));
    QCOMPARE(group->childCount(), 2);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(group->child(i)->role(), QAccessible::RadioButton);
        QCOMPARE(group->child(i)->parent(), group);
        QVERIFY(!group->child(i)->text(QAccessible::Name).isEmpty());
    }
}

QTEST_MAIN(tst_ctlCvrLtrCriteria)
#include "tst_ctlcvrltrcriteria.moc"
