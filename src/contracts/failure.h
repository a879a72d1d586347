#pragma once

#include "zebobjectscontracts_export.h"

#include <QString>
#include <exception>

namespace ZebObjects {

// The run time's own error numbers, as business objects and controls raise them.
namespace ErrorNumber {
inline constexpr qint32 InvalidProcedureCall = 5;
inline constexpr qint32 Overflow = 6;
inline constexpr qint32 OutOfMemory = 7;
inline constexpr qint32 SubscriptOutOfRange = 9;
inline constexpr qint32 DivisionByZero = 11;
inline constexpr qint32 TypeMismatch = 13;
inline constexpr qint32 InternalError = 51;
inline constexpr qint32 DeviceIOError = 57;
inline constexpr qint32 DiskFull = 61;
inline constexpr qint32 PermissionDenied = 70;
inline constexpr qint32 PathFileAccessError = 75;
inline constexpr qint32 BadFileFormat = 321;
inline constexpr qint32 ObjectNotSet = 91;
inline constexpr qint32 CannotCreateObject = 429;
inline constexpr qint32 NoSuchProperty = 438;
inline constexpr qint32 KeyAlreadyInCollection = 457;
inline constexpr qint32 ElementNotFound = 35601;
inline constexpr qint32 KeyNotUnique = 35602;
}  // namespace ErrorNumber

// The current failure as an error path sees it. Fields are read in this order.
struct ErrorInfo {
    qint32 Number = 0;
    QString Source;
    QString Description;

    friend bool operator==(const ErrorInfo&, const ErrorInfo&) = default;
};

// The one failure type of the controls and the business objects. Members never return error
// codes; they throw this.
class ZEBOBJECTSCONTRACTS_EXPORT Failure : public std::exception {
public:
    Failure(qint32 number, QString source, QString description);
    explicit Failure(ErrorInfo info);

    qint32 Number() const { return m_info.Number; }
    const QString& Source() const { return m_info.Source; }
    const QString& Description() const { return m_info.Description; }
    const ErrorInfo& info() const { return m_info; }

    const char* what() const noexcept override;

private:
    ErrorInfo m_info;
    QByteArray m_what;
};

}  // namespace ZebObjects
