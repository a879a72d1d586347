#pragma once

#include "zebstore_export.h"

namespace ZebObjects {

class StoreConnection;

// The tables of a store and the steps that bring an older database up to date. The version lives
// in the database (an SQLite file's user_version, a table on a server); each step runs inside the
// caller's write transaction, so a database is either at its old version or at the new one,
// never in between.
//
// Version 1 kept a line's comment in the line itself and the texts without a saved order;
// version 2 gives comments a table of their own (a line may have an empty comment or none) and
// keeps each text collection's saved order beside the current one. Version 3 keeps what labels
// and letters print: the directory's and the recipients' postal addresses, phone and e-mail, and
// a job's purchase order (the office's letterhead lives in the settings). Version 4 keeps a
// job's site address, architect, engineer and contractor, and whether it is archived. Version 5
// adds the office's library of cut sheets and which of them each job's fixture types print.
// Version 6 keeps the issued revisions of each job: the package as sent, the lines it printed
// and their review. Version 7 keeps the office's brands and the manufacturer of each.
class ZEBSTORE_EXPORT StoreSchema {
public:
    static constexpr int CurrentVersion = 7;

    // An empty file becomes a store of the current version.
    static void create(StoreConnection& db);
    // A file of version from (1 to CurrentVersion - 1) becomes the current version.
    static void migrate(StoreConnection& db, int from);
};

}  // namespace ZebObjects
