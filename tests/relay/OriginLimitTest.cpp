#include "relay/OriginLimit.h"

#include <gtest/gtest.h>

#include <functional>

using namespace morvex;

namespace {

namespace ip = boost::asio::ip;

using std::chrono::minutes;
constexpr OriginLimit::Moment start{std::chrono::seconds{1000}};

/// 2001:db8:NETWORK:SUBNET::HOST.
Origin ipv6(std::uint16_t network, std::uint16_t subnet, std::uint16_t host) {
    ip::address_v6::bytes_type bytes{0x20, 0x01, 0x0d, 0xb8};
    const auto put = [&](std::size_t place, std::uint16_t number) {
        bytes.at(place) = static_cast<std::uint8_t>(number >> 8U);
        bytes.at(place + 1) = static_cast<std::uint8_t>(number & 0xFFU);
    };
    put(4, network);
    put(6, subnet);
    put(14, host);
    return Origin::of(ip::address_v6{bytes});
}

Origin ipv4(std::uint32_t address) {
    return Origin::of(ip::address_v4{address});
}

/// Of a thousand tries, each from another place.
std::size_t admitted(OriginLimit& limit, const std::function<Origin(std::uint16_t)>& from) {
    std::size_t count = 0;
    for (std::uint16_t index = 0; index < 1000; ++index)
        if (limit.admits(from(index), start)) ++count;
    return count;
}

} // namespace

TEST(OriginLimit, NeighboursHaveAMultipleTogether) {
    const auto count = [](const std::function<Origin(std::uint16_t)>& from) {
        OriginLimit limit{30, minutes{1}};
        return admitted(limit, from);
    };
    EXPECT_EQ(count([](auto) { return ipv4(0xCB007107); }), 30U);
    EXPECT_EQ(count([](auto index) { return ipv4(0xCB007100U + (index & 15U)); }), 60U) << "of a /28";
    EXPECT_EQ(count([](auto index) { return ipv4(0xCB007100U + (index & 255U)); }), 240U) << "of a /24";
    EXPECT_EQ(count([](auto index) { return ipv6(1, 1, index); }), 30U) << "of a /64";
    EXPECT_EQ(count([](auto index) { return ipv6(1, index, 1); }), 60U) << "of a /48";
    EXPECT_EQ(count([](auto index) { return ipv6(index, 1, 1); }), 240U) << "of a /32";
}

TEST(OriginLimit, WhatIsRefusedTakesNothingFromTheNeighbours) {
    OriginLimit limit{30, minutes{1}};
    admitted(limit, [](auto) { return ipv6(1, 1, 1); });
    for (int count = 0; count < 30; ++count) EXPECT_TRUE(limit.admits(ipv6(1, 2, 1), start)) << count;
}

TEST(OriginLimit, OthersAreUnharmedByAGreedyNetwork) {
    OriginLimit limit{30, minutes{1}};
    for (std::uint16_t network = 0; network < 50; ++network)
        admitted(limit, [=](auto index) { return ipv6(network, index, 1); });
    EXPECT_TRUE(limit.admits(ipv4(0xCB007107), start));
}

TEST(OriginLimit, ThisComputerHasNone) {
    OriginLimit limit{1, minutes{1}};
    for (int count = 0; count < 100; ++count)
        EXPECT_TRUE(limit.admits(Origin::of(ip::address_v4::loopback()), start));
}
