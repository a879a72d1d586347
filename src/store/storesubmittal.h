#pragma once

#include "zebstore_export.h"

#include "contracts/coverletter.h"
#include "contracts/recipients.h"
#include "contracts/submittal.h"
#include "store/jobcontents.h"
#include "store/storelastread.h"

#include <memory>

namespace ZebObjects {

class StoreConnection;
struct StorePurpose;

// The cover letter options of a submittal in a store.
class ZEBSTORE_EXPORT StoreCoverLetter : public CoverLetter {
public:
    StoreCoverLetter(std::shared_ptr<StoreConnection> db, qint64 submittalId);

    bool IncludeLogo() const override;
    void setIncludeLogo(bool include) override;
    bool IncludeDefaultParagraphs() const override;
    void setIncludeDefaultParagraphs(bool include) override;
    bool IncludeRemarks() const override;
    void setIncludeRemarks(bool include) override;
    bool SeparateLetters() const override;
    void setSeparateLetters(bool separate) override;
    bool IncludeCarbonCopy() const override;
    void setIncludeCarbonCopy(bool include);

private:
    bool flag(const char* column) const;
    void setFlag(const char* column, bool value);

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
};

class ZEBSTORE_EXPORT StoreRecipient : public Recipient {
public:
    explicit StoreRecipient(JobContents::Recipient data);

    QString Name() const override;
    QString Company() const override;
    // Everything the row holds, the address included.
    const JobContents::Recipient& data() const { return m_data; }

private:
    JobContents::Recipient m_data;
};

// The addressees of a submittal in a store, in their order. Each read answers what the file
// holds at that moment.
class ZEBSTORE_EXPORT StoreRecipients : public Recipients {
public:
    StoreRecipients(std::shared_ptr<StoreConnection> db, qint64 submittalId);

    qint16 Count() const override;
    std::shared_ptr<Recipient> Item(qint16 position) const override;
    RecipientList Enumerate() const override;

    // Appends a recipient; committed at once.
    void Add(const QString& name, const QString& company);
    // Removes the recipient at a 1-based position; out of range fails.
    void Remove(qint16 position);
    // Appends a recipient with the address the letter goes to; committed at once.
    void add(const JobContents::Recipient& recipient);
    // Moves the recipient at a 1-based position to another; out of range fails.
    void move(qint16 from, qint16 to);

private:
    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
};

// A submittal in a store. Same rules as the stand-alone submittal: events only on a real
// change, raised after the change is committed; the purpose options with the custom purpose
// behind option 7; ISO dates only. A write that would replace what another workstation wrote
// after this one last read it fails; the submittal then raises the value's event, so that
// controls show the value that won.
class ZEBSTORE_EXPORT StoreSubmittal : public Submittal {
    Q_OBJECT
public:
    StoreSubmittal(std::shared_ptr<StoreConnection> db, qint64 id, QObject* parent = nullptr);
    ~StoreSubmittal() override;

    QString IssuedBy() const override;
    void setIssuedBy(const QString& name) override;
    QString SubmittalDate() const override;
    void setSubmittalDate(const QString& date) override;
    bool IncludeCoverLetter() const override;
    void setIncludeCoverLetter(bool include) override;
    std::shared_ptr<ZebObjects::CoverLetter> CoverLetter() const override;
    bool IncludeBOM() const override;
    void setIncludeBOM(bool include) override;
    bool IncludeLabels() const override;
    void setIncludeLabels(bool include) override;
    std::shared_ptr<ZebObjects::Recipients> Recipients() const override;
    QString SubmittalPurpose() const override;
    void setSubmittalPurpose(const QString& purpose) override;
    QString SelectPurpose(qint16 index) override;
    qint16 SubmittalPurposeIndex() const override;

    qint64 id() const { return m_id; }
    std::shared_ptr<StoreRecipients> storeRecipients() const { return m_recipients; }

private:
    QVariant column(const char* name) const;
    // Writes value when it differs from what the database holds and raises changed; a conflict
    // raises changed and fails, what names the value for the user.
    void change(const char* name, const QVariant& value, void (Submittal::*changed)(),
                const char* what);

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
    std::shared_ptr<StoreCoverLetter> m_coverLetter;
    std::shared_ptr<StoreRecipients> m_recipients;
    mutable StoreLastRead m_lastRead;
};

}  // namespace ZebObjects
