#pragma once

#include "zebsubctl_export.h"

#include "frame/usercontrol.h"

#include <memory>

class QLabel;

namespace ZebObjects {
class Submittal;
}  // namespace ZebObjects

namespace ZebSubCtl {

class CheckBox;
class LineShape;
class OptionButton;
class Picture;

/// The cover letter page: what the submittal's cover letter includes, and whether several
/// recipients get one letter each or the same letter. Shows the submittal when it is bound and
/// writes every click through to its cover letter options; it follows no events. Registered as
/// "ZebSubmittalControls.ctlCvrLtrCriteria".
class ZEBSUBCTL_EXPORT ctlCvrLtrCriteria : public UserControl {
    Q_OBJECT
    Q_CLASSINFO("ToolTip", "Cover letter options of a submittal.")
    Q_CLASSINFO("WhatsThis",
                "ctlCvrLtrCriteria sets the cover letter options of a submittal. Bind it to the "
                "submittal through its Submittal property at run time.")
    Q_CLASSINFO("IncludeFile", "controls/criteria/ctlcvrltrcriteria.h")
    /// The bound submittal whose cover letter options show; none until the host binds one.
    Q_PROPERTY(std::shared_ptr<ZebObjects::Submittal> Submittal READ Submittal WRITE setSubmittal
                   DESIGNABLE false)
public:
    /// Creates the page, unbound, as a child of parent.
    explicit ctlCvrLtrCriteria(QWidget* parent = nullptr);
    ~ctlCvrLtrCriteria() override;

    /// The bound submittal, or none.
    std::shared_ptr<ZebObjects::Submittal> Submittal() const;
    /// Binds the submittal and shows it; a failure while showing it reaches the caller.
    void setSubmittal(std::shared_ptr<ZebObjects::Submittal> submittal);

private:
    void Populate();

    void chkDefaultParagraph_Click();
    void chkIncludeLogo_Click();
    void chkRemarks_Click();
    void optMultipleCoverLetters_Click();
    void optOneCoverLetter_Click();

    CheckBox* chkIncludeCC;
    OptionButton* optMultipleCoverLetters;
    OptionButton* optOneCoverLetter;
    CheckBox* chkDefaultParagraph;
    CheckBox* chkRemarks;
    CheckBox* chkIncludeLogo;
    Picture* imgCheck;
    Picture* imgPeopleEnabled;
    QLabel* lblMultipleInstructions;
    QLabel* lblMultipleRecipients;
    LineShape* Line2;
    QLabel* lblIncludeInfo;
    QLabel* lblIncludeOnCoverLetter;
    LineShape* Line1;
    Picture* imgPeopleDisabled;

    std::shared_ptr<ZebObjects::Submittal> mSubmittal;
};

}  // namespace ZebSubCtl
