#pragma once

#include "rules/brandrecord.h"
#include "rules/customerrecord.h"
#include "rules/lineitemrecord.h"
#include "tableimport.h"

#include <QList>

namespace ZebObjects {
class Store;
}

// The two imports of the office: a job's line items and the customer directory. Each reads a
// table, maps its columns as the office last did (or as its header says), checks every row and
// writes nothing until every row is fine; then all rows in one transaction.
namespace OfficeImports {

// The line item fields: Quantity, Type, Brand, Catalog Number, Description, Group, MTO, Comment,
// Selected (on the bill of materials; every line when the table has no such column),
// Manufacturer (of the line's brand, for a brand the office does not know yet).
TableImport lineItems();
// The directory's fields: Company, Contact, Street, Street 2, City, State, ZIP, Phone, E-mail,
// Account Number, Type, Category.
TableImport customers();

// The settings under which the office keeps its mappings.
extern const QString LineMappingSetting;
extern const QString CustomerMappingSetting;

// Maps import's table with the office's kept mapping when it fits, else guesses.
void mapColumns(TableImport& import, const ZebObjects::Store& store, const QString& setting);

// The records of a checked import (every row fine).
QList<ZebObjects::LineItemRecord> lines(const TableImport& import);
// Each row's brand with the manufacturer the row gives for it (rows without a brand left out).
QList<ZebObjects::BrandRecord> brands(const TableImport& import);
// What an import of lines adds to its summary: "" or "; 2 brands added to the office".
QString brandsAdded(qint32 count);
// New customers get a key of their own: their account number, else the next free "C" number.
QList<ZebObjects::CustomerRecord> customers(const TableImport& import,
                                            const ZebObjects::Store& store);

}  // namespace OfficeImports
