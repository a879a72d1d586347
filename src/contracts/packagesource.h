#pragma once

#include "zebobjectscontracts_export.h"

#include <QByteArray>
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

// Where a customer's or a recipient's mail goes. A customer object knows its own city and state;
// its address may leave them empty.
struct PostalAddress {
    // The person the mail is for, at the customer.
    QString Attention;
    QString Street;
    // Suite, floor or building.
    QString Street2;
    QString City;
    QString State;
    QString Zip;
    QString Phone;
    QString Email;

    friend bool operator==(const PostalAddress&, const PostalAddress&) = default;
};

// The sales office that sends the package: the head of its letters.
struct ZEBOBJECTSCONTRACTS_EXPORT Letterhead {
    QString Name;
    QString Street;
    QString Street2;
    QString City;
    QString State;
    QString Zip;
    QString Phone;
    QString Email;
    // The office's logo as an image file's bytes (PNG or JPEG); empty when the office has none.
    QByteArray Logo;

    friend bool operator==(const Letterhead&, const Letterhead&) = default;
};

// The keys of the label fields the package knows how to fill. A field of any other key prints
// nothing.
namespace LabelFieldKey {
inline const QString Company = QStringLiteral("COMPANY");
inline const QString Attention = QStringLiteral("ATTENTION");
inline const QString Street = QStringLiteral("STREET");
inline const QString Street2 = QStringLiteral("STREET2");
inline const QString CityStateZip = QStringLiteral("CITYSTATEZIP");
inline const QString JobName = QStringLiteral("JOBNAME");
inline const QString JobNumber = QStringLiteral("JOBNUMBER");
inline const QString PurchaseOrder = QStringLiteral("PONUMBER");
inline const QString Phone = QStringLiteral("PHONE");
inline const QString SubmittalDate = QStringLiteral("SUBMITTALDATE");
}  // namespace LabelFieldKey

// One job as the package generator reads it: the business objects of its submittal and the few
// facts about the job that those objects do not carry. Any member may fail with
// ZebObjects::Failure; an object that the job lacks is answered as none.
class ZEBOBJECTSCONTRACTS_EXPORT PackageSource {
public:
    virtual ~PackageSource() = default;

    virtual std::shared_ptr<ZebObjects::Submittal> Submittal() const = 0;
    virtual std::shared_ptr<ZebObjects::TextObjects> CoverLetterParagraphs() const = 0;
    virtual std::shared_ptr<ZebObjects::TextObjects> CoverLetterRemarks() const = 0;
    virtual std::shared_ptr<ZebObjects::BOM> BOM() const = 0;
    virtual std::shared_ptr<ZebObjects::Labels> Labels() const = 0;
    virtual std::shared_ptr<ZebObjects::LineItems> LineItems() const = 0;
    virtual std::shared_ptr<ZebObjects::Customers> Customers() const = 0;

    virtual QString JobName() const = 0;
    virtual QString JobNumber() const = 0;
    virtual QString PurchaseOrder() const = 0;
    // The company that makes the fixture of a line of this job.
    virtual QString Manufacturer(const ZebObjects::LineItem& line) const = 0;
    virtual PostalAddress Address(const ZebObjects::Customer& customer) const = 0;
    // Where a recipient's letter goes.
    virtual PostalAddress Address(const ZebObjects::Recipient& recipient) const = 0;
    // The office that issues the package.
    virtual Letterhead Office() const = 0;
};

}  // namespace ZebPackage
