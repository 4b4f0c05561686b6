#include "shared/wire/JsonMeter.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

/// What the names of one object cost.
std::size_t costOf(std::size_t members, std::size_t nameSize) {
    JsonMeter meter{JsonLimits{}};
    meter.openObject();
    for (std::size_t i = 0; i < members; ++i) meter.addName(nameSize);
    meter.closeObject(members);
    return meter.comparisons();
}

TEST(JsonMeter, CountsEachNameAgainstAllOthersOfItsObject) {
    EXPECT_EQ(costOf(0, 0), 0U);
    EXPECT_EQ(costOf(1, 10), 0U);
    EXPECT_EQ(costOf(10, 5), 50U);
    EXPECT_EQ(costOf(100, 0), 5'000U);
    EXPECT_EQ(costOf(1000, 0), 500'000U);
}

TEST(JsonMeter, CountsALongNameForEach64Bytes) {
    EXPECT_EQ(costOf(100, 64), 10'000U);
    EXPECT_EQ(costOf(100, 6400), 505'000U);
}

TEST(JsonMeter, CountsTheNamesOfEachOpenObjectForItself) {
    JsonMeter meter{JsonLimits{}};
    meter.openObject();
    meter.addName(64);
    for (int i = 0; i < 10; ++i) {
        meter.openObject();
        meter.addName(64);
        meter.addName(64);
        meter.closeObject(2);
        meter.addName(64);
    }
    EXPECT_EQ(meter.comparisons(), 40U);
    meter.closeObject(11);
    EXPECT_EQ(meter.comparisons(), 40U + 121U);
    EXPECT_EQ(meter.values(), 11U);
}

TEST(JsonMeter, SaysWhenATextAsksForTooMuch) {
    JsonMeter meter{{.values = 2}};
    EXPECT_TRUE(meter.addValue());
    EXPECT_TRUE(meter.addValue());
    EXPECT_FALSE(meter.addValue());

    JsonMeter names{{.values = 100}};
    EXPECT_TRUE(names.openObject());
    EXPECT_TRUE(names.closeObject(56));
    EXPECT_TRUE(names.openObject());
    EXPECT_FALSE(names.closeObject(9));
}

TEST(JsonMeter, ObjectsOfFewMembersAlwaysFit) {
    for (const auto limits : {JsonLimits{}, messageLimits, fileLimits(1024 * 1024, 1024 * 1024)}) {
        JsonMeter meter{limits};
        for (std::size_t values = 17; values <= limits.values; values += 17) {
            ASSERT_TRUE(meter.openObject());
            for (int member = 0; member < 16; ++member) {
                meter.addName(16);
                ASSERT_TRUE(meter.addValue());
            }
            ASSERT_TRUE(meter.closeObject(16));
        }
    }
}

} // namespace
} // namespace morvex
