#include "shared/trust/VideneZpravy.h"

#include <gtest/gtest.h>

namespace morvex {

TEST(VideneZpravy, Keeps512IdentitiesAfter513AndForgetsTheFirst) {
    VideneZpravy seen;
    for (int i = 1; i <= 513; ++i) seen.insert(std::to_string(i));
    EXPECT_EQ(seen.pocet(), 512u);
    EXPECT_FALSE(seen.obsahuje("1"));
    EXPECT_TRUE(seen.obsahuje("2"));
    EXPECT_TRUE(seen.obsahuje("513"));
}

TEST(VideneZpravy, AnIdentityThatIsHereKeepsItsPlace) {
    VideneZpravy seen(2);
    for (auto id : {"a", "b", "a", "c"}) seen.insert(id);
    EXPECT_EQ(seen.pocet(), 2u);
    EXPECT_FALSE(seen.obsahuje("a"));
    EXPECT_TRUE(seen.obsahuje("b"));
    EXPECT_TRUE(seen.obsahuje("c"));
}

TEST(VideneZpravy, IdentitiesThatDifferOnlyFarBehindAreTwo) {
    const std::string longest(1'000'000, 'x');
    VideneZpravy seen;
    seen.insert(longest + "a");
    EXPECT_TRUE(seen.obsahuje(longest + "a"));
    EXPECT_FALSE(seen.obsahuje(longest + "b"));
    EXPECT_FALSE(seen.obsahuje(longest));
}

} // namespace morvex
