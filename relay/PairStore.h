#pragma once

#include "relay/Database.h"
#include "shared/base/Date.h"
#include "shared/trust/Crypto.h"
#include "shared/wire/DeviceRole.h"
#include "shared/wire/Identifiers.h"
#include "shared/wire/PublicKeys.h"

#include <filesystem>
#include <optional>
#include <span>
#include <vector>

namespace morvex {

/// A device of a pair as it introduced itself. It was checked before that `device` is the fingerprint of
/// `key`.
struct Member {
    DeviceID device;
    SigningPublicKey key;
    DeviceRole role = DeviceRole::mac;

    bool operator==(const Member&) const = default;
};

struct StoredPair {
    PairID id;
    Date expiresAt; ///< when the token expires with which the second device joins
    bool isRevoked = false;
    std::vector<Member> members; ///< only the creator, or both

    /// Null if the device is not a member.
    [[nodiscard]] const Member* member(const DeviceID& device) const;
    /// The other member, or null if nobody has joined.
    [[nodiscard]] const Member* peerOf(const DeviceID& device) const;
};

/// Which devices belong together, stored permanently. Each pair has an end, after which `sweep` forgets it:
/// if nobody has joined, an hour after its token's end; joined but without any login, two days after the
/// token's end; otherwise 180 days after the last login or after its revocation. One thread; several stores
/// may share a file. Every change is on the disk when its call returns. A failure contains SQLite's words,
/// for the log.
class PairStore {
  public:
    /// The most that `sweep` and `shrink` change at a time, so that other users of the file need not wait.
    static constexpr std::int64_t rowsAtOnce = 250;
    static constexpr std::int64_t pagesAtOnce = 250;

    /// `:memory:` keeps the pairs only in memory. The failure's text names the file and the problem.
    static Result<PairStore> open(const std::filesystem::path& file);

    /// Empty if the pairs are only in memory.
    [[nodiscard]] const std::filesystem::path& file() const { return file_; }

    Result<void> create(const PairID& pair, const Member& creator, const Digest& tokenHash, Date expiresAt);
    /// Returns false, without a change, when the pair is full.
    Result<bool> join(const PairID& pair, const Member& second);
    Result<void> revoke(const PairID& pair, Date now);

    Result<std::optional<StoredPair>> find(const PairID& pair);
    Result<std::optional<StoredPair>> findByToken(const Digest& tokenHash);

    /// Marks these pairs as used now. Pairs that nobody has joined keep their end. Each pair is written at
    /// most once a day.
    Result<void> keep(std::span<const PairID> pairs, Date now);

    /// Forgets some of the pairs whose end has passed and some expired tokens; returns true when there may be
    /// more. Both are kept for an hour after the token's end, so that a late device is told why it is
    /// refused.
    Result<bool> sweep(Date now);
    /// Returns some of the file's unused pages to the system; returns true when there may be more.
    Result<bool> shrink();
    /// Reads the whole file. Fails when it is damaged.
    Result<void> check();

    /// From any thread: makes the running call fail.
    void interrupt() { database_.interrupt(); }

  private:
    PairStore(Database database, std::filesystem::path file)
        : database_(std::move(database)), file_(std::move(file)) {}

    Result<bool> insertMember(const PairID& pair, const Member& member);
    /// Fills in the ends of pairs from a file of an earlier version.
    Result<std::int64_t> giveEnds(Date now);
    Result<std::optional<StoredPair>> read(Result<Rows> pairs);
    Result<std::vector<Member>> members(const PairID& pair);

    Database database_;
    std::filesystem::path file_;
};

} // namespace morvex
