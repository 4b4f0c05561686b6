#include "shared/wire/Envelope.h"

#include "shared/wire/Describe.h"

#include <utility>

namespace morvex {

std::string associatedData(const Envelope& envelope) {
    std::string text = envelope.v.text();
    const auto append = [&text](std::string_view field) { text.append(1, '|').append(field); };
    append(envelope.pair.rawValue);
    append(envelope.from.rawValue);
    append(envelope.to.rawValue);
    append(envelope.msgID);
    append(envelope.requestID);
    append(rawValue(envelope.kind));
    append(std::to_string(wholeSeconds(envelope.createdAt)));
    append(std::to_string(wholeSeconds(envelope.expiresAt)));
    append(std::to_string(envelope.counter));
    return text;
}

bool isUnambiguous(const Envelope& envelope) {
    return !envelope.msgID.contains('|') && !envelope.requestID.contains('|');
}

Envelope keyExchange(PairID pair, DeviceID from, DeviceID to, std::string requestID, Bytes plainBytes,
                     Date now, Uuid msgID) {
    return {
        .v = ProtocolVersion::current,
        .pair = std::move(pair),
        .from = std::move(from),
        .to = std::move(to),
        .msgID = msgID.text(),
        .requestID = std::move(requestID),
        .kind = EnvelopeKind::keyExchange,
        .createdAt = now,
        .expiresAt = now + envelopeLifetime,
        .counter = 0,
        .nonce = {},
        .ciphertext = std::move(plainBytes),
        .tag = {},
    };
}

void describe(auto& io, Is<Envelope> auto& envelope) {
    io.required("v", envelope.v);
    io.required("pair", envelope.pair);
    io.required("from", envelope.from);
    io.required("to", envelope.to);
    io.required("msgID", envelope.msgID);
    io.required("requestID", envelope.requestID);
    io.required("kind", envelope.kind);
    io.required("createdAt", envelope.createdAt);
    io.required("expiresAt", envelope.expiresAt);
    io.required("counter", envelope.counter);
    io.required("nonce", envelope.nonce);
    io.required("ciphertext", envelope.ciphertext);
    io.required("tag", envelope.tag);
}

template struct Codec<Envelope>;

} // namespace morvex
