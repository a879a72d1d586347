#include "store/storesubmittal.h"

#include "rules/collectionrules.h"
#include "rules/submittalrules.h"
#include "store/storeconnection.h"

namespace ZebObjects {

namespace {

const QString kSource = QStringLiteral("ZebObjects.Submittal");

Failure gone(const StoreConnection& db)
{
    return Failure(ErrorNumber::ElementNotFound, kSource,
                   QStringLiteral("Element not found: the submittal is no longer in the database "
                                  "file \"%1\"")
                       .arg(db.path()));
}

}  // namespace

// Cover letter ----------------------------------------------------------------------------------

StoreCoverLetter::StoreCoverLetter(std::shared_ptr<StoreConnection> db, qint64 submittalId)
    : m_db(std::move(db)), m_id(submittalId)
{ }

bool StoreCoverLetter::flag(const char* column) const
{
    const QVariant v =
        m_db->value(QStringLiteral("SELECT %1 FROM cover_letters WHERE submittal_id = ?")
                        .arg(QLatin1String(column)),
                    {m_id});
    if (!v.isValid())
        throw gone(*m_db);
    return v.toBool();
}

void StoreCoverLetter::setFlag(const char* column, bool value)
{
    m_db->setColumn(QStringLiteral("cover_letters"), QLatin1String(column),
                    QStringLiteral("submittal_id"), m_id, int(value), int(flag(column)));
}

bool StoreCoverLetter::IncludeLogo() const
{
    return flag("include_logo");
}
void StoreCoverLetter::setIncludeLogo(bool include)
{
    setFlag("include_logo", include);
}
bool StoreCoverLetter::IncludeDefaultParagraphs() const
{
    return flag("include_default_paragraphs");
}
void StoreCoverLetter::setIncludeDefaultParagraphs(bool include)
{
    setFlag("include_default_paragraphs", include);
}
bool StoreCoverLetter::IncludeRemarks() const
{
    return flag("include_remarks");
}
void StoreCoverLetter::setIncludeRemarks(bool include)
{
    setFlag("include_remarks", include);
}
bool StoreCoverLetter::SeparateLetters() const
{
    return flag("separate_letters");
}
void StoreCoverLetter::setSeparateLetters(bool separate)
{
    setFlag("separate_letters", separate);
}
bool StoreCoverLetter::IncludeCarbonCopy() const
{
    return flag("include_carbon_copy");
}
void StoreCoverLetter::setIncludeCarbonCopy(bool include)
{
    setFlag("include_carbon_copy", include);
}

// Recipients ------------------------------------------------------------------------------------

namespace {
const QString kRecipientColumns =
    QStringLiteral("name, company, street, street2, city, state, zip, phone, email");

std::shared_ptr<StoreRecipient> recipientOf(const QVariantList& r)
{
    JobContents::Recipient d;
    d.name = r[0].toString();
    d.company = r[1].toString();
    d.street = r[2].toString();
    d.street2 = r[3].toString();
    d.city = r[4].toString();
    d.state = r[5].toString();
    d.zip = r[6].toString();
    d.phone = r[7].toString();
    d.email = r[8].toString();
    return std::make_shared<StoreRecipient>(std::move(d));
}
}  // namespace

StoreRecipient::StoreRecipient(JobContents::Recipient data) : m_data(std::move(data)) { }

QString StoreRecipient::Name() const
{
    return m_data.name;
}
QString StoreRecipient::Company() const
{
    return m_data.company;
}

StoreRecipients::StoreRecipients(std::shared_ptr<StoreConnection> db, qint64 submittalId)
    : m_db(std::move(db)), m_id(submittalId)
{ }

qint16 StoreRecipients::Count() const
{
    return qint16(
        m_db->value(QStringLiteral("SELECT COUNT(*) FROM recipients WHERE submittal_id = ?"),
                    {m_id})
            .toInt());
}

std::shared_ptr<Recipient> StoreRecipients::Item(qint16 position) const
{
    const QVariantList r = position < 1
                               ? QVariantList()
                               : m_db->row(QStringLiteral("SELECT %1 FROM recipients WHERE "
                                                          "submittal_id = ? ORDER BY position, id "
                                                          "LIMIT 1 OFFSET ?")
                                               .arg(kRecipientColumns),
                                           {m_id, int(position) - 1});
    if (r.isEmpty())
        throw CollectionRules::noPosition(QStringLiteral("ZebObjects.Recipients"),
                                          QStringLiteral("recipient"), position, Count());
    return recipientOf(r);
}

RecipientList StoreRecipients::Enumerate() const
{
    RecipientList out;
    for (const QVariantList& r : m_db->rows(QStringLiteral("SELECT %1 FROM recipients "
                                                           "WHERE submittal_id = ? ORDER BY "
                                                           "position, id")
                                                .arg(kRecipientColumns),
                                            {m_id}))
        out.append(recipientOf(r));
    return out;
}

void StoreRecipients::Add(const QString& name, const QString& company)
{
    m_db->write([&] {
        const qint64 count = Count();
        CollectionRules::checkRoom(QStringLiteral("ZebObjects.Recipients"),
                                   QStringLiteral("recipients"), count);
        m_db->run(QStringLiteral("INSERT INTO recipients (submittal_id, position, name, company) "
                                 "VALUES (?, (SELECT COALESCE(MAX(position), 0) + 1 FROM "
                                 "recipients WHERE submittal_id = ?), ?, ?)"),
                  {m_id, m_id, name, company});
    });
}

void StoreRecipients::Remove(qint16 position)
{
    m_db->write([&] {
        const QVariant id =
            position < 1 ? QVariant()
                         : m_db->value(QStringLiteral("SELECT id FROM recipients WHERE "
                                                      "submittal_id = ? ORDER BY position, id "
                                                      "LIMIT 1 OFFSET ?"),
                                       {m_id, int(position) - 1});
        if (!id.isValid())
            throw CollectionRules::noPosition(QStringLiteral("ZebObjects.Recipients"),
                                              QStringLiteral("recipient"), position, Count());
        m_db->run(QStringLiteral("DELETE FROM recipients WHERE id = ?"), {id});
    });
}

// Submittal -------------------------------------------------------------------------------------

StoreSubmittal::StoreSubmittal(std::shared_ptr<StoreConnection> db, qint64 id, QObject* parent)
    : Submittal(parent), m_db(std::move(db)), m_id(id),
      m_coverLetter(std::make_shared<StoreCoverLetter>(m_db, id)),
      m_recipients(std::make_shared<StoreRecipients>(m_db, id))
{ }

StoreSubmittal::~StoreSubmittal() = default;

namespace {

QVariant readColumn(StoreConnection& db, qint64 id, const char* name)
{
    const QVariant v = db.value(
        QStringLiteral("SELECT %1 FROM submittals WHERE id = ?").arg(QLatin1String(name)), {id});
    if (!v.isValid())
        throw gone(db);
    return v;
}

}  // namespace

QVariant StoreSubmittal::column(const char* name) const
{
    return m_lastRead.remember(QLatin1String(name), readColumn(*m_db, m_id, name));
}

void StoreSubmittal::change(const char* name, const QVariant& value, void (Submittal::*changed)(),
                            const char* what)
{
    const QString key = QLatin1String(name);
    QVariant now = readColumn(*m_db, m_id, name);
    enum { Same, Written, Conflict } outcome = Same;
    // Writing what is stored changes nothing (no conflict either: the values agree).
    if (now == value) {
        m_lastRead.remember(key, now);
        return;
    }
    m_db->write([&] {
        now = readColumn(*m_db, m_id, name);
        if (m_lastRead.conflicts(key, now, value)) {
            outcome = Conflict;
            return;
        }
        if (now == value)
            return;
        m_db->run(
            QStringLiteral("UPDATE submittals SET %1 = ? WHERE id = ?").arg(QLatin1String(name)),
            {value, m_id});
        outcome = Written;
    });
    m_lastRead.remember(key, outcome == Written ? value : now);
    if (outcome == Same)
        return;
    emit(this->*changed)();
    if (outcome == Conflict)
        throw m_db->refused(StoreLastRead::conflict(kSource, QLatin1String(what), now, value));
}

QString StoreSubmittal::IssuedBy() const
{
    return column("issued_by").toString();
}

void StoreSubmittal::setIssuedBy(const QString& name)
{
    change("issued_by", name, &Submittal::IssuedByChanged, "the issuer");
}

QString StoreSubmittal::SubmittalDate() const
{
    return column("submittal_date").toString();
}

void StoreSubmittal::setSubmittalDate(const QString& date)
{
    SubmittalRules::checkDate(date);
    change("submittal_date", date, &Submittal::SubmittalDateChanged, "the submittal date");
}

bool StoreSubmittal::IncludeCoverLetter() const
{
    return column("include_cover_letter").toBool();
}

void StoreSubmittal::setIncludeCoverLetter(bool include)
{
    change("include_cover_letter", int(include), &Submittal::CoverLetterChanged, "Cover Letter");
}

std::shared_ptr<CoverLetter> StoreSubmittal::CoverLetter() const
{
    return m_coverLetter;
}

bool StoreSubmittal::IncludeBOM() const
{
    return column("include_bom").toBool();
}

void StoreSubmittal::setIncludeBOM(bool include)
{
    change("include_bom", int(include), &Submittal::BOMChanged, "Bill of Materials");
}

bool StoreSubmittal::IncludeLabels() const
{
    return column("include_labels").toBool();
}

void StoreSubmittal::setIncludeLabels(bool include)
{
    change("include_labels", int(include), &Submittal::LabelsChanged, "Labels");
}

std::shared_ptr<Recipients> StoreSubmittal::Recipients() const
{
    return m_recipients;
}

QString StoreSubmittal::SubmittalPurpose() const
{
    return column("purpose").toString();
}

namespace {

SubmittalRules::Purpose readPurpose(StoreConnection& db, qint64 id)
{
    const QVariantList r = db.row(
        QStringLiteral("SELECT purpose_index, purpose, other_purpose FROM submittals WHERE id = ?"),
        {id});
    if (r.isEmpty())
        throw gone(db);
    SubmittalRules::Purpose p;
    p.index = qint16(r[0].toInt());
    p.text = r[1].toString();
    p.otherText = r[2].toString();
    return p;
}

void writePurpose(StoreConnection& db, qint64 id, const SubmittalRules::Purpose& p)
{
    db.run(QStringLiteral("UPDATE submittals SET purpose_index = ?, purpose = ?, "
                          "other_purpose = ? WHERE id = ?"),
           {int(p.index), p.text, p.otherText, id});
}

}  // namespace

void StoreSubmittal::setSubmittalPurpose(const QString& purpose)
{
    SubmittalRules::Purpose p;
    bool conflict = false;
    const bool changed = m_db->write([&] {
        p = readPurpose(*m_db, m_id);
        if (m_lastRead.conflicts(QStringLiteral("purpose"), p.text, purpose)) {
            conflict = true;
            return false;
        }
        const SubmittalRules::Purpose before = p;
        const bool textChanged = SubmittalRules::writePurpose(p, purpose);
        if (p.text != before.text || p.otherText != before.otherText)
            writePurpose(*m_db, m_id, p);
        return textChanged;
    });
    m_lastRead.remember(QStringLiteral("purpose"), p.text);
    m_lastRead.remember(QStringLiteral("purpose_index"), int(p.index));
    if (changed || conflict)
        emit SubmittalPurposeChanged(p.index);
    if (conflict)
        throw m_db->refused(StoreLastRead::conflict(
            kSource, QStringLiteral("the submittal's purpose"), p.text, purpose));
}

QString StoreSubmittal::SelectPurpose(qint16 index)
{
    bool changed = false;
    bool conflict = false;
    SubmittalRules::Purpose p;
    const QString text = m_db->write([&] {
        p = readPurpose(*m_db, m_id);
        if (index >= 0 && index <= SubmittalRules::OtherPurpose
            && m_lastRead.conflicts(QStringLiteral("purpose_index"), int(p.index), int(index))) {
            conflict = true;
            return QString();
        }
        const QString answer = SubmittalRules::selectPurpose(p, index, changed);
        if (changed)
            writePurpose(*m_db, m_id, p);
        return answer;
    });
    m_lastRead.remember(QStringLiteral("purpose"), p.text);
    m_lastRead.remember(QStringLiteral("purpose_index"), int(p.index));
    if (changed || conflict)
        emit SubmittalPurposeChanged(p.index);
    if (conflict)
        throw m_db->refused(StoreLastRead::conflict(
            kSource, QStringLiteral("the submittal's purpose option"), int(p.index), int(index)));
    return text;
}

qint16 StoreSubmittal::SubmittalPurposeIndex() const
{
    return qint16(column("purpose_index").toInt());
}

}  // namespace ZebObjects

namespace ZebObjects {

void StoreRecipients::add(const JobContents::Recipient& r)
{
    m_db->write([&] {
        CollectionRules::checkRoom(QStringLiteral("ZebObjects.Recipients"),
                                   QStringLiteral("recipients"), Count());
        m_db->run(QStringLiteral("INSERT INTO recipients (submittal_id, position, name, company, "
                                 "street, street2, city, state, zip, phone, email) VALUES (?, "
                                 "(SELECT COALESCE(MAX(position), 0) + 1 FROM recipients WHERE "
                                 "submittal_id = ?), ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                  {m_id, m_id, r.name, r.company, r.street, r.street2, r.city, r.state, r.zip,
                   r.phone, r.email});
    });
}

void StoreRecipients::move(qint16 from, qint16 to)
{
    m_db->write([&] {
        QList<qint64> ids;
        for (const QVariantList& row : m_db->rows(QStringLiteral("SELECT id FROM recipients WHERE "
                                                                 "submittal_id = ? ORDER BY "
                                                                 "position, id"),
                                                  {m_id}))
            ids.append(row[0].toLongLong());
        const qint64 count = ids.size();
        if (from < 1 || from > count)
            throw CollectionRules::noPosition(QStringLiteral("ZebObjects.Recipients"),
                                              QStringLiteral("recipient"), from, count);
        if (to < 1 || to > count)
            throw CollectionRules::noPosition(QStringLiteral("ZebObjects.Recipients"),
                                              QStringLiteral("recipient"), to, count);
        ids.move(from - 1, to - 1);
        for (qsizetype i = 0; i < ids.size(); ++i)
            m_db->run(QStringLiteral("UPDATE recipients SET position = ? WHERE id = ?"),
                      {qint64(i + 1), ids[i]});
    });
}

}  // namespace ZebObjects
