#pragma once

#include "relay/PairStore.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// What a new pair gets by chance.
struct FreshPair {
    PairID id;         ///< 128 random bits in Base32
    std::string token; ///< 256 random bits in base64url (RFC 4648, section 5), without padding

    static FreshPair make();
};

/// The answer to a pairing call.
struct CallReply {
    unsigned status = 200; ///< of HTTP
    std::string body{};    ///< JSON, or empty
    /// The pair whose sockets must end now.
    std::optional<PairID> revoked{};
    /// For the log only: why the store failed.
    std::string trouble{};
    std::chrono::seconds retryAfter{}; ///< told when it is not zero
};

/// Why a call is refused.
enum class CallRefusal {
    unreadable,
    wrongFingerprint,
    unusableKey,
    unknownToken,
    expiredToken,
    usedToken,
    sameRole,
    sameDevice,
    unknownPair,
    notMember,
    unknownTarget,
    badSignature,
    untimely,
    unknownCall,
    wrongMethod,
    notSocket,
    wrongContentType,
    unknownCoding,
    unknownSocketVersion,
    tooLarge,
    tooMany,
    tooManyPairs,
    storeFailed,
};

/// The answer for a refusal: its status and `{"reason":"..."}` with the words that the device shows.
CallReply refusal(CallRefusal cause);

/// The three calls by which devices come to be a pair and end it. No network here; the time is given. Owned
/// by the relay, on its thread, and outlived by the store.
class PairCalls {
  public:
    explicit PairCalls(PairStore& store, std::function<FreshPair()> fresh = FreshPair::make)
        : store_(store), fresh_(std::move(fresh)) {}

    /// Whether the path is one of the calls.
    static bool knows(std::string_view path);
    /// Whether the path is that of the call which makes a pair.
    static bool creates(std::string_view path);
    /// `path` as `/v1/pair/create`; another one is refused.
    CallReply answer(std::string_view path, std::string_view body, Date now);

  private:
    CallReply create(std::string_view body, Date now);
    CallReply join(std::string_view body, Date now);
    CallReply revoke(std::string_view body, Date now);

    PairStore& store_;
    std::function<FreshPair()> fresh_;
};

} // namespace morvex
