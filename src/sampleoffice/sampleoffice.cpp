#include "sampleoffice/sampleoffice.h"

#include "contracts/labelfield.h"
#include "contracts/labelfields.h"
#include "contracts/lineitemcomment.h"
#include "rules/brandrecord.h"
#include "rules/collectionrules.h"
#include "objects/customerdirectory.h"
#include "objects/sampledata.h"
#include "objects/standalonebom.h"
#include "objects/standalonecoverletter.h"
#include "objects/standalonecustomers.h"
#include "objects/standalonelabels.h"
#include "objects/standalonelineitems.h"
#include "objects/standalonepackagesource.h"
#include "objects/standalonerecipients.h"
#include "store/storebrands.h"
#include "objects/standalonesubmittal.h"
#include "objects/standalonetextobjects.h"
#include "rules/textkind.h"
#include "store/store.h"

#include <array>

namespace ZebObjects {

namespace {

QList<JobContents::Text> textsOf(const TextObjects& texts)
{
    QList<JobContents::Text> out;
    for (const auto& t : texts.Enumerate())
        out.append({t->Text(), t->Selected()});
    return out;
}

QList<JobContents::Text> unticked(const QStringList& texts)
{
    QList<JobContents::Text> out;
    for (const QString& t : texts)
        out.append({t, false});
    return out;
}

QList<JobContents::LabelField> labelFieldsOf(const Labels& labels)
{
    // In the order the fields were added, each with its print order.
    QList<JobContents::LabelField> out;
    const auto fields = labels.LabelFields()->Enumerate();
    for (const auto& f : fields)
        out.append({f->Key(), f->Caption(), f->PrintOrder()});
    return out;
}

// A recipient at a company of the sample directory, with the company's address.
JobContents::Recipient recipientAt(const QString& name, const QString& company)
{
    JobContents::Recipient r;
    r.name = name;
    r.company = company;
    for (const auto& d : SampleData::customerDirectory()->Records()) {
        if (d.name == company) {
            r.street = d.street;
            r.street2 = d.street2;
            r.city = d.city;
            r.state = d.state;
            r.zip = d.zip;
            r.phone = d.phone;
            r.email = SampleData::emailFor(name, company);
            break;
        }
    }
    return r;
}

// Riverside's submittal settings, cover letter and columns: the start of every other job.
JobContents fromSample()
{
    JobContents c;
    const auto s = SampleData::submittal();
    c.issuedBy = s->IssuedBy();
    c.submittalDate = s->SubmittalDate();
    c.includeCoverLetter = s->IncludeCoverLetter();
    c.includeBOM = s->IncludeBOM();
    c.includeLabels = s->IncludeLabels();
    c.purpose.index = s->SubmittalPurposeIndex();
    c.purpose.text = s->SubmittalPurpose();
    const auto letter = s->CoverLetter();
    c.includeLogo = letter->IncludeLogo();
    c.includeDefaultParagraphs = letter->IncludeDefaultParagraphs();
    c.includeRemarks = letter->IncludeRemarks();
    c.separateLetters = letter->SeparateLetters();
    c.includeCarbonCopy = letter->IncludeCarbonCopy();
    for (const auto& r : s->Recipients()->Enumerate())
        c.recipients.append(recipientAt(r->Name(), r->Company()));
    c.paragraphs = textsOf(*SampleData::coverLetterParagraphs());
    c.remarks = textsOf(*SampleData::coverLetterRemarks());
    const auto bom = SampleData::bom();
    c.includeQuantity = bom->IncludeQuantity();
    c.includeType = bom->IncludeType();
    c.includeDefaultRemarks = bom->IncludeDefaultRemarks();
    c.includeBrand = bom->IncludeBrand();
    c.includeManufacturer = bom->IncludeManufacturer();
    c.includeCatalogNumber = bom->IncludeCatalogNumber();
    c.includeDescription = bom->IncludeDescription();
    c.includeLineComments = bom->IncludeLineComments();
    c.includeMTO = bom->IncludeMTO();
    c.includeGroupCodes = bom->IncludeGroupCodes();
    c.bomRemarks = textsOf(*bom->DefaultRemarks());
    c.labelFields = labelFieldsOf(*SampleData::labels());
    return c;
}

StandaloneCustomer::Data customerOf(const QList<StandaloneCustomer::Data>& directory,
                                    const QString& key, bool included)
{
    for (auto d : directory)
        if (d.key == key) {
            d.included = included;
            return d;
        }
    return {};
}

struct Place {
    const char* city;
    const char* state;
    const char* zip;
    const char* area;
};

constexpr std::array<Place, 24> kPlaces = {{
    {"Portland", "OR", "972", "503"},    {"Salem", "OR", "973", "503"},
    {"Eugene", "OR", "974", "541"},      {"Bend", "OR", "977", "541"},
    {"Medford", "OR", "975", "541"},     {"Corvallis", "OR", "973", "541"},
    {"Seattle", "WA", "981", "206"},     {"Tacoma", "WA", "984", "253"},
    {"Spokane", "WA", "992", "509"},     {"Bellevue", "WA", "980", "425"},
    {"Everett", "WA", "982", "425"},     {"Olympia", "WA", "985", "360"},
    {"Vancouver", "WA", "986", "360"},   {"Yakima", "WA", "989", "509"},
    {"Boise", "ID", "837", "208"},       {"Nampa", "ID", "836", "208"},
    {"Idaho Falls", "ID", "834", "208"}, {"Coeur d'Alene", "ID", "838", "208"},
    {"Missoula", "MT", "598", "406"},    {"Billings", "MT", "591", "406"},
    {"Anchorage", "AK", "995", "907"},   {"Reno", "NV", "895", "775"},
    {"Sacramento", "CA", "958", "916"},  {"Redding", "CA", "960", "530"},
}};

constexpr std::array<const char*, 30> kStems = {
    "Alder",        "Basalt",     "Beacon",        "Blue Heron", "Cedar Hollow", "Columbia",
    "Copper Ridge", "Elk Creek",  "Fir Point",     "Granite",    "Harbor",       "Hawthorne",
    "Juniper",      "Keystone",   "Lakeside",      "Madrona",    "Marquam",      "North Fork",
    "Orchard",      "Pinecrest",  "Quarry",        "Ridgeline",  "Salmon Run",   "Silver Falls",
    "Summit View",  "Timberline", "Union Station", "Valley",     "Westgate",     "Yew Street"};

constexpr std::array<const char*, 12> kFirstNames = {"Avery", "Blake", "Carmen", "Diego",
                                                     "Erin",  "Farah", "Gideon", "Helena",
                                                     "Isaac", "Jun",   "Keira",  "Leo"};
constexpr std::array<const char*, 11> kLastNames = {"Almeida", "Brooks",    "Chen",      "Duarte",
                                                    "Ellison", "Foster",    "Gallagher", "Haddad",
                                                    "Iversen", "Jovanovic", "Kowalski"};
constexpr std::array<const char*, 5> kStreetKinds = {"Street", "Avenue", "Road", "Way",
                                                     "Boulevard"};

struct Trade {
    const char* suffix;
    const char* type;
    const char* category;
};

constexpr std::array<Trade, 15> kTrades = {{
    {"Electric", "Contractor", "Electrical"},
    {"Electrical Contractors", "Contractor", "Electrical"},
    {"Power & Light", "Contractor", "Electrical"},
    {"Builders", "Contractor", "General"},
    {"Construction", "Contractor", "General"},
    {"Architects", "Architect", "Specifier"},
    {"Design Group", "Architect", "Specifier"},
    {"Engineering", "Engineer", "Specifier"},
    {"Consulting Engineers", "Engineer", "Specifier"},
    {"Lighting Design", "Designer", "Lighting Design"},
    {"Electric Supply", "Distributor", "Wholesale"},
    {"Lighting Controls", "Contractor", "Controls"},
    {"School District", "Owner", "Education"},
    {"Medical Center", "Owner", "Healthcare"},
    {"Property Management", "Owner", "Commercial"},
}};

struct Fixture {
    const char* brand;
    const char* catalog;
    const char* description;
};

constexpr std::array<Fixture, 16> kFixtures = {{
    {"Varnholt", "VH-2X4-LP-40L-35K-DIM", "2x4 recessed LED troffer, 4000 lm, 3500K, 0-10V"},
    {"Varnholt", "VH-2X2-LP-30L-35K-DIM", "2x2 recessed LED troffer, 3000 lm, 3500K, 0-10V"},
    {"Varnholt", "VH-STR-4FT-40L-35K", "Strip light, 4 ft, 4000 lm"},
    {"Quenza Architectural", "QA-DL4-15L-35K-WT", "4\" LED downlight, 1500 lm, white trim"},
    {"Quenza Architectural", "QA-DL6-25L-30K-WT", "6\" LED downlight, 2500 lm, 3000K"},
    {"Quenza Architectural", "QA-SL2-4FT-35K-DIM", "Recessed slot, 4 ft, 3500K, 0-10V"},
    {"Lumatrex", "LMX-LN4-8FT-SO-35K", "Linear suspended direct/indirect, 8 ft, 3500K"},
    {"Lumatrex", "LMX-LN2-4FT-WM-35K", "Linear wall mount, 4 ft, 3500K"},
    {"Northgate Lighting", "NG-WP-1X4-40L", "1x4 surface wrap, 4000 lm, frosted lens"},
    {"Northgate Lighting", "NG-VT-2X4-50L-MS", "2x4 vapor tight with motion sensor"},
    {"Northgate Lighting", "NG-EXIT-RD-SF-EM", "LED exit sign, red letters, single face, battery"},
    {"Cellar & Beam", "CB-SCN-12-30K-BRZ", "Wall sconce, 12\", 3000K, dark bronze"},
    {"Cellar & Beam", "CB-PND-24-30K-BLK", "Decorative pendant, 24\" diameter, 3000K"},
    {"Solace Exterior", "SX-WP-30L-40K-BRZ", "Wall pack, full cutoff, 3000 lm, 4000K"},
    {"Solace Exterior", "SX-AR-T3-120L-40K", "Area light, type III distribution, 12000 lm"},
    {"Solace Exterior", "SX-GAR-60L-40K", "Garage canopy, 6000 lm, 4000K"},
}};

constexpr std::array<const char*, 6> kComments = {
    "Verify ceiling type against the reflected ceiling plan.",
    "Finish sample to be approved by the architect.",
    "Emergency battery pack factory installed; 90 minute rating.",
    "Run lengths per architectural drawings.",
    "Mounting height to be confirmed in the field.",
    "",
};

QList<StandaloneLineItem::Data> generatedLines(qint32 count, qint32 floors)
{
    QList<StandaloneLineItem::Data> out;
    out.reserve(count);
    for (qint32 i = 0; i < count; ++i) {
        const Fixture& f = kFixtures[std::size_t(i) % kFixtures.size()];
        StandaloneLineItem::Data d;
        d.quantity = 2 + (i * 7) % 46;
        const qint32 floor = i % floors + 1;
        d.type = QStringLiteral("%1%2").arg(QChar(u'A' + (i / floors) % 26)).arg(floor);
        d.brand = QString::fromUtf8(f.brand);
        d.catalogNumber = QString::fromUtf8(f.catalog);
        d.description = QString::fromUtf8(f.description);
        d.group = (i % 23 == 0) ? QStringLiteral("SITE") : QStringLiteral("LVL%1").arg(floor);
        d.mto = i % 9 == 4;
        if (i % 7 == 3)
            d.comment = QString::fromUtf8(kComments[std::size_t(i / 7) % kComments.size()]);
        d.selected = i % 11 != 5;
        out.append(d);
    }
    return out;
}

}  // namespace

QStringList SampleOffice::issuedByNames()
{
    return SampleData::issuedByNames()
           + QStringList{QStringLiteral("Tomasz Wierzbicki"), QStringLiteral("Grace Adeyemi")};
}

QList<StandaloneCustomer::Data> SampleOffice::directory()
{
    QList<StandaloneCustomer::Data> out = SampleData::customerDirectory()->Records();
    // The rest of the office's customers: every stem with a few trades, spread over the region.
    qint32 n = 0;
    for (std::size_t s = 0; s < kStems.size(); ++s) {
        for (std::size_t t = s % 3; t < kTrades.size(); ++t) {
            const Trade& trade = kTrades[t];
            const Place& place = kPlaces[(s * 7 + t * 5) % kPlaces.size()];
            StandaloneCustomer::Data d;
            ++n;
            d.key = QStringLiteral("C%1").arg(2000 + n);
            d.name = QStringLiteral("%1 %2").arg(QString::fromUtf8(kStems[s]),
                                                 QString::fromUtf8(trade.suffix));
            d.accountNumber = QString::number(200000 + n * 37);
            d.city = QString::fromUtf8(place.city);
            d.state = QString::fromUtf8(place.state);
            d.zip = QStringLiteral("%1%2")
                        .arg(QString::fromUtf8(place.zip))
                        .arg(10 + n % 89, 2, 10, QChar(u'0'));
            d.phone = QStringLiteral("(%1) 555-%2")
                          .arg(QString::fromUtf8(place.area))
                          .arg(100 + (n * 13) % 900, 4, 10, QChar(u'0'));
            d.type = QString::fromUtf8(trade.type);
            d.category = QString::fromUtf8(trade.category);
            d.displayText =
                d.name + QStringLiteral(" - ") + d.city + QStringLiteral(", ") + d.state;
            d.active = n % 17 != 0;
            // Someone to write to, and a street to write to.
            d.attention = QStringLiteral("%1 %2").arg(
                QString::fromUtf8(kFirstNames[std::size_t(n) % kFirstNames.size()]),
                QString::fromUtf8(kLastNames[std::size_t(n * 7) % kLastNames.size()]));
            d.street =
                QStringLiteral("%1 %2 %3")
                    .arg(100 + (n * 37) % 9800)
                    .arg(QString::fromUtf8(kStems[s]),
                         QString::fromUtf8(kStreetKinds[std::size_t(n) % kStreetKinds.size()]));
            if (n % 4 == 1)
                d.street2 = QStringLiteral("Suite %1").arg(100 + (n * 13) % 800);
            d.email = SampleData::emailFor(d.attention, d.name);
            out.append(d);
        }
    }
    return out;
}

JobContents SampleOffice::smallJob()
{
    JobContents c = fromSample();
    c.number = QStringLiteral("24-0117");
    c.name = QStringLiteral("Cascade Elementary School Gym Relight");
    c.submittalDate = QStringLiteral("2026-11-09");
    c.purpose.index = 4;
    c.purpose.text = SubmittalRules::purposeCaptions().at(4);
    c.purchaseOrder = QStringLiteral("ESD-55821");
    c.recipients = {
        recipientAt(QStringLiteral("Lena Fairbanks"), QStringLiteral("Evergreen School District"))};
    c.lines = {
        {18, QStringLiteral("HB1"), QStringLiteral("Northgate Lighting"),
         QStringLiteral("NG-HB-24K-50K-WG"), QStringLiteral("LED high bay, 24000 lm, wire guard"),
         QStringLiteral("GYM"), false, std::nullopt, true},
        {4, QStringLiteral("W1"), QStringLiteral("Solace Exterior"),
         QStringLiteral("SX-WP-30L-40K-BRZ"),
         QStringLiteral("Wall pack, full cutoff, 3000 lm, 4000K"), QStringLiteral("SITE"), false,
         std::nullopt, true},
        {2, QStringLiteral("X1"), QStringLiteral("Northgate Lighting"),
         QStringLiteral("NG-EXIT-RD-SF-EM"),
         QStringLiteral("LED exit sign, red letters, single face, battery"),
         QStringLiteral("EGRESS"), false, QStringLiteral("Match existing mounting."), true},
        {6, QStringLiteral("EM1"), QStringLiteral("Northgate Lighting"),
         QStringLiteral("NG-EBU-2H-WT"), QStringLiteral("Emergency unit, two heads, white"),
         QStringLiteral("EGRESS"), false, std::nullopt, false},
    };
    const auto dir = directory();
    c.customers = {customerOf(dir, QStringLiteral("C1021"), true)};
    return c;
}

JobContents SampleOffice::riverside()
{
    JobContents c = fromSample();
    c.number = QStringLiteral("24-0131");
    c.name = SampleData::jobName();
    c.purchaseOrder = QStringLiteral("RMOB-4471");
    for (const auto& line : SampleData::lineItems()->Enumerate()) {
        StandaloneLineItem::Data d;
        d.selected = line->Selected();
        d.quantity = line->Quantity().toInt();
        d.type = line->Type();
        d.brand = line->Brand();
        d.catalogNumber = line->CatalogNumber();
        d.description = line->Description();
        d.group = line->Group();
        d.mto = line->MTO();
        if (const auto comment = line->Comment())
            d.comment = comment->Text();
        c.lines.append(d);
    }
    for (const auto& customer : SampleData::customers()->Enumerate())
        c.customers.append(customerOf(directory(), customer->Key(), customer->Included()));
    return c;
}

JobContents SampleOffice::warehouse()
{
    JobContents c = fromSample();
    c.number = QStringLiteral("24-0152");
    c.name = QStringLiteral("Northgate Distribution Center");
    c.purchaseOrder = QStringLiteral("NDC-2291");
    c.submittalDate = QStringLiteral("2026-12-01");
    c.includeLabels = true;
    c.lines = generatedLines(96, 2);
    const auto dir = directory();
    for (const char* key : {"C1005", "C1008", "C1014", "C1022", "C2003"})
        c.customers.append(customerOf(dir, QString::fromLatin1(key), true));
    return c;
}

JobContents SampleOffice::largeJob()
{
    JobContents c = fromSample();
    c.number = QStringLiteral("25-0009");
    c.name = QStringLiteral("Harbor Point Mixed-Use Tower");
    c.submittalDate = QStringLiteral("2027-01-15");
    c.purpose.index = SubmittalRules::OtherPurpose;
    c.purpose.text = QStringLiteral("For coordination with the ceiling and controls trades");
    c.purpose.otherText = c.purpose.text;
    c.separateLetters = true;
    c.purchaseOrder = QStringLiteral("HPT-10388");
    JobContents::Recipient owner;
    owner.name = QStringLiteral("Ines Carvalho");
    owner.company = QStringLiteral("Harbor Point Partners");
    owner.street = QStringLiteral("1 Harbor Point Drive");
    owner.street2 = QStringLiteral("Leasing Office");
    owner.city = QStringLiteral("Portland");
    owner.state = QStringLiteral("OR");
    owner.zip = QStringLiteral("97217");
    owner.phone = QStringLiteral("(503) 555-0161");
    owner.email = SampleData::emailFor(owner.name, owner.company);
    c.recipients.append(owner);
    c.lines = generatedLines(LargeJobLineCount, 24);
    const auto dir = directory();
    for (qsizetype i = 0; i < dir.size() && c.customers.size() < 12; i += 29)
        c.customers.append(customerOf(dir, dir[i].key, c.customers.size() % 4 != 3));
    return c;
}

void SampleOffice::fill(Store& store)
{
    store.writeAll([&] {
        if (!store.isEmpty())
            throw Failure(ErrorNumber::KeyAlreadyInCollection, QStringLiteral("ZebObjects.Store"),
                          QStringLiteral("The database file \"%1\" already holds an office; the "
                                         "sample office goes only into an empty file")
                              .arg(store.path()));
        store.setIssuedByNames(issuedByNames());
        store.setSearchContextValue(SampleData::searchContextValue());
        store.setLetterhead(StandalonePackageSource::sampleLetterhead());
        store.addDirectoryCustomers(directory());
        store.brands().addMissing(SampleBrands::all());
        const auto fillLibrary = [&](qint32 kind, const QList<JobContents::Text>& texts) {
            const auto library = store.library(kind);
            for (const auto& t : texts)
                library->Add(t.text, t.selected);
        };
        const JobContents base = fromSample();
        fillLibrary(TextKind::CoverLetterParagraph,
                    base.paragraphs
                        + unticked({QStringLiteral("We appreciate your prompt review; partial "
                                                   "approvals may be returned by line."),
                                    QStringLiteral("Substitutions are clearly marked and include "
                                                   "photometric data for comparison.")}));
        fillLibrary(TextKind::CoverLetterRemark,
                    base.remarks
                        + unticked({QStringLiteral("Freight is prepaid and allowed to the job "
                                                   "site.")}));
        fillLibrary(TextKind::BOMRemark, base.bomRemarks);
        store.createJob(smallJob());
        store.createJob(riverside());
        store.createJob(warehouse());
        store.createJob(largeJob());
    });
}

}  // namespace ZebObjects
