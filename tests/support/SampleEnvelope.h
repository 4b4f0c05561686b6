#pragma once

#include "shared/wire/Envelope.h"

#include <utility>

namespace morvex {

/// An envelope that a relay can forward but nobody can open.
inline Envelope sampleEnvelope(PairID pair, DeviceID from, DeviceID to, Bytes ciphertext) {
    return {.v = ProtocolVersion::current,
            .pair = std::move(pair),
            .from = std::move(from),
            .to = std::move(to),
            .msgID = "D2719B3C-5F0A-4A1E-8F43-6C8B2D9E7A10",
            .requestID = "request",
            .kind = EnvelopeKind::data,
            .createdAt = dateFromSeconds(1'700'000'000),
            .expiresAt = dateFromSeconds(1'700'000'060),
            .counter = 1,
            .nonce = Bytes(12, 1),
            .ciphertext = std::move(ciphertext),
            .tag = Bytes(16, 3)};
}

} // namespace morvex
