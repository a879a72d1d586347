#include "controls/criteria/ctlcvrltrcriteria.h"

#include "contracts/coverletter.h"
#include "contracts/recipients.h"
#include "contracts/submittal.h"
#include "frame/controlregistry.h"
#include "frame/errorpath.h"
#include "frame/makechild.h"
#include "frame/objectref.h"
#include "frame/units.h"
#include "platform/checkbox.h"
#include "platform/lineshape.h"
#include "platform/accessiblegroups.h"
#include "platform/optionbutton.h"
#include "platform/picture.h"

#include <QLabel>

namespace ZebSubCtl {

ZEB_REGISTER_CONTROL(ctlCvrLtrCriteria)

namespace {

// Design places, in twips: headings, rules, texts and choices start right of the pictures.
constexpr int kIndent = 645;
constexpr int kTextWidth = 6450;
constexpr int kRowHeight = 270;

// A rule under a heading, as wide as the texts.
QLine rule(int y)
{
    return QLine(twipsToPixels(kIndent), twipsToPixels(y), twipsToPixels(kIndent + kTextWidth),
                 twipsToPixels(y));
}

// The cover letter options; a submittal without them fails like an empty reference.
ZebObjects::CoverLetter& coverLetterOf(const std::shared_ptr<ZebObjects::Submittal>& submittal)
{
    return objectRef(objectRef(submittal).CoverLetter());
}

}  // namespace

ctlCvrLtrCriteria::ctlCvrLtrCriteria(QWidget* parent) : UserControl(parent)
{
    declareGroupedPanel(this);
    setAccessibleName(QStringLiteral("Cover letter options"));
    setAccessibleDescription(QStringLiteral(
        "Choose what the cover letter includes and how several recipients get their letters"));

    // What the letter includes.
    imgCheck = makeChild<Picture>(
        this, "imgCheck", QRect(),
        ChildSettings()
            .movedTo(twipsPoint(75, 75))
            .named(QStringLiteral("Include"), QStringLiteral("Picture of a ticked box")),
        PictureImage::Check);
    lblIncludeOnCoverLetter = makeChild<QLabel>(
        this, "lblIncludeOnCoverLetter", twipsRect(kIndent, 150, 4500, 240),
        captionSettings(Caption::Heading), QStringLiteral("Include On Cover Letter"));
    Line1 = makeChild<LineShape>(this, "Line1", QRect(), rule(420));
    lblIncludeInfo = makeChild<QLabel>(
        this, "lblIncludeInfo", twipsRect(kIndent, 510, kTextWidth, 660),
        captionSettings(Caption::Paragraph),
        QStringLiteral("Choose what you want to include on the cover letter for the Submittal.  "
                       "If you choose to include Default Verbiage or Remarks, you will choose "
                       "them in the next steps."));
    chkIncludeLogo = makeChild<CheckBox>(
        this, "chkIncludeLogo", twipsRect(kIndent, 1260, 3900, 255), QStringLiteral("Agency Logo"));
    chkDefaultParagraph = makeChild<CheckBox>(this, "chkDefaultParagraph",
                                              twipsRect(kIndent, 1260 + kRowHeight, 3900, 255),
                                              QStringLiteral("Default Cover Letter Paragraphs"));
    chkRemarks = makeChild<CheckBox>(this, "chkRemarks",
                                     twipsRect(kIndent, 1260 + 2 * kRowHeight, 3900, 255),
                                     QStringLiteral("Default Cover Letter Remarks"));
    // Last in the list, so that hiding it leaves no gap.
    chkIncludeCC = makeChild<CheckBox>(this, "chkIncludeCC",
                                       twipsRect(kIndent, 1260 + 3 * kRowHeight, 3900, 255),
                                       QStringLiteral("Print Carbon Copy Information"));

    // How several recipients are served.
    imgPeopleEnabled = makeChild<Picture>(
        this, "imgPeopleEnabled", QRect(),
        ChildSettings()
            .movedTo(twipsPoint(75, 2445))
            .named(QStringLiteral("Recipients"), QStringLiteral("Picture of two recipients")),
        PictureImage::PeopleEnabled);
    imgPeopleDisabled = makeChild<Picture>(
        this, "imgPeopleDisabled", QRect(),
        ChildSettings()
            .movedTo(twipsPoint(75, 2445))
            .named(QStringLiteral("Recipients, unavailable"),
                   QStringLiteral(
                       "Picture of two recipients, greyed: the recipient choice is unavailable")),
        PictureImage::PeopleDisabled);
    imgPeopleDisabled->setVisible(false);
    lblMultipleRecipients =
        makeChild<QLabel>(this, "lblMultipleRecipients", twipsRect(kIndent, 2520, 4500, 240),
                          captionSettings(Caption::Heading), QStringLiteral("Multiple Recipients"));
    Line2 = makeChild<LineShape>(this, "Line2", QRect(), rule(2790));
    lblMultipleInstructions = makeChild<QLabel>(
        this, "lblMultipleInstructions", twipsRect(kIndent, 2880, kTextWidth, 900),
        captionSettings(Caption::Paragraph),
        QStringLiteral("Choose how you want to handle multiple recipients for the cover letter.  "
                       "You can choose to send all recipients the same cover letter or send each "
                       "recipient a cover letter with their company name and address printed on "
                       "the cover letter."));
    optMultipleCoverLetters = makeChild<OptionButton>(
        this, "optMultipleCoverLetters", twipsRect(kIndent, 3870, 4500, 255),
        QStringLiteral("Separate Cover Letter For Each Recipient"));
    optOneCoverLetter = makeChild<OptionButton>(this, "optOneCoverLetter",
                                                twipsRect(kIndent, 3870 + kRowHeight, 4500, 255),
                                                QStringLiteral("Same Letter For All Recipients"));

    setTabOrder(chkIncludeLogo, chkDefaultParagraph);
    setTabOrder(chkDefaultParagraph, chkRemarks);
    setTabOrder(chkRemarks, chkIncludeCC);
    setTabOrder(chkIncludeCC, optMultipleCoverLetters);
    setTabOrder(optMultipleCoverLetters, optOneCoverLetter);
    // Screen readers hear the two options under their heading.
    groupForScreenReaders(this, lblMultipleRecipients->text(),
                          {optMultipleCoverLetters, optOneCoverLetter});

    resize(twipsToPixels(7200), twipsToPixels(4560));

    connect(chkDefaultParagraph, &CheckBox::valueChanged, this,
            [this] { chkDefaultParagraph_Click(); });
    connect(chkIncludeLogo, &CheckBox::valueChanged, this, [this] { chkIncludeLogo_Click(); });
    connect(chkRemarks, &CheckBox::valueChanged, this, [this] { chkRemarks_Click(); });
    // chkIncludeCC has no handler: the panel never writes IncludeCarbonCopy.
    connect(optMultipleCoverLetters, &OptionButton::selected, this,
            [this] { optMultipleCoverLetters_Click(); });
    connect(optOneCoverLetter, &OptionButton::selected, this,
            [this] { optOneCoverLetter_Click(); });
}

ctlCvrLtrCriteria::~ctlCvrLtrCriteria() = default;

// --- the bound submittal

std::shared_ptr<ZebObjects::Submittal> ctlCvrLtrCriteria::Submittal() const
{
    return ErrorPath::run(Procedure::untraced(this, QStringLiteral("Submittal()")),
                          Ending::propagate(), [&] { return mSubmittal; });
}

void ctlCvrLtrCriteria::setSubmittal(std::shared_ptr<ZebObjects::Submittal> submittal)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("Submittal()")), Ending::propagate(),
                   [&] {
                       mSubmittal = std::move(submittal);
                       Populate();
                   });
}

void ctlCvrLtrCriteria::Populate()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("Populate()")), Ending::propagate(),
                   [&] {
                       const auto coverLetter = objectRef(mSubmittal).CoverLetter();
                       if (!coverLetter)
                           return;
                       const ZebObjects::CoverLetter& options = *coverLetter;
                       // Each box or option that changes runs its click, which writes the value
                       // back.
                       chkDefaultParagraph->setValue(options.IncludeDefaultParagraphs() ? 1 : 0);
                       chkIncludeCC->setValue(options.IncludeCarbonCopy() ? 1 : 0);
                       chkIncludeLogo->setValue(options.IncludeLogo() ? 1 : 0);
                       chkRemarks->setValue(options.IncludeRemarks() ? 1 : 0);
                       optOneCoverLetter->setValue(!options.SeparateLetters());
                       optMultipleCoverLetters->setValue(options.SeparateLetters());

                       // One recipient has nothing to choose: a letter of its own, and the choice
                       // greyed.
                       if (objectRef(objectRef(mSubmittal).Recipients()).Count() < 2) {
                           lblMultipleRecipients->setEnabled(false);
                           lblMultipleInstructions->setEnabled(false);
                           Line2->setBorderColorToGrayText();
                           optMultipleCoverLetters->setEnabled(false);
                           optMultipleCoverLetters->setValue(true);
                           optOneCoverLetter->setEnabled(false);
                           optOneCoverLetter->setValue(false);
                           imgPeopleEnabled->setVisible(false);
                           imgPeopleDisabled->setVisible(true);
                       }
                   });
}

// --- the boxes and options

void ctlCvrLtrCriteria::chkDefaultParagraph_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("chkDefaultParagraph_Click()")),
                   Ending::report(), [&] {
                       coverLetterOf(mSubmittal)
                           .setIncludeDefaultParagraphs(chkDefaultParagraph->value() == 1);
                   });
}

void ctlCvrLtrCriteria::chkIncludeLogo_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("chkIncludeLogo_Click()")),
                   Ending::report(),
                   [&] { coverLetterOf(mSubmittal).setIncludeLogo(chkIncludeLogo->value() == 1); });
}

void ctlCvrLtrCriteria::chkRemarks_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("chkRemarks_Click()")),
                   Ending::report(),
                   [&] { coverLetterOf(mSubmittal).setIncludeRemarks(chkRemarks->value() == 1); });
}

void ctlCvrLtrCriteria::optMultipleCoverLetters_Click()
{
    ErrorPath::run(
        Procedure::untraced(this, QStringLiteral("optMultipleCoverLetters_Click()")),
        Ending::report(), [&] {
            // Written twice; both writes are kept.
            coverLetterOf(mSubmittal).setSeparateLetters(optMultipleCoverLetters->value());
            coverLetterOf(mSubmittal).setSeparateLetters(optMultipleCoverLetters->value());
        });
}

void ctlCvrLtrCriteria::optOneCoverLetter_Click()
{
    ErrorPath::run(
        Procedure::untraced(this, QStringLiteral("optOneCoverLetter_Click()")), Ending::report(),
        [&] {
            // Only this click changes the carbon copy box: the other option is already cleared
            // here, so the box hides, and choosing separate letters later does not bring it back.
            chkIncludeCC->setVisible(optMultipleCoverLetters->value());
            optMultipleCoverLetters->setValue(!optOneCoverLetter->value());
            coverLetterOf(mSubmittal).setSeparateLetters(optMultipleCoverLetters->value());
        });
}

}  // namespace ZebSubCtl
