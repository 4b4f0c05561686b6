#include "shared/wire/RelayMessage.h"

#include "shared/wire/Describe.h"

namespace morvex {

template <>
inline constexpr auto caseNames<RelayMessage> = std::to_array<std::string_view>(
    {"challenge", "authenticate", "authenticated", "peerOnline", "envelope", "failure"});

void describe(auto& io, Is<RelayMessage::Challenge> auto& challenge) {
    io.required("nonce", challenge.nonce);
    io.required("v", challenge.v);
}

void describe(auto& io, Is<RelayMessage::Authenticate> auto& answer) {
    io.required("pair", answer.pair);
    io.required("device", answer.device);
    io.required("key", answer.key);
    io.required("signature", answer.signature);
}

void describe(auto& io, Is<RelayMessage::Authenticated> auto& login) {
    io.required("peerOnline", login.peerOnline);
}

void describe(auto& io, Is<RelayMessage::PeerOnline> auto& peer) {
    io.required("_0", peer.isOnline);
}

void describe(auto& io, Is<RelayMessage::Forward> auto& forward) {
    io.required("_0", forward.envelope);
}

void describe(auto& io, Is<RelayMessage::Failure> auto& failure) {
    io.required("code", failure.code);
    io.required("detail", failure.detail);
}

template struct Codec<RelayMessage>;

} // namespace morvex
