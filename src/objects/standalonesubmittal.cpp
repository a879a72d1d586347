#include "objects/standalonesubmittal.h"

#include "objects/standalonecoverletter.h"
#include "objects/standalonerecipients.h"
#include "rules/submittalrules.h"

namespace ZebObjects {

StandaloneSubmittal::StandaloneSubmittal(QObject* parent)
    : Submittal(parent), m_coverLetter(std::make_shared<StandaloneCoverLetter>()),
      m_recipients(std::make_shared<StandaloneRecipients>())
{ }

StandaloneSubmittal::~StandaloneSubmittal() = default;

QStringList StandaloneSubmittal::purposeCaptions()
{
    return SubmittalRules::purposeCaptions();
}

QString StandaloneSubmittal::IssuedBy() const
{
    check("IssuedBy");
    return m_issuedBy;
}

void StandaloneSubmittal::setIssuedBy(const QString& name)
{
    check("IssuedBy=");
    if (name == m_issuedBy)
        return;
    m_issuedBy = name;
    emit IssuedByChanged();
}

QString StandaloneSubmittal::SubmittalDate() const
{
    check("SubmittalDate");
    return m_date;
}

void StandaloneSubmittal::setSubmittalDate(const QString& date)
{
    check("SubmittalDate=");
    SubmittalRules::checkDate(date);
    if (date == m_date)
        return;
    m_date = date;
    emit SubmittalDateChanged();
}

bool StandaloneSubmittal::IncludeCoverLetter() const
{
    check("IncludeCoverLetter");
    return m_includeCoverLetter;
}

void StandaloneSubmittal::setIncludeCoverLetter(bool include)
{
    check("IncludeCoverLetter=");
    if (include == m_includeCoverLetter)
        return;
    m_includeCoverLetter = include;
    emit CoverLetterChanged();
}

std::shared_ptr<CoverLetter> StandaloneSubmittal::CoverLetter() const
{
    check("CoverLetter");
    return m_coverLetter;
}

bool StandaloneSubmittal::IncludeBOM() const
{
    check("IncludeBOM");
    return m_includeBOM;
}

void StandaloneSubmittal::setIncludeBOM(bool include)
{
    check("IncludeBOM=");
    if (include == m_includeBOM)
        return;
    m_includeBOM = include;
    emit BOMChanged();
}

bool StandaloneSubmittal::IncludeLabels() const
{
    check("IncludeLabels");
    return m_includeLabels;
}

void StandaloneSubmittal::setIncludeLabels(bool include)
{
    check("IncludeLabels=");
    if (include == m_includeLabels)
        return;
    m_includeLabels = include;
    emit LabelsChanged();
}

std::shared_ptr<Recipients> StandaloneSubmittal::Recipients() const
{
    check("Recipients");
    return m_recipients;
}

QString StandaloneSubmittal::SubmittalPurpose() const
{
    check("SubmittalPurpose");
    return m_purpose.text;
}

void StandaloneSubmittal::setSubmittalPurpose(const QString& purpose)
{
    check("SubmittalPurpose=");
    if (SubmittalRules::writePurpose(m_purpose, purpose))
        emit SubmittalPurposeChanged(m_purpose.index);
}

QString StandaloneSubmittal::SelectPurpose(qint16 index)
{
    check("SelectPurpose");
    bool changed = false;
    const QString text = SubmittalRules::selectPurpose(m_purpose, index, changed);
    if (changed)
        emit SubmittalPurposeChanged(index);
    return text;
}

qint16 StandaloneSubmittal::SubmittalPurposeIndex() const
{
    check("SubmittalPurposeIndex");
    return m_purpose.index;
}

void StandaloneSubmittal::setCoverLetter(std::shared_ptr<ZebObjects::CoverLetter> coverLetter)
{
    check("CoverLetter=");
    m_coverLetter = std::move(coverLetter);
}

void StandaloneSubmittal::setRecipients(std::shared_ptr<ZebObjects::Recipients> recipients)
{
    check("Recipients=");
    m_recipients = std::move(recipients);
}

std::shared_ptr<StandaloneCoverLetter> StandaloneSubmittal::standaloneCoverLetter() const
{
    return std::dynamic_pointer_cast<StandaloneCoverLetter>(m_coverLetter);
}

std::shared_ptr<StandaloneRecipients> StandaloneSubmittal::standaloneRecipients() const
{
    return std::dynamic_pointer_cast<StandaloneRecipients>(m_recipients);
}

}  // namespace ZebObjects
