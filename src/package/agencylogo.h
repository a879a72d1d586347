#pragma once

#include "zebpackage_export.h"

class QPainter;
class QRectF;

namespace ZebPackage {

// The sales agency's mark at the head of a cover letter: a lamp with its light in a square.
// Drawn as shapes only, so it scales to any paper and resolution.
class ZEBPACKAGE_EXPORT AgencyLogo {
public:
    static void draw(QPainter& painter, const QRectF& box);
};

}  // namespace ZebPackage
