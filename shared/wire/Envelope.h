#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Date.h"
#include "shared/base/Sentence.h"
#include "shared/base/Uuid.h"
#include "shared/wire/Codec.h"
#include "shared/wire/Identifiers.h"
#include "shared/wire/ProtocolVersion.h"
#include "shared/wire/RawValues.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace morvex {

enum class EnvelopeKind { data, keyExchange, ping, pong };

template <>
inline constexpr std::array<std::string_view, 4> rawValues<EnvelopeKind>{"data", "kex", "ping", "pong"};

inline constexpr std::chrono::seconds envelopeLifetime{60};

/// What the relay forwards: clear fields for routing, and content that only the other device can read.
struct Envelope {
    ProtocolVersion v;
    PairID pair;
    DeviceID from;
    DeviceID to;
    std::string msgID;     ///< a fresh UUID
    std::string requestID; ///< ties replies to a request
    EnvelopeKind kind = EnvelopeKind::data;
    Date createdAt;
    Date expiresAt;
    std::uint64_t counter = 0; ///< counts the sender's direction; 0 in a key exchange
    Bytes nonce;               ///< 12 bytes when sealed, else empty
    Bytes ciphertext;          ///< the sealed bytes, or the plain hello of a key exchange
    Bytes tag;                 ///< 16 bytes when sealed, else empty

    bool operator==(const Envelope&) const = default;
};

extern template struct Codec<Envelope>;

/// The clear fields as the bytes that sealing and opening authenticate.
std::string associatedData(const Envelope& envelope);

/// A message or request id contains a "|", which separates the two in the associated data: if the bar moved
/// from one id to the other, the associated data would stay the same.
struct AmbiguousIdentity {
    [[nodiscard]] Sentence popis() const {
        return "Identita zprávy nebo požadavku obsahuje svislou čáru."_sentence;
    }

    bool operator==(const AmbiguousIdentity&) const = default;
};

/// Whether no other envelope can have the same associated data.
bool isUnambiguous(const Envelope& envelope);

/// An envelope with a hello in the clear; the hello is protected by its own signature.
Envelope keyExchange(PairID pair, DeviceID from, DeviceID to, std::string requestID, Bytes plainBytes,
                     Date now, Uuid msgID);

} // namespace morvex
