#include "workbenchdata.h"

#include "firstlines.h"

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
#include "store/storebom.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storelabels.h"
#include "store/storelineitems.h"
#include "store/storesubmittal.h"
#include "store/storetextobjects.h"

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

WorkbenchData::WorkbenchData(ZebObjects::StoreJob& job)
{
    using namespace ZebObjects;
    add(QStringLiteral("coverLetterParagraphs"),
        asContract<TextObjects>(job.coverLetterParagraphs()));
    add(QStringLiteral("coverLetterRemarks"), asContract<TextObjects>(job.coverLetterRemarks()));
    add(QStringLiteral("submittal"), asContract<Submittal>(job.submittal()));
    add(QStringLiteral("bom"), asContract<BOM>(job.bom()));
    add(QStringLiteral("labels"), asContract<Labels>(job.labels()));
    // The Line Items page shows what its list holds; the package prints every line.
    add(QStringLiteral("lineItems"),
        asContract<LineItems>(std::make_shared<FirstLines>(job.lineItems())));
    add(QStringLiteral("customers"), asContract<Customers>(job.customers()));
}

void WorkbenchData::bind(ZebSubCtl::UserControl* control, const QString& property,
                         const QString& name)
{
    const auto it = m_objects.constFind(name);
    if (it == m_objects.constEnd())
        throw ZebObjects::Failure(
            ZebObjects::ErrorNumber::NoSuchProperty, QStringLiteral("zeb-workbench"),
            QStringLiteral("There is no sample object named \"%1\"").arg(name));
    if (!control->setProperty(property.toLatin1().constData(), *it))
        throw ZebObjects::Failure(ZebObjects::ErrorNumber::NoSuchProperty,
                                  QStringLiteral("zeb-workbench"),
                                  QStringLiteral("Object doesn't support this property or method: "
                                                 "%1.%2 does not take \"%3\"")
                                      .arg(control->Name(), property, name));
}

void WorkbenchData::generateLineItems(int count)
{
    using namespace ZebObjects;
    if (count < 0 || count > 32767)
        throw Failure(ErrorNumber::Overflow, QStringLiteral("zeb-workbench"),
                      QStringLiteral("Overflow: a job has 0 to 32767 lines, not %1").arg(count));
    static const char* const kBrands[] = {"Varnholt", "Quenza Architectural", "Lumatrex",
                                          "Northgate Lighting"};
    auto items = std::make_shared<StandaloneLineItems>();
    for (int i = 1; i <= count; ++i) {
        StandaloneLineItem::Data d;
        d.quantity = 1 + (i * 7) % 48;
        d.type = QStringLiteral("%1%2").arg(QChar(u'A' + (i - 1) % 26)).arg((i - 1) / 26);
        d.brand = QLatin1String(kBrands[i % 4]);
        d.catalogNumber =
            QStringLiteral("VH-%1-LP-%2L-35K").arg(i, 4, 10, QLatin1Char('0')).arg(20 + i % 30);
        d.description = QStringLiteral("Generated fixture line %1, 3500K").arg(i);
        d.group = QStringLiteral("LVL%1").arg(1 + i % 5);
        d.mto = i % 7 == 0;
        if (i % 5 == 0)
            d.comment = QStringLiteral("Generated comment for line %1").arg(i);
        d.selected = i % 3 == 0;
        items->Add(d);
    }
    add(QStringLiteral("lineItems"), asContract<LineItems>(items));
}
