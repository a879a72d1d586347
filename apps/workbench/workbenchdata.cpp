#include "workbenchdata.h"

#include "contracts/bom.h"
#include "contracts/customers.h"
#include "contracts/failure.h"
#include "contracts/labels.h"
#include "contracts/lineitems.h"
#include "contracts/submittal.h"
#include "contracts/textobjects.h"
#include "frame/usercontrol.h"
#include "objects/sampledata.h"
#include "objects/standalonebom.h"
#include "objects/standalonecustomers.h"
#include "objects/standalonelabels.h"
#include "objects/standalonelineitems.h"
#include "objects/standalonesubmittal.h"
#include "objects/standalonetextobjects.h"

namespace {
// Objects are handed over as the contract types the controls' properties take.
template <class Contract, class Standalone>
QVariant asContract(std::shared_ptr<Standalone> object)
{
    return QVariant::fromValue(std::shared_ptr<Contract>(std::move(object)));
}
}  // namespace

WorkbenchData::WorkbenchData()
{
    using namespace ZebObjects;
    add(QStringLiteral("coverLetterParagraphs"),
        asContract<TextObjects>(SampleData::coverLetterParagraphs()));
    add(QStringLiteral("coverLetterRemarks"),
        asContract<TextObjects>(SampleData::coverLetterRemarks()));
    add(QStringLiteral("submittal"), asContract<Submittal>(SampleData::submittal()));
    add(QStringLiteral("bom"), asContract<BOM>(SampleData::bom()));
    add(QStringLiteral("labels"), asContract<Labels>(SampleData::labels()));
    add(QStringLiteral("lineItems"), asContract<LineItems>(SampleData::lineItems()));
    add(QStringLiteral("customers"), asContract<Customers>(SampleData::customers()));
}

void WorkbenchData::bind(ZebSubCtl::UserControl* control, const QString& property,
                         const QString& name)
{
    const auto it = m_objects.constFind(name);
    if (it == m_objects.constEnd())
        throw ZebObjects::Failure(ZebObjects::ErrorNumber::NoSuchProperty,
                                  QStringLiteral("zeb-workbench"),
                                  QStringLiteral("There is no sample object named \"%1\"").arg(name));
    if (!control->setProperty(property.toLatin1().constData(), *it))
        throw ZebObjects::Failure(ZebObjects::ErrorNumber::NoSuchProperty,
                                  QStringLiteral("zeb-workbench"),
                                  QStringLiteral("Object doesn't support this property or method: "
                                                 "%1.%2 does not take \"%3\"")
                                      .arg(control->Name(), property, name));
}
