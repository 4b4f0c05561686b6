#include "relay/PairStore.h"

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
    auto rows = database.rows(sql);
    if (!rows) return fail(rows.error());
    auto found = rows->next();
    if (!found) return fail(found.error());
    return *found ? rows->integer(0) : 0;
}

Result<void> checkWhole(Database& database) {
    auto rows = database.rows("PRAGMA quick_check(1)");
    if (!rows) return fail(rows.error());
    auto found = rows->next();
    if (!found) return fail(found.error());
    if (!*found || rows->text(0) != "ok") return fail(TextError{"it is damaged"});
    return {};
}

Result<void> bringToSchema(Database& database) {
    if (auto checked = checkWhole(database); !checked) return checked;
    const auto application = number(database, "PRAGMA application_id");
    const auto version = number(database, "PRAGMA user_version");
    const auto tables = number(database, "SELECT count(*) FROM sqlite_schema");
    for (const auto* read : {&application, &version, &tables})
        if (!*read) return fail(read->error());
    if (*tables == 0 && *application == 0) return database.execute(schema);
    if (*application != applicationID) return fail(TextError{"it belongs to another program"});
    if (*version != schemaVersion)
        return fail(TextError{"it was written by another version of this program"});
    return {};
}

Result<void> prepareFile(Database& database) {
    if (auto brought = bringToSchema(database); !brought) return brought;
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
    if (auto begun = database_.execute("BEGIN IMMEDIATE"); !begun) return begun;
    auto inserted = insertPair(pair, creator, tokenHash, expiresAt);
    if (inserted) inserted = database_.execute("COMMIT");
    if (!inserted) std::ignore = database_.execute("ROLLBACK");
    return inserted;
}

Result<void> PairStore::insertPair(const PairID& pair, const Member& creator, const Digest& tokenHash,
                                   Date expiresAt) {
    auto inserted = database_.change("INSERT INTO pairs (id, tokenHash, expiresAt) VALUES (?, ?, ?)",
                                     pair.rawValue, ByteView{tokenHash}, wholeSeconds(expiresAt));
    if (!inserted) return fail(inserted.error());
    auto joined = join(pair, creator);
    if (!joined) return fail(joined.error());
    return {};
}

Result<bool> PairStore::join(const PairID& pair, const Member& second) {
    // The keys of the table refuse a role or a device that the pair has already, also to another process.
    auto inserted = database_.change(
        "INSERT OR IGNORE INTO members (pair, role, device, key) VALUES (?, ?, ?, ?)", pair.rawValue,
        rawValue(second.role), second.device.rawValue, ByteView{second.key.raw});
    if (!inserted) return fail(inserted.error());
    return *inserted == 1;
}

Result<void> PairStore::revoke(const PairID& pair, Date now) {
    auto changed = database_.change("UPDATE pairs SET revokedAt = coalesce(revokedAt, ?) WHERE id = ?",
                                    wholeSeconds(now), pair.rawValue);
    if (!changed) return fail(changed.error());
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
    if (!pairs) return fail(pairs.error());
    auto found = pairs->next();
    if (!found) return fail(found.error());
    if (!*found) return std::nullopt;
    StoredPair pair{PairID{pairs->text(0)}, dateFromSeconds(pairs->integer(1)), pairs->integer(2) != 0, {}};
    auto both = members(pair.id);
    if (!both) return fail(both.error());
    pair.members = std::move(*both);
    return pair;
}

Result<std::vector<Member>> PairStore::members(const PairID& pair) {
    auto rows = database_.rows("SELECT device, key, role FROM members WHERE pair = ?", pair.rawValue);
    if (!rows) return fail(rows.error());
    std::vector<Member> members;
    for (;;) {
        auto found = rows->next();
        if (!found) return fail(found.error());
        if (!*found) return members;
        auto key = SigningPublicKey::fromRaw(rows->blob(1));
        if (!key) return fail(key.error());
        const auto role = fromRawValue<DeviceRole>(rows->text(2));
        if (!role) return fail(TextError{"a member has an unknown role"});
        members.push_back({DeviceID{rows->text(0)}, *key, *role});
    }
}

Result<void> PairStore::sweep(Date now) {
    const auto limit = wholeSeconds(now - sweepDelay);
    auto pairs = database_.change("DELETE FROM pairs WHERE expiresAt < ? AND revokedAt IS NULL"
                                  " AND (SELECT count(*) FROM members WHERE pair = pairs.id) < 2",
                                  limit);
    if (!pairs) return fail(pairs.error());
    auto tokens = database_.change(
        "UPDATE pairs SET tokenHash = NULL WHERE expiresAt < ? AND tokenHash IS NOT NULL", limit);
    if (!tokens) return fail(tokens.error());
    return {};
}

} // namespace morvex
