#pragma once

#include "zebobjectsrules_export.h"

#include <QList>
#include <QString>

namespace ZebObjects {

// A brand the office sells and the manufacturer that makes it, as the bill of materials prints it.
struct BrandRecord {
    QString name;
    // Empty until the office says who makes it.
    QString manufacturer;

    friend bool operator==(const BrandRecord&, const BrandRecord&) = default;
};

// The brands of the sample office. Before an office kept its own brands, every office's bill of
// materials printed these makers; an office that gains its brands keeps printing them.
class ZEBOBJECTSRULES_EXPORT SampleBrands {
public:
    static QList<BrandRecord> all();
};

}  // namespace ZebObjects
