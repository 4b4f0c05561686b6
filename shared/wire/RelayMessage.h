#pragma once

#include "shared/base/Bytes.h"
#include "shared/wire/Codec.h"
#include "shared/wire/Envelope.h"
#include "shared/wire/Identifiers.h"
#include "shared/wire/ProtocolVersion.h"
#include "shared/wire/PublicKeys.h"
#include "shared/wire/RawValues.h"

#include <string>
#include <variant>

namespace morvex {

enum class RelayFailure {
    protocolMismatch,
    badSignature,
    unknownPair,
    revoked,
    notAuthenticated,
    expired,
    tooLarge,
    rateLimited,
    peerOffline,
    malformed,
};

template <>
inline constexpr std::array<std::string_view, 10> rawValues<RelayFailure>{
    "protocolMismatch", "badSignature", "unknownPair", "revoked",     "notAuthenticated",
    "expired",          "tooLarge",     "rateLimited", "peerOffline", "malformed"};

/// One frame of the WebSocket between a device and the relay.
///
///     relay                                device
///       challenge(nonce, v)          ->
///                                    <-    authenticate(pair, device, key, signature)
///       authenticated(peerOnline)    ->
///       envelope, peerOnline         <->   envelope
///       failure(code, detail)        ->    at any time
struct RelayMessage {
    struct Challenge {
        Bytes nonce;
        ProtocolVersion v;
        bool operator==(const Challenge&) const = default;
    };

    struct Authenticate {
        PairID pair;
        DeviceID device;
        SigningPublicKey key;
        Bytes signature;
        bool operator==(const Authenticate&) const = default;
    };

    struct Authenticated {
        bool peerOnline = false;
        bool operator==(const Authenticated&) const = default;
    };

    struct PeerOnline {
        bool isOnline = false;
        bool operator==(const PeerOnline&) const = default;
    };

    struct Forward {
        Envelope envelope;
        bool operator==(const Forward&) const = default;
    };

    struct Failure {
        RelayFailure code = RelayFailure::malformed;
        std::string detail;
        bool operator==(const Failure&) const = default;
    };

    std::variant<Challenge, Authenticate, Authenticated, PeerOnline, Forward, Failure> value;

    /// Null when the value holds another case.
    template <class Case> [[nodiscard]] const Case* as() const { return std::get_if<Case>(&value); }

    bool operator==(const RelayMessage&) const = default;
};

extern template struct Codec<RelayMessage>;

} // namespace morvex
