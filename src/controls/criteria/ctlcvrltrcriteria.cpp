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

QLabel* makeLabel(QWidget* parent, const char* name, const QString& caption, QRect place)
{
    auto* label = makeChild<QLabel>(parent, name, place, caption);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

QLabel* makeHeading(QWidget* parent, const char* name, const QString& caption, int top)
{
    QLabel* label = makeLabel(parent, name, caption, twipsRect(kIndent, top, 4500, 240));
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

QLabel* makeInfo(QWidget* parent, const char* name, const QString& caption, int top, int height)
{
    QLabel* label = makeLabel(parent, name, caption, twipsRect(kIndent, top, kTextWidth, height));
    label->setWordWrap(true);
    return label;
}

LineShape* makeLine(QWidget* parent, const char* name, int y)
{
    auto* line = makeChild<LineShape>(parent, name, QRect());
    line->setPoints(twipsToPixels(kIndent), twipsToPixels(y), twipsToPixels(kIndent + kTextWidth),
                    twipsToPixels(y));
    return line;
}

CheckBox* makeBox(QWidget* parent, const char* name, const QString& caption, int top)
{
    auto* box = makeChild<CheckBox>(parent, name, twipsRect(kIndent, top, 3900, 255), caption);
    return box;
}

OptionButton* makeOption(QWidget* parent, const char* name, const QString& caption, int top)
{
    auto* option =
        makeChild<OptionButton>(parent, name, twipsRect(kIndent, top, 4500, 255), caption);
    return option;
}

Picture* makePicture(QWidget* parent, const char* name, PictureImage image, int top,
                     const QString& accessibleName, const QString& description)
{
    auto* picture = makeChild<Picture>(parent, name, QRect(), image);
    picture->move(twipsToPixels(75), twipsToPixels(top));
    picture->setAccessibleName(accessibleName);
    picture->setAccessibleDescription(description);
    return picture;
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
    imgCheck = makePicture(this, "imgCheck", PictureImage::Check, 75, QStringLiteral("Include"),
                           QStringLiteral("Picture of a ticked box"));
    lblIncludeOnCoverLetter = makeHeading(this, "lblIncludeOnCoverLetter",
                                          QStringLiteral("Include On Cover Letter"), 150);
    Line1 = makeLine(this, "Line1", 420);
    lblIncludeInfo = makeInfo(
        this, "lblIncludeInfo",
        QStringLiteral("Choose what you want to include on the cover letter for the Submittal.  "
                       "If you choose to include Default Verbiage or Remarks, you will choose "
                       "them in the next steps."),
        510, 660);
    chkIncludeLogo = makeBox(this, "chkIncludeLogo", QStringLiteral("Agency Logo"), 1260);
    chkDefaultParagraph =
        makeBox(this, "chkDefaultParagraph", QStringLiteral("Default Cover Letter Paragraphs"),
                1260 + kRowHeight);
    chkRemarks = makeBox(this, "chkRemarks", QStringLiteral("Default Cover Letter Remarks"),
                         1260 + 2 * kRowHeight);
    // Last in the list, so that hiding it leaves no gap.
    chkIncludeCC = makeBox(this, "chkIncludeCC", QStringLiteral("Print Carbon Copy Information"),
                           1260 + 3 * kRowHeight);

    // How several recipients are served.
    imgPeopleEnabled =
        makePicture(this, "imgPeopleEnabled", PictureImage::PeopleEnabled, 2445,
                    QStringLiteral("Recipients"), QStringLiteral("Picture of two recipients"));
    imgPeopleDisabled = makePicture(
        this, "imgPeopleDisabled", PictureImage::PeopleDisabled, 2445,
        QStringLiteral("Recipients, unavailable"),
        QStringLiteral("Picture of two recipients, greyed: the recipient choice is unavailable"));
    imgPeopleDisabled->setVisible(false);
    lblMultipleRecipients =
        makeHeading(this, "lblMultipleRecipients", QStringLiteral("Multiple Recipients"), 2520);
    Line2 = makeLine(this, "Line2", 2790);
    lblMultipleInstructions = makeInfo(
        this, "lblMultipleInstructions",
        QStringLiteral("Choose how you want to handle multiple recipients for the cover letter.  "
                       "You can choose to send all recipients the same cover letter or send each "
                       "recipient a cover letter with their company name and address printed on "
                       "the cover letter."),
        2880, 900);
    optMultipleCoverLetters =
        makeOption(this, "optMultipleCoverLetters",
                   QStringLiteral("Separate Cover Letter For Each Recipient"), 3870);
    optOneCoverLetter =
        makeOption(this, "optOneCoverLetter", QStringLiteral("Same Letter For All Recipients"),
                   3870 + kRowHeight);

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
