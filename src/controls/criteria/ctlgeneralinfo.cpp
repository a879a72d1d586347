#include "controls/criteria/ctlgeneralinfo.h"

#include "contracts/applicationservices.h"
#include "contracts/failure.h"
#include "contracts/submittal.h"
#include "frame/controlregistry.h"
#include "frame/errorpath.h"
#include "frame/makechild.h"
#include "frame/objectref.h"
#include "frame/units.h"
#include "contracts/runtime.h"
#include "platform/accessiblegroups.h"
#include "platform/accessiblelabels.h"
#include "platform/checkbox.h"
#include "platform/combobox.h"
#include "platform/dateedit.h"
#include "platform/lineshape.h"
#include "platform/optionbutton.h"
#include "platform/optiongroup.h"
#include "platform/picture.h"
#include "platform/textbox.h"

#include <QLabel>
#include <QLineEdit>

#include <limits>

namespace ZebSubCtl {

ZEB_REGISTER_CONTROL(ctlGeneralInfo)

namespace {

constexpr qint16 kOther = 7;
// The separator lines end this far short of the panel's right edge (twips).
constexpr int kLineMargin = 5;

const QString kIssuedByTip = QStringLiteral(
    "Choose the person who will be the contact for all communication regarding this submittal");

// Design places, in twips.
constexpr int kLeft = 120;  // pictures
constexpr int kTextLeft = 720;  // headings, lines and instructions
constexpr int kControlLeft = 840;  // the controls of a section
constexpr int kInfoWidth = 6600;
// Wide enough for a purpose of one's own of some sixty characters beside "Other".
constexpr int kPanelWidth = 9600;
constexpr int kPanelHeight = 5760;
constexpr int kLineRight = kPanelWidth - kLineMargin;

constexpr int kContentsTop = 120;
constexpr int kPurposeTop = 1320;
constexpr int kDetailsTop = 3780;

struct PurposePlace {
    int left;
    int top;
    int width;
};
// Two columns of four, in index order down each column.
constexpr PurposePlace kPurposePlaces[8] = {
    {kControlLeft, 2400, 3120}, {kControlLeft, 2700, 3120}, {kControlLeft, 3000, 3120},
    {kControlLeft, 3300, 3120}, {4080, 2400, 3240},         {4080, 2700, 3240},
    {4080, 3000, 3240},         {4080, 3300, 840},
};

// The issuer count and its counter are 16-bit.
[[noreturn]] void raiseOverflow()
{
    throw ZebObjects::Failure(ZebObjects::ErrorNumber::Overflow, QStringLiteral("ZebSubCtl"),
                              QStringLiteral("Overflow"));
}

// A caption here sits in the middle of its line; a paragraph reads from the top.
ChildSettings caption(Caption kind)
{
    return captionSettings(kind, kind == Caption::Paragraph ? Qt::AlignLeft | Qt::AlignTop
                                                            : Qt::AlignLeft | Qt::AlignVCenter);
}

// A rule under a heading.
QLine rule(int top)
{
    return QLine(twipsToPixels(kTextLeft), twipsToPixels(top), twipsToPixels(kLineRight),
                 twipsToPixels(top));
}

}  // namespace

ctlGeneralInfo::ctlGeneralInfo(QWidget* parent) : UserControl(parent)
{
    declareGroupedPanel(this);
    setAccessibleName(QStringLiteral("General information"));
    setAccessibleDescription(
        QStringLiteral("What the submittal contains, its purpose, who issues it and its date"));

    Image1 = makeChild<Picture>(this, "Image1", QRect(),
                                ChildSettings().movedTo(twipsPoint(kLeft, kContentsTop)),
                                PictureImage::Contents);
    lblContentsHeading =
        makeChild<QLabel>(this, "lblContentsHeading", twipsRect(kTextLeft, kContentsTop, 3600, 240),
                          caption(Caption::Heading), QStringLiteral("Submittal Contents"));
    Line1 = makeChild<LineShape>(this, "Line1", QRect(), rule(kContentsTop + 300));
    lblContentsInfo = makeChild<QLabel>(
        this, "lblContentsInfo", twipsRect(kTextLeft, kContentsTop + 390, kInfoWidth, 240),
        caption(Caption::Line),
        QStringLiteral("Choose which items you would like to include in your submittal."));
    chkCoverLetter = makeChild<CheckBox>(this, "chkCoverLetter",
                                         twipsRect(kControlLeft, kContentsTop + 720, 1560, 255),
                                         QStringLiteral("Cover Letter"));
    chkBOM = makeChild<CheckBox>(this, "chkBOM", twipsRect(2520, kContentsTop + 720, 1920, 255),
                                 QStringLiteral("Bill of Materials"));
    chkLabels =
        makeChild<CheckBox>(this, "chkLabels", twipsRect(4560, kContentsTop + 720, 1200, 255),
                            QStringLiteral("Labels"));

    Image2 = makeChild<Picture>(this, "Image2", QRect(),
                                ChildSettings().movedTo(twipsPoint(kLeft, kPurposeTop)),
                                PictureImage::Purpose);
    lblSubmittalPurpose =
        makeChild<QLabel>(this, "lblSubmittalPurpose", twipsRect(kTextLeft, kPurposeTop, 3600, 240),
                          caption(Caption::Heading), QStringLiteral("Submittal Purpose"));
    Line2 = makeChild<LineShape>(this, "Line2", QRect(), rule(kPurposeTop + 300));
    lblPurposeInfo = makeChild<QLabel>(
        this, "lblPurposeInfo", twipsRect(kTextLeft, kPurposeTop + 390, kInfoWidth, 600),
        caption(Caption::Paragraph),
        QStringLiteral("Select the purpose for your submittal.  The purpose will print at the top "
                       "of the Bill of Materials.  You may choose from the following, or choose "
                       "other to define your own."));

    optSubmittalPurpose = new OptionGroup(this);
    optSubmittalPurpose->setObjectName(QStringLiteral("optSubmittalPurpose"));
    const QStringList purposes{QStringLiteral("Request For Prior Approval"),
                               QStringLiteral("Request For Approval"),
                               QStringLiteral("Request For Approval As Submitted"),
                               QStringLiteral("Request For Approval As Noted"),
                               QStringLiteral("Resubmittal For Approval"),
                               QStringLiteral("Corrections"),
                               QStringLiteral("Record Only"),
                               QStringLiteral("Other")};
    for (int i = 0; i < 8; ++i) {
        auto* option = new OptionButton(purposes.at(i), this);
        option->setObjectName(QStringLiteral("optSubmittalPurpose"));
        option->setProperty("Index", i);
        const PurposePlace& p = kPurposePlaces[i];
        option->setGeometry(twipsRect(p.left, p.top, p.width, 255));
        optSubmittalPurpose->add(i, option);
    }

    txtPurposeOther = makeChild<TextBox>(
        this, "txtPurposeOther", twipsRect(4980, 3270, 4500, 300),
        ChildSettings().named(QStringLiteral("Other purpose"),
                              QStringLiteral("The submittal's purpose in your own words")));
    txtPurposeOther->setVisible(false);

    Image3 = makeChild<Picture>(this, "Image3", QRect(),
                                ChildSettings().movedTo(twipsPoint(kLeft, kDetailsTop)),
                                PictureImage::Details);
    lblSubmittalDetails =
        makeChild<QLabel>(this, "lblSubmittalDetails", twipsRect(kTextLeft, kDetailsTop, 3600, 240),
                          caption(Caption::Heading), QStringLiteral("Submittal Details"));
    Line3 = makeChild<LineShape>(this, "Line3", QRect(), rule(kDetailsTop + 300));
    // The rules here are drawn in the lighter shade.
    for (LineShape* line : {Line1, Line2, Line3})
        line->setBorderColor(palette().color(QPalette::Mid));
    lblDetailsInfo = makeChild<QLabel>(
        this, "lblDetailsInfo", twipsRect(kTextLeft, kDetailsTop + 390, kInfoWidth, 450),
        caption(Caption::Paragraph),
        QStringLiteral("Choose the person's name that will appear on documents in the "
                       "submittal.  You can also change the date that  will be used for the "
                       "submittal."));

    lblIssuedBy = makeChild<QLabel>(this, "lblIssuedBy",
                                    twipsRect(kControlLeft, kDetailsTop + 960, 1260, 300),
                                    caption(Caption::Line), QStringLiteral("Issued By:"));
    cmbIssuedBy = makeChild<ComboBox>(
        this, "cmbIssuedBy", twipsRect(2160, kDetailsTop + 960, 3240, 315),
        ChildSettings().tipped(kIssuedByTip).named(QStringLiteral("Issued By"), kIssuedByTip));
    cmbIssuedBy->lineEdit()->setAccessibleName(QStringLiteral("Issued By"));
    cmbIssuedBy->lineEdit()->setAccessibleDescription(kIssuedByTip);
    lblIssuedBy->setBuddy(cmbIssuedBy);

    lblIssueDate = makeChild<QLabel>(this, "lblIssueDate",
                                     twipsRect(kControlLeft, kDetailsTop + 1380, 1260, 300),
                                     caption(Caption::Line), QStringLiteral("Submittal Date:"));
    pvdIssueDate =
        makeChild<DateEdit>(this, "pvdIssueDate", twipsRect(2160, kDetailsTop + 1380, 1680, 315));
    pvdIssueDate->setAccessibleTexts(
        QStringLiteral("Submittal Date"),
        QStringLiteral("The date used for the submittal; empty for no date"));
    lblIssueDate->setBuddy(pvdIssueDate);
    // The date's own text box and the box beside "Other" are read under the captions a user sees.
    labelForScreenReaders(pvdIssueDate->lineEdit(), lblIssueDate);
    labelForScreenReaders(txtPurposeOther, optSubmittalPurpose->button(kOther));

    setTabOrder(chkCoverLetter, chkBOM);
    setTabOrder(chkBOM, chkLabels);
    setTabOrder(chkLabels, optSubmittalPurpose->button(0));
    for (int i = 0; i < 7; ++i)
        setTabOrder(optSubmittalPurpose->button(i), optSubmittalPurpose->button(i + 1));
    setTabOrder(optSubmittalPurpose->button(7), txtPurposeOther);
    setTabOrder(txtPurposeOther, cmbIssuedBy);
    setTabOrder(cmbIssuedBy, pvdIssueDate);

    // Screen readers hear the boxes and the options under the headings above them.
    groupForScreenReaders(this, lblContentsHeading->text(), {chkCoverLetter, chkBOM, chkLabels});
    QList<QWidget*> purposeOptions;
    for (int i = 0; i < 8; ++i)
        purposeOptions.append(optSubmittalPurpose->button(i));
    groupForScreenReaders(this, lblSubmittalPurpose->text(), purposeOptions);

    resize(twipsToPixels(kPanelWidth), twipsToPixels(kPanelHeight));

    connect(chkCoverLetter, &CheckBox::valueChanged, this, [this] { chkCoverLetter_Click(); });
    connect(chkBOM, &CheckBox::valueChanged, this, [this] { chkBOM_Click(); });
    connect(chkLabels, &CheckBox::valueChanged, this, [this] { chkLabels_Click(); });
    connect(cmbIssuedBy, &ComboBox::changed, this, [this] { cmbIssuedBy_Change(); });
    connect(cmbIssuedBy, &ComboBox::clicked, this, [this] { cmbIssuedBy_Click(); });
    connect(optSubmittalPurpose, &OptionGroup::optionClicked, this,
            [this](int index) { optSubmittalPurpose_Click(index); });
    connect(txtPurposeOther, &TextBox::keyUp, this, [this] { txtPurposeOther_KeyUp(); });
    connect(pvdIssueDate, &DateEdit::validate, this, [this] { pvdIssueDate_Validate(); });

    UserControl_Initialize();
}

ctlGeneralInfo::~ctlGeneralInfo()
{
    disconnectCriteria();
}

void ctlGeneralInfo::UserControl_Initialize()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("UserControl_Initialize()")),
                   Ending::logOnly(), [&] {
                       const auto services = ZebObjects::Runtime::applicationServices();
                       const QStringList names = objectRef(services).IssuedByNames();
                       if (names.size() > std::numeric_limits<qint16>::max())
                           raiseOverflow();
                       const auto count = static_cast<qint16>(names.size());
                       for (qint32 i = 1; i <= count; ++i)
                           cmbIssuedBy->AddItem(names.at(i - 1));
                       // The 16-bit counter cannot step past its last value.
                       if (count == std::numeric_limits<qint16>::max())
                           raiseOverflow();
                   });
}

void ctlGeneralInfo::UserControl_Resize()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("UserControl_Resize()")),
                   Ending::logOnly(), [&] {
                       const int right = twipsToPixels(pixelsToTwips(ScaleWidth()) - kLineMargin);
                       Line1->setX2(right);
                       Line2->setX2(right);
                       Line3->setX2(right);
                   });
}

// --- the Criteria property

std::shared_ptr<ZebObjects::Submittal> ctlGeneralInfo::Criteria() const
{
    return ErrorPath::run(Procedure::untraced(this, QStringLiteral("Criteria() - Property Get")),
                          Ending::propagate(), [&] { return mCriteria; });
}

void ctlGeneralInfo::setCriteria(std::shared_ptr<ZebObjects::Submittal> criteria)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("Criteria() - Property Set")),
                   Ending::propagate(), [&] {
                       disconnectCriteria();
                       mCriteria = std::move(criteria);
                       connectCriteria();
                       if (mCriteria)
                           Populate();
                   });
}

void ctlGeneralInfo::disconnectCriteria()
{
    for (const auto& c : std::as_const(mConnections))
        disconnect(c);
    mConnections.clear();
}

void ctlGeneralInfo::connectCriteria()
{
    ZebObjects::Submittal* c = mCriteria.get();
    if (!c)
        return;
    using ZebObjects::Submittal;
    mConnections = {
        connect(c, &Submittal::CoverLetterChanged, this,
                [this] { mCriteria_CoverLetterChanged(); }),
        connect(c, &Submittal::BOMChanged, this, [this] { mCriteria_BOMChanged(); }),
        connect(c, &Submittal::LabelsChanged, this, [this] { mCriteria_LabelsChanged(); }),
        connect(c, &Submittal::SubmittalDateChanged, this,
                [this] { mCriteria_SubmittalDateChanged(); }),
        connect(c, &Submittal::IssuedByChanged, this, [this] { mCriteria_IssuedByChanged(); }),
        connect(c, &Submittal::SubmittalPurposeChanged, this,
                [this](qint16 newIndex) { mCriteria_SubmittalPurposeChanged(newIndex); }),
    };
}

// --- showing the submittal

void ctlGeneralInfo::Populate()
{
    // Log only; a failure of the log itself goes on to the property that called Populate.
    ErrorPath::runOrThrow(
        Procedure::untraced(this, QStringLiteral("Populate()")), Ending::logOnly(), [&] {
            ZebObjects::Submittal& c = objectRef(mCriteria);
            cmbIssuedBy->setText(c.IssuedBy());
            showSubmittalDate();
            chkCoverLetter->setValue(c.IncludeCoverLetter() ? 1 : 0);
            chkBOM->setValue(c.IncludeBOM() ? 1 : 0);
            chkLabels->setValue(c.IncludeLabels() ? 1 : 0);
            // Selecting runs the option's click, which writes the purpose first.
            optSubmittalPurpose->button(c.SubmittalPurposeIndex())->setValue(true);
            if (optSubmittalPurpose->button(kOther)->value())
                txtPurposeOther->setText(c.SubmittalPurpose());
        });
}

void ctlGeneralInfo::showSubmittalDate()
{
    const QString date = objectRef(mCriteria).SubmittalDate();
    if (!date.isEmpty())
        pvdIssueDate->setIsoText(date);
    else
        pvdIssueDate->setNull();
}

// --- user events

void ctlGeneralInfo::chkCoverLetter_Click()
{
    ErrorPath::run(
        Procedure::untraced(this, QStringLiteral("chkCoverLetter_Click()")), Ending::report(),
        [&] { objectRef(mCriteria).setIncludeCoverLetter(chkCoverLetter->value() == 1); });
}

void ctlGeneralInfo::chkBOM_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("chkBOM_Click()")), Ending::report(),
                   [&] { objectRef(mCriteria).setIncludeBOM(chkBOM->value() == 1); });
}

void ctlGeneralInfo::chkLabels_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("chkLabels_Click()")), Ending::report(),
                   [&] { objectRef(mCriteria).setIncludeLabels(chkLabels->value() == 1); });
}

void ctlGeneralInfo::cmbIssuedBy_Change()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("cmbIssuedBy_Change()")),
                   Ending::report(),
                   [&] { objectRef(mCriteria).setIssuedBy(cmbIssuedBy->text()); });
}

void ctlGeneralInfo::cmbIssuedBy_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("cmbIssuedBy_Click()")),
                   Ending::report(),
                   [&] { objectRef(mCriteria).setIssuedBy(cmbIssuedBy->text()); });
}

void ctlGeneralInfo::optSubmittalPurpose_Click(int index)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("optSubmittalPurpose_Click()")),
                   Ending::report(), [&] {
                       ZebObjects::Submittal& c = objectRef(mCriteria);
                       c.setSubmittalPurpose(c.SelectPurpose(static_cast<qint16>(index)));
                       if (index == kOther) {
                           txtPurposeOther->setVisible(true);
                           txtPurposeOther->raise();
                           txtPurposeOther->setFocus();
                       } else {
                           txtPurposeOther->setVisible(false);
                       }
                   });
}

void ctlGeneralInfo::txtPurposeOther_KeyUp()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("txtPurposeOther_KeyUp()")),
                   Ending::report(),
                   [&] { objectRef(mCriteria).setSubmittalPurpose(txtPurposeOther->text()); });
}

void ctlGeneralInfo::pvdIssueDate_Validate()
{
    ErrorPath::run(Procedure::untraced(QStringLiteral("ctlGeneralInfo"),
                                       QStringLiteral("pvdIssueDate_Validate")),
                   Ending::report(), [&] {
                       ZebObjects::Submittal& c = objectRef(mCriteria);
                       if (pvdIssueDate->isNull())
                           c.setSubmittalDate(QString());
                       else
                           c.setSubmittalDate(pvdIssueDate->isoText());
                   });
}

// --- the submittal's events

void ctlGeneralInfo::mCriteria_CoverLetterChanged()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mCriteria_CoverLetterChanged()")),
                   Ending::report(), [&] {
                       ZebObjects::Submittal& c = objectRef(mCriteria);
                       if ((chkCoverLetter->value() == 1) != c.IncludeCoverLetter())
                           chkCoverLetter->setValue(c.IncludeCoverLetter() ? 1 : 0);
                   });
}

void ctlGeneralInfo::mCriteria_BOMChanged()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mCriteria_BOMChanged()")),
                   Ending::report(), [&] {
                       ZebObjects::Submittal& c = objectRef(mCriteria);
                       if ((chkBOM->value() == 1) != c.IncludeBOM())
                           chkBOM->setValue(c.IncludeBOM() ? 1 : 0);
                   });
}

void ctlGeneralInfo::mCriteria_LabelsChanged()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mCriteria_LabelsChanged()")),
                   Ending::report(), [&] {
                       ZebObjects::Submittal& c = objectRef(mCriteria);
                       if ((chkLabels->value() == 1) != c.IncludeLabels())
                           chkLabels->setValue(c.IncludeLabels() ? 1 : 0);
                   });
}

void ctlGeneralInfo::mCriteria_SubmittalDateChanged()
{
    // No comparison: the date is written only when the editor is left, never on a change.
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mCriteria_SubmittalDateChanged()")),
                   Ending::report(), [&] { showSubmittalDate(); });
}

void ctlGeneralInfo::mCriteria_IssuedByChanged()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mCriteria_IssuedByChanged()")),
                   Ending::report(), [&] {
                       ZebObjects::Submittal& c = objectRef(mCriteria);
                       if (cmbIssuedBy->text() != c.IssuedBy())
                           cmbIssuedBy->setText(c.IssuedBy());
                   });
}

void ctlGeneralInfo::mCriteria_SubmittalPurposeChanged(qint16 newIndex)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mCriteria_SubmittalPurposeChanged()")),
                   Ending::report(), [&] {
                       OptionButton* option = optSubmittalPurpose->button(newIndex);
                       if (!option->value())
                           option->setValue(true);
                       if (newIndex == kOther) {
                           ZebObjects::Submittal& c = objectRef(mCriteria);
                           if (txtPurposeOther->text() != c.SubmittalPurpose())
                               txtPurposeOther->setText(c.SubmittalPurpose());
                       }
                   });
}

}  // namespace ZebSubCtl
