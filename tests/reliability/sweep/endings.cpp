// What each procedure of each component does with a failure: the table the sweep checks the
// controls against. It is written out here on its own, not read from the controls, so that a
// control that ends a procedure the wrong way shows up.
#include "sweep/sweep.h"

#include <QHash>

namespace ZebSweep {

namespace {

using Table = QHash<QString, Rule>;

void add(Table& t, End end, std::initializer_list<const char*> labels, Box box = Box::Plain)
{
    for (const char* label : labels)
        t.insert(QString::fromLatin1(label), Rule{end, box});
}

QHash<QString, Table> makeTables()
{
    QHash<QString, Table> all;

    Table& text = all[QStringLiteral("ctlTextSelect")];
    add(text, End::Propagate,
        {"TextObjectType", "MaxLength", "AllowUpdate", "AllowReorder", "AllowSave", "TextObjects",
         "Populate", "showEditForm", "moveItemDown", "moveItemUp", "UpdateToolTipText",
         "HandleResize", "UserControl_Resize()"});
    add(text, End::Report, {"mnu_Delete_Click"}, Box::TextDelete);
    add(text, End::LogOnly, {"ListView_MouseMove()", "Clear()"});
    add(text, End::Report,
        {"cmdAdd_Click()",
         "cmdCancel_Click()",
         "txtNewComment_Change()",
         "cmdSave_Click()",
         "cmdMoveUp_Click()",
         "cmdMoveDown_Click()",
         "mnu_MoveUp_Click()",
         "mnu_MoveDown_Click()",
         "mnu_Edit_Click()",
         "ListView_DblClick()",
         "ListView_KeyUp()",
         "ListView_MouseUp()",
         "ListView_ItemCheck()",
         "mTextObjects_Changed()",
         "mTextObjects_ItemAdded()",
         "mTextObjects_ItemDeleted()",
         "mTextObjects_ItemInserted()",
         "mTextObjects_ItemMoved()",
         "mTextObjects_OrderSaved()",
         "UserControl_WriteProperties()",
         "UserControl_ReadProperties()"});

    Table& dialog = all[QStringLiteral("frmEditText")];
    add(dialog, End::Report, {"cmdOK_Click"}, Box::DialogOK);
    add(dialog, End::Propagate, {"TextObject() - Property Get", "TextObject() - Property Set"});
    add(dialog, End::Report, {"cmdCancel_Click()"});

    Table& general = all[QStringLiteral("ctlGeneralInfo")];
    add(general, End::Propagate, {"Criteria() - Property Set", "Criteria() - Property Get"});
    add(general, End::Report,
        {"chkCoverLetter_Click()", "mCriteria_CoverLetterChanged()", "chkBOM_Click()",
         "mCriteria_BOMChanged()", "chkLabels_Click()", "mCriteria_LabelsChanged()",
         "mCriteria_SubmittalDateChanged()", "cmbIssuedBy_Change()", "cmbIssuedBy_Click()",
         "mCriteria_IssuedByChanged()", "optSubmittalPurpose_Click()",
         "mCriteria_SubmittalPurposeChanged()", "txtPurposeOther_KeyUp()",
         "pvdIssueDate_Validate"});
    add(general, End::LogOnly, {"UserControl_Initialize()", "UserControl_Resize()", "Populate()"});

    Table& cover = all[QStringLiteral("ctlCvrLtrCriteria")];
    add(cover, End::Propagate, {"Submittal()", "Populate()"});
    add(cover, End::Report,
        {"chkDefaultParagraph_Click()", "chkIncludeLogo_Click()", "chkRemarks_Click()",
         "optMultipleCoverLetters_Click()", "optOneCoverLetter_Click()"});

    Table& bom = all[QStringLiteral("ctlBOMCriteria")];
    add(bom, End::Propagate, {"BOM (Property Get)", "BOM (Property Set)"});
    add(bom, End::Report,
        {"chkBrand_Click()", "chkCatNum_Click()", "chkDefaultRemarks_Click()", "chkDesc_Click()",
         "chkGroupCode_Click()", "chkLineComments_Click()", "chkMfr_Click()", "chkMTO_Click()",
         "chkQuantity_Click()", "chkType_Click()", "mBOM_RemarksPopulated()"});
    add(bom, End::LogOnly, {"UserControl_Resize()", "Populate()"});

    Table& labels = all[QStringLiteral("ctlLabelCriteria")];
    add(labels, End::Propagate, {"Labels() - Property Get"});
    add(labels, End::LogOnly,
        {"Populate()", "addField()", "removeField()", "sizeItUp()", "reorderSelectedItems()"});
    add(labels, End::Report,
        {"cmdAdd_Click()", "cmdRemove_Click()", "lsvAvailableItems_DblClick()",
         "lsvAvailableItems_KeyDown()", "lsvSelectedItems_DblClick()",
         "lsvSelectedItems_KeyDown()"});

    Table& row = all[QStringLiteral("ctlSubLine")];
    add(row, End::Propagate,
        {"LineNumber() - Property Get", "LineNumber() - Property Let", "LineItem() - Property Get",
         "LineItem() - Property Set", "Grayed() - Property Get", "Grayed() - Property Let"});
    add(row, End::LogOnly, {"Populate()"});
    add(row, End::Notice, {"UserControl_Resize()"});
    add(row, End::Report, {"chkSelect_Click()"});

    Table& rows = all[QStringLiteral("ctlSubLines")];
    add(rows, End::Propagate,
        {"LineHeight() - Property Get", "LineItems() - Property Get", "LineItems() - Property Set",
         "Clear()", "addNextLine()", "Populate()"});
    add(rows, End::Warning, {"UserControl_Resize()"});

    Table& viewer = all[QStringLiteral("ctlSubLineDsp")];
    add(viewer, End::Propagate, {"LineItems() - Property Get", "LineItems() - Property Set"});
    add(viewer, End::Warning, {"UserControl_Resize()"});
    add(viewer, End::Report, {"ctlSubLines_HeightChanged", "VScroll_Change()"});
    add(viewer, End::LogOnly, {"ViewableLines"});

    Table& customers = all[QStringLiteral("ctlCustSelect")];
    add(customers, End::Propagate,
        {"Customers", "AllowAdd", "AllowDelete", "ShowCheckboxes", "UserControl_Resize",
         "UserControl_WriteProperties", "UserControl_ReadProperties", "Populate"});
    add(customers, End::LogOnly, {"cmdClear_Click"});
    add(customers, End::Report, {"cmdAdd_Click"}, Box::Add);
    add(customers, End::Report, {"cmdRemove_Click"}, Box::Remove);
    add(customers, End::Report, {"cmdRemoveAll_Click"}, Box::RemoveAll);
    add(customers, End::Report, {"cmdSearch_Click"}, Box::Search);
    add(customers, End::Report, {"lsvCustomers_ItemCheck"}, Box::ItemCheck);
    add(customers, End::Report, {"mCustomers_CustomerRemoved"}, Box::CustomerRemoved);

    return all;
}

}  // namespace

std::optional<Rule> ruleFor(const QString& module, const QString& label)
{
    static const QHash<QString, Table> tables = makeTables();
    const auto table = tables.constFind(module);
    if (table == tables.cend())
        return std::nullopt;
    const auto rule = table->constFind(label);
    if (rule == table->cend())
        return std::nullopt;
    return *rule;
}

std::optional<ShownBox> expectedBox(Box box, const ZebObjects::ErrorInfo& error)
{
    constexpr int warning = 48;
    const QString n = QString::number(error.Number);
    const QString& d = error.Description;
    const QString crlf = QStringLiteral("\r\n");
    switch (box) {
    case Box::Plain:
        return ShownBox{QStringLiteral("The requested operation cannot be completed."), warning,
                        n + QStringLiteral(" - ") + d};
    case Box::TextDelete:
        return ShownBox{QStringLiteral("The requested operation cannot be completed.  ") + d,
                        warning, QStringLiteral("Error: ") + n + QStringLiteral(" - ") + d};
    case Box::DialogOK:
        return ShownBox{QStringLiteral("The requested operation could not be completed.  ") + d,
                        warning, n + QStringLiteral(" - ") + d};
    case Box::ItemCheck:
        return ShownBox{QStringLiteral("The requested operation could not be completed.  ") + d,
                        warning, QStringLiteral("Error: ") + n + QStringLiteral(" - ") + d};
    case Box::CustomerRemoved:
        return ShownBox{QStringLiteral("Unable to remove the customer.  ") + d, warning,
                        QStringLiteral("Error: ") + n + QStringLiteral(" - ") + d};
    case Box::Remove:
        return ShownBox{QStringLiteral("An error occurred while deleting the selected customer.")
                            + d,
                        warning, QStringLiteral("Error: ") + n + QStringLiteral(" - ") + d};
    case Box::RemoveAll:
        return ShownBox{QStringLiteral("An error occurred while removing all customers, some "
                                       "customers could not be removed.  ")
                            + crlf + d,
                        warning, QStringLiteral("Error: ") + n + QStringLiteral(" - ") + d};
    case Box::Search:
        if (error.Number < -32768 || error.Number > 32767)
            return std::nullopt;
        return ShownBox{QStringLiteral("The requested operation could not be completed.  An "
                                       "error occurred whilde performing the search."),
                        warning, QStringLiteral("Error Number: ") + n + QStringLiteral(" - ") + d};
    case Box::Add:
        if (error.Number == 457)
            return ShownBox{QStringLiteral("The customer has already been added."), 64,
                            QStringLiteral("Duplicate Customer")};
        return ShownBox{QStringLiteral("An error occurred while adding the customer.") + crlf + d,
                        warning, n};
    }
    return std::nullopt;
}

}  // namespace ZebSweep
