#include "officeimports.h"

#include "store/store.h"

#include <QSet>

namespace OfficeImports {

const QString LineMappingSetting = QStringLiteral("import_mapping_line_items");
const QString CustomerMappingSetting = QStringLiteral("import_mapping_customers");

namespace {
using Kind = TableImport::Kind;
enum LineField {
    Quantity,
    Type,
    Brand,
    CatalogNumber,
    Description,
    Group,
    MTO,
    Comment,
    Selected,
    Manufacturer
};
enum CustomerField {
    Company,
    Contact,
    Street,
    Street2,
    City,
    State,
    Zip,
    Phone,
    Email,
    Account,
    CustomerType,
    Category
};
}  // namespace

TableImport lineItems()
{
    return TableImport({
        {QStringLiteral("Quantity"),
         {QStringLiteral("qty"), QStringLiteral("quan"), QStringLiteral("count")},
         Kind::WholeNumber,
         0,
         true},
        {QStringLiteral("Type"),
         {QStringLiteral("fixture type"), QStringLiteral("fixture"), QStringLiteral("type code"),
          QStringLiteral("tag")},
         Kind::Text,
         20,
         true},
        {QStringLiteral("Brand"),
         {QStringLiteral("manufacturer"), QStringLiteral("mfr"), QStringLiteral("make")},
         Kind::Text,
         40,
         false},
        {QStringLiteral("Catalog Number"),
         {QStringLiteral("catalog"), QStringLiteral("catalog no"), QStringLiteral("cat no"),
          QStringLiteral("cat"), QStringLiteral("part number"), QStringLiteral("model")},
         Kind::Text,
         80,
         true},
        {QStringLiteral("Description"),
         {QStringLiteral("desc"), QStringLiteral("item description")},
         Kind::Text,
         255,
         false},
        {QStringLiteral("Group"),
         {QStringLiteral("group code"), QStringLiteral("area"), QStringLiteral("phase")},
         Kind::Text,
         20,
         false},
        {QStringLiteral("MTO"), {QStringLiteral("made to order")}, Kind::YesNo, 0, false},
        {QStringLiteral("Comment"),
         {QStringLiteral("comments"), QStringLiteral("note"), QStringLiteral("notes"),
          QStringLiteral("remarks")},
         Kind::Text,
         255,
         false},
        {QStringLiteral("Selected"),
         {QStringLiteral("include"), QStringLiteral("included"), QStringLiteral("on bom")},
         Kind::YesNo,
         0,
         false},
        {QStringLiteral("Manufacturer"),
         {QStringLiteral("manufacturer name"), QStringLiteral("maker")},
         Kind::Text,
         80,
         false,
         Brand},
    });
}

TableImport customers()
{
    return TableImport({
        {QStringLiteral("Company"),
         {QStringLiteral("name"), QStringLiteral("customer"), QStringLiteral("company name")},
         Kind::Text,
         80,
         true},
        {QStringLiteral("Contact"),
         {QStringLiteral("contact name"), QStringLiteral("attention"), QStringLiteral("attn")},
         Kind::Text,
         60,
         false},
        {QStringLiteral("Street"),
         {QStringLiteral("address"), QStringLiteral("street 1"), QStringLiteral("address 1")},
         Kind::Text,
         80,
         false},
        {QStringLiteral("Street 2"),
         {QStringLiteral("address 2"), QStringLiteral("suite")},
         Kind::Text,
         80,
         false},
        {QStringLiteral("City"), {}, Kind::Text, 40, false},
        {QStringLiteral("State"),
         {QStringLiteral("st"), QStringLiteral("province")},
         Kind::Text,
         20,
         false},
        {QStringLiteral("ZIP"),
         {QStringLiteral("zip code"), QStringLiteral("postal code")},
         Kind::Text,
         10,
         false},
        {QStringLiteral("Phone"),
         {QStringLiteral("telephone"), QStringLiteral("phone number")},
         Kind::Text,
         30,
         false},
        {QStringLiteral("E-mail"), {QStringLiteral("email")}, Kind::Text, 80, false},
        {QStringLiteral("Account Number"),
         {QStringLiteral("account"), QStringLiteral("account no"), QStringLiteral("acct")},
         Kind::Text,
         20,
         false},
        {QStringLiteral("Type"), {QStringLiteral("customer type")}, Kind::Text, 20, false},
        {QStringLiteral("Category"), {}, Kind::Text, 20, false},
    });
}

void mapColumns(TableImport& import, const ZebObjects::Store& store, const QString& setting)
{
    if (!import.useMappingText(store.setting(setting)))
        import.guessMapping();
}

QList<ZebObjects::LineItemRecord> lines(const TableImport& import)
{
    QList<ZebObjects::LineItemRecord> out;
    out.reserve(import.rows().size());
    const bool hasComment = import.mapping().value(Comment, -1) >= 0;
    // Without a column that says otherwise, every line goes on the bill of materials.
    const bool hasSelected = import.mapping().value(Selected, -1) >= 0;
    for (const TableImport::Row& row : import.rows()) {
        ZebObjects::LineItemRecord d;
        d.quantity = row.values[Quantity].toInt();
        d.type = row.values[Type];
        d.brand = row.values[Brand];
        d.catalogNumber = row.values[CatalogNumber];
        d.description = row.values[Description];
        d.group = row.values[Group];
        d.mto = TableImport::yesNo(row.values[MTO]).value_or(false);
        // An empty cell is no comment.
        if (hasComment && !row.values[Comment].isEmpty())
            d.comment = row.values[Comment];
        d.selected = !hasSelected || TableImport::yesNo(row.values[Selected]).value_or(false);
        out.append(d);
    }
    return out;
}

QList<ZebObjects::BrandRecord> brands(const TableImport& import)
{
    QList<ZebObjects::BrandRecord> out;
    for (const TableImport::Row& row : import.rows())
        if (!row.values[Brand].isEmpty())
            out.append({row.values[Brand], row.values[Manufacturer]});
    return out;
}

QString brandsAdded(qint32 count)
{
    if (count == 0)
        return {};
    return count == 1 ? QStringLiteral("; 1 brand added to the office")
                      : QStringLiteral("; %1 brands added to the office").arg(count);
}

QList<ZebObjects::CustomerRecord> customers(const TableImport& import,
                                            const ZebObjects::Store& store)
{
    QSet<QString> keys;
    for (const auto& d : store.directoryCustomers())
        keys.insert(d.key);
    int next = 1;
    QList<ZebObjects::CustomerRecord> out;
    for (const TableImport::Row& row : import.rows()) {
        ZebObjects::CustomerRecord d;
        d.name = row.values[Company];
        d.attention = row.values[Contact];
        d.street = row.values[Street];
        d.street2 = row.values[Street2];
        d.city = row.values[City];
        d.state = row.values[State];
        d.zip = row.values[Zip];
        d.phone = row.values[Phone];
        d.email = row.values[Email];
        d.accountNumber = row.values[Account];
        d.type = row.values[CustomerType];
        d.category = row.values[Category];
        d.displayText = d.city.isEmpty() ? d.name : QStringLiteral("%1 (%2)").arg(d.name, d.city);
        d.key = d.accountNumber;
        if (d.key.isEmpty() || keys.contains(d.key)) {
            while (keys.contains(QStringLiteral("C%1").arg(next)))
                ++next;
            d.key = QStringLiteral("C%1").arg(next);
        }
        keys.insert(d.key);
        out.append(d);
    }
    return out;
}

}  // namespace OfficeImports
