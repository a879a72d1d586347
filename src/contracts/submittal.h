#pragma once

#include "zebobjectscontracts_export.h"

#include <QObject>
#include <QString>

#include <memory>

namespace ZebObjects {

class CoverLetter;
class Recipients;

/// What a submittal contains, why it is sent, who issues it and when. Events are raised
/// synchronously, after the member has changed, whoever changed it.
class ZEBOBJECTSCONTRACTS_EXPORT Submittal : public QObject {
    Q_OBJECT
public:
    /// Constructs the object with Qt's parent, as QObject does.
    using QObject::QObject;
    ~Submittal() override = default;

    /// The name the submittal is issued by; one of ApplicationServices::IssuedByNames() or empty.
    virtual QString IssuedBy() const = 0;
    /// Sets the issuer and raises IssuedByChanged.
    virtual void setIssuedBy(const QString& name) = 0;
    /// The date as ISO text ("2026-11-21"); empty for no date.
    virtual QString SubmittalDate() const = 0;
    /// Sets the date (ISO text, empty for none) and raises SubmittalDateChanged.
    virtual void setSubmittalDate(const QString& date) = 0;
    /// Whether the package has cover letters.
    virtual bool IncludeCoverLetter() const = 0;
    /// Sets whether the package has cover letters; raises CoverLetterChanged.
    virtual void setIncludeCoverLetter(bool include) = 0;
    /// May be none.
    virtual std::shared_ptr<ZebObjects::CoverLetter> CoverLetter() const = 0;
    /// Whether the package has a bill of materials.
    virtual bool IncludeBOM() const = 0;
    /// Sets whether the package has a bill of materials; raises BOMChanged.
    virtual void setIncludeBOM(bool include) = 0;
    /// Whether the package has mailing labels.
    virtual bool IncludeLabels() const = 0;
    /// Sets whether the package has mailing labels; raises LabelsChanged.
    virtual void setIncludeLabels(bool include) = 0;
    /// The addressees of the submittal.
    virtual std::shared_ptr<ZebObjects::Recipients> Recipients() const = 0;
    /// The text that says why the submittal is sent.
    virtual QString SubmittalPurpose() const = 0;
    /// Sets the purpose text, keeping the chosen option.
    virtual void setSubmittalPurpose(const QString& purpose) = 0;
    /// Records purpose option index (0 to 7) as chosen and returns the text that goes with it.
    virtual QString SelectPurpose(qint16 index) = 0;
    /// The chosen purpose option, 0 to 7.
    virtual qint16 SubmittalPurposeIndex() const = 0;

signals:
    /// Raised after the date has changed.
    void SubmittalDateChanged();
    /// Raised after IncludeCoverLetter has changed.
    void CoverLetterChanged();
    /// Raised after IncludeBOM has changed.
    void BOMChanged();
    /// Raised after IncludeLabels has changed.
    void LabelsChanged();
    /// Raised after the issuer has changed.
    void IssuedByChanged();
    /// Raised after a purpose option was chosen; newIndex is the option (0 to 7).
    void SubmittalPurposeChanged(qint16 newIndex);
};

}  // namespace ZebObjects
