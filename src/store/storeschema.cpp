#include "store/storeschema.h"

#include "rules/brandrecord.h"
#include "store/storeconnection.h"

#include <QHash>
#include <QStringList>

namespace ZebObjects {

namespace {

// Tables that version 1 and version 2 share, as they stand in the current version.
const char* const kTables[] = {
    R"(CREATE TABLE settings (
        name TEXT PRIMARY KEY,
        value TEXT NOT NULL))",
    R"(CREATE TABLE issuers (
        id INTEGER PRIMARY KEY,
        position INTEGER NOT NULL,
        name TEXT NOT NULL UNIQUE))",
    R"(CREATE TABLE jobs (
        id INTEGER PRIMARY KEY,
        number TEXT NOT NULL UNIQUE,
        name TEXT NOT NULL,
        purchase_order TEXT NOT NULL DEFAULT ''))",
    R"(CREATE TABLE submittals (
        id INTEGER PRIMARY KEY,
        job_id INTEGER NOT NULL UNIQUE REFERENCES jobs(id) ON DELETE CASCADE,
        issued_by TEXT NOT NULL DEFAULT '',
        submittal_date TEXT NOT NULL DEFAULT '',
        include_cover_letter INTEGER NOT NULL DEFAULT 0,
        include_bom INTEGER NOT NULL DEFAULT 0,
        include_labels INTEGER NOT NULL DEFAULT 0,
        purpose_index INTEGER NOT NULL DEFAULT 0 CHECK (purpose_index BETWEEN 0 AND 7),
        purpose TEXT NOT NULL,
        other_purpose TEXT NOT NULL DEFAULT ''))",
    R"(CREATE TABLE cover_letters (
        submittal_id INTEGER PRIMARY KEY REFERENCES submittals(id) ON DELETE CASCADE,
        include_logo INTEGER NOT NULL DEFAULT 0,
        include_default_paragraphs INTEGER NOT NULL DEFAULT 0,
        include_remarks INTEGER NOT NULL DEFAULT 0,
        separate_letters INTEGER NOT NULL DEFAULT 0,
        include_carbon_copy INTEGER NOT NULL DEFAULT 0))",
    R"(CREATE TABLE recipients (
        id INTEGER PRIMARY KEY,
        submittal_id INTEGER NOT NULL REFERENCES submittals(id) ON DELETE CASCADE,
        position INTEGER NOT NULL,
        name TEXT NOT NULL,
        company TEXT NOT NULL,
        street TEXT NOT NULL DEFAULT '',
        street2 TEXT NOT NULL DEFAULT '',
        city TEXT NOT NULL DEFAULT '',
        state TEXT NOT NULL DEFAULT '',
        zip TEXT NOT NULL DEFAULT '',
        phone TEXT NOT NULL DEFAULT '',
        email TEXT NOT NULL DEFAULT ''))",
    // A collection without a submittal is one of the office's libraries.
    R"(CREATE TABLE text_collections (
        id INTEGER PRIMARY KEY,
        submittal_id INTEGER REFERENCES submittals(id) ON DELETE CASCADE,
        kind INTEGER NOT NULL,
        text_type INTEGER NOT NULL,
        next_key INTEGER NOT NULL DEFAULT 1,
        dirty INTEGER NOT NULL DEFAULT 0))",
    R"(CREATE TABLE boms (
        submittal_id INTEGER PRIMARY KEY REFERENCES submittals(id) ON DELETE CASCADE,
        include_quantity INTEGER NOT NULL DEFAULT 0,
        include_type INTEGER NOT NULL DEFAULT 0,
        include_default_remarks INTEGER NOT NULL DEFAULT 0,
        include_brand INTEGER NOT NULL DEFAULT 0,
        include_manufacturer INTEGER NOT NULL DEFAULT 0,
        include_catalog_number INTEGER NOT NULL DEFAULT 0,
        include_description INTEGER NOT NULL DEFAULT 0,
        include_line_comments INTEGER NOT NULL DEFAULT 0,
        include_mto INTEGER NOT NULL DEFAULT 0,
        include_group_codes INTEGER NOT NULL DEFAULT 0,
        remarks_collection_id INTEGER NOT NULL REFERENCES text_collections(id)))",
    R"(CREATE TABLE labels (
        submittal_id INTEGER PRIMARY KEY REFERENCES submittals(id) ON DELETE CASCADE,
        maximum_included INTEGER NOT NULL DEFAULT 5))",
    R"(CREATE TABLE label_fields (
        id INTEGER PRIMARY KEY,
        submittal_id INTEGER NOT NULL REFERENCES submittals(id) ON DELETE CASCADE,
        position INTEGER NOT NULL,
        key TEXT NOT NULL,
        caption TEXT NOT NULL,
        print_order INTEGER NOT NULL DEFAULT 0 CHECK (print_order >= 0),
        UNIQUE (submittal_id, key)))",
    R"(CREATE TABLE directory_customers (
        id INTEGER PRIMARY KEY,
        key TEXT NOT NULL UNIQUE,
        display_text TEXT NOT NULL,
        name TEXT NOT NULL,
        account_number TEXT NOT NULL,
        city TEXT NOT NULL,
        state TEXT NOT NULL,
        type TEXT NOT NULL,
        category TEXT NOT NULL,
        zip TEXT NOT NULL,
        phone TEXT NOT NULL,
        active INTEGER NOT NULL DEFAULT 1,
        attention TEXT NOT NULL DEFAULT '',
        street TEXT NOT NULL DEFAULT '',
        street2 TEXT NOT NULL DEFAULT '',
        email TEXT NOT NULL DEFAULT ''))",
    R"(CREATE TABLE submittal_customers (
        id INTEGER PRIMARY KEY,
        submittal_id INTEGER NOT NULL REFERENCES submittals(id) ON DELETE CASCADE,
        position INTEGER NOT NULL,
        key TEXT NOT NULL,
        customer_key TEXT NOT NULL,
        display_text TEXT NOT NULL,
        name TEXT NOT NULL,
        account_number TEXT NOT NULL,
        city TEXT NOT NULL,
        state TEXT NOT NULL,
        type TEXT NOT NULL,
        category TEXT NOT NULL,
        included INTEGER NOT NULL DEFAULT 0,
        UNIQUE (submittal_id, key)))",
    "CREATE INDEX recipients_by_submittal ON recipients (submittal_id, position)",
    "CREATE INDEX collections_by_submittal ON text_collections (submittal_id, kind)",
    "CREATE INDEX label_fields_by_submittal ON label_fields (submittal_id, position)",
    "CREATE INDEX customers_by_submittal ON submittal_customers (submittal_id, position)",
};

// The tables version 2 changed, as they stand in version 2.
const char* const kTexts = R"(CREATE TABLE texts (
        id INTEGER PRIMARY KEY,
        collection_id INTEGER NOT NULL REFERENCES text_collections(id) ON DELETE CASCADE,
        key TEXT NOT NULL,
        position INTEGER NOT NULL,
        saved_position INTEGER NOT NULL,
        text TEXT NOT NULL,
        selected INTEGER NOT NULL DEFAULT 0,
        UNIQUE (collection_id, key)))";
const char* const kLineItems = R"(CREATE TABLE line_items (
        id INTEGER PRIMARY KEY,
        submittal_id INTEGER NOT NULL REFERENCES submittals(id) ON DELETE CASCADE,
        position INTEGER NOT NULL,
        quantity INTEGER NOT NULL,
        type TEXT NOT NULL,
        brand TEXT NOT NULL,
        catalog_number TEXT NOT NULL,
        description TEXT NOT NULL,
        group_code TEXT NOT NULL,
        mto INTEGER NOT NULL DEFAULT 0,
        selected INTEGER NOT NULL DEFAULT 0))";
const char* const kLineItemComments = R"(CREATE TABLE line_item_comments (
        line_item_id INTEGER PRIMARY KEY REFERENCES line_items(id) ON DELETE CASCADE,
        text TEXT NOT NULL))";
// Version 6: what was sent and what came back. An issued revision keeps the package's bytes
// and the lines as printed; a line keeps no reference to the job's line, which may go later.
const char* const kHistory[] = {
    R"(CREATE TABLE issued_revisions (
        id INTEGER PRIMARY KEY,
        job_id INTEGER NOT NULL REFERENCES jobs(id) ON DELETE CASCADE,
        revision INTEGER NOT NULL CHECK (revision >= 0),
        issued_at TEXT NOT NULL,
        issued_by TEXT NOT NULL,
        purpose TEXT NOT NULL,
        recipients TEXT NOT NULL,
        settings TEXT NOT NULL,
        pdf BLOB NOT NULL,
        sha256 TEXT NOT NULL,
        pdf_size INTEGER NOT NULL,
        status INTEGER NOT NULL DEFAULT 0 CHECK (status BETWEEN 0 AND 2),
        returned_date TEXT NOT NULL DEFAULT '',
        verdict TEXT NOT NULL DEFAULT '',
        review_note TEXT NOT NULL DEFAULT '',
        UNIQUE (job_id, revision)))",
    R"(CREATE TABLE issued_lines (
        id INTEGER PRIMARY KEY,
        revision_id INTEGER NOT NULL REFERENCES issued_revisions(id) ON DELETE CASCADE,
        line_item_id INTEGER NOT NULL,
        number INTEGER NOT NULL,
        quantity TEXT NOT NULL,
        type TEXT NOT NULL,
        brand TEXT NOT NULL,
        catalog_number TEXT NOT NULL,
        description TEXT NOT NULL,
        group_code TEXT NOT NULL,
        mto INTEGER NOT NULL DEFAULT 0,
        comment TEXT NOT NULL DEFAULT '',
        action TEXT NOT NULL DEFAULT '',
        note TEXT NOT NULL DEFAULT '',
        UNIQUE (revision_id, number)))",
};
const char* const kIndexes[] = {
    "CREATE INDEX texts_by_collection ON texts (collection_id, position)",
    "CREATE INDEX line_items_by_submittal ON line_items (submittal_id, position)",
};

// The cut sheet library (version 5): each file once, by its SHA-256.
const char* const kCutSheets[] = {
    R"(CREATE TABLE cut_sheets (
        id INTEGER PRIMARY KEY,
        sha256 TEXT NOT NULL UNIQUE,
        file_name TEXT NOT NULL,
        page_count INTEGER NOT NULL CHECK (page_count > 0),
        size INTEGER NOT NULL,
        bytes BLOB NOT NULL,
        added_by TEXT NOT NULL DEFAULT '',
        added_at TEXT NOT NULL))",
    R"(CREATE TABLE cut_sheet_attachments (
        id INTEGER PRIMARY KEY,
        job_id INTEGER NOT NULL REFERENCES jobs(id) ON DELETE CASCADE,
        line_type TEXT NOT NULL,
        cut_sheet_id INTEGER NOT NULL REFERENCES cut_sheets(id),
        position INTEGER NOT NULL,
        UNIQUE (job_id, line_type, cut_sheet_id)))",
    "CREATE INDEX cut_sheet_attachments_by_job ON cut_sheet_attachments (job_id, position)",
};

// What version 4 adds: where a job is and whom it is for, and whether it is archived (kept in
// the office, out of the job list).
const char* const kVersion4[] = {
    "ALTER TABLE jobs ADD COLUMN site_address TEXT NOT NULL DEFAULT ''",
    "ALTER TABLE jobs ADD COLUMN architect TEXT NOT NULL DEFAULT ''",
    "ALTER TABLE jobs ADD COLUMN engineer TEXT NOT NULL DEFAULT ''",
    "ALTER TABLE jobs ADD COLUMN contractor TEXT NOT NULL DEFAULT ''",
    "ALTER TABLE jobs ADD COLUMN archived INTEGER NOT NULL DEFAULT 0",
};

// Version 7: the office's brands and who makes each, as the bill of materials prints them.
const char* const kBrands = R"(CREATE TABLE brands (
        id INTEGER PRIMARY KEY,
        name TEXT NOT NULL UNIQUE CHECK (name <> ''),
        manufacturer TEXT NOT NULL DEFAULT ''))";

void runAll(StoreConnection& db, const QStringList& statements)
{
    for (const QString& sql : statements)
        db.run(db.dialect().table(sql));
}

void runTable(StoreConnection& db, const char* sql)
{
    db.run(db.dialect().table(QString::fromLatin1(sql)));
}

}  // namespace

void StoreSchema::create(StoreConnection& db)
{
    QStringList statements;
    for (const char* sql : kTables)
        statements << QString::fromLatin1(sql);
    statements << QString::fromLatin1(kTexts) << QString::fromLatin1(kLineItems)
               << QString::fromLatin1(kLineItemComments);
    for (const char* sql : kIndexes)
        statements << QString::fromLatin1(sql);
    for (const char* sql : kVersion4)
        statements << QString::fromLatin1(sql);
    for (const char* sql : kCutSheets)
        statements << QString::fromLatin1(sql);
    for (const char* sql : kHistory)
        statements << QString::fromLatin1(sql);
    statements << QString::fromLatin1(kBrands);
    runAll(db, statements);
    db.dialect().setSchemaVersion(db, CurrentVersion);
}

void StoreSchema::migrate(StoreConnection& db, int from)
{
    if (from <= 1) {
        // Texts: the saved order starts as the order the file holds.
        db.run(QStringLiteral("ALTER TABLE texts RENAME TO texts_v1"));
        runTable(db, kTexts);
        db.run(QStringLiteral("INSERT INTO texts (id, collection_id, key, position, "
                              "saved_position, text, selected) SELECT id, collection_id, key, "
                              "position, position, text, selected FROM texts_v1"));
        db.run(QStringLiteral("DROP TABLE texts_v1"));
        db.dialect().idsCopied(db, QStringLiteral("texts"));
        // Lines: a comment moves to its own table; version 1 had no way to tell an empty
        // comment from none, so only comments with text become comments.
        db.run(QStringLiteral("ALTER TABLE line_items RENAME TO line_items_v1"));
        runTable(db, kLineItems);
        runTable(db, kLineItemComments);
        db.run(QStringLiteral("INSERT INTO line_items (id, submittal_id, position, quantity, type, "
                              "brand, catalog_number, description, group_code, mto, selected) "
                              "SELECT id, submittal_id, position, quantity, type, brand, "
                              "catalog_number, description, group_code, mto, selected "
                              "FROM line_items_v1"));
        db.run(QStringLiteral("INSERT INTO line_item_comments (line_item_id, text) SELECT id, "
                              "comment FROM line_items_v1 WHERE comment <> ''"));
        db.run(QStringLiteral("DROP TABLE line_items_v1"));
        db.dialect().idsCopied(db, QStringLiteral("line_items"));
        for (const char* sql : kIndexes)
            runTable(db, sql);
    }
    if (from <= 2) {
        // What labels and letters print: the directory's and the recipients' addresses, and a
        // job's purchase order. Older rows start empty; the office fills them in.
        const char* const added[] = {
            "ALTER TABLE jobs ADD COLUMN purchase_order TEXT NOT NULL DEFAULT ''",
            "ALTER TABLE directory_customers ADD COLUMN attention TEXT NOT NULL DEFAULT ''",
            "ALTER TABLE directory_customers ADD COLUMN street TEXT NOT NULL DEFAULT ''",
            "ALTER TABLE directory_customers ADD COLUMN street2 TEXT NOT NULL DEFAULT ''",
            "ALTER TABLE directory_customers ADD COLUMN email TEXT NOT NULL DEFAULT ''",
            "ALTER TABLE recipients ADD COLUMN street TEXT NOT NULL DEFAULT ''",
            "ALTER TABLE recipients ADD COLUMN street2 TEXT NOT NULL DEFAULT ''",
            "ALTER TABLE recipients ADD COLUMN city TEXT NOT NULL DEFAULT ''",
            "ALTER TABLE recipients ADD COLUMN state TEXT NOT NULL DEFAULT ''",
            "ALTER TABLE recipients ADD COLUMN zip TEXT NOT NULL DEFAULT ''",
            "ALTER TABLE recipients ADD COLUMN phone TEXT NOT NULL DEFAULT ''",
            "ALTER TABLE recipients ADD COLUMN email TEXT NOT NULL DEFAULT ''",
        };
        for (const char* sql : added)
            db.run(QString::fromLatin1(sql));
    }
    if (from <= 3) {
        for (const char* sql : kVersion4)
            db.run(QString::fromLatin1(sql));
    }
    if (from <= 4) {
        for (const char* sql : kCutSheets)
            runTable(db, sql);
    }
    if (from <= 5) {
        // Issued revisions and their reviews: an older office has issued nothing yet.
        for (const char* sql : kHistory)
            runTable(db, sql);
    }
    if (from <= 6) {
        // The brands the office's lines use. Their makers were the sample office's for every
        // office until now: a brand it knows keeps the maker the bill of materials printed,
        // any other starts without one, as it printed.
        runTable(db, kBrands);
        QHash<QString, QString> makers;
        for (const BrandRecord& b : SampleBrands::all())
            makers.insert(b.name, b.manufacturer);
        for (const QVariantList& r : db.rows(QStringLiteral(
                 "SELECT DISTINCT brand FROM line_items WHERE brand <> '' ORDER BY brand"))) {
            const QString brand = r[0].toString();
            db.run(QStringLiteral("INSERT INTO brands (name, manufacturer) VALUES (?, ?)"),
                   {brand, makers.value(brand)});
        }
    }
    db.dialect().setSchemaVersion(db, CurrentVersion);
}

}  // namespace ZebObjects
