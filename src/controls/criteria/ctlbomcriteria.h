#pragma once

#include "zebsubctl_export.h"

#include "frame/usercontrol.h"

#include <QList>
#include <QMetaObject>

#include <memory>

class QLabel;

namespace ZebObjects {
class BOM;
}  // namespace ZebObjects

namespace ZebSubCtl {

class CheckBox;
class LineShape;
class Picture;
class ctlTextSelect;

/// The bill of materials page: which columns the bill of materials prints, and whether default
/// remarks print at its bottom, with the list of those remarks. Every tick is written to the
/// bound BOM options at once. Registered as "ZebSubmittalControls.ctlBOMCriteria".
class ZEBSUBCTL_EXPORT ctlBOMCriteria : public UserControl {
    Q_OBJECT
    Q_CLASSINFO("ToolTip",
                "Bill of materials options: which columns the bill of materials shows and its "
                "default remarks.")
    Q_CLASSINFO("WhatsThis",
                "ctlBOMCriteria sets how a submittal's bill of materials looks: the column "
                "options and the default remarks. Bind it to the submittal's BOM object through "
                "its BOM property at run time.")
    Q_CLASSINFO("IncludeFile", "controls/criteria/ctlbomcriteria.h")
    /// The bound bill of materials options; none until the host binds them.
    Q_PROPERTY(std::shared_ptr<ZebObjects::BOM> BOM READ BOM WRITE setBOM DESIGNABLE false)
public:
    /// Creates the page, unbound, as a child of parent.
    explicit ctlBOMCriteria(QWidget* parent = nullptr);
    ~ctlBOMCriteria() override;

    /// The bound options, or none.
    std::shared_ptr<ZebObjects::BOM> BOM() const;
    /// Binds the options (none is taken as well) and shows them.
    void setBOM(std::shared_ptr<ZebObjects::BOM> bom);

protected:
    void UserControl_Resize() override;

private:
    void Populate();

    void chkBrand_Click();
    void chkCatNum_Click();
    void chkDefaultRemarks_Click();
    void chkDesc_Click();
    void chkGroupCode_Click();
    void chkLineComments_Click();
    void chkMfr_Click();
    void chkMTO_Click();
    void chkQuantity_Click();
    void chkType_Click();
    void mBOM_RemarksPopulated();

    /// The body of the nine column handlers: the box's tick written to its flag.
    void writeColumn(const char* label, CheckBox* box, void (ZebObjects::BOM::*write)(bool));

    CheckBox* chkMTO;
    ::ZebSubCtl::ctlTextSelect* ctlTextSelect;
    CheckBox* chkDefaultRemarks;
    CheckBox* chkGroupCode;
    CheckBox* chkLineComments;
    CheckBox* chkDesc;
    CheckBox* chkCatNum;
    CheckBox* chkMfr;
    CheckBox* chkBrand;
    CheckBox* chkType;
    CheckBox* chkQuantity;
    QLabel* lblDefaultRemarks;
    LineShape* lineRemarks;
    QLabel* lblIncludeInfo;
    LineShape* lineInclude;
    QLabel* lblIncludeOnCoverLetter;
    Picture* Image2;

    std::shared_ptr<ZebObjects::BOM> mBOM;
    QList<QMetaObject::Connection> mConnections;
};

}  // namespace ZebSubCtl
