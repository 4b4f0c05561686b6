#include "relay/FailureFrame.h"
#include "tests/relay/LoggedInPair.h"

#include <gtest/gtest.h>

#include <thread>

using namespace morvex;

namespace {

/// What holds over plain TCP and over TLS alike.
template <class Relay> struct RelayTransport : testing::Test {};

struct TransportName {
    template <class Relay> static std::string GetName(int) {
        return LoggedInPair<Relay>::usesTls ? "Tls" : "Plain";
    }
};

using Transports = testing::Types<RunningRelay, TlsRelay>;
TYPED_TEST_SUITE(RelayTransport, Transports, TransportName);

} // namespace

TYPED_TEST(RelayTransport, CarriesTheLargestFramesBothWays) {
    LoggedInPair<TypeParam> both;
    const auto fromMac = both.pair.frame(both.pair.mac, both.pair.phone, 1, 2'500'000);
    const auto fromPhone = both.pair.frame(both.pair.phone, both.pair.mac, 1, 2'500'000);
    std::jthread macSends{[&] { both.mac.write(fromMac); }};
    EXPECT_EQ(both.phone.read(), fromMac);
    macSends.join();
    std::jthread phoneSends{[&] { both.phone.write(fromPhone); }};
    EXPECT_EQ(both.mac.read(), fromPhone);
}

TYPED_TEST(RelayTransport, CarriesABurstOfTenThousandNotesInOrder) {
    LoggedInPair<TypeParam> both;
    std::jthread sender{[&] {
        for (std::uint64_t counter = 1; counter <= 10'000; ++counter)
            both.mac.write(both.pair.frame(both.pair.mac, both.pair.phone, counter, 700));
    }};
    for (std::uint64_t counter = 1; counter <= 10'000; ++counter)
        ASSERT_EQ(both.phone.read(), both.pair.frame(both.pair.mac, both.pair.phone, counter, 700));
}

TYPED_TEST(RelayTransport, HoldsASenderBackAndLosesNothing) {
    auto limits = RunningRelay::quickLimits();
    limits.waiting = 100'000;
    LoggedInPair<TypeParam> both{limits};
    constexpr std::uint64_t count = 200;
    std::jthread sender{[&] {
        for (std::uint64_t counter = 1; counter <= count; ++counter)
            both.mac.write(both.pair.frame(both.pair.mac, both.pair.phone, counter, 60'000));
    }};
    for (std::uint64_t counter = 1; counter <= count; ++counter)
        ASSERT_EQ(both.phone.read(), both.pair.frame(both.pair.mac, both.pair.phone, counter, 60'000));
    both.phone.write(both.pair.fromPhone());
    EXPECT_EQ(both.mac.read(), both.pair.fromPhone());
}

TYPED_TEST(RelayTransport, ClosesAReceiverThatTakesNothingAndKeepsLittleForIt) {
    auto limits = RunningRelay::quickLimits();
    limits.waiting = mebibyte;
    limits.stall = RelayLimits::Time{300};
    LoggedInPair<TypeParam> both{limits};
    constexpr std::size_t count = 60;
    const auto frame = both.pair.frame(both.pair.mac, both.pair.phone, 1, 750'000);
    for (std::size_t sent = 0; sent < count; ++sent) both.mac.write(frame);
    both.mac.write("nonsense");
    EXPECT_EQ(both.mac.read(), offline);
    std::size_t refused = 0;
    auto answer = both.mac.read();
    for (; answer == failureFrame(RelayFailure::peerOffline); answer = both.mac.read()) ++refused;
    EXPECT_EQ(answer, failureFrame(RelayFailure::malformed));
    EXPECT_GT(refused, count / 2) << "the relay and the sockets' own buffers took half of 60 MB";
}
