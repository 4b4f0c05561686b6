#pragma once

#include "bench/PlainSocket.h"
#include "relay/PairStore.h"
#include "shared/base/Require.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayMessage.h"
#include "tests/support/SampleEnvelope.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace morvex {

/// A device of a pair that is known to the relay.
struct RelayPhone {
    PairID pair;
    DeviceIdentity identity = DeviceIdentity::generate();

    /// A logged-in socket.
    [[nodiscard]] std::unique_ptr<PlainSocket>
    logIn(std::uint16_t port, std::uint8_t from = 1,
          PlainSocket::Security security = PlainSocket::Security::none) const {
        auto socket = std::make_unique<PlainSocket>(port, from, security);
        const auto challenge = decode<RelayMessage>(socket->read().value()).value();
        const auto& nonce = challenge.as<RelayMessage::Challenge>()->nonce;
        socket->write(encode(RelayMessage{RelayMessage::Authenticate{
            pair, identity.deviceID(), identity.signingKey(), identity.sign(nonce)}}));
        const auto welcome = decode<RelayMessage>(socket->read().value()).value();
        require(welcome.as<RelayMessage::Authenticated>() != nullptr, "the relay let a phone not in");
        return socket;
    }

    [[nodiscard]] Member member(DeviceRole role) const {
        return {identity.deviceID(), identity.signingKey(), role};
    }

    /// A frame for another device, with `size` bytes of content.
    [[nodiscard]] std::string frameFor(const DeviceIdentity& other, std::size_t size) const {
        auto envelope = sampleEnvelope(pair, identity.deviceID(), other.deviceID(), Bytes(size, 1));
        return encode(RelayMessage{RelayMessage::Forward{std::move(envelope)}});
    }
};

} // namespace morvex
