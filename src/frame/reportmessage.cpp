#include "frame/reportmessage.h"

#include "frame/messageboxes.h"

namespace ZebSubCtl {

namespace {
const QString kCrLf = QStringLiteral("\r\n");
const QString kCannot = QStringLiteral("The requested operation cannot be completed.");
const QString kCouldNot = QStringLiteral("The requested operation could not be completed.  ");

QString numberDashDescription(qint32 number, const QString& description)
{
    return QString::number(number) + QStringLiteral(" - ") + description;
}

QString errorTitle(const ErrorInfo& e)
{
    return QStringLiteral("Error: ") + numberDashDescription(e.Number, e.Description);
}
}  // namespace

qint16 narrowTo16(qint32 value)
{
    if (value < -32768 || value > 32767)
        throw Failure(ZebObjects::ErrorNumber::Overflow, QStringLiteral("ZebSubCtl"),
                      QStringLiteral("Overflow"));
    return qint16(value);
}

ReportMessage ReportMessage::forFailure(ReportVariant variant, const ErrorInfo& e)
{
    const int warn = MsgBoxStyle::Exclamation;
    switch (variant) {
    case ReportVariant::Plain:
        return {kCannot, warn, numberDashDescription(e.Number, e.Description)};
    case ReportVariant::TextDelete:
        return {kCannot + QStringLiteral("  ") + e.Description, warn, errorTitle(e)};
    case ReportVariant::DialogOK:
        return {kCouldNot + e.Description, warn, numberDashDescription(e.Number, e.Description)};
    case ReportVariant::ItemCheck: return {kCouldNot + e.Description, warn, errorTitle(e)};
    case ReportVariant::CustomerRemoved:
        return {QStringLiteral("Unable to remove the customer.  ") + e.Description, warn,
                errorTitle(e)};
    case ReportVariant::Remove:
        return {QStringLiteral("An error occurred while deleting the selected customer.")
                    + e.Description,
                warn, errorTitle(e)};
    case ReportVariant::RemoveAll:
        return {QStringLiteral("An error occurred while removing all customers, some customers "
                               "could not be removed.  ")
                    + kCrLf + e.Description,
                warn, errorTitle(e)};
    case ReportVariant::Search: {
        const qint16 narrowed = narrowTo16(e.Number);
        return {kCouldNot + QStringLiteral("An error occurred whilde performing the search."), warn,
                QStringLiteral("Error Number: ") + numberDashDescription(narrowed, e.Description)};
    }
    case ReportVariant::Add:
        if (e.Number == ZebObjects::ErrorNumber::KeyAlreadyInCollection)
            return {QStringLiteral("The customer has already been added."),
                    MsgBoxStyle::Information, QStringLiteral("Duplicate Customer")};
        return {QStringLiteral("An error occurred while adding the customer.") + kCrLf
                    + e.Description,
                warn, QString::number(e.Number)};
    }
    return {kCannot, warn, numberDashDescription(e.Number, e.Description)};
}

}  // namespace ZebSubCtl
