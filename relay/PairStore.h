#pragma once

#include "relay/Database.h"
#include "shared/base/Date.h"
#include "shared/trust/Crypto.h"
#include "shared/wire/DeviceRole.h"
#include "shared/wire/Identifiers.h"
#include "shared/wire/PublicKeys.h"

#include <filesystem>
#include <optional>
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

/// Which devices belong together, kept over restarts. A revoked pair stays known as revoked. One thread;
/// every change is on the disk when its call returns. A failure carries SQLite's words, for the log.
class PairStore {
  public:
    /// `:memory:` for pairs that nobody keeps. The failure's text names the file and what is wrong with it.
    static Result<PairStore> open(const std::filesystem::path& file);

    Result<void> create(const PairID& pair, const Member& creator, const Digest& tokenHash, Date expiresAt);
    /// False, and nothing changed, when the pair is full.
    Result<bool> join(const PairID& pair, const Member& second);
    Result<void> revoke(const PairID& pair, Date now);

    Result<std::optional<StoredPair>> find(const PairID& pair);
    Result<std::optional<StoredPair>> findByToken(const Digest& tokenHash);

    /// Forgets the pairs that nobody joined and the used tokens. They stay known for an hour beyond their
    /// time, so that a late device hears why it is refused.
    Result<void> sweep(Date now);

  private:
    explicit PairStore(Database database) : database_(std::move(database)) {}

    Result<void> insertPair(const PairID& pair, const Member& creator, const Digest& tokenHash,
                            Date expiresAt);
    Result<std::optional<StoredPair>> read(Result<Rows> pairs);
    Result<std::vector<Member>> members(const PairID& pair);

    Database database_;
};

} // namespace morvex
