#include "relay/PairStore.h"

#include "shared/base/Try.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <string_view>
#include <tuple>

namespace morvex {

namespace {

/// Marks the file as a relay's, so that no other database is written into by mistake.
constexpr std::int64_t applicationID = 0x4D565852;
constexpr std::int64_t schemaVersion = 1;
constexpr std::chrono::hours sweepDelay{1};

const std::string schema =
    "BEGIN IMMEDIATE;"
    "CREATE TABLE pairs (id TEXT PRIMARY KEY, tokenHash BLOB UNIQUE, expiresAt INTEGER NOT NULL,"
    " revokedAt INTEGER) STRICT, WITHOUT ROWID;"
    "CREATE TABLE members (pair TEXT NOT NULL REFERENCES pairs (id) ON DELETE CASCADE, role TEXT NOT NULL,"
    " device TEXT NOT NULL, key BLOB NOT NULL, PRIMARY KEY (pair, role), UNIQUE (pair, device))"
    " STRICT, WITHOUT ROWID;"
    "PRAGMA application_id = " +
    std::to_string(applicationID) + ";PRAGMA user_version = " + std::to_string(schemaVersion) + ";COMMIT;";

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
    CHECK(checkWhole(database));
    TRY(const auto, application, number(database, "PRAGMA application_id"));
    TRY(const auto, version, number(database, "PRAGMA user_version"));
    TRY(const auto, tables, number(database, "SELECT count(*) FROM sqlite_schema"));
    if (tables == 0 && application == 0) return database.execute(schema);
    if (application != applicationID) return fail(TextError{"it belongs to another program"});
    if (version != schemaVersion) return fail(TextError{"it was written by another version of this program"});
    return {};
}

Result<void> prepareFile(Database& database) {
    CHECK(bringToSchema(database));
    return database.execute("PRAGMA foreign_keys = ON; PRAGMA synchronous = FULL");
}

} // namespace

const Member* StoredPair::member(const DeviceID& device) const {
    const auto found = std::ranges::find(members, device, &Member::device);
    return found == members.end() ? nullptr : &*found;
}

const Member* StoredPair::peerOf(const DeviceID& device) const {
    const auto found = std::ranges::find_if(members, [&](const Member& one) { return one.device != device; });
    return found == members.end() ? nullptr : &*found;
}

Result<PairStore> PairStore::open(const std::filesystem::path& file) {
    const auto refuse = [&](const Error& error) {
        return fail(TextError{"cannot use the database " + file.string() + ": " + error.popis()});
    };
    auto database = Database::open(file.string());
    if (!database) return refuse(database.error());
    if (auto prepared = prepareFile(*database); !prepared) return refuse(prepared.error());
    return PairStore{std::move(*database)};
}

Result<void> PairStore::create(const PairID& pair, const Member& creator, const Digest& tokenHash,
                               Date expiresAt) {
    CHECK(database_.execute("BEGIN IMMEDIATE"));
    auto inserted = insertPair(pair, creator, tokenHash, expiresAt);
    if (inserted) inserted = database_.execute("COMMIT");
    if (!inserted) std::ignore = database_.execute("ROLLBACK");
    return inserted;
}

Result<void> PairStore::insertPair(const PairID& pair, const Member& creator, const Digest& tokenHash,
                                   Date expiresAt) {
    CHECK(database_.change("INSERT INTO pairs (id, tokenHash, expiresAt) VALUES (?, ?, ?)", pair.rawValue,
                           ByteView{tokenHash}, wholeSeconds(expiresAt)));
    CHECK(join(pair, creator));
    return {};
}

Result<bool> PairStore::join(const PairID& pair, const Member& second) {
    // The keys of the table refuse a role or a device that the pair has already, also to another process.
    TRY(const auto, inserted,
        database_.change("INSERT OR IGNORE INTO members (pair, role, device, key) VALUES (?, ?, ?, ?)",
                         pair.rawValue, rawValue(second.role), second.device.rawValue,
                         ByteView{second.key.raw}));
    return inserted == 1;
}

Result<void> PairStore::revoke(const PairID& pair, Date now) {
    CHECK(database_.change("UPDATE pairs SET revokedAt = coalesce(revokedAt, ?) WHERE id = ?",
                           wholeSeconds(now), pair.rawValue));
    return {};
}

Result<std::optional<StoredPair>> PairStore::find(const PairID& pair) {
    return read(
        database_.rows("SELECT id, expiresAt, revokedAt IS NOT NULL FROM pairs WHERE id = ?", pair.rawValue));
}

Result<std::optional<StoredPair>> PairStore::findByToken(const Digest& tokenHash) {
    return read(database_.rows("SELECT id, expiresAt, revokedAt IS NOT NULL FROM pairs WHERE tokenHash = ?",
                               ByteView{tokenHash}));
}

Result<std::optional<StoredPair>> PairStore::read(Result<Rows> pairs) {
    TRY(auto, rows, std::move(pairs));
    TRY(const bool, found, rows.next());
    if (!found) return std::nullopt;
    StoredPair pair{PairID{rows.text(0)}, dateFromSeconds(rows.integer(1)), rows.integer(2) != 0, {}};
    TRY(auto, both, members(pair.id));
    pair.members = std::move(both);
    return pair;
}

Result<std::vector<Member>> PairStore::members(const PairID& pair) {
    TRY(auto, rows, database_.rows("SELECT device, key, role FROM members WHERE pair = ?", pair.rawValue));
    std::vector<Member> members;
    for (;;) {
        TRY(const bool, found, rows.next());
        if (!found) return members;
        TRY(const auto, key, SigningPublicKey::fromRaw(rows.blob(1)));
        const auto role = fromRawValue<DeviceRole>(rows.text(2));
        if (!role) return fail(TextError{"a member has an unknown role"});
        members.push_back({DeviceID{rows.text(0)}, key, *role});
    }
}

Result<void> PairStore::sweep(Date now) {
    const auto limit = wholeSeconds(now - sweepDelay);
    CHECK(database_.change("DELETE FROM pairs WHERE expiresAt < ? AND revokedAt IS NULL"
                           " AND (SELECT count(*) FROM members WHERE pair = pairs.id) < 2",
                           limit));
    CHECK(database_.change("UPDATE pairs SET tokenHash = NULL WHERE expiresAt < ? AND tokenHash IS NOT NULL",
                           limit));
    return {};
}

} // namespace morvex
