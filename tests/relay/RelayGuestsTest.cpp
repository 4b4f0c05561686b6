#include "tests/relay/RunningRelay.h"
#include "tests/support/RelayClient.h"

#include <gtest/gtest.h>

using namespace morvex;

TEST(RelayGuests, AnotherGuestPushesOutTheOldestWhenPlacesRunOut) {
    auto limits = RunningRelay::quickLimits();
    limits.connections = 1;
    RunningRelay relay{limits};
    DeviceSocket first{relay.port()};
    first.read();
    EXPECT_THAT(exchange(relay.port(), "GET / HTTP/1.1\r\nHost: localhost\r\n\r\n"),
                testing::StartsWith("HTTP/1.1 404"));
    EXPECT_EQ(first.read(), std::nullopt);
    EXPECT_EQ(first.closeCode(), 1006);
}

TEST(RelayGuests, ClosesAConnectionThatSaysNothing) {
    auto limits = RunningRelay::quickLimits();
    limits.firstByte = RelayLimits::Time{20};
    RunningRelay relay{limits};
    EXPECT_EQ(exchange(relay.port(), ""), "");
}
