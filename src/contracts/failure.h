#pragma once

#include "zebobjectscontracts_export.h"

#include <QString>
#include <exception>

namespace ZebObjects {

/// The run time's own error numbers, as business objects and controls raise them. The main page's
/// table says when each is raised.
namespace ErrorNumber {
/// 5: invalid procedure call or argument.
inline constexpr qint32 InvalidProcedureCall = 5;
/// 6: a number does not fit its type.
inline constexpr qint32 Overflow = 6;
/// 7: out of memory.
inline constexpr qint32 OutOfMemory = 7;
/// 9: a position or index out of range.
inline constexpr qint32 SubscriptOutOfRange = 9;
/// 11: division by zero.
inline constexpr qint32 DivisionByZero = 11;
/// 13: a value of the wrong type.
inline constexpr qint32 TypeMismatch = 13;
/// 51: internal error.
inline constexpr qint32 InternalError = 51;
/// 57: the device or file could not be read or written.
inline constexpr qint32 DeviceIOError = 57;
/// 61: the disk is full.
inline constexpr qint32 DiskFull = 61;
/// 70: permission denied.
inline constexpr qint32 PermissionDenied = 70;
/// 75: a path or file cannot be accessed.
inline constexpr qint32 PathFileAccessError = 75;
/// 321: a file is not in the expected format (a damaged office file).
inline constexpr qint32 BadFileFormat = 321;
/// 340: a control array element does not exist (a row or option that is gone).
inline constexpr qint32 ControlArrayElementMissing = 340;
/// 380: a value a property does not accept.
inline constexpr qint32 InvalidPropertyValue = 380;
/// 91: object reference not set (an empty reference was used).
inline constexpr qint32 ObjectNotSet = 91;
/// 429: no control is registered under the identifier.
inline constexpr qint32 CannotCreateObject = 429;
/// 438: the object has no such property or method.
inline constexpr qint32 NoSuchProperty = 438;
/// 457: the key is already in the collection.
inline constexpr qint32 KeyAlreadyInCollection = 457;
/// 35600: an index out of bounds in a list view.
inline constexpr qint32 IndexOutOfBounds = 35600;
/// 35601: no element with that key.
inline constexpr qint32 ElementNotFound = 35601;
/// 35602: the key is already used in the list.
inline constexpr qint32 KeyNotUnique = 35602;
}  // namespace ErrorNumber

/// The current failure as an error path sees it. Fields are read in this order.
struct ErrorInfo {
    /// The error number; 0 when there is no failure.
    qint32 Number = 0;
    /// Who raised the failure (a component or library name).
    QString Source;
    /// The failure in words, as a message box shows it.
    QString Description;

    /// Equal when number, source and description are.
    friend bool operator==(const ErrorInfo&, const ErrorInfo&) = default;
};

/// The one failure type of the controls and the business objects. Members never return error
/// codes; they throw this.
class ZEBOBJECTSCONTRACTS_EXPORT Failure : public std::exception {
public:
    /// A failure with the given number, source and description.
    Failure(qint32 number, QString source, QString description);
    /// A failure carrying info.
    explicit Failure(ErrorInfo info);

    /// 380 "Invalid property value", raised by source.
    static Failure invalidPropertyValue(QString source = QStringLiteral("ZebSubCtl"));
    /// 340 "Control array element 'index' doesn't exist", raised by source.
    static Failure controlArrayElementMissing(qint32 index,
                                              QString source = QStringLiteral("ZebSubCtl"));
    /// 35600 "Index out of bounds", raised by source.
    static Failure indexOutOfBounds(QString source);

    /// The error number (see ErrorNumber).
    qint32 Number() const { return m_info.Number; }
    /// Who raised the failure.
    const QString& Source() const { return m_info.Source; }
    /// The failure in words.
    const QString& Description() const { return m_info.Description; }
    /// Number, source and description together.
    const ErrorInfo& info() const { return m_info; }

    /// The number and description as UTF-8, for logs outside the library.
    const char* what() const noexcept override;

private:
    ErrorInfo m_info;
    QByteArray m_what;
};

}  // namespace ZebObjects
