#include "relay/EventLog.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace morvex;

namespace {

using std::chrono::seconds;
constexpr EventLog::Moment start{seconds{1000}};

Origin from(unsigned number) {
    return Origin::of(boost::asio::ip::address_v4{0x0A000000U + number});
}

struct EventLogTest : testing::Test {
    std::vector<std::string> lines;
    EventLog log{[this](std::string_view line) { lines.emplace_back(line); },
                 {.ofOneKind = 2, .ofAll = 10, .kinds = 8}};

    void note(int times, const std::string& kind, const Origin& origin, EventLog::Moment now = start) {
        for (int count = 0; count < times; ++count) log.note(kind, origin, "socket: " + kind, now);
    }
};

using Lines = std::vector<std::string>;

} // namespace

TEST_F(EventLogTest, CountsWhatOneAddressRepeatsAndTellsItLater) {
    note(5, "failed", from(1));
    EXPECT_EQ(lines, (Lines{"socket: failed", "socket: failed"}));
    log.tick(start + seconds{59});
    EXPECT_EQ(lines.size(), 2U);
    log.tick(start + seconds{60});
    EXPECT_EQ(lines.back(), "failed: 3 more from one address in a minute");
    note(1, "failed", from(1), start + seconds{61});
    EXPECT_EQ(lines.back(), "socket: failed");
}

TEST_F(EventLogTest, OtherKindsAndAddressesHaveTheirOwnLines) {
    note(5, "failed", from(1));
    note(1, "gone", from(1));
    note(1, "failed", from(2));
    EXPECT_EQ(lines.size(), 4U);
}

TEST_F(EventLogTest, HasALimitForAllTogether) {
    for (unsigned number = 0; number < 100; ++number) note(1, "failed", from(number));
    EXPECT_EQ(lines.size(), 10U);
    log.tick(start + seconds{60});
    EXPECT_EQ(lines.size(), 11U);
    EXPECT_EQ(lines.back(), "90 more events in a minute");
    note(1, "failed", from(1), start + seconds{60});
    EXPECT_EQ(lines.back(), "socket: failed");
}

TEST_F(EventLogTest, TellsOfTheOldestWhenItMustForgetIt) {
    note(3, "failed", from(1));
    for (unsigned number = 2; number <= 8; ++number) note(1, "failed", from(number));
    EXPECT_EQ(lines.back(), "socket: failed");
    note(1, "failed", from(9));
    EXPECT_EQ(lines[9], "failed: 1 more from one address in a minute");
    EXPECT_EQ(lines.size(), 11U);
}
