#include "relay/RateLimit.h"

#include <gtest/gtest.h>

using namespace morvex;

namespace {

using std::chrono::seconds;
constexpr RateLimit::Moment start{seconds{1000}};

} // namespace

TEST(RateLimit, CountsEachAddressForItself) {
    RateLimit limit{2};
    EXPECT_TRUE(limit.admits("a", start));
    EXPECT_TRUE(limit.admits("a", start));
    EXPECT_FALSE(limit.admits("a", start + seconds{59}));
    EXPECT_TRUE(limit.admits("b", start));
}

TEST(RateLimit, AdmitsAgainAfterAMinute) {
    RateLimit limit{1};
    EXPECT_TRUE(limit.admits("a", start));
    EXPECT_FALSE(limit.admits("a", start + seconds{59}));
    EXPECT_TRUE(limit.admits("a", start + seconds{60}));
}

TEST(RateLimit, RemembersSoManyAddressesAndThenForgetsThem) {
    RateLimit limit{1};
    EXPECT_TRUE(limit.admits("first", start));
    for (std::size_t count = 1; count < RateLimit::maxAddresses; ++count)
        limit.admits(std::to_string(count), start);
    EXPECT_TRUE(limit.admits("one more", start));
    EXPECT_TRUE(limit.admits("first", start));
}
