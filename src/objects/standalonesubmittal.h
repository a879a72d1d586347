#pragma once

#include "zebobjects_export.h"

#include "contracts/submittal.h"
#include "objects/faultinjector.h"
#include "rules/submittalrules.h"

#include <QStringList>

namespace ZebObjects {

class StandaloneCoverLetter;
class StandaloneRecipients;

// An in-memory submittal. It starts with its own empty cover letter options and no recipients,
// no issuer, no date, nothing included, and purpose option 0.
//
// Change events are raised only when a write really changes the member: writing the value a
// member already holds raises nothing, which ends the panels' write-back echo at the model.
// SubmittalPurposeChanged is raised when either the purpose option or the purpose text changes,
// with the option chosen at that moment.
//
// Purpose option 7 ("Other") stands for a purpose of the user's own: the text written while
// option 7 is chosen is kept apart, and SelectPurpose(7) answers it, so choosing "Other" again
// (or showing the submittal again) brings the custom purpose back instead of a standard text.
//
// Member names for fault injection: "IssuedBy", "SubmittalDate", "IncludeCoverLetter",
// "CoverLetter", "IncludeBOM", "IncludeLabels", "Recipients", "SubmittalPurpose" (each also with
// "=" for its write), "SelectPurpose", "SubmittalPurposeIndex".
class ZEBOBJECTS_EXPORT StandaloneSubmittal : public Submittal, public FaultInjectable {
    Q_OBJECT
public:
    explicit StandaloneSubmittal(QObject* parent = nullptr);
    ~StandaloneSubmittal() override;

    // The standard texts of options 0 to 6, then "Other" for option 7.
    static QStringList purposeCaptions();
    static constexpr qint16 OtherPurpose = SubmittalRules::OtherPurpose;

    QString IssuedBy() const override;
    void setIssuedBy(const QString& name) override;
    QString SubmittalDate() const override;
    // Accepts ISO text ("2026-11-21") of a valid date, or the empty text; anything else fails
    // with type mismatch (13) and leaves the date as it was.
    void setSubmittalDate(const QString& date) override;
    bool IncludeCoverLetter() const override;
    void setIncludeCoverLetter(bool include) override;
    std::shared_ptr<ZebObjects::CoverLetter> CoverLetter() const override;
    bool IncludeBOM() const override;
    void setIncludeBOM(bool include) override;
    bool IncludeLabels() const override;
    void setIncludeLabels(bool include) override;
    std::shared_ptr<ZebObjects::Recipients> Recipients() const override;
    QString SubmittalPurpose() const override;
    void setSubmittalPurpose(const QString& purpose) override;
    // Options 0 to 6 answer their standard text; 7 answers the custom purpose (empty until one
    // is written). Any other index fails with subscript out of range (9).
    QString SelectPurpose(qint16 index) override;
    qint16 SubmittalPurposeIndex() const override;

    // None is allowed: a submittal without cover letter options.
    void setCoverLetter(std::shared_ptr<ZebObjects::CoverLetter> coverLetter);
    void setRecipients(std::shared_ptr<ZebObjects::Recipients> recipients);
    // The concrete objects, or none when the host put objects of its own in place.
    std::shared_ptr<StandaloneCoverLetter> standaloneCoverLetter() const;
    std::shared_ptr<StandaloneRecipients> standaloneRecipients() const;

private:
    QString m_issuedBy;
    QString m_date;
    bool m_includeCoverLetter = false;
    bool m_includeBOM = false;
    bool m_includeLabels = false;
    std::shared_ptr<ZebObjects::CoverLetter> m_coverLetter;
    std::shared_ptr<ZebObjects::Recipients> m_recipients;
    SubmittalRules::Purpose m_purpose;
};

}  // namespace ZebObjects
