#include "rules/submittalrules.h"

#include "contracts/failure.h"

#include <QDate>

namespace ZebObjects {

namespace {
const QString kSource = QStringLiteral("ZebObjects.Submittal");
}

QStringList SubmittalRules::purposeCaptions()
{
    return {QStringLiteral("Request For Prior Approval"),
            QStringLiteral("Request For Approval"),
            QStringLiteral("Request For Approval As Submitted"),
            QStringLiteral("Request For Approval As Noted"),
            QStringLiteral("Resubmittal For Approval"),
            QStringLiteral("Corrections"),
            QStringLiteral("Record Only"),
            QStringLiteral("Other")};
}

QString SubmittalRules::selectPurpose(Purpose& purpose, qint16 index, bool& indexChanged)
{
    if (index < 0 || index > OtherPurpose)
        throw Failure(
            ErrorNumber::SubscriptOutOfRange, kSource,
            QStringLiteral("Subscript out of range: there is no purpose option %1").arg(index));
    const QString text = index == OtherPurpose ? purpose.otherText : purposeCaptions().at(index);
    indexChanged = index != purpose.index;
    purpose.index = index;
    return text;
}

bool SubmittalRules::writePurpose(Purpose& purpose, const QString& text)
{
    if (purpose.index == OtherPurpose)
        purpose.otherText = text;
    if (text == purpose.text)
        return false;
    purpose.text = text;
    return true;
}

void SubmittalRules::checkDate(const QString& date)
{
    if (!date.isEmpty() && !QDate::fromString(date, Qt::ISODate).isValid())
        throw Failure(ErrorNumber::TypeMismatch, kSource,
                      QStringLiteral("Type mismatch: \"%1\" is not a date of the form "
                                     "yyyy-mm-dd")
                          .arg(date));
}

}  // namespace ZebObjects
