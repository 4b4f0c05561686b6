#include "relay/OriginLimit.h"

#include <gtest/gtest.h>

#include <functional>

using namespace morvex;

namespace {

namespace ip = boost::asio::ip;

using std::chrono::minutes;
constexpr OriginLimit::Moment start{std::chrono::seconds{1000}};

/// `2001:db8:1:1::` with other bits where the number has ones.
Origin ipv6(std::uint64_t subnet, std::uint64_t host = 0) {
    ip::address_v6::bytes_type bytes{0x20, 0x01, 0x0d, 0xb8, 0, 1, 0, 1};
    for (std::size_t place = 0; place < 8; ++place) {
        bytes.at(place) ^= static_cast<std::uint8_t>(subnet >> (56 - 8 * place));
        bytes.at(8 + place) = static_cast<std::uint8_t>(host >> (56 - 8 * place));
    }
    return Origin::of(ip::address_v6{bytes});
}

/// 203.0.112.0 with other bits where the number has ones.
Origin ipv4(std::uint32_t host) {
    return Origin::of(ip::address_v4{0xCB007000U ^ host});
}

/// Of a thousand tries, each from another place.
std::size_t admitted(OriginLimit& limit, const std::function<Origin(std::uint64_t)>& from) {
    std::size_t count = 0;
    for (std::uint64_t index = 0; index < 1000; ++index)
        if (limit.admits(from(index), start)) ++count;
    return count;
}

} // namespace

TEST(OriginLimit, NeighboursHaveAMultipleTogether) {
    const auto count = [](const std::function<Origin(std::uint64_t)>& from) {
        OriginLimit limit{30, minutes{1}};
        return admitted(limit, from);
    };
    // The bits that tell the tries apart lie right behind the range.
    EXPECT_EQ(count([](auto) { return ipv4(7); }), 30U);
    EXPECT_EQ(count([](auto index) { return ipv4(index & 15U); }), 60U) << "of a /28";
    EXPECT_EQ(count([](auto index) { return ipv4(index & 255U); }), 240U) << "of a /24";
    EXPECT_EQ(count([](auto index) { return ipv6(0, index << 54); }), 30U) << "of a /64";
    EXPECT_EQ(count([](auto index) { return ipv6(index << 6); }), 60U) << "of a /48";
    EXPECT_EQ(count([](auto index) { return ipv6(index << 22); }), 240U) << "of a /32";
    // Here the first of them is the last one of the range.
    EXPECT_EQ(count([](auto index) { return ipv4(index & 1U); }), 60U) << "of two addresses";
    EXPECT_EQ(count([](auto index) { return ipv4(index & 31U); }), 120U) << "of two /28";
    EXPECT_EQ(count([](auto index) { return ipv4(index & 511U); }), 480U) << "of two /24";
    EXPECT_EQ(count([](auto index) { return ipv6(index & 1U); }), 60U) << "of two /64";
    EXPECT_EQ(count([](auto index) { return ipv6(index << 7); }), 120U) << "of two /48";
    EXPECT_EQ(count([](auto index) { return ipv6(index << 23); }), 480U) << "of two /32";
}

TEST(OriginLimit, WhatIsRefusedTakesNothingFromTheNeighbours) {
    OriginLimit limit{30, minutes{1}};
    admitted(limit, [](auto) { return ipv6(0); });
    for (int count = 0; count < 30; ++count) EXPECT_TRUE(limit.admits(ipv6(1), start)) << count;
}

TEST(OriginLimit, AGreedyNetworkHasNoLimitOfOthersForgotten) {
    OriginLimit limit{30, minutes{1}};
    const auto honest = ipv4(7);
    EXPECT_EQ(admitted(limit, [&](auto) { return honest; }), 30U);
    // More places than are remembered, all of one /32.
    for (std::uint64_t round = 0; round < 2 * RateLimit::maxRanges / 1000 + 1; ++round)
        admitted(limit, [=](auto index) { return ipv6(round << 16 | index); });
    EXPECT_FALSE(limit.admits(honest, start));
    EXPECT_TRUE(limit.admits(ipv4(8), start));
}

TEST(OriginLimit, ThisComputerHasNone) {
    OriginLimit limit{1, minutes{1}};
    for (int count = 0; count < 100; ++count)
        EXPECT_TRUE(limit.admits(Origin::of(ip::address_v4::loopback()), start));
}
