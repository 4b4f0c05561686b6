#include "foundation/TextOrder.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(TextOrder, IsThatOfACzechDictionary) {
    const TextOrder order;
    const char* const sorted[] = {"", "cukr", "čaj", "Dům", "had", "chata", "Zeď", "žába"};
    for (std::size_t i = 1; i < std::size(sorted); ++i) {
        EXPECT_EQ(order.compare(sorted[i - 1], sorted[i]), std::weak_ordering::less) << sorted[i];
        EXPECT_EQ(order.compare(sorted[i], sorted[i - 1]), std::weak_ordering::greater) << sorted[i];
    }
}

TEST(TextOrder, DoesNotLookAtCase) {
    const TextOrder order;
    EXPECT_EQ(order.compare("PRÁCE", "práce"), std::weak_ordering::equivalent);
    EXPECT_EQ(order.compare("prace", "Práce"), std::weak_ordering::less);
}

} // namespace
} // namespace morvex
