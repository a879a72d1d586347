#pragma once

#include "zebsubctl_export.h"

#include "frame/usercontrol.h"

#include <QList>
#include <QMetaObject>

#include <memory>

class QLabel;

namespace ZebObjects {
class Submittal;
}

namespace ZebSubCtl {

class CheckBox;
class ComboBox;
class DateEdit;
class LineShape;
class OptionButton;
class OptionGroup;
class Picture;
class TextBox;

/// The first page of a submittal's set-up: which documents it contains, its purpose, who issues
/// it and its date. Every choice is written into the bound submittal at once; the panel follows
/// the submittal's change events, so two panels on one submittal stay in step. Registered as
/// "ZebSubmittalControls.ctlGeneralInfo".
class ZEBSUBCTL_EXPORT ctlGeneralInfo : public UserControl {
    Q_OBJECT
    Q_CLASSINFO("ToolTip", "Submittal contents, purpose, issuer and date.")
    Q_CLASSINFO("WhatsThis",
                "ctlGeneralInfo sets what a submittal contains (cover letter, bill of materials, "
                "labels...), its purpose, who issues it and its date. Bind it to the submittal "
                "through its Criteria property at run time.")
    Q_CLASSINFO("IncludeFile", "controls/criteria/ctlgeneralinfo.h")
    /// The bound submittal; none until the host binds one.
    Q_PROPERTY(std::shared_ptr<ZebObjects::Submittal> Criteria READ Criteria WRITE setCriteria
                   DESIGNABLE false)
public:
    /// Creates the page, unbound, as a child of parent.
    explicit ctlGeneralInfo(QWidget* parent = nullptr);
    ~ctlGeneralInfo() override;

    /// The bound submittal, or none.
    std::shared_ptr<ZebObjects::Submittal> Criteria() const;
    /// Binds the submittal and shows it; binding none only drops the old one's events.
    void setCriteria(std::shared_ptr<ZebObjects::Submittal> criteria);

protected:
    void UserControl_Resize() override;

private:
    void UserControl_Initialize();
    void Populate();
    /// The date editor shows the submittal's date text, or no date for the empty text.
    void showSubmittalDate();
    void connectCriteria();
    void disconnectCriteria();

    void chkCoverLetter_Click();
    void chkBOM_Click();
    void chkLabels_Click();
    void cmbIssuedBy_Change();
    void cmbIssuedBy_Click();
    void optSubmittalPurpose_Click(int index);
    void txtPurposeOther_KeyUp();
    void pvdIssueDate_Validate();

    void mCriteria_CoverLetterChanged();
    void mCriteria_BOMChanged();
    void mCriteria_LabelsChanged();
    void mCriteria_SubmittalDateChanged();
    void mCriteria_IssuedByChanged();
    void mCriteria_SubmittalPurposeChanged(qint16 newIndex);

    Picture* Image1;
    QLabel* lblContentsHeading;
    LineShape* Line1;
    QLabel* lblContentsInfo;
    CheckBox* chkCoverLetter;
    CheckBox* chkBOM;
    CheckBox* chkLabels;
    Picture* Image2;
    QLabel* lblSubmittalPurpose;
    LineShape* Line2;
    QLabel* lblPurposeInfo;
    OptionGroup* optSubmittalPurpose;
    TextBox* txtPurposeOther;
    Picture* Image3;
    QLabel* lblSubmittalDetails;
    LineShape* Line3;
    QLabel* lblDetailsInfo;
    QLabel* lblIssuedBy;
    ComboBox* cmbIssuedBy;
    QLabel* lblIssueDate;
    DateEdit* pvdIssueDate;

    std::shared_ptr<ZebObjects::Submittal> mCriteria;
    QList<QMetaObject::Connection> mConnections;
};

}  // namespace ZebSubCtl
