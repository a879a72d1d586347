#include "objects/standalonecustomersearchcontext.h"

namespace ZebObjects {

StandaloneCustomerSearchContext::StandaloneCustomerSearchContext(QVariant value)
    : m_value(std::move(value))
{ }

QVariant StandaloneCustomerSearchContext::Value() const
{
    check("Value");
    return m_value;
}

}  // namespace ZebObjects
