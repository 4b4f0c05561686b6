#include "relay/Places.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

using namespace morvex;

namespace {

using std::chrono::seconds;
using Standing = Places::Standing;
constexpr Places::Moment start{seconds{1000}};

/// 10.NETWORK.0.HOST of another /24 for each network.
Origin from(unsigned network, unsigned host = 1) {
    return Origin::of(boost::asio::ip::address_v4{0x0A000000U + (network << 8U) + host});
}

struct PlacesTest : testing::Test {
    /// 64 places: 32 of guests, 8 of an address, 16 of a network, 56 of those that have logged in.
    Places places{Places::Bounds::of(64, seconds{3})};

    struct Visitor {
        std::optional<Places::Place> place;
        bool isEvicted = false;
    };

    std::deque<Visitor> visitors;

    Visitor& enter(const Origin& origin, Places::Moment now = start) {
        auto& visitor = visitors.emplace_back(places.enter(origin, now));
        if (visitor.place) visitor.place->onEviction([&visitor] { visitor.isEvicted = true; });
        return visitor;
    }

    Visitor& logIn(const Origin& origin, Standing standing) {
        auto& visitor = enter(origin);
        if (visitor.place && !visitor.place->rise(standing)) visitor.place.reset();
        return visitor;
    }

    [[nodiscard]] std::size_t evicted() const {
        return static_cast<std::size_t>(std::ranges::count(visitors, true, &Visitor::isEvicted));
    }
};

} // namespace

TEST_F(PlacesTest, CountsAPlaceAsLongAsItIsHeld) {
    enter(from(1));
    enter(from(2));
    EXPECT_EQ(places.taken(), 2U);
    visitors.clear();
    EXPECT_EQ(places.taken(), 0U);
}

TEST_F(PlacesTest, OneAddressPushesOutItsOwnOldestGuest) {
    const auto& other = enter(from(2));
    for (int count = 0; count < 100; ++count) EXPECT_TRUE(enter(from(1)).place);
    EXPECT_EQ(places.taken(), 1 + 8U);
    EXPECT_EQ(evicted(), 92U);
    EXPECT_FALSE(other.isEvicted);
    EXPECT_TRUE(visitors[1].isEvicted);
    EXPECT_FALSE(visitors.back().isEvicted);
}

TEST_F(PlacesTest, AnAddressWhoseGuestsHaveAllLoggedInGetsNoMore) {
    for (int count = 0; count < 8; ++count) EXPECT_TRUE(logIn(from(1), Standing::knownPair).place);
    EXPECT_FALSE(enter(from(1)).place);
    EXPECT_TRUE(enter(from(1, 2)).place);
}

TEST_F(PlacesTest, ANetworkHasItsPartToo) {
    for (unsigned host = 1; host <= 100; ++host) EXPECT_TRUE(enter(from(1, host)).place);
    EXPECT_EQ(places.taken(), 16U);
    visitors.clear();
    for (unsigned host = 1; host <= 16; ++host) logIn(from(1, host), Standing::newPair);
    EXPECT_FALSE(enter(from(1, 17)).place);
    EXPECT_TRUE(enter(from(2)).place);
}

TEST_F(PlacesTest, GuestsOfTheFullestNetworkMakeRoomForOthers) {
    const auto& honest = enter(from(100));
    for (unsigned network = 1; network <= 3; ++network)
        for (unsigned host = 1; host <= 16; ++host) enter(from(network, host));
    EXPECT_EQ(places.taken(), 32U) << "half of the places";
    EXPECT_FALSE(honest.isEvicted);
    EXPECT_TRUE(enter(from(101)).place);
}

TEST_F(PlacesTest, AmongManySmallNetworksTheOldestGuestGoes) {
    for (unsigned network = 1; network <= 33; ++network) enter(from(network));
    EXPECT_TRUE(visitors[0].isEvicted);
    EXPECT_EQ(evicted(), 1U);
}

TEST_F(PlacesTest, AStrangersNewPairsLeaveRoomForKnownOnes) {
    for (unsigned network = 1; network <= 20; ++network)
        for (unsigned host = 1; host <= 3; ++host) logIn(from(network, host), Standing::newPair);
    EXPECT_EQ(places.taken(), 32U) << "half of the places";
    for (unsigned network = 100; network < 124; ++network)
        EXPECT_TRUE(logIn(from(network), Standing::knownPair).place) << network;
}

TEST_F(PlacesTest, ANewPairTakesTheNewestPlaceOfAGreedierNetwork) {
    for (unsigned host = 1; host <= 16; ++host) logIn(from(1, host), Standing::newPair);
    for (unsigned host = 1; host <= 16; ++host) logIn(from(2, host), Standing::newPair);
    EXPECT_TRUE(logIn(from(3), Standing::newPair).place);
    EXPECT_TRUE(visitors[15].isEvicted);
    EXPECT_FALSE(visitors[0].isEvicted);
    EXPECT_EQ(evicted(), 1U);
}

TEST_F(PlacesTest, AmongEqualNetworksNobodyIsPushedOut) {
    for (unsigned network = 1; network <= 32; ++network) logIn(from(network), Standing::newPair);
    EXPECT_FALSE(logIn(from(50), Standing::newPair).place);
    EXPECT_EQ(evicted(), 0U);
}

TEST_F(PlacesTest, AKnownPairPushesOutANewOne) {
    for (unsigned network = 1; network <= 32; ++network) logIn(from(network), Standing::newPair);
    for (unsigned network = 101; network <= 124; ++network) logIn(from(network), Standing::knownPair);
    EXPECT_EQ(evicted(), 0U);
    EXPECT_TRUE(logIn(from(200), Standing::knownPair).place);
    EXPECT_EQ(evicted(), 1U);
    EXPECT_TRUE(visitors[0].isEvicted);
}

TEST_F(PlacesTest, AFullRelayStillHearsGuests) {
    for (unsigned network = 1; network <= 60; ++network) logIn(from(network), Standing::knownPair);
    EXPECT_EQ(places.taken(), 56U) << "an eighth is left";
    for (unsigned network = 101; network <= 120; ++network) EXPECT_TRUE(enter(from(network)).place);
    EXPECT_EQ(places.taken(), 64U);
    EXPECT_FALSE(visitors.back().place->rise(Standing::newPair));
}

TEST_F(PlacesTest, WhoSaysNothingGoesAfterThreeSeconds) {
    auto& silent = enter(from(1));
    auto& speaking = enter(from(2));
    const auto& late = enter(from(3), start + seconds{2});
    speaking.place->hasSpoken();
    places.endSilent(start + seconds{3});
    EXPECT_EQ(evicted(), 0U);
    places.endSilent(start + seconds{4});
    EXPECT_TRUE(silent.isEvicted);
    EXPECT_EQ(evicted(), 1U);
    EXPECT_FALSE(silent.place->rise(Standing::knownPair)) << "the place is gone";
    EXPECT_FALSE(late.isEvicted);
}

TEST_F(PlacesTest, ThisComputerMayHaveMoreThanAnAddress) {
    const auto local = Origin::of(boost::asio::ip::address_v4::loopback());
    for (int count = 0; count < 30; ++count) enter(local);
    EXPECT_EQ(places.taken(), 30U);
    EXPECT_EQ(evicted(), 0U);
}

TEST(PlacesBounds, AFewPlacesAreAllForWhoLogsIn) {
    Places places{Places::Bounds::of(1, seconds{3})};
    auto only = places.enter(from(1), start);
    ASSERT_TRUE(only);
    EXPECT_TRUE(only->rise(Standing::newPair));
    EXPECT_FALSE(places.enter(from(2), start));
}
