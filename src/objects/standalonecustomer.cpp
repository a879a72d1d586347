#include "objects/standalonecustomer.h"

namespace ZebObjects {

StandaloneCustomer::StandaloneCustomer(Data data) : m_data(std::move(data)) { }

QString StandaloneCustomer::Key() const
{
    check("Key");
    return m_data.key;
}

QString StandaloneCustomer::DisplayText() const
{
    check("DisplayText");
    return m_data.displayText;
}

QString StandaloneCustomer::Name() const
{
    check("Name");
    return m_data.name;
}

QString StandaloneCustomer::AccountNumber() const
{
    check("AccountNumber");
    return m_data.accountNumber;
}

QString StandaloneCustomer::City() const
{
    check("City");
    return m_data.city;
}

QString StandaloneCustomer::State() const
{
    check("State");
    return m_data.state;
}

QString StandaloneCustomer::Type() const
{
    check("Type");
    return m_data.type;
}

QString StandaloneCustomer::Category() const
{
    check("Category");
    return m_data.category;
}

bool StandaloneCustomer::Included() const
{
    check("Included");
    return m_data.included;
}

void StandaloneCustomer::setIncluded(bool included)
{
    check("Included=");
    m_data.included = included;
}

}  // namespace ZebObjects
