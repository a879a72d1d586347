#include "objects/standaloneapplicationservices.h"

#include "rules/textformatter.h"

namespace ZebObjects {

StandaloneApplicationServices::~StandaloneApplicationServices() = default;

bool StandaloneApplicationServices::ReformatText(QString& text)
{
    check("ReformatText");
    return TextFormatter::reformat(text);
}

QStringList StandaloneApplicationServices::IssuedByNames() const
{
    check("IssuedByNames");
    return m_issuedBy;
}

void StandaloneApplicationServices::setIssuedByNames(const QStringList& names)
{
    check("IssuedByNames=");
    m_issuedBy = names;
}

}  // namespace ZebObjects
