#include "tests/relay/RunningRelay.h"
#include "tests/support/RelayClient.h"

#include <gtest/gtest.h>

using namespace morvex;

namespace {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;

constexpr OriginLimit::Moment start{hours{1}};

/// A relay whose limits by address hold for this computer too.
RelayLimits strictLimits() {
    auto limits = RunningRelay::quickLimits();
    limits.thisComputer = Origin::ThisComputer::limited;
    return limits;
}

unsigned create(const RunningRelay& relay, const std::string& from) {
    const auto body = TestPair::create(DeviceIdentity::generate());
    return post(relay.port(), "/v1/pair/create", body, false, from).status;
}

unsigned joinUnknown(const RunningRelay& relay, const std::string& from) {
    const auto body = TestPair::join(DeviceIdentity::generate(), "unknown");
    return post(relay.port(), "/v1/pair/join", body, false, from).status;
}

const std::string other = "127.200.0.1";

} // namespace

TEST(RelayLimits, HoldForAnAddressAndASpan) {
    struct Row {
        const char* what;
        OriginLimit RelayState::* limit;
        std::size_t most;
        seconds span;
    };

    const auto origin = Origin::of(boost::asio::ip::make_address("203.0.113.7"));
    for (const auto& [what, limit, most, span] :
         {Row{"connections", &RelayState::connectionLimit, 600, minutes{1}},
          Row{"calls", &RelayState::callLimit, 30, minutes{1}},
          Row{"new pairs", &RelayState::creationLimit, 200, hours{24}},
          Row{"logins", &RelayState::loginLimit, 240, minutes{1}}}) {
        RelayState state{RelayLimits{}, RunningRelay::memoryStore(), [](std::string_view) {}};
        std::size_t admitted = 0;
        while ((state.*limit).admits(origin, start)) ++admitted;
        EXPECT_EQ(admitted, most) << what;
        EXPECT_FALSE((state.*limit).admits(origin, start + span - seconds{1})) << what;
        EXPECT_TRUE((state.*limit).admits(origin, start + span)) << what;
    }
}

TEST(RelayLimits, RefuseWhatAnAddressAsksForBeyondThemAndNobodyElse) {
    struct Row {
        const char* what;
        std::size_t RelayLimits::* limit;
        unsigned (*ask)(const RunningRelay&, const std::string& from);
        unsigned taken;
        unsigned refused;
    };

    for (const auto& [what, limit, ask, taken, refused] :
         {Row{"new pairs", &RelayLimits::pairsPerDay, create, 200, 429},
          Row{"calls", &RelayLimits::callsPerMinute, joinUnknown, 404, 429},
          Row{"connections, closed without an answer", &RelayLimits::connectionsPerMinute, create, 200, 0}}) {
        auto limits = strictLimits();
        limits.*limit = 2;
        const RunningRelay relay{limits};
        EXPECT_EQ(ask(relay, thisComputer), taken) << what;
        EXPECT_EQ(ask(relay, thisComputer), taken) << what;
        EXPECT_EQ(ask(relay, thisComputer), refused) << what;
        EXPECT_EQ(ask(relay, other), taken) << what;
    }
}

TEST(RelayLimits, OfNewPairsDoNotRefuseAnotherCall) {
    auto limits = strictLimits();
    limits.pairsPerDay = 1;
    const RunningRelay relay{limits};
    EXPECT_EQ(create(relay, thisComputer), 200U);
    EXPECT_EQ(create(relay, thisComputer), 429U);
    EXPECT_EQ(joinUnknown(relay, thisComputer), 404U);
}
