#pragma once

#include "zebsubctl_export.h"

#include "contracts/failure.h"

#include <QString>

namespace ZebSubCtl {

using ZebObjects::ErrorInfo;
using ZebObjects::Failure;

// The message boxes an error path may show. Each procedure that reports uses exactly one.
enum class ReportVariant {
    Plain,  // every untraced handler that reports
    TextDelete,  // ctlTextSelect.mnu_Delete_Click
    DialogOK,  // frmEditText.cmdOK_Click
    ItemCheck,  // ctlCustSelect.lsvCustomers_ItemCheck
    CustomerRemoved,  // ctlCustSelect.mCustomers_CustomerRemoved
    Remove,  // ctlCustSelect.cmdRemove_Click
    RemoveAll,  // ctlCustSelect.cmdRemoveAll_Click
    Search,  // ctlCustSelect.cmdSearch_Click
    Add,  // ctlCustSelect.cmdAdd_Click: duplicate (457) or other
};

struct ZEBSUBCTL_EXPORT ReportMessage {
    QString prompt;
    int style = 0;
    QString title;

    // The box for a failure. The prompts are the product's own, odd spacing and spelling
    // included. Search narrows the number to 16 bits first: a number outside -32768..32767
    // fails with overflow (6).
    static ReportMessage forFailure(ReportVariant variant, const ErrorInfo& error);
};

// A 32-bit number narrowed to 16 bits, failing with overflow (6) when it does not fit.
ZEBSUBCTL_EXPORT qint16 narrowTo16(qint32 value);

}  // namespace ZebSubCtl
