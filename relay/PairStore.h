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

/// A device of a pair, as it introduced itself. Whether `device` is the fingerprint of `key` was checked
/// before.
struct Member {
    DeviceID device;
    SigningPublicKey key;
    DeviceRole role = DeviceRole::mac;

    bool operator==(const Member&) const = default;
};

struct StoredPair {
    PairID id;
    Date expiresAt; ///< of the token with which the second device joins
    bool isRevoked = false;
    std::vector<Member> members; ///< the creator alone, or both

    /// Null for a device that is no member.
    [[nodiscard]] const Member* member(const DeviceID& device) const;
    /// The other one, null when nobody has joined.
    [[nodiscard]] const Member* peerOf(const DeviceID& device) const;
};

/// Which devices belong together, kept over restarts. Each pair has an end, at which `sweep` forgets it:
/// unless it is joined, an hour after its token's; without any login, two days after that; otherwise when
/// nobody has logged in for 180 days, or so long after its revocation. One thread; several stores may share a
/// file. Every change is on the disk when its call returns. A failure carries SQLite's words, for the log.
class PairStore {
  public:
    /// What `sweep` and `shrink` change at most at a time, so that the other users of the file need not wait.
    static constexpr std::int64_t rowsAtOnce = 250;
    static constexpr std::int64_t pagesAtOnce = 250;

    /// `:memory:` for pairs that nobody keeps. The failure's text names the file and what is wrong with it.
    static Result<PairStore> open(const std::filesystem::path& file);

    /// Empty for pairs that nobody keeps.
    [[nodiscard]] const std::filesystem::path& file() const { return file_; }

    Result<void> create(const PairID& pair, const Member& creator, const Digest& tokenHash, Date expiresAt);
    /// False, and nothing changed, when the pair is full.
    Result<bool> join(const PairID& pair, const Member& second);
    Result<void> revoke(const PairID& pair, Date now);

    Result<std::optional<StoredPair>> find(const PairID& pair);
    Result<std::optional<StoredPair>> findByToken(const Digest& tokenHash);

    /// These pairs are in use now. Those that are not joined keep their end, and writes are at most one a day
    /// and pair.
    Result<void> keep(std::span<const PairID> pairs, Date now);

    /// Forgets some of the pairs whose end is over and of the used tokens; true when there may be more. Both
    /// stay known for an hour beyond the token's time, so that a late device hears why it is refused.
    Result<bool> sweep(Date now);
    /// Gives some of the unused pages of the file back; true when there may be more.
    Result<bool> shrink();
    /// Reads the whole file. Fails when it is damaged.
    Result<void> check();

    /// From any thread: the call that runs now fails.
    void interrupt() { database_.interrupt(); }

  private:
    PairStore(Database database, std::filesystem::path file)
        : database_(std::move(database)), file_(std::move(file)) {}

    Result<bool> insertMember(const PairID& pair, const Member& member);
    /// Pairs of a file of an earlier version get their ends.
    Result<std::int64_t> giveEnds(Date now);
    Result<std::optional<StoredPair>> read(Result<Rows> pairs);
    Result<std::vector<Member>> members(const PairID& pair);

    Database database_;
    std::filesystem::path file_;
};

} // namespace morvex
