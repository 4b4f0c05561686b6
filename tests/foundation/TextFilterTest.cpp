#include "foundation/TextFilter.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

struct Row {
    const char* text;
    const char* expected;
};

TEST(TextFilter, KeepsLettersMarksNumbersAndTheUnderscore) {
    for (const auto& row :
         {Row{"weather-now", "weather_now"}, Row{"a b/c.d", "a_b_c_d"}, Row{"získej_počasí", "získej_počasí"},
          Row{"e\u0301", "e\u0301"}, Row{"٣½Ⅷ", "٣½Ⅷ"}, Row{"日本", "日本"}, Row{"a\u200Bb", "a_b"},
          Row{"😀x", "_x"}, Row{"a\xFF z", "a__z"}, Row{"", ""}})
        EXPECT_EQ(alphanumericText(row.text), row.expected);
}

TEST(TextFilter, ShowsWhatAReaderSees) {
    for (const auto& row : {Row{"Řekne počasí.", "Řekne počasí."}, Row{"a\nb\tc\x1B[2J", "a b c [2J"},
                            Row{"a\u200Bb\u202Ec\u2066d\uFEFFe\u00ADf", "abcdef"},
                            Row{"x\U000E0041\U000E0042y", "xy"}, Row{"a\u2028b\u2029c\u0085d", "a b c d"},
                            Row{"a\uE000b", "ab"}, Row{"a\U000E0101\uFE0F\u034F\u3164b", "ab"},
                            Row{"e\u0301 😀", "e\u0301 😀"}, Row{"a\xFF", "a\uFFFD"}})
        EXPECT_EQ(visibleText(row.text), row.expected);
}

} // namespace
} // namespace morvex
