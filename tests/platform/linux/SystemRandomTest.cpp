#include "platform/linux/SystemRandom.h"

#include <gtest/gtest.h>

#include <set>

namespace morvex {
namespace {

TEST(SystemRandom, DrawsDifferentUuidsOfVersion4) {
    SystemRandom random;
    std::set<Uuid> drawn;
    for (int i = 0; i < 100; ++i) {
        auto uuid = random.uuid();
        EXPECT_EQ(uuid.bytes[6] >> 4, 4);
        EXPECT_EQ(uuid.bytes[8] >> 6, 2);
        drawn.insert(uuid);
    }
    EXPECT_EQ(drawn.size(), 100U);
}

} // namespace
} // namespace morvex
