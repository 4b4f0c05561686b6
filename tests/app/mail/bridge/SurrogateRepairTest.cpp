#include "app/mail/bridge/SurrogateRepair.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

TEST(SurrogateRepair, ReplacesEachHalfWithoutItsOtherHalf) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {R"("\ud83d")", R"("\ufffd")"},
        {R"("\ude00")", R"("\ufffd")"},
        {R"("\uD83D\uD83D")", R"("\ufffd\ufffd")"},
        {R"("\ude00\ud83d")", R"("\ufffd\ufffd")"},
        {R"("\ud83d\ud83d\ude00")", R"("\ufffd\ud83d\ude00")"},
        {R"("\ud83d\ude00\ude00")", R"("\ud83d\ude00\ufffd")"},
        {R"("\ud83dx\ude00")", R"("\ufffdx\ufffd")"},
        {R"("\ud800\udbff")", R"("\ufffd\ufffd")"},
        {R"("\udc00\udfff")", R"("\ufffd\ufffd")"},
    };
    for (const auto& [before, after] : rows) EXPECT_EQ(withoutLoneSurrogates(before), after);
}

TEST(SurrogateRepair, EveryOtherTextStaysAsItIs) {
    for (const std::string text :
         {R"("\ud83d\ude00")", R"("\ud7ff\ue000")", R"("\\ud83d")", R"("\\\\ude00")", R"("\n\t\"")",
          R"("\ud83")", R"("\u-83d")", R"("\u 83d")", R"("\uzzzz")", "\"\\", "\\u", "", "plain"})
        EXPECT_EQ(withoutLoneSurrogates(text), text);
}

} // namespace
} // namespace morvex
