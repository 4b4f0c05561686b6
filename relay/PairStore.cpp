#include "relay/PairStore.h"

#include "relay/PairSchema.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>

namespace morvex {

namespace {

constexpr std::chrono::hours tokenMemory{1};
constexpr std::chrono::days untilFirstLogin{2};
constexpr std::chrono::days unused{180};
constexpr std::chrono::days betweenWrites{1};

/// `sparePages`: unused pages kept for later growth. `quicklyCopied`: a file of an earlier version that uses
/// at most this many bytes is rewritten once, so that its unused pages can be released.
constexpr std::int64_t sparePages = 256;
constexpr std::int64_t quicklyCopied = 64 * 1024 * 1024;

/// Readers need not wait for a writer, nor a writer for readers.
constexpr const char* settings =
    "PRAGMA foreign_keys = ON; PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL;"
    "PRAGMA journal_size_limit = 4194304";

constexpr std::int64_t secondsIn(std::chrono::seconds time) {
    return time.count();
}

Result<void> prepareFile(Database& database) {
    CHECK(bringToSchema(database));
    return database.execute(settings);
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
        return fail(TextError{"cannot use the database " + file.string() + ": " + error.popis().czech()});
    };
    auto database = Database::open(file.string());
    if (!database) return refuse(database.error());
    if (auto prepared = prepareFile(*database); !prepared) return refuse(prepared.error());
    return PairStore{std::move(*database), file == ":memory:" ? std::filesystem::path{} : file};
}

Result<void> PairStore::create(const PairID& pair, const Member& creator, const Digest& tokenHash,
                               Date expiresAt) {
    return database_.transaction([&] -> Result<void> {
        CHECK(database_.change("INSERT INTO pairs (id, tokenHash, expiresAt, forgetAt) VALUES (?, ?, ?, ?)",
                               pair.rawValue, ByteView{tokenHash}, wholeSeconds(expiresAt),
                               wholeSeconds(expiresAt + tokenMemory)));
        CHECK(insertMember(pair, creator));
        return {};
    });
}

Result<bool> PairStore::insertMember(const PairID& pair, const Member& member) {
    // The keys of the table refuse a role or device that the pair already has, even one added by another
    // process.
    TRY(const auto, inserted,
        database_.change("INSERT OR IGNORE INTO members (pair, role, device, key) VALUES (?, ?, ?, ?)",
                         pair.rawValue, rawValue(member.role), member.device.rawValue,
                         ByteView{member.key.raw}));
    return inserted == 1;
}

Result<bool> PairStore::join(const PairID& pair, const Member& second) {
    return database_.transaction([&] -> Result<bool> {
        TRY(const bool, isJoined, insertMember(pair, second));
        if (!isJoined) return false;
        CHECK(database_.change("UPDATE pairs SET forgetAt = expiresAt + ? WHERE id = ? AND revokedAt IS NULL",
                               secondsIn(untilFirstLogin), pair.rawValue));
        return true;
    });
}

Result<void> PairStore::revoke(const PairID& pair, Date now) {
    CHECK(database_.change("UPDATE pairs SET revokedAt = ?, forgetAt = ? WHERE id = ? AND revokedAt IS NULL",
                           wholeSeconds(now), wholeSeconds(now + unused), pair.rawValue));
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

Result<void> PairStore::keep(std::span<const PairID> pairs, Date now) {
    const auto end = now + unused;
    return database_.transaction([&] -> Result<void> {
        for (const auto& pair : pairs)
            CHECK(database_.change("UPDATE pairs SET forgetAt = ? WHERE id = ? AND forgetAt < ?"
                                   " AND revokedAt IS NULL"
                                   " AND (SELECT count(*) FROM members WHERE pair = pairs.id) = 2",
                                   wholeSeconds(end), pair.rawValue, wholeSeconds(end - betweenWrites)));
        return {};
    });
}

Result<std::int64_t> PairStore::giveEnds(Date now) {
    return database_.change("UPDATE pairs SET forgetAt = CASE WHEN revokedAt IS NULL"
                            " AND (SELECT count(*) FROM members WHERE pair = pairs.id) < 2"
                            " THEN expiresAt + ? ELSE ? END"
                            " WHERE id IN (SELECT id FROM pairs WHERE forgetAt IS NULL LIMIT ?)",
                            secondsIn(tokenMemory), wholeSeconds(now + unused), rowsAtOnce);
}

Result<bool> PairStore::sweep(Date now) {
    return database_.transaction([&] -> Result<bool> {
        TRY(const auto, dated, giveEnds(now));
        TRY(const auto, forgotten,
            database_.change("DELETE FROM pairs WHERE id IN"
                             " (SELECT id FROM pairs WHERE forgetAt < ? ORDER BY forgetAt LIMIT ?)",
                             wholeSeconds(now), rowsAtOnce));
        TRY(const auto, used,
            database_.change("UPDATE pairs SET tokenHash = NULL WHERE id IN (SELECT id FROM pairs"
                             " WHERE expiresAt < ? AND tokenHash IS NOT NULL ORDER BY expiresAt LIMIT ?)",
                             wholeSeconds(now - tokenMemory), rowsAtOnce));
        return std::max({dated, forgotten, used}) == rowsAtOnce;
    });
}

Result<bool> PairStore::shrink() {
    TRY(const auto, all, number(database_, "PRAGMA page_count"));
    TRY(const auto, unusedPages, number(database_, "PRAGMA freelist_count"));
    if (unusedPages <= sparePages) return false;
    TRY(const auto, givesPagesBack, number(database_, "PRAGMA auto_vacuum"));
    if (givesPagesBack != 0) {
        CHECK(database_.execute("PRAGMA incremental_vacuum(" + std::to_string(pagesAtOnce) + ")"));
        return true;
    }
    TRY(const auto, pageSize, number(database_, "PRAGMA page_size"));
    if ((all - unusedPages) * pageSize > quicklyCopied) return false;
    CHECK(database_.execute("PRAGMA auto_vacuum = INCREMENTAL; VACUUM"));
    return false;
}

Result<void> PairStore::check() {
    return checkWhole(database_);
}

} // namespace morvex
