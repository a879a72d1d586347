#pragma once

#include "contracts/customer.h"
#include "objects/faultinjector.h"

namespace ZebObjects {

// An in-memory customer. Besides the members a submittal uses it carries the postal code, phone
// number and account state that the customer directory searches by.
// Member names for fault injection: "Key", "DisplayText", "Name", "AccountNumber", "City",
// "State", "Type", "Category", "Included", "Included=".
class StandaloneCustomer : public Customer, public FaultInjectable {
public:
    struct Data {
        QString key;
        QString displayText;
        QString name;
        QString accountNumber;
        QString city;
        QString state;
        QString type;
        QString category;
        QString zip;
        QString phone;
        // Where the mail goes, and whom it is for; the directory keeps them for labels and
        // letters.
        QString attention;
        QString street;
        QString street2;
        QString email;
        // A closed account is found only when asked for.
        bool active = true;
        bool included = false;
    };

    explicit StandaloneCustomer(Data data);

    QString Key() const override;
    QString DisplayText() const override;
    QString Name() const override;
    QString AccountNumber() const override;
    QString City() const override;
    QString State() const override;
    QString Type() const override;
    QString Category() const override;
    bool Included() const override;
    void setIncluded(bool included) override;

    // Everything the customer holds, without going through the injector.
    const Data& data() const { return m_data; }

private:
    Data m_data;
};

}  // namespace ZebObjects
