#pragma once

#include "zebobjectscontracts_export.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>

namespace ZebObjects {
class BOM;
class Customer;
class Customers;
class LineItem;
class Recipient;
class LineItems;
class Labels;
class Submittal;
class TextObjects;
}  // namespace ZebObjects

namespace ZebPackage {

/// Where a customer's or a recipient's mail goes. A customer object knows its own city and state;
/// its address may leave them empty.
struct PostalAddress {
    /// The person the mail is for, at the customer.
    QString Attention;
    /// The first street line.
    QString Street;
    /// Suite, floor or building.
    QString Street2;
    /// The city.
    QString City;
    /// The state.
    QString State;
    /// The postal code.
    QString Zip;
    /// The phone number.
    QString Phone;
    /// The e-mail address.
    QString Email;

    /// Equal when every line is.
    friend bool operator==(const PostalAddress&, const PostalAddress&) = default;
};

/// The sales office that sends the package: the head of its letters.
struct ZEBOBJECTSCONTRACTS_EXPORT Letterhead {
    /// The office's name, the first line of the letterhead.
    QString Name;
    /// The first street line.
    QString Street;
    /// Suite, floor or building.
    QString Street2;
    /// The city.
    QString City;
    /// The state.
    QString State;
    /// The postal code.
    QString Zip;
    /// The phone number.
    QString Phone;
    /// The e-mail address.
    QString Email;
    /// The office's logo as an image file's bytes (PNG or JPEG); empty when the office has none.
    QByteArray Logo;

    /// Equal when every line and the logo are.
    friend bool operator==(const Letterhead&, const Letterhead&) = default;
};

/// A manufacturer's cut sheet attached to a fixture type of the job: a PDF file as the office
/// keeps it.
struct CutSheet {
    /// The line items' type the sheet belongs to ("A"); every line of that type shares it.
    QString Type;
    /// The file's name as it was attached.
    QString FileName;
    /// The file's bytes.
    QByteArray Pdf;
    /// The number of pages of the file.
    qint32 PageCount = 0;
    /// Equal when every field is.
    friend bool operator==(const CutSheet&, const CutSheet&) = default;
};

/// The keys of the label fields the package knows how to fill. A field of any other key prints
/// nothing.
namespace LabelFieldKey {
/// The customer's company.
inline const QString Company = QStringLiteral("COMPANY");
/// The person the mail is for.
inline const QString Attention = QStringLiteral("ATTENTION");
/// The first street line.
inline const QString Street = QStringLiteral("STREET");
/// Suite, floor or building.
inline const QString Street2 = QStringLiteral("STREET2");
/// City, state and postal code on one line.
inline const QString CityStateZip = QStringLiteral("CITYSTATEZIP");
/// The job's name.
inline const QString JobName = QStringLiteral("JOBNAME");
/// The job's number.
inline const QString JobNumber = QStringLiteral("JOBNUMBER");
/// The job's purchase order.
inline const QString PurchaseOrder = QStringLiteral("PONUMBER");
/// The phone number.
inline const QString Phone = QStringLiteral("PHONE");
/// The submittal's date.
inline const QString SubmittalDate = QStringLiteral("SUBMITTALDATE");
}  // namespace LabelFieldKey

/// One job as the package generator reads it: the business objects of its submittal and the few
/// facts about the job that those objects do not carry. Any member may fail with
/// ZebObjects::Failure; an object that the job lacks is answered as none.
class ZEBOBJECTSCONTRACTS_EXPORT PackageSource {
public:
    virtual ~PackageSource() = default;

    /// The job's submittal: parts, purpose, issuer, date, recipients.
    virtual std::shared_ptr<ZebObjects::Submittal> Submittal() const = 0;
    /// The cover letter's paragraphs; the ticked ones print.
    virtual std::shared_ptr<ZebObjects::TextObjects> CoverLetterParagraphs() const = 0;
    /// The cover letter's remarks; the ticked ones print.
    virtual std::shared_ptr<ZebObjects::TextObjects> CoverLetterRemarks() const = 0;
    /// The bill of materials options.
    virtual std::shared_ptr<ZebObjects::BOM> BOM() const = 0;
    /// The label definition.
    virtual std::shared_ptr<ZebObjects::Labels> Labels() const = 0;
    /// The job's lines; the selected ones print.
    virtual std::shared_ptr<ZebObjects::LineItems> LineItems() const = 0;
    /// The customers the labels are for; the included ones print.
    virtual std::shared_ptr<ZebObjects::Customers> Customers() const = 0;

    /// The job's name, in the footer and on the labels.
    virtual QString JobName() const = 0;
    /// The job's number, in the footer and on the labels.
    virtual QString JobNumber() const = 0;
    /// The job's purchase order; may be empty.
    virtual QString PurchaseOrder() const = 0;
    /// The company that makes the fixture of a line of this job.
    virtual QString Manufacturer(const ZebObjects::LineItem& line) const = 0;
    /// Where a customer's label goes.
    virtual PostalAddress Address(const ZebObjects::Customer& customer) const = 0;
    /// Where a recipient's letter goes.
    virtual PostalAddress Address(const ZebObjects::Recipient& recipient) const = 0;
    /// The office that issues the package.
    virtual Letterhead Office() const = 0;
    /// The job's cut sheets, grouped by type in the order they were attached; none for a host
    /// that keeps no cut sheets.
    virtual QList<CutSheet> CutSheets() const { return {}; }
};

}  // namespace ZebPackage
