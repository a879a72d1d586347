#pragma once

#include "zebobjectscontracts_export.h"

#include <QObject>
#include <QString>

#include <memory>

namespace ZebObjects {

class CoverLetter;
class Recipients;

// What a submittal contains, why it is sent, who issues it and when. Events are raised
// synchronously, after the member has changed, whoever changed it.
class ZEBOBJECTSCONTRACTS_EXPORT Submittal : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    ~Submittal() override = default;

    virtual QString IssuedBy() const = 0;
    virtual void setIssuedBy(const QString& name) = 0;
    // The date as ISO text ("2026-11-21"); empty for no date.
    virtual QString SubmittalDate() const = 0;
    virtual void setSubmittalDate(const QString& date) = 0;
    virtual bool IncludeCoverLetter() const = 0;
    virtual void setIncludeCoverLetter(bool include) = 0;
    // May be none.
    virtual std::shared_ptr<ZebObjects::CoverLetter> CoverLetter() const = 0;
    virtual bool IncludeBOM() const = 0;
    virtual void setIncludeBOM(bool include) = 0;
    virtual bool IncludeLabels() const = 0;
    virtual void setIncludeLabels(bool include) = 0;
    virtual std::shared_ptr<ZebObjects::Recipients> Recipients() const = 0;
    virtual QString SubmittalPurpose() const = 0;
    virtual void setSubmittalPurpose(const QString& purpose) = 0;
    // Records purpose option index (0 to 7) as chosen and returns the text that goes with it.
    virtual QString SelectPurpose(qint16 index) = 0;
    // The chosen purpose option, 0 to 7.
    virtual qint16 SubmittalPurposeIndex() const = 0;

signals:
    void SubmittalDateChanged();
    void CoverLetterChanged();
    void BOMChanged();
    void LabelsChanged();
    void IssuedByChanged();
    void SubmittalPurposeChanged(qint16 newIndex);
};

}  // namespace ZebObjects
