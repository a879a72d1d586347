#include "objects/standalonecoverletter.h"

namespace ZebObjects {

bool StandaloneCoverLetter::IncludeLogo() const
{
    check("IncludeLogo");
    return m_logo;
}

void StandaloneCoverLetter::setIncludeLogo(bool include)
{
    check("IncludeLogo=");
    m_logo = include;
}

bool StandaloneCoverLetter::IncludeDefaultParagraphs() const
{
    check("IncludeDefaultParagraphs");
    return m_paragraphs;
}

void StandaloneCoverLetter::setIncludeDefaultParagraphs(bool include)
{
    check("IncludeDefaultParagraphs=");
    m_paragraphs = include;
}

bool StandaloneCoverLetter::IncludeRemarks() const
{
    check("IncludeRemarks");
    return m_remarks;
}

void StandaloneCoverLetter::setIncludeRemarks(bool include)
{
    check("IncludeRemarks=");
    m_remarks = include;
}

bool StandaloneCoverLetter::SeparateLetters() const
{
    check("SeparateLetters");
    return m_separate;
}

void StandaloneCoverLetter::setSeparateLetters(bool separate)
{
    check("SeparateLetters=");
    m_separate = separate;
}

bool StandaloneCoverLetter::IncludeCarbonCopy() const
{
    check("IncludeCarbonCopy");
    return m_carbonCopy;
}

void StandaloneCoverLetter::setIncludeCarbonCopy(bool include)
{
    check("IncludeCarbonCopy=");
    m_carbonCopy = include;
}

}  // namespace ZebObjects
