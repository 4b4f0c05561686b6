#include "relay/PairSchema.h"

#include "shared/base/Try.h"

#include <string>

namespace morvex {

namespace {

/// Marks the file as a relay's, so that no other database is written into by mistake.
constexpr std::int64_t applicationID = 0x4D565852;
constexpr std::int64_t schemaVersion = 2;
constexpr std::int64_t versionWithoutEnds = 1;

/// Up to this size, in bytes, a file is checked completely at the start, which takes some hundredths of a
/// second.
constexpr std::int64_t smallFile = 16 * 1024 * 1024;

const std::string versionIsPresent = "PRAGMA user_version = " + std::to_string(schemaVersion) + ";";

/// Index the pairs by their end, for the sweep, and those whose token is still stored.
const std::string indexes = "CREATE INDEX pairsByEnd ON pairs (forgetAt);"
                            "CREATE INDEX pairsByToken ON pairs (expiresAt) WHERE tokenHash IS NOT NULL;";

const std::string schema =
    // Only works on an empty file and outside a transaction.
    "PRAGMA auto_vacuum = INCREMENTAL;"
    "BEGIN IMMEDIATE;"
    "CREATE TABLE pairs (id TEXT PRIMARY KEY, tokenHash BLOB UNIQUE, expiresAt INTEGER NOT NULL,"
    " revokedAt INTEGER, forgetAt INTEGER) STRICT, WITHOUT ROWID;"
    "CREATE TABLE members (pair TEXT NOT NULL REFERENCES pairs (id) ON DELETE CASCADE, role TEXT NOT NULL,"
    " device TEXT NOT NULL, key BLOB NOT NULL, PRIMARY KEY (pair, role), UNIQUE (pair, device))"
    " STRICT, WITHOUT ROWID;" +
    indexes + "PRAGMA application_id = " + std::to_string(applicationID) + ";" + versionIsPresent + "COMMIT;";

/// The sweep fills in the ends of existing rows gradually, so that a large file does not delay the start.
const std::string ends = "BEGIN IMMEDIATE; ALTER TABLE pairs ADD COLUMN forgetAt INTEGER;" + indexes +
                         versionIsPresent + "COMMIT;";

Result<void> checkRoots(Database& database) {
    CHECK(number(database, "SELECT expiresAt FROM pairs LIMIT 1"));
    CHECK(number(database, "SELECT length(key) FROM members LIMIT 1"));
    return {};
}

Result<void> checkByItsSize(Database& database) {
    TRY(const auto, pages, number(database, "PRAGMA page_count"));
    TRY(const auto, bytes, number(database, "PRAGMA page_size"));
    return pages * bytes <= smallFile ? checkWhole(database) : checkRoots(database);
}

} // namespace

Result<std::int64_t> number(Database& database, std::string_view sql) {
    TRY(auto, rows, database.rows(sql));
    TRY(const bool, found, rows.next());
    return found ? rows.integer(0) : 0;
}

Result<void> checkWhole(Database& database) {
    TRY(auto, rows, database.rows("PRAGMA quick_check(1)"));
    TRY(const bool, found, rows.next());
    if (!found || rows.text(0) != "ok") return fail(TextError{"it is damaged"});
    return {};
}

Result<void> bringToSchema(Database& database) {
    TRY(const auto, application, number(database, "PRAGMA application_id"));
    TRY(const auto, version, number(database, "PRAGMA user_version"));
    TRY(const auto, tables, number(database, "SELECT count(*) FROM sqlite_schema"));
    if (tables == 0 && application == 0) return database.execute(schema);
    if (application != applicationID) return fail(TextError{"it belongs to another program"});
    if (version != schemaVersion && version != versionWithoutEnds)
        return fail(TextError{"it was written by another version of this program"});
    CHECK(checkByItsSize(database));
    if (version == versionWithoutEnds) return database.execute(ends);
    return {};
}

} // namespace morvex
