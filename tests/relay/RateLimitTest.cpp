#include "relay/RateLimit.h"

#include <gtest/gtest.h>

using namespace morvex;

namespace {

using std::chrono::minutes;
using std::chrono::seconds;
constexpr RateLimit::Moment start{seconds{1000}};

/// Another range for each number.
Prefix range(std::size_t number) {
    Prefix prefix{.length = 128};
    for (auto byte = prefix.bytes.rbegin(); number > 0; ++byte, number >>= 8U)
        *byte = static_cast<std::uint8_t>(number & 0xFFU);
    return prefix;
}

const Prefix a = range(1);
const Prefix b = range(2);

bool admits(RateLimit& limit, const Prefix& given, RateLimit::Moment now) {
    if (!limit.hasRoom(given, now)) return false;
    limit.charge(given, now);
    return true;
}

} // namespace

TEST(RateLimit, CountsEachRangeForItself) {
    RateLimit limit{2, minutes{1}};
    EXPECT_TRUE(admits(limit, a, start));
    EXPECT_TRUE(admits(limit, a, start));
    EXPECT_FALSE(admits(limit, a, start + seconds{59}));
    EXPECT_TRUE(admits(limit, b, start));
}

TEST(RateLimit, AdmitsAgainAfterItsSpan) {
    RateLimit limit{1, minutes{1}};
    EXPECT_TRUE(admits(limit, a, start));
    EXPECT_FALSE(admits(limit, a, start + seconds{59}));
    EXPECT_TRUE(admits(limit, a, start + seconds{60}));
    EXPECT_FALSE(admits(limit, a, start + seconds{119}));
}

TEST(RateLimit, ChargesWhatAThingCosts) {
    RateLimit limit{10, minutes{1}};
    limit.charge(a, start, 7);
    EXPECT_TRUE(limit.hasRoom(a, start, 3));
    EXPECT_FALSE(limit.hasRoom(a, start, 4));
}

TEST(RateLimit, AFullTableForgetsTheOldestCountAndNoOther) {
    RateLimit limit{1, minutes{1}};
    for (std::size_t count = 1; count <= RateLimit::maxRanges; ++count) limit.charge(range(count), start);
    limit.charge(range(RateLimit::maxRanges + 1), start + seconds{1});
    EXPECT_TRUE(limit.hasRoom(range(1), start + seconds{1}));
    for (std::size_t count = 2; count <= RateLimit::maxRanges + 1; ++count)
        ASSERT_FALSE(limit.hasRoom(range(count), start + seconds{1})) << count;
}
