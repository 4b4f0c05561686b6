#pragma once

#include "tests/relay/RunningRelay.h"
#include "tests/relay/TlsRelay.h"
#include "tests/support/RelayClient.h"

#include <gtest/gtest.h>

#include <concepts>
#include <string>

namespace morvex {

inline const std::string online = encode(RelayMessage{RelayMessage::PeerOnline{true}});
inline const std::string offline = encode(RelayMessage{RelayMessage::PeerOnline{false}});

/// A relay and both devices of a pair, logged in: over plain TCP at a `RunningRelay`, over TLS at a
/// `TlsRelay`.
template <class Relay> struct LoggedInPair {
    static constexpr bool usesTls = std::same_as<Relay, TlsRelay>;

    Relay relay;
    TestPair pair = pairAt(relay.port(), usesTls);
    DeviceSocket mac{relay.port(), usesTls};
    DeviceSocket phone{relay.port(), usesTls};

    explicit LoggedInPair(const RelayLimits& limits = RunningRelay::quickLimits()) : relay(limits) {
        mac.logIn(pair, pair.mac, false);
        phone.logIn(pair, pair.phone, true);
        EXPECT_EQ(mac.read(), online);
    }
};

} // namespace morvex
