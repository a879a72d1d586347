#include "package/packagecontent.h"

#include "contracts/bom.h"
#include "contracts/coverletter.h"
#include "contracts/customers.h"
#include "contracts/failure.h"
#include "contracts/labelfields.h"
#include "contracts/labels.h"
#include "contracts/lineitemcomment.h"
#include "contracts/lineitems.h"
#include "contracts/recipients.h"
#include "contracts/submittal.h"
#include "contracts/textobjects.h"
#include "contracts/packagesource.h"

#include <QDate>
#include <QHash>
#include <QLocale>

#include <algorithm>

namespace ZebPackage {

namespace {

const QString kSource = QStringLiteral("ZebPackage.PackageGenerator");

QString printedDate(const QString& iso)
{
    const QDate date = QDate::fromString(iso, Qt::ISODate);
    if (!date.isValid())
        return iso;
    return QLocale(QLocale::English, QLocale::UnitedStates)
        .toString(date, QStringLiteral("MMMM d, yyyy"));
}

// Selected texts in the collection's order; none for no collection.
QStringList selectedTexts(const std::shared_ptr<ZebObjects::TextObjects>& texts)
{
    QStringList out;
    if (!texts)
        return out;
    for (const auto& text : texts->Enumerate()) {
        if (text->Selected())
            out << text->Text();
    }
    return out;
}

void readLetter(PackageContent& c, const PackageSource& source,
                const ZebObjects::Submittal& submittal)
{
    const auto letter = submittal.CoverLetter();
    c.HasLetterOptions = letter != nullptr;
    if (!letter)
        return;
    c.IncludeLogo = letter->IncludeLogo();
    const bool paragraphs = letter->IncludeDefaultParagraphs();
    const bool remarks = letter->IncludeRemarks();
    c.SeparateLetters = letter->SeparateLetters();
    c.IncludeCarbonCopy = letter->IncludeCarbonCopy();
    if (const auto recipients = submittal.Recipients()) {
        for (const auto& recipient : recipients->Enumerate())
            c.Recipients.append(
                {recipient->Name(), recipient->Company(), source.Address(*recipient)});
    }
    if (paragraphs)
        c.Paragraphs = selectedTexts(source.CoverLetterParagraphs());
    if (remarks)
        c.Remarks = selectedTexts(source.CoverLetterRemarks());
}

void readBOM(PackageContent& c, const PackageSource& source)
{
    const auto bom = source.BOM();
    c.HasBOMOptions = bom != nullptr;
    if (!bom)
        return;
    // Read in the options' own order, kept in print order.
    const bool quantity = bom->IncludeQuantity();
    const bool type = bom->IncludeType();
    const bool defaultRemarks = bom->IncludeDefaultRemarks();
    const bool brand = bom->IncludeBrand();
    const bool manufacturer = bom->IncludeManufacturer();
    const bool catalogNumber = bom->IncludeCatalogNumber();
    const bool description = bom->IncludeDescription();
    const bool lineComments = bom->IncludeLineComments();
    const bool mto = bom->IncludeMTO();
    const bool groupCodes = bom->IncludeGroupCodes();
    const std::pair<bool, BomColumn> chosen[] = {
        {type, BomColumn::Type},
        {quantity, BomColumn::Quantity},
        {brand, BomColumn::Brand},
        {manufacturer, BomColumn::Manufacturer},
        {catalogNumber, BomColumn::CatalogNumber},
        {description, BomColumn::Description},
        {groupCodes, BomColumn::GroupCodes},
        {mto, BomColumn::MTO},
    };
    for (const auto& [on, column] : chosen) {
        if (on)
            c.Columns << column;
    }
    if (!c.Columns.isEmpty())
        c.Columns.prepend(BomColumn::Line);
    if (defaultRemarks)
        c.DefaultRemarks = selectedTexts(bom->DefaultRemarks());

    const auto lines = source.LineItems();
    if (!lines)
        return;
    const auto items = lines->Enumerate();
    qint32 number = 0;
    for (const auto& item : items) {
        ++number;
        // Only a ticked line goes on the submittal; it keeps the number the line items show.
        if (!item->Selected()) {
            ++c.LinesLeftOut;
            continue;
        }
        PackageContent::Line line;
        line.Number = number;
        line.Cells.reserve(c.Columns.size());
        for (const BomColumn column : std::as_const(c.Columns)) {
            switch (column) {
            case BomColumn::Line: line.Cells << QString::number(number); break;
            case BomColumn::Type: line.Cells << item->Type(); break;
            case BomColumn::Quantity: line.Cells << item->Quantity(); break;
            case BomColumn::Brand: line.Cells << item->Brand(); break;
            case BomColumn::Manufacturer: line.Cells << source.Manufacturer(*item); break;
            case BomColumn::CatalogNumber: line.Cells << item->CatalogNumber(); break;
            case BomColumn::Description: line.Cells << item->Description(); break;
            case BomColumn::GroupCodes: line.Cells << item->Group(); break;
            case BomColumn::Rev: line.Cells << QString(); break;
            case BomColumn::MTO:
                line.Cells << (item->MTO() ? QStringLiteral("MTO") : QString());
                break;
            }
        }
        if (lineComments) {
            if (const auto comment = item->Comment())
                line.Comment = comment->Text();
        }
        c.Lines << line;
    }
}

void readCutSheets(PackageContent& c, const PackageSource& source)
{
    const QList<CutSheet> sheets = source.CutSheets();
    if (sheets.isEmpty())
        return;
    const auto lines = source.LineItems();
    if (!lines)
        return;
    QHash<QString, qsizetype> seen;
    for (const auto& item : lines->Enumerate()) {
        const QString type = item->Type().trimmed();
        if (!item->Selected() || type.isEmpty() || seen.contains(type))
            continue;
        seen.insert(type, c.CutSheetTypes.size());
        c.CutSheetTypes.append({type, {}});
    }
    for (const CutSheet& sheet : sheets) {
        const auto at = seen.constFind(sheet.Type.trimmed());
        if (at != seen.constEnd())
            c.CutSheetTypes[*at].Sheets.append(sheet);
    }
}

void readLabels(PackageContent& c, const PackageSource& source)
{
    struct Field {
        qint16 order;
        QString key;
    };
    QList<Field> fields;
    if (const auto labels = source.Labels()) {
        if (const auto all = labels->LabelFields()) {
            for (const auto& field : all->Enumerate()) {
                if (field->Included())
                    fields.append({field->PrintOrder(), field->Key()});
            }
        }
    }
    std::stable_sort(fields.begin(), fields.end(),
                     [](const Field& a, const Field& b) { return a.order < b.order; });
    if (fields.size() > PackageContent::MaximumLabelLines)
        fields.resize(PackageContent::MaximumLabelLines);
    c.LabelFieldCount = qint32(fields.size());
    c.HasLabelFields = !fields.isEmpty();

    const auto customers = source.Customers();
    if (!customers)
        return;
    const QString jobName = c.JobName;
    const QString jobNumber = c.JobNumber;
    const QString purchaseOrder = source.PurchaseOrder();
    for (const auto& customer : customers->Enumerate()) {
        if (!customer->Included())
            continue;
        const QString name = customer->Name();
        const PostalAddress address = source.Address(*customer);
        // The customer object's own city and state hold; the address fills what it lacks.
        QString city = customer->City();
        QString state = customer->State();
        if (city.trimmed().isEmpty())
            city = address.City;
        if (state.trimmed().isEmpty())
            state = address.State;
        QStringList lines;
        for (const Field& field : std::as_const(fields)) {
            QString text;
            if (field.key == LabelFieldKey::Company)
                text = name;
            else if (field.key == LabelFieldKey::Attention)
                text = address.Attention;
            else if (field.key == LabelFieldKey::Street)
                text = address.Street;
            else if (field.key == LabelFieldKey::Street2)
                text = address.Street2;
            else if (field.key == LabelFieldKey::CityStateZip) {
                text = city;
                if (!state.isEmpty())
                    text += (text.isEmpty() ? QString() : QStringLiteral(", ")) + state;
                if (!address.Zip.isEmpty())
                    text += (text.isEmpty() ? QString() : QStringLiteral(" ")) + address.Zip;
            } else if (field.key == LabelFieldKey::JobName)
                text = jobName;
            else if (field.key == LabelFieldKey::JobNumber)
                text = jobNumber;
            else if (field.key == LabelFieldKey::PurchaseOrder)
                text = purchaseOrder;
            else if (field.key == LabelFieldKey::Phone)
                text = address.Phone;
            else if (field.key == LabelFieldKey::SubmittalDate)
                text = c.DateText;
            // A label is addressed by what it holds: a blank value takes no line.
            text = text.simplified();
            if (!text.isEmpty())
                lines << text;
        }
        c.Labels << lines;
    }
}

}  // namespace

PackageContent PackageContent::read(const PackageSource& source)
{
    PackageContent c;
    c.JobName = source.JobName();
    c.JobNumber = source.JobNumber();
    const auto submittal = source.Submittal();
    if (!submittal)
        throw ZebObjects::Failure(
            ZebObjects::ErrorNumber::ObjectNotSet, kSource,
            QStringLiteral("Object variable not set: the job has no submittal"));
    c.IssuedBy = submittal->IssuedBy();
    c.DateIso = submittal->SubmittalDate();
    c.DateText = printedDate(c.DateIso);
    c.Purpose = submittal->SubmittalPurpose();
    c.Office = source.Office();
    c.IncludeCoverLetter = submittal->IncludeCoverLetter();
    c.IncludeBOM = submittal->IncludeBOM();
    c.IncludeLabels = submittal->IncludeLabels();
    if (c.IncludeCoverLetter)
        readLetter(c, source, *submittal);
    if (c.IncludeBOM)
        readBOM(c, source);
    if (c.IncludeLabels)
        readLabels(c, source);
    readCutSheets(c, source);
    return c;
}

QStringList PackageContent::gaps() const
{
    QStringList out;
    if (DateIso.trimmed().isEmpty())
        out << QStringLiteral("The submittal has no date.");
    if (!IncludeCoverLetter && !IncludeBOM && !IncludeLabels)
        out << QStringLiteral(
            "The submittal includes no cover letter, bill of materials or labels.");
    if (IncludeCoverLetter) {
        if (!HasLetterOptions)
            out << QStringLiteral(
                "The submittal has no cover letter options, so no cover letter is printed.");
        else if (Recipients.isEmpty())
            out << QStringLiteral(
                "The submittal has no recipients, so no cover letter is printed.");
    }
    if (IncludeBOM) {
        if (!HasBOMOptions)
            out << QStringLiteral("The submittal has no bill of materials options, so no bill of "
                                  "materials is printed.");
        else if (Columns.isEmpty())
            out << QStringLiteral("No columns are chosen for the bill of materials.");
        if (HasBOMOptions && Lines.isEmpty())
            out << (LinesLeftOut > 0
                        ? QStringLiteral("No line item is ticked, so the bill of materials "
                                         "lists no lines.")
                        : QStringLiteral("The submittal has no lines."));
    }
    if (IncludeLabels) {
        if (!HasLabelFields)
            out << QStringLiteral("No label fields are chosen, so no labels are printed.");
        else if (Labels.isEmpty())
            out << QStringLiteral("No customer is included, so no labels are printed.");
    }
    for (const SheetType& type : CutSheetTypes) {
        if (type.Sheets.isEmpty())
            out << QStringLiteral("Type %1 has no cut sheet attached.").arg(type.Type);
    }
    return out;
}

QString PackageContent::columnTitle(BomColumn column)
{
    switch (column) {
    case BomColumn::Line: return QStringLiteral("Line");
    case BomColumn::Type: return QStringLiteral("Type");
    case BomColumn::Quantity: return QStringLiteral("Qty");
    case BomColumn::Brand: return QStringLiteral("Brand");
    case BomColumn::Manufacturer: return QStringLiteral("Manufacturer");
    case BomColumn::CatalogNumber: return QStringLiteral("Catalog Number");
    case BomColumn::Description: return QStringLiteral("Description");
    case BomColumn::GroupCodes: return QStringLiteral("Group");
    case BomColumn::MTO: return QStringLiteral("MTO");
    case BomColumn::Rev: return QStringLiteral("Rev");
    }
    return QString();
}

void PackageContent::markRevision(const RevisionMarks& marks)
{
    Revision = marks;
    if (!marks.isResubmittal() || Columns.isEmpty())
        return;
    Columns.prepend(BomColumn::Rev);
    for (Line& line : Lines)
        line.Cells.prepend(marks.ChangedLines.contains(line.Number) ? RevisionMarks::changeMark()
                                                                    : QString());
}

}  // namespace ZebPackage
