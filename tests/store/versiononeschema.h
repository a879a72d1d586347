#pragma once

// The tables as version 1 of the program made them, for the tests that upgrade an old office.
inline const char* const kVersion1Tables[] = {
    "CREATE TABLE settings (name TEXT PRIMARY KEY, value TEXT NOT NULL)",
    "CREATE TABLE issuers (id INTEGER PRIMARY KEY, position INTEGER NOT NULL, name TEXT NOT NULL "
    "UNIQUE)",
    "CREATE TABLE jobs (id INTEGER PRIMARY KEY, number TEXT NOT NULL UNIQUE, name TEXT NOT NULL)",
    "CREATE TABLE submittals (id INTEGER PRIMARY KEY, job_id INTEGER NOT NULL UNIQUE REFERENCES "
    "jobs(id) ON DELETE CASCADE, "
    "issued_by TEXT NOT NULL DEFAULT '', submittal_date TEXT NOT NULL DEFAULT '', "
    "include_cover_letter INTEGER NOT NULL DEFAULT 0, "
    "include_bom INTEGER NOT NULL DEFAULT 0, include_labels INTEGER NOT NULL DEFAULT 0, "
    "purpose_index INTEGER NOT NULL DEFAULT 0 CHECK (purpose_index BETWEEN 0 AND 7), purpose TEXT "
    "NOT NULL, other_purpose TEXT NOT NULL DEFAULT '')",
    "CREATE TABLE cover_letters (submittal_id INTEGER PRIMARY KEY REFERENCES submittals(id) ON "
    "DELETE CASCADE, "
    "include_logo INTEGER NOT NULL DEFAULT 0, include_default_paragraphs INTEGER NOT NULL DEFAULT "
    "0, include_remarks INTEGER NOT NULL DEFAULT 0, "
    "separate_letters INTEGER NOT NULL DEFAULT 0, include_carbon_copy INTEGER NOT NULL DEFAULT 0)",
    "CREATE TABLE recipients (id INTEGER PRIMARY KEY, submittal_id INTEGER NOT NULL REFERENCES "
    "submittals(id) ON DELETE CASCADE, "
    "position INTEGER NOT NULL, name TEXT NOT NULL, company TEXT NOT NULL)",
    "CREATE TABLE text_collections (id INTEGER PRIMARY KEY, submittal_id INTEGER REFERENCES "
    "submittals(id) ON DELETE CASCADE, "
    "kind INTEGER NOT NULL, text_type INTEGER NOT NULL, next_key INTEGER NOT NULL DEFAULT 1, dirty "
    "INTEGER NOT NULL DEFAULT 0)",
    "CREATE TABLE texts (id INTEGER PRIMARY KEY, collection_id INTEGER NOT NULL REFERENCES "
    "text_collections(id) ON DELETE CASCADE, "
    "key TEXT NOT NULL, position INTEGER NOT NULL, text TEXT NOT NULL, selected INTEGER NOT NULL "
    "DEFAULT 0, UNIQUE (collection_id, key))",
    "CREATE TABLE boms (submittal_id INTEGER PRIMARY KEY REFERENCES submittals(id) ON DELETE "
    "CASCADE, "
    "include_quantity INTEGER NOT NULL DEFAULT 0, include_type INTEGER NOT NULL DEFAULT 0, "
    "include_default_remarks INTEGER NOT NULL DEFAULT 0, "
    "include_brand INTEGER NOT NULL DEFAULT 0, include_manufacturer INTEGER NOT NULL DEFAULT 0, "
    "include_catalog_number INTEGER NOT NULL DEFAULT 0, "
    "include_description INTEGER NOT NULL DEFAULT 0, include_line_comments INTEGER NOT NULL "
    "DEFAULT 0, include_mto INTEGER NOT NULL DEFAULT 0, "
    "include_group_codes INTEGER NOT NULL DEFAULT 0, remarks_collection_id INTEGER NOT NULL "
    "REFERENCES text_collections(id))",
    "CREATE TABLE labels (submittal_id INTEGER PRIMARY KEY REFERENCES submittals(id) ON DELETE "
    "CASCADE, maximum_included INTEGER NOT NULL DEFAULT 5)",
    "CREATE TABLE label_fields (id INTEGER PRIMARY KEY, submittal_id INTEGER NOT NULL REFERENCES "
    "submittals(id) ON DELETE CASCADE, "
    "position INTEGER NOT NULL, key TEXT NOT NULL, caption TEXT NOT NULL, print_order INTEGER NOT "
    "NULL DEFAULT 0 CHECK (print_order >= 0), "
    "UNIQUE (submittal_id, key))",
    "CREATE TABLE line_items (id INTEGER PRIMARY KEY, submittal_id INTEGER NOT NULL REFERENCES "
    "submittals(id) ON DELETE CASCADE, "
    "position INTEGER NOT NULL, quantity INTEGER NOT NULL, type TEXT NOT NULL, brand TEXT NOT "
    "NULL, catalog_number TEXT NOT NULL, "
    "description TEXT NOT NULL, group_code TEXT NOT NULL, mto INTEGER NOT NULL DEFAULT 0, comment "
    "TEXT NOT NULL DEFAULT '', "
    "selected INTEGER NOT NULL DEFAULT 0)",
    "CREATE INDEX line_items_by_submittal ON line_items (submittal_id, position)",
    "CREATE TABLE directory_customers (id INTEGER PRIMARY KEY, key TEXT NOT NULL UNIQUE, "
    "display_text TEXT NOT NULL, name TEXT NOT NULL, "
    "account_number TEXT NOT NULL, city TEXT NOT NULL, state TEXT NOT NULL, type TEXT NOT NULL, "
    "category TEXT NOT NULL, zip TEXT NOT NULL, "
    "phone TEXT NOT NULL, active INTEGER NOT NULL DEFAULT 1)",
    "CREATE TABLE submittal_customers (id INTEGER PRIMARY KEY, submittal_id INTEGER NOT NULL "
    "REFERENCES submittals(id) ON DELETE CASCADE, "
    "position INTEGER NOT NULL, key TEXT NOT NULL, customer_key TEXT NOT NULL, display_text TEXT "
    "NOT NULL, name TEXT NOT NULL, "
    "account_number TEXT NOT NULL, city TEXT NOT NULL, state TEXT NOT NULL, type TEXT NOT NULL, "
    "category TEXT NOT NULL, "
    "included INTEGER NOT NULL DEFAULT 0, UNIQUE (submittal_id, key))",
};
