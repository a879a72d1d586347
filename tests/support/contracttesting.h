#pragma once

#include "contracts/bom.h"
#include "contracts/submittal.h"

#include <QObject>
#include <QStringList>

// What the tests of a contract's implementations share, whichever implementation they hold.
namespace ZebTest {

// Every event of a submittal in the order raised, each with what the submittal answered at
// that moment.
class SubmittalEvents {
public:
    explicit SubmittalEvents(ZebObjects::Submittal& s)
    {
        using ZebObjects::Submittal;
        QObject::connect(&s, &Submittal::IssuedByChanged, [this, &s] {
            events << QStringLiteral("IssuedByChanged:") + s.IssuedBy();
        });
        QObject::connect(&s, &Submittal::SubmittalDateChanged, [this, &s] {
            events << QStringLiteral("SubmittalDateChanged:") + s.SubmittalDate();
        });
        QObject::connect(&s, &Submittal::CoverLetterChanged, [this, &s] {
            events << QStringLiteral("CoverLetterChanged:%1").arg(s.IncludeCoverLetter());
        });
        QObject::connect(&s, &Submittal::BOMChanged, [this, &s] {
            events << QStringLiteral("BOMChanged:%1").arg(s.IncludeBOM());
        });
        QObject::connect(&s, &Submittal::LabelsChanged, [this, &s] {
            events << QStringLiteral("LabelsChanged:%1").arg(s.IncludeLabels());
        });
        QObject::connect(&s, &Submittal::SubmittalPurposeChanged, [this, &s](qint16 newIndex) {
            events << QStringLiteral("SubmittalPurposeChanged(%1):%2:%3")
                          .arg(newIndex)
                          .arg(s.SubmittalPurposeIndex())
                          .arg(s.SubmittalPurpose());
        });
    }
    QStringList events;
};

// One of the bill of materials' Include flags: its name, how it is read and how it is written.
struct BomFlag {
    const char* name;
    bool (ZebObjects::BOM::*get)() const;
    void (ZebObjects::BOM::*set)(bool);
};

inline const BomFlag kBomFlags[] = {
    {"IncludeQuantity", &ZebObjects::BOM::IncludeQuantity, &ZebObjects::BOM::setIncludeQuantity},
    {"IncludeType", &ZebObjects::BOM::IncludeType, &ZebObjects::BOM::setIncludeType},
    {"IncludeDefaultRemarks", &ZebObjects::BOM::IncludeDefaultRemarks,
     &ZebObjects::BOM::setIncludeDefaultRemarks},
    {"IncludeBrand", &ZebObjects::BOM::IncludeBrand, &ZebObjects::BOM::setIncludeBrand},
    {"IncludeManufacturer", &ZebObjects::BOM::IncludeManufacturer,
     &ZebObjects::BOM::setIncludeManufacturer},
    {"IncludeCatalogNumber", &ZebObjects::BOM::IncludeCatalogNumber,
     &ZebObjects::BOM::setIncludeCatalogNumber},
    {"IncludeDescription", &ZebObjects::BOM::IncludeDescription,
     &ZebObjects::BOM::setIncludeDescription},
    {"IncludeLineComments", &ZebObjects::BOM::IncludeLineComments,
     &ZebObjects::BOM::setIncludeLineComments},
    {"IncludeMTO", &ZebObjects::BOM::IncludeMTO, &ZebObjects::BOM::setIncludeMTO},
    {"IncludeGroupCodes", &ZebObjects::BOM::IncludeGroupCodes,
     &ZebObjects::BOM::setIncludeGroupCodes},
};

}  // namespace ZebTest
