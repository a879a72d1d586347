#pragma once

#include "zebobjectscontracts_export.h"

namespace ZebObjects {

// The cover letter options of a submittal.
class ZEBOBJECTSCONTRACTS_EXPORT CoverLetter {
public:
    virtual ~CoverLetter() = default;

    virtual bool IncludeLogo() const = 0;
    virtual void setIncludeLogo(bool include) = 0;
    virtual bool IncludeDefaultParagraphs() const = 0;
    virtual void setIncludeDefaultParagraphs(bool include) = 0;
    virtual bool IncludeRemarks() const = 0;
    virtual void setIncludeRemarks(bool include) = 0;
    // True: one letter per recipient, each with the recipient's address; false: one letter for all.
    virtual bool SeparateLetters() const = 0;
    virtual void setSeparateLetters(bool separate) = 0;
    // Whether the letter lists the other recipients; the panels only read it.
    virtual bool IncludeCarbonCopy() const = 0;
};

}  // namespace ZebObjects
