#pragma once

#include "zebobjects_export.h"

#include "contracts/coverletter.h"
#include "objects/faultinjector.h"

namespace ZebObjects {

// In-memory cover letter options, all false to begin with. Member names for fault injection:
// "IncludeLogo", "IncludeDefaultParagraphs", "IncludeRemarks", "SeparateLetters",
// "IncludeCarbonCopy", each also with "=" for its write.
class ZEBOBJECTS_EXPORT StandaloneCoverLetter : public CoverLetter, public FaultInjectable {
public:
    bool IncludeLogo() const override;
    void setIncludeLogo(bool include) override;
    bool IncludeDefaultParagraphs() const override;
    void setIncludeDefaultParagraphs(bool include) override;
    bool IncludeRemarks() const override;
    void setIncludeRemarks(bool include) override;
    bool SeparateLetters() const override;
    void setSeparateLetters(bool separate) override;
    bool IncludeCarbonCopy() const override;
    // The host's own setting; the panels never write it.
    void setIncludeCarbonCopy(bool include);

private:
    bool m_logo = false;
    bool m_paragraphs = false;
    bool m_remarks = false;
    bool m_separate = false;
    bool m_carbonCopy = false;
};

}  // namespace ZebObjects
