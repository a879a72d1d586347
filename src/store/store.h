#pragma once

#include "zebstore_export.h"

#include "contracts/failure.h"
#include "rules/customerrecord.h"
#include "contracts/packagesource.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>

namespace ZebObjects {

class ApplicationServices;
class StoreBrands;
class StoreConnection;
class StoreCutSheets;
class StoreJob;
class TextObjects;
struct JobContents;

// One row of the job list.
struct JobSummary {
    qint64 id = 0;
    QString number;
    QString name;
    qint32 customerCount = 0;
    qint32 lineCount = 0;
    // Kept in the office, out of the job list.
    bool archived = false;
    // The names of the job's customers, for finding a job by customer.
    QStringList customerNames;

    friend bool operator==(const JobSummary&, const JobSummary&) = default;
};

// What a job is: its number and name, where it is built and whom it is for.
struct JobDetails {
    QString number;
    QString name;
    QString siteAddress;
    QString architect;
    QString engineer;
    QString contractor;
    bool archived = false;

    friend bool operator==(const JobDetails&, const JobDetails&) = default;
};

// A sales office's business objects in one SQLite file or in one PostgreSQL database that the
// office's workstations share: jobs with their submittals, the
// customer directory, the issuers and the text libraries. Its objects commit each write at
// once, raising its event after the commit. A collection (lines, paragraphs, customers) reads
// its items with their values in one statement and answers from that read for as long as the
// database has not changed; whether it has is asked once until the event loop runs again, and
// again after every write of this store and every commit of another store of this program, so
// another program's commit shows once the event loop has run. A collection enumerated in one
// statement (paragraphs, a label's fields) answers from that read until the event loop runs
// again or the store writes, so that a list filled from it shows one state of the file.
// Failures of the file come as Failure from ZebObjects.Store naming the file and the cause.
class ZEBSTORE_EXPORT Store {
public:
    enum class OpenMode {
        // Creates the file (and its folder) when it does not exist.
        OpenOrCreate,
        OpenExisting,
        // Nothing can be written; every write fails.
        ReadOnly,
    };
    struct Options {
        // How long a write waits for another writer before it fails.
        int busyTimeoutMs = 2000;
        // On a server: the longest a statement may run, and (two seconds more) the longest a
        // workstation waits for an answer before it takes the connection for lost.
        int answerTimeoutMs = 5000;
        // On a server: a session silent this long inside a transaction is ended by the server,
        // which frees the office's write lock.
        int idleInTransactionTimeoutMs = 5000;
        // On a server: how long a connection may take to be made (seconds).
        int connectTimeoutSeconds = 5;
    };

    // path names the file, or the server database as "postgresql://user@host:port/database"
    // (OpenOrCreate creates a missing database; a server's lock waits busyTimeoutMs as well).
    static std::shared_ptr<Store> open(const QString& path, OpenMode mode = OpenMode::OpenOrCreate);
    static std::shared_ptr<Store> open(const QString& path, OpenMode mode, const Options& options);
    ~Store();

    QString path() const;
    // True for a database on a server, which several workstations share.
    bool isServer() const;
    // Calls onCommit (on this thread, from the event loop) whenever another workstation commits
    // a change to this office. Answers false for a file, which does not tell.
    bool watchOtherWorkstations(std::function<void()> onCommit);
    // The Qt SQL connection name of this store's connection.
    QString connectionName() const;
    // Transactions this store has committed since it was opened.
    quint64 commitCount() const;
    // Statements this store has run since it was opened.
    quint64 statementCount() const;
    // Calls onWrite after every write: with nullptr when it was committed, with the failure
    // when the database failed it (a full disk, a read-only file or folder, a lock held too
    // long, a server gone). A write that a business rule refused is not told.
    void watchWrites(std::function<void(const Failure* failure)> onWrite);
    // Opened with OpenMode::ReadOnly: a write that would change the file fails with
    // readOnlyFailure(); one that leaves it as it is (a value written back) is done.
    bool isReadOnly() const;
    Failure readOnlyFailure() const;

    // The jobs in job number order.
    QList<JobSummary> jobs() const;
    // A job that is not in the file fails with 35601.
    std::shared_ptr<StoreJob> openJob(qint64 id) const;
    // Adds a job in one transaction; a job number already held fails with 457.
    qint64 createJob(const JobContents& contents);
    // Deletes a job with all it holds; a job not in the file fails with 35601.
    void deleteJob(qint64 id);
    // A job's number, name, site and people; a job not in the file fails with 35601.
    JobDetails jobDetails(qint64 id) const;
    // Writes them in one transaction; a number another job holds fails with 457, an empty
    // number or name with 5.
    void setJobDetails(qint64 id, const JobDetails& details);
    // A new job like job id: its submittal's settings, texts, label fields and customers (and
    // its lines when withLines), under the number and name of details. Answers the new job.
    qint64 duplicateJob(qint64 id, const JobDetails& details, bool withLines);
    // An office setting by name (an import's remembered column mapping); empty when not set.
    QString setting(const QString& name) const;
    void setSetting(const QString& name, const QString& value);

    // The office's library of a kind of text (TextKind), created empty on first use. New jobs
    // do not take it over by themselves; whoever makes a job copies what it wants.
    std::shared_ptr<TextObjects> library(qint32 kind);

    // The application object of this office: its issuers, its customer directory and search
    // context, and the text reformatting rule.
    std::shared_ptr<ApplicationServices> applicationServices() const;
    QStringList issuedByNames() const;
    void setIssuedByNames(const QStringList& names);
    QVariant searchContextValue() const;
    void setSearchContextValue(const QVariant& value);

    // The office's own name, address and logo, at the head of its letters; empty for an office
    // that has not given them.
    ZebPackage::Letterhead letterhead() const;
    void setLetterhead(const ZebPackage::Letterhead& letterhead);
    // Adds customers to the directory in one transaction; a key already held fails with 457.
    void addDirectoryCustomers(const QList<CustomerRecord>& customers);
    QList<CustomerRecord> directoryCustomers() const;
    // Writes a directory customer's fields under its key; a key not held fails with 35601.
    void updateDirectoryCustomer(const CustomerRecord& customer);
    // One customer entered twice becomes one: keep takes drop's fields where its own are empty,
    // the jobs' customers that came from drop now come from keep, and drop leaves the
    // directory. Either key not held fails with 35601.
    void mergeDirectoryCustomers(const QString& keep, const QString& drop);
    qint32 directoryCount() const;

    // Runs body in one transaction: every write it makes is committed together, or none is.
    // Events of the objects are raised as their writes return, before that commit.
    void writeAll(const std::function<void()>& body);

    // The office's cut sheet library and the jobs' attachments.
    StoreCutSheets cutSheets() const;
    // The office's brands and their manufacturers.
    StoreBrands brands() const;

    // True when the file holds no job, no issuer and no directory customer.
    bool isEmpty() const;

    // Makes the file whole by itself, ready to be copied or put in another's place: its log
    // written into it and left (the file goes back to a rollback journal until it is opened
    // again), then checked. A failure (a full disk, a damaged file) is the file's failure.
    void seal();
    // Writes the log of the SQLite file at path into it, so that the file no longer needs its
    // log files. Answers false when path holds no readable database (nothing to keep); a file
    // in use by another program fails with 70, a disk that cannot take the log with 61.
    static bool settle(const QString& path);

private:
    explicit Store(std::shared_ptr<StoreConnection> db);

    std::shared_ptr<StoreConnection> m_db;
    std::shared_ptr<ApplicationServices> m_services;
};

}  // namespace ZebObjects
