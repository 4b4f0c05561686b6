#pragma once

#include "relay/PairStore.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// The random values of a new pair.
struct FreshPair {
    PairID id;         ///< 128 random bits in Base32
    std::string token; ///< 256 random bits in base64url (RFC 4648, section 5), without padding

    static FreshPair make();
};

/// The answer to a pairing call.
struct CallReply {
    unsigned status = 200; ///< HTTP status
    std::string body{};    ///< JSON, or empty
    /// The pair whose sockets must end now.
    std::optional<PairID> revoked{};
    /// For the log only: the error of the store.
    std::string trouble{};
    std::chrono::seconds retryAfter{}; ///< sent if it is not zero
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

/// The reply for a refusal: its status and `{"reason":"..."}` with the words that the device shows.
CallReply refusal(CallRefusal cause);

/// The three calls that make, join and end a pair. It does no networking and gets the time as an argument.
/// Owned by the relay, on its thread; the store must outlive it.
class PairCalls {
  public:
    explicit PairCalls(PairStore& store, std::function<FreshPair()> fresh = FreshPair::make)
        : store_(store), fresh_(std::move(fresh)) {}

    /// Whether `path` is one of the calls.
    static bool knows(std::string_view path);
    /// Whether `path` is the call that makes a pair.
    static bool creates(std::string_view path);
    /// `path` is one such as `/v1/pair/create`; unknown ones are refused.
    CallReply answer(std::string_view path, std::string_view body, Date now);

  private:
    CallReply create(std::string_view body, Date now);
    CallReply join(std::string_view body, Date now);
    CallReply revoke(std::string_view body, Date now);

    PairStore& store_;
    std::function<FreshPair()> fresh_;
};

} // namespace morvex
