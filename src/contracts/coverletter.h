#pragma once

#include "zebobjectscontracts_export.h"

namespace ZebObjects {

/// The cover letter options of a submittal, read and written by ctlCvrLtrCriteria.
class ZEBOBJECTSCONTRACTS_EXPORT CoverLetter {
public:
    virtual ~CoverLetter() = default;

    /// Whether the letter prints the office's logo.
    virtual bool IncludeLogo() const = 0;
    /// Sets whether the letter prints the office's logo.
    virtual void setIncludeLogo(bool include) = 0;
    /// Whether the chosen default paragraphs print in the letter.
    virtual bool IncludeDefaultParagraphs() const = 0;
    /// Sets whether the chosen default paragraphs print in the letter.
    virtual void setIncludeDefaultParagraphs(bool include) = 0;
    /// Whether the chosen remarks print in the letter.
    virtual bool IncludeRemarks() const = 0;
    /// Sets whether the chosen remarks print in the letter.
    virtual void setIncludeRemarks(bool include) = 0;
    /// True: one letter per recipient, each with the recipient's address; false: one letter for
    /// all.
    virtual bool SeparateLetters() const = 0;
    /// Sets one letter per recipient (true) or one letter for all (false).
    virtual void setSeparateLetters(bool separate) = 0;
    /// Whether the letter lists the other recipients; the panels only read it.
    virtual bool IncludeCarbonCopy() const = 0;
};

}  // namespace ZebObjects
