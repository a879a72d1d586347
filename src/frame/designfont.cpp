#include "frame/designfont.h"

#include <QStringList>

namespace ZebSubCtl {

QFont designFont(const QFont& base)
{
    QFont font = base;
    font.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Arial"), base.family()});
    font.setPointSize(8);
    return font;
}

}  // namespace ZebSubCtl
