#pragma once

#include "zebobjectscontracts_export.h"

#include <memory>

namespace ZebObjects {

class LabelFields;

/// A label definition: the fields that can print on a mailing label.
class ZEBOBJECTSCONTRACTS_EXPORT Labels {
public:
    virtual ~Labels() = default;

    /// The fields the labels can print.
    virtual std::shared_ptr<ZebObjects::LabelFields> LabelFields() const = 0;
};

}  // namespace ZebObjects
