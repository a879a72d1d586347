#include "objects/sampledata.h"

#include "package/agencylogo.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>

#include "objects/customerdirectory.h"
#include "objects/standalonebom.h"
#include "objects/standalonecoverletter.h"
#include "objects/standalonecustomer.h"
#include "objects/standalonecustomers.h"
#include "objects/standalonelabelfields.h"
#include "objects/standalonelabels.h"
#include "objects/standalonelineitems.h"
#include "objects/standalonerecipients.h"
#include "objects/standalonesubmittal.h"
#include "objects/standalonetextobjects.h"
#include "rules/textkind.h"

namespace ZebObjects {

namespace {

std::shared_ptr<StandaloneTextObjects> collection(
    qint32 kind, std::initializer_list<std::pair<QString, bool>> texts)
{
    auto out = std::make_shared<StandaloneTextObjects>();
    out->setTextObjectType(kind);
    for (const auto& [text, selected] : texts)
        out->Add(text, selected);
    return out;
}

StandaloneCustomer::Data customer(const char* key, const char* name, const char* account,
                                  const char* city, const char* state, const char* zip,
                                  const char* phone, const char* type, const char* category,
                                  bool active = true)
{
    StandaloneCustomer::Data d;
    d.key = QString::fromLatin1(key);
    d.name = QString::fromLatin1(name);
    d.accountNumber = QString::fromLatin1(account);
    d.city = QString::fromLatin1(city);
    d.state = QString::fromLatin1(state);
    d.zip = QString::fromLatin1(zip);
    d.phone = QString::fromLatin1(phone);
    d.type = QString::fromLatin1(type);
    d.category = QString::fromLatin1(category);
    d.displayText = d.name + QStringLiteral(" - ") + d.city + QStringLiteral(", ") + d.state;
    d.active = active;
    return d;
}

}  // namespace

QString SampleData::jobName()
{
    return QStringLiteral("Riverside Medical Office Building");
}

std::shared_ptr<StandaloneTextObjects> SampleData::coverLetterParagraphs()
{
    return collection(
        TextKind::CoverLetterParagraph,
        {{QStringLiteral("Enclosed please find our submittal for the lighting fixtures of the "
                         "above referenced project. Please review the enclosed data and return "
                         "one approved copy to our office at your earliest convenience."),
          true},
         {QStringLiteral("Fixtures are submitted as specified unless noted otherwise. Where a "
                         "substitution is offered, the specified fixture is listed in the remarks "
                         "of that line."),
          true},
         {QStringLiteral("Please note the following before release:\r\n"
                         "- Mounting heights must be confirmed by the architect.\r\n"
                         "- Ceiling types must be verified against the reflected ceiling plan.\r\n"
                         "- Lead times start at receipt of approved drawings."),
          false},
         {QStringLiteral("Made to order fixtures cannot be cancelled or returned once released "
                         "to production."),
          true},
         {QStringLiteral("Thank you for the opportunity to be of service on this project. Should "
                         "you have any questions, please do not hesitate to call."),
          false}});
}

std::shared_ptr<StandaloneTextObjects> SampleData::coverLetterRemarks()
{
    return collection(
        TextKind::CoverLetterRemark,
        {{QStringLiteral("Approval is required within 10 working days to hold the quoted "
                         "delivery dates."),
          true},
         {QStringLiteral("Emergency battery packs are factory installed where listed."), false},
         {QStringLiteral("Exterior poles and anchor bolts are by others."), false},
         {QStringLiteral("Dimming is 0-10V throughout; confirm compatibility with the controls "
                         "vendor."),
          true}});
}

QStringList SampleData::bomRemarkTexts()
{
    return {QStringLiteral("All fixtures are 120-277V unless noted otherwise."),
            QStringLiteral("Lamps are included where listed."),
            QStringLiteral("Quantities are the contractor's responsibility; verify against the "
                           "drawings."),
            QStringLiteral("Colour temperature 3500K, CRI 80 minimum unless noted."),
            QStringLiteral("Finishes per the architect's selection at approval.")};
}

std::shared_ptr<StandaloneTextObjects> SampleData::textObjects(qint32 kind)
{
    switch (kind) {
    case TextKind::CoverLetterParagraph: return coverLetterParagraphs();
    case TextKind::CoverLetterRemark: return coverLetterRemarks();
    case TextKind::BOMRemark: {
        auto out = std::make_shared<StandaloneTextObjects>();
        out->setTextObjectType(kind);
        for (const QString& text : bomRemarkTexts())
            out->Add(text, false);
        return out;
    }
    default: {
        auto out = std::make_shared<StandaloneTextObjects>();
        out->setTextObjectType(kind);
        return out;
    }
    }
}

std::shared_ptr<StandaloneRecipients> SampleData::recipients()
{
    auto out = std::make_shared<StandaloneRecipients>();
    out->Add(QStringLiteral("Dana Whitcomb"), QStringLiteral("Halvorsen Electric Co."));
    out->Add(QStringLiteral("Priya Raman"), QStringLiteral("Cedar Ridge Architects"));
    out->Add(QStringLiteral("Tom Okafor"), QStringLiteral("Benton Consulting Engineers"));
    return out;
}

std::shared_ptr<StandaloneSubmittal> SampleData::submittal()
{
    auto out = std::make_shared<StandaloneSubmittal>();
    out->setIssuedBy(issuedByNames().first());
    out->setSubmittalDate(QStringLiteral("2026-11-21"));
    out->setIncludeCoverLetter(true);
    out->setIncludeBOM(true);
    out->setIncludeLabels(false);
    out->setSubmittalPurpose(out->SelectPurpose(1));
    auto letter = std::make_shared<StandaloneCoverLetter>();
    letter->setIncludeLogo(true);
    letter->setIncludeDefaultParagraphs(true);
    letter->setIncludeRemarks(false);
    letter->setSeparateLetters(false);
    letter->setIncludeCarbonCopy(true);
    out->setCoverLetter(letter);
    out->setRecipients(recipients());
    return out;
}

std::shared_ptr<StandaloneBOM> SampleData::bom()
{
    auto out = std::make_shared<StandaloneBOM>();
    out->setIncludeQuantity(true);
    out->setIncludeType(true);
    out->setIncludeBrand(true);
    out->setIncludeCatalogNumber(true);
    out->setIncludeDescription(true);
    out->setIncludeLineComments(true);
    out->setIncludeMTO(true);
    out->setIncludeDefaultRemarks(true);
    out->PopulateRemarks(bomRemarkTexts());
    return out;
}

std::shared_ptr<StandaloneLabels> SampleData::labels()
{
    auto out = std::make_shared<StandaloneLabels>();
    auto fields = out->standaloneFields();
    fields->Add(QStringLiteral("COMPANY"), QStringLiteral("Company"), 1);
    fields->Add(QStringLiteral("ATTENTION"), QStringLiteral("Attention"), 2);
    fields->Add(QStringLiteral("STREET"), QStringLiteral("Street Address"), 3);
    fields->Add(QStringLiteral("STREET2"), QStringLiteral("Suite / Floor"));
    fields->Add(QStringLiteral("CITYSTATEZIP"), QStringLiteral("City, State Zip"), 4);
    fields->Add(QStringLiteral("JOBNAME"), QStringLiteral("Job Name"));
    fields->Add(QStringLiteral("JOBNUMBER"), QStringLiteral("Job Number"));
    fields->Add(QStringLiteral("PONUMBER"), QStringLiteral("Purchase Order"));
    fields->Add(QStringLiteral("PHONE"), QStringLiteral("Phone"));
    fields->Add(QStringLiteral("SUBMITTALDATE"), QStringLiteral("Submittal Date"));
    return out;
}

std::shared_ptr<StandaloneLineItems> SampleData::lineItems()
{
    using L = StandaloneLineItem::Data;
    const auto none = std::optional<QString>();
    const auto note = [](const char* text) {
        return std::optional<QString>(QString::fromLatin1(text));
    };
    const QList<L> lines = {
        {24, QStringLiteral("A"), QStringLiteral("Varnholt"),
         QStringLiteral("VH-2X4-LP-40L-35K-DIM"),
         QStringLiteral("2x4 recessed LED troffer, 4000 lm, 3500K, 0-10V"), QStringLiteral("LVL1"),
         false, none, true},
        {18, QStringLiteral("A1"), QStringLiteral("Varnholt"),
         QStringLiteral("VH-2X2-LP-30L-35K-DIM"),
         QStringLiteral("2x2 recessed LED troffer, 3000 lm, 3500K, 0-10V"), QStringLiteral("LVL1"),
         false, none, true},
        {6, QStringLiteral("A1E"), QStringLiteral("Varnholt"),
         QStringLiteral("VH-2X2-LP-30L-35K-DIM-EM"),
         QStringLiteral("2x2 recessed LED troffer with emergency battery pack"),
         QStringLiteral("LVL1"), false, note("Battery pack factory installed; 90 minute rating."),
         true},
        {42, QStringLiteral("B"), QStringLiteral("Quenza Architectural"),
         QStringLiteral("QA-DL4-15L-35K-WT"),
         QStringLiteral("4\" LED downlight, 1500 lm, white trim"), QStringLiteral("LVL1"), false,
         none, true},
        {12, QStringLiteral("B1"), QStringLiteral("Quenza Architectural"),
         QStringLiteral("QA-DL4-15L-35K-WT-WL"), QStringLiteral("4\" LED downlight, wet location"),
         QStringLiteral("LVL1"), false, none, false},
        {8, QStringLiteral("C"), QStringLiteral("Lumatrex"), QStringLiteral("LMX-LN4-8FT-SO-35K"),
         QStringLiteral("Linear suspended direct/indirect, 8 ft, 3500K"), QStringLiteral("LVL2"),
         true, note("Run lengths per architectural drawing A-501."), true},
        {4, QStringLiteral("C1"), QStringLiteral("Lumatrex"), QStringLiteral("LMX-LN4-12FT-SO-35K"),
         QStringLiteral("Linear suspended direct/indirect, 12 ft, 3500K"), QStringLiteral("LVL2"),
         true, none, true},
        {30, QStringLiteral("D"), QStringLiteral("Northgate Lighting"),
         QStringLiteral("NG-WP-1X4-40L"), QStringLiteral("1x4 surface wrap, 4000 lm, frosted lens"),
         QStringLiteral("LVL2"), false, none, true},
        {16, QStringLiteral("E"), QStringLiteral("Northgate Lighting"),
         QStringLiteral("NG-VT-2X4-50L-MS"), QStringLiteral("2x4 vapor tight with motion sensor"),
         QStringLiteral("LVL2"), false, note(""), false},
        {10, QStringLiteral("F"), QStringLiteral("Cellar & Beam"),
         QStringLiteral("CB-SCN-12-30K-BRZ"),
         QStringLiteral("Wall sconce, 12\", 3000K, dark bronze"), QStringLiteral("LOBBY"), true,
         note("Finish sample to be approved by the architect."), true},
        {3, QStringLiteral("G"), QStringLiteral("Cellar & Beam"),
         QStringLiteral("CB-PND-36-30K-BRZ"),
         QStringLiteral("Decorative pendant, 36\" diameter, 3000K"), QStringLiteral("LOBBY"), true,
         note("Canopy height to suit 14 ft ceiling."), true},
        {14, QStringLiteral("H"), QStringLiteral("Quenza Architectural"),
         QStringLiteral("QA-SL2-4FT-35K-DIM"), QStringLiteral("Recessed slot, 4 ft, 3500K, 0-10V"),
         QStringLiteral("LVL3"), false, none, true},
        {20, QStringLiteral("J"), QStringLiteral("Varnholt"), QStringLiteral("VH-STR-4FT-40L-35K"),
         QStringLiteral("Strip light, 4 ft, 4000 lm"), QStringLiteral("MECH"), false, none, true},
        {9, QStringLiteral("K"), QStringLiteral("Solace Exterior"),
         QStringLiteral("SX-WP-30L-40K-BRZ"),
         QStringLiteral("Wall pack, full cutoff, 3000 lm, 4000K"), QStringLiteral("SITE"), false,
         none, true},
        {6, QStringLiteral("L"), QStringLiteral("Solace Exterior"),
         QStringLiteral("SX-AR-T4-150L-40K"),
         QStringLiteral("Area light, type IV distribution, 15000 lm"), QStringLiteral("SITE"),
         false, note("Poles and anchor bolts by others."), true},
        {12, QStringLiteral("M"), QStringLiteral("Solace Exterior"),
         QStringLiteral("SX-BOL-42-30K"), QStringLiteral("Bollard, 42\", 3000K"),
         QStringLiteral("SITE"), false, none, false},
        {22, QStringLiteral("X1"), QStringLiteral("Northgate Lighting"),
         QStringLiteral("NG-EXIT-RD-SF-EM"),
         QStringLiteral("LED exit sign, red letters, single face, battery"),
         QStringLiteral("EGRESS"), false, none, true},
        {4, QStringLiteral("X2"), QStringLiteral("Northgate Lighting"),
         QStringLiteral("NG-EXIT-RD-DF-EM"),
         QStringLiteral("LED exit sign, red letters, double face, battery"),
         QStringLiteral("EGRESS"), false, none, true},
        {11, QStringLiteral("EM1"), QStringLiteral("Northgate Lighting"),
         QStringLiteral("NG-EBU-2H-WT"), QStringLiteral("Emergency unit, two heads, white"),
         QStringLiteral("EGRESS"), false, none, true},
        {2, QStringLiteral("P"), QStringLiteral("Lumatrex"), QStringLiteral("LMX-CUST-RING-60-35K"),
         QStringLiteral("Custom ring pendant, 60\" diameter, 3500K"), QStringLiteral("LOBBY"), true,
         note("Made to order: shop drawings follow under separate cover."), false},
    };
    auto out = std::make_shared<StandaloneLineItems>();
    for (const L& line : lines)
        out->Add(line);
    return out;
}

std::shared_ptr<CustomerDirectory> SampleData::customerDirectory()
{
    auto out = std::make_shared<CustomerDirectory>();
    const QList<StandaloneCustomer::Data> records = {
        customer("C1001", "Halvorsen Electric Co.", "100457", "Portland", "OR", "97210",
                 "(503) 555-0142", "Contractor", "Electrical"),
        customer("C1002", "Benton Consulting Engineers", "100512", "Beaverton", "OR", "97005",
                 "(503) 555-0177", "Engineer", "Specifier"),
        customer("C1003", "Cedar Ridge Architects", "100538", "Portland", "OR", "97204",
                 "(503) 555-0119", "Architect", "Specifier"),
        customer("C1004", "Willamette Valley Electric", "100601", "Salem", "OR", "97301",
                 "(503) 555-0163", "Contractor", "Electrical"),
        customer("C1005", "Columbia Electric Supply", "100622", "Vancouver", "WA", "98660",
                 "(360) 555-0101", "Distributor", "Wholesale"),
        customer("C1006", "Summit Lighting Design", "100649", "Seattle", "WA", "98101",
                 "(206) 555-0188", "Designer", "Lighting Design"),
        customer("C1007", "Northwest Medical Properties", "100673", "Portland", "OR", "97232",
                 "(503) 555-0150", "Owner", "Healthcare"),
        customer("C1008", "Rainier Electrical Contractors", "100688", "Tacoma", "WA", "98402",
                 "(253) 555-0134", "Contractor", "Electrical"),
        customer("C1009", "Mt. Hood Builders", "100702", "Gresham", "OR", "97030", "(503) 555-0196",
                 "Contractor", "General"),
        customer("C1010", "Pacific Crest Electric", "100719", "Eugene", "OR", "97401",
                 "(541) 555-0112", "Contractor", "Electrical"),
        customer("C1011", "Lumen & Line Studio", "100733", "Portland", "OR", "97209",
                 "(503) 555-0125", "Designer", "Lighting Design"),
        customer("C1012", "Tualatin Valley Electric", "100748", "Hillsboro", "OR", "97123",
                 "(503) 555-0171", "Contractor", "Electrical"),
        customer("C1013", "Ironwood General Contractors", "100764", "Portland", "OR", "97217",
                 "(503) 555-0108", "Contractor", "General"),
        customer("C1014", "Skyline Engineering Group", "100781", "Bellevue", "WA", "98004",
                 "(425) 555-0147", "Engineer", "Specifier"),
        customer("C1015", "Three Rivers Electric Supply", "100795", "Kennewick", "WA", "99336",
                 "(509) 555-0183", "Distributor", "Wholesale"),
        customer("C1016", "Deschutes Electric", "100810", "Bend", "OR", "97701", "(541) 555-0139",
                 "Contractor", "Electrical"),
        customer("C1017", "Harborview Facilities Group", "100826", "Seattle", "WA", "98104",
                 "(206) 555-0160", "Owner", "Healthcare"),
        customer("C1018", "Oak Street Architecture", "100841", "Eugene", "OR", "97401",
                 "(541) 555-0174", "Architect", "Specifier"),
        customer("C1019", "Cascade Power & Light Contractors", "100857", "Redmond", "OR", "97756",
                 "(541) 555-0128", "Contractor", "Electrical"),
        customer("C1020", "Bridgetown Electric", "100872", "Portland", "OR", "97202",
                 "(503) 555-0199", "Contractor", "Electrical", false),
        customer("C1021", "Evergreen School District", "100888", "Vancouver", "WA", "98682",
                 "(360) 555-0115", "Owner", "Education"),
        customer("C1022", "Sound Electrical Services", "100903", "Everett", "WA", "98201",
                 "(425) 555-0153", "Contractor", "Electrical"),
        customer("C1023", "Klamath Basin Electric", "100919", "Klamath Falls", "OR", "97601",
                 "(541) 555-0166", "Contractor", "Electrical"),
        customer("C1024", "Nordic Light Agency", "100934", "Seattle", "WA", "98121",
                 "(206) 555-0107", "Agent", "Sales"),
        customer("C1025", "Meridian Healthcare Builders", "100950", "Boise", "ID", "83702",
                 "(208) 555-0141", "Contractor", "General"),
        customer("C1026", "Snake River Electric", "100966", "Idaho Falls", "ID", "83402",
                 "(208) 555-0190", "Contractor", "Electrical"),
        customer("C1027", "Alder Creek Engineering", "100981", "Medford", "OR", "97501",
                 "(541) 555-0103", "Engineer", "Specifier"),
        customer("C1028", "Pioneer Square Lighting", "100997", "Seattle", "WA", "98104",
                 "(206) 555-0137", "Showroom", "Retail", false),
        customer("C1029", "Coastal Range Electric", "101012", "Newport", "OR", "97365",
                 "(541) 555-0185", "Contractor", "Electrical"),
        customer("C1030", "Riverbend Property Management", "101028", "Portland", "OR", "97214",
                 "(503) 555-0130", "Owner", "Commercial"),
        customer("C1031", "Spokane Valley Electric Supply", "101043", "Spokane", "WA", "99216",
                 "(509) 555-0158", "Distributor", "Wholesale"),
        customer("C1032", "High Desert Architects", "101059", "Bend", "OR", "97702",
                 "(541) 555-0121", "Architect", "Specifier"),
        customer("C1033", "Gorge Electric", "101074", "Hood River", "OR", "97031", "(541) 555-0144",
                 "Contractor", "Electrical"),
        customer("C1034", "Puget Lighting Controls", "101090", "Kent", "WA", "98032",
                 "(253) 555-0179", "Contractor", "Controls"),
        customer("C1035", "Rose City Electric", "101105", "Portland", "OR", "97211",
                 "(503) 555-0110", "Contractor", "Electrical"),
        customer("C1036", "Umpqua Design Build", "101121", "Roseburg", "OR", "97470",
                 "(541) 555-0192", "Contractor", "General"),
    };
    struct Row {
        const char* key;
        const char* attention;
        const char* street;
        const char* street2;
    };
    static const Row rows[] = {
        {"C1001", "Dana Whitcomb", "2210 NW Front Avenue", "Suite 300"},
        {"C1002", "Tom Okafor", "12725 SW Millikan Way", "Floor 4"},
        {"C1003", "Priya Raman", "520 SW Yamhill Street", "Suite 1100"},
        {"C1004", "Luis Navarro", "1880 Lancaster Drive NE", ""},
        {"C1005", "Grace Lindholm", "4400 NE 77th Avenue", "Building B"},
        {"C1006", "Owen Fairbanks", "1201 Third Avenue", "Suite 2400"},
        {"C1007", "Hannah Becker", "1040 NE 44th Avenue", ""},
        {"C1008", "Marcus Delgado", "2302 Pacific Avenue", ""},
        {"C1009", "Ruth Abernathy", "333 NE Burnside Road", ""},
        {"C1010", "Kevin Marsh", "1675 W 11th Avenue", ""},
        {"C1011", "Ines Carvalho", "1435 NW Flanders Street", "Studio 5"},
        {"C1012", "Paul Engstrom", "5050 NE Elam Young Parkway", ""},
        {"C1013", "Sandra Whitley", "7600 N Interstate Avenue", ""},
        {"C1014", "Victor Huang", "10900 NE 8th Street", "Suite 900"},
        {"C1015", "Amy Castellano", "8203 W Quinault Avenue", ""},
        {"C1016", "Derek Holm", "63055 Corporate Place", ""},
        {"C1017", "Naomi Fischer", "325 Ninth Avenue", "Box 359750"},
        {"C1018", "Colin Ashby", "44 W Broadway", "Suite 500"},
        {"C1019", "Teresa Vaughn", "2555 SW 17th Street", ""},
        {"C1020", "Felix Morrow", "3621 SE Division Street", ""},
        {"C1021", "Janet Sorensen", "2802 NE 65th Avenue", ""},
        {"C1022", "Ahmed Saleh", "3002 Colby Avenue", ""},
        {"C1023", "Bonnie Reyes", "2045 Washburn Way", ""},
        {"C1024", "Elin Dahl", "2200 Western Avenue", "Suite 210"},
        {"C1025", "Joseph Kimura", "1010 W Jefferson Street", ""},
        {"C1026", "Carla Jennings", "1850 N Holmes Avenue", ""},
        {"C1027", "Martin Pruitt", "820 Crater Lake Avenue", ""},
        {"C1028", "Lena Vogel", "110 First Avenue S", ""},
        {"C1029", "Sam Tillman", "140 SW Coast Highway", ""},
        {"C1030", "Olivia Grant", "1015 SE Grand Avenue", "Suite 200"},
        {"C1031", "Brandon Cole", "15912 E Marietta Avenue", ""},
        {"C1032", "Mei Lin Zhou", "945 NW Wall Street", ""},
        {"C1033", "Gary Lindstrom", "1900 12th Street", ""},
        {"C1034", "Rosa Martinez", "22443 68th Avenue S", ""},
        {"C1035", "Nathan Price", "5320 NE Martin Luther King Jr Boulevard", ""},
        {"C1036", "Wendy Harlan", "2780 NE Stephens Street", ""},
    };
    for (auto record : records) {
        for (const Row& row : rows) {
            if (record.key == QLatin1String(row.key)) {
                record.attention = QString::fromLatin1(row.attention);
                record.street = QString::fromLatin1(row.street);
                record.street2 = QString::fromLatin1(row.street2);
                record.email = emailFor(record.attention, record.name);
            }
        }
        out->Add(record);
    }
    return out;
}

QByteArray SampleData::logo()
{
    QImage image(300, 300, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        ZebPackage::AgencyLogo::draw(painter, QRectF(0, 0, 300, 300));
    }
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return png;
}

QString SampleData::emailFor(const QString& person, const QString& company)
{
    const auto letters = [](const QString& text) {
        QString out;
        for (const QChar c : text.toLower())
            if (c.isLetterOrNumber() && c.unicode() < 128)
                out += c;
        return out;
    };
    const QStringList names = person.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const QStringList words = company.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QString local = names.isEmpty()
                        ? QStringLiteral("office")
                        : letters(names.first()) + QLatin1Char('.') + letters(names.last());
    QString domain;
    for (qsizetype i = 0; i < std::min<qsizetype>(2, words.size()); ++i)
        domain += letters(words[i]);
    return local + QLatin1Char('@') + domain + QStringLiteral(".example");
}

std::shared_ptr<StandaloneCustomers> SampleData::customers()
{
    auto out = std::make_shared<StandaloneCustomers>();
    const auto directory = customerDirectory()->Records();
    for (const auto& record : directory) {
        if (record.key != QLatin1String("C1001") && record.key != QLatin1String("C1003"))
            continue;
        auto data = record;
        data.included = true;
        out->Add(data.key, std::make_shared<StandaloneCustomer>(data));
    }
    return out;
}

QStringList SampleData::issuedByNames()
{
    return {QStringLiteral("Marta Halloran"), QStringLiteral("Jens Okonkwo"),
            QStringLiteral("Rebecca Lindqvist"), QStringLiteral("Samuel Ortega"),
            QStringLiteral("Keiko Brandt")};
}

QVariant SampleData::searchContextValue()
{
    return QVariant(QStringLiteral("PDX-014/mhalloran"));
}

}  // namespace ZebObjects
