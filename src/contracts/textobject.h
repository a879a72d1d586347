#pragma once

#include "zebobjectscontracts_export.h"

#include <QString>

namespace ZebObjects {

/// One paragraph or remark of a text collection.
class ZEBOBJECTSCONTRACTS_EXPORT TextObject {
public:
    virtual ~TextObject() = default;

    /// Unique and stable within its collection.
    virtual QString Key() const = 0;
    /// May hold CR-LF line breaks.
    virtual QString Text() const = 0;
    /// Replaces the text.
    virtual void setText(const QString& text) = 0;
    /// Whether the paragraph is ticked for use.
    virtual bool Selected() const = 0;
    /// Ticks or unticks the paragraph.
    virtual void setSelected(bool selected) = 0;
};

}  // namespace ZebObjects
