#include "shared/wire/ToolRisk.h"

#include "shared/wire/Json.h"
#include "shared/wire/ToolDescriptor.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

constexpr ToolRisk inOrder[] = {ToolRisk::safeRead, ToolRisk::guardedRead, ToolRisk::localChange,
                                ToolRisk::change, ToolRisk::forbidden};

TEST(ToolRisk, RisesFromCaseToCase) {
    for (std::size_t index = 1; index < std::size(inOrder); ++index)
        EXPECT_LT(inOrder[index - 1], inOrder[index]);
}

TEST(ToolRisk, AsksForApprovalOfAChangeAlone) {
    for (const auto risk : inOrder) EXPECT_EQ(requiresApproval(risk), risk == ToolRisk::change);
}

TEST(ToolRisk, HasAWordForTheWireAndOneForTheUser) {
    const std::pair<const char*, const char*> expected[] = {{"safe_read", "jen čte"},
                                                            {"guarded_read", "čte tvoje data"},
                                                            {"local_change", "mění místní název"},
                                                            {"change", "mění nebo odesílá"},
                                                            {"forbidden", "zakázáno"}};
    for (std::size_t index = 0; index < std::size(inOrder); ++index) {
        EXPECT_EQ(rawValue(inOrder[index]), expected[index].first);
        EXPECT_EQ(riskLabel(inOrder[index]), expected[index].second);
        EXPECT_EQ(fromRawValue<ToolRisk>(expected[index].first), inOrder[index]);
    }
}

TEST(ToolRisk, FailsTheWholeDescriptorWhenItIsUnknown) {
    const auto read = decode<ToolDescriptor>(
        R"({"name":"x","summary":"y","risk":"dangerous","parametersJSON":"{}","streamsProgress":false})");
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().popis().czech(), "Pole „risk“ má neznámou hodnotu „dangerous“.");
}

} // namespace
} // namespace morvex
