#include "rules/brandrecord.h"

namespace ZebObjects {

QList<BrandRecord> SampleBrands::all()
{
    return {
        {QStringLiteral("Varnholt"), QStringLiteral("Varnholt Lighting Works")},
        {QStringLiteral("Quenza Architectural"), QStringLiteral("Quenza Lighting Group")},
        {QStringLiteral("Lumatrex"), QStringLiteral("Lumatrex Linear Systems")},
        {QStringLiteral("Northgate Lighting"), QStringLiteral("Northgate Electric Manufacturing")},
        {QStringLiteral("Cellar & Beam"), QStringLiteral("Cellar & Beam Studio")},
        {QStringLiteral("Solace Exterior"), QStringLiteral("Solace Outdoor Lighting")},
    };
}

}  // namespace ZebObjects
