#include "relay/Origin.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace morvex;

namespace {

Origin of(const char* address) {
    return Origin::of(boost::asio::ip::make_address(address));
}

struct Row {
    const char* one;
    const char* other;
    bool isSameSite;
    bool isSameNetwork;
};

} // namespace

TEST(Origin, TellsSitesAndNetworksApart) {
    const std::vector<Row> rows{
        {"203.0.113.7", "203.0.113.7", true, true},
        {"203.0.113.7", "203.0.113.8", false, true},
        {"203.0.113.7", "203.0.112.7", false, false},
        {"203.0.113.7", "::ffff:203.0.113.7", true, true},
        {"2001:db8:1:2::1", "2001:db8:1:2ff:ffff::1", false, true},
        {"2001:db8:1:200::1", "2001:db8:1:2ff:ffff::1", true, true},
        {"2001:db8:1:200::1", "2001:db8:1:300::1", false, true},
        {"2001:db8:1::1", "2001:db9:1::1", false, false},
        {"::cb00:7107", "203.0.113.7", false, false},
    };
    for (const auto& [one, other, isSameSite, isSameNetwork] : rows) {
        EXPECT_EQ(of(one).site() == of(other).site(), isSameSite) << one << ' ' << other;
        EXPECT_EQ(of(one).network() == of(other).network(), isSameNetwork) << one << ' ' << other;
    }
}

TEST(Origin, CutsARangeWithinAByte) {
    EXPECT_EQ(of("203.0.113.16").within({28, 48}), of("203.0.113.31").within({28, 48}));
    EXPECT_NE(of("203.0.113.16").within({28, 48}), of("203.0.113.32").within({28, 48}));
}

TEST(Origin, OnlyThisComputerHasNoLimitsAndOnlyUnlessAskedTo) {
    for (const char* local : {"127.0.0.1", "127.3.2.1", "::1", "::ffff:127.0.0.1"}) {
        EXPECT_FALSE(of(local).isLimited()) << local;
        EXPECT_TRUE(
            Origin::of(boost::asio::ip::make_address(local), Origin::ThisComputer::limited).isLimited())
            << local;
    }
    for (const char* other : {"192.168.0.1", "fe80::1", "0.0.0.0", "::"})
        EXPECT_TRUE(of(other).isLimited()) << other;
}
