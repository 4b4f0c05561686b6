#include "foundation/TextPattern.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(TextPattern, IsFoundByCanonicalEquivalence) {
    struct Row {
        std::string_view part, text;
        bool isIn;
    };

    const Row rows[] = {
        {"", "", true},
        {"", "abc", true},
        {"b", "abc", true},
        {"abcd", "abc", false},
        {"u\u030a", "účtů", true},
        {"ů", "u\u0301ctu\u030a", true},
        {"u", "ů", false},
        {"ctu", "účtů", false},
        {"úč", "účtů", true},
        {"ů", "ucet", false},
        // The Kelvin sign is the letter K.
        {"\u212a", "10 K", true},
        {"K", "10 \u212a", true},
        {"a", "ab\xff", true},
        {"\ufffd", "b\xff", true},
        {"résumé", "re\u0301sume\u0301.txt", true},
        {"re\u0301", "résumé.txt", true},
        {"résumé", "resume.txt", false},
        {"kone", "koně.txt", false},
        {"kone", "koně kone", true},
        {"a", "", false},
        // What has begun may be the end of what begins.
        {"aab", "aaab", true},
        {"abab\u0161", "ababab\u0161", true},
        {"aa", "aa\u030aa", false},
        {"aa", "aa\u030aaa", true},
    };
    for (const auto& row : rows) EXPECT_EQ(TextPattern(row.part).isIn(row.text), row.isIn) << row.part;
}

TEST(TextPattern, MarksCountAsFarAsAnyLanguageWritesThem) {
    const auto marked = [](int marks) {
        std::string letter = "a";
        for (int i = 0; i < marks; ++i) letter += i % 2 == 0 ? "\u0301" : "\u0316";
        return letter;
    };
    EXPECT_FALSE(TextPattern(marked(28)).isIn(marked(30) + "b"));
    EXPECT_FALSE(TextPattern(marked(29)).isIn(marked(30) + "b"));
    EXPECT_TRUE(TextPattern(marked(30)).isIn(marked(30) + "b"));
    EXPECT_TRUE(TextPattern(marked(30)).isIn(marked(300'000) + "b"));
    EXPECT_TRUE(TextPattern(marked(300'000) + "b" + marked(5)).isIn(marked(40) + "b" + marked(5)));
    EXPECT_FALSE(TextPattern(marked(40) + "b" + marked(5)).isIn(marked(40) + "b" + marked(6)));
    EXPECT_TRUE(TextPattern::ignoringCase(marked(300'000)).isInAnyCaseIn(marked(300'000)));
    EXPECT_TRUE(TextPattern(marked(300'000)).isInLowerCaseOf(marked(300'000)));
}

TEST(TextPattern, IsFoundInTheLowerCaseOfAText) {
    EXPECT_TRUE(TextPattern("faktura").isInLowerCaseOf("FAKTURA.pdf"));
    EXPECT_TRUE(TextPattern("účtů").isInLowerCaseOf("Přehled ÚČTŮ"));
    EXPECT_TRUE(TextPattern("k").isInLowerCaseOf("10 \u212a"));
    EXPECT_FALSE(TextPattern("FAKTURA").isInLowerCaseOf("FAKTURA.pdf"));
    EXPECT_FALSE(TextPattern("uctu").isInLowerCaseOf("Přehled ÚČTŮ"));
}

TEST(TextPattern, IsFoundWithoutRegardToCaseButWithDiacritics) {
    const auto isIn = [](std::string_view part, std::string_view text) {
        return TextPattern::ignoringCase(part).isInAnyCaseIn(text);
    };
    EXPECT_TRUE(isIn("kůň", "Žluťoučký KŮŇ"));
    EXPECT_TRUE(isIn("ŽLUŤ", "žluťoučký kůň"));
    EXPECT_TRUE(isIn("résumé", "RE\u0301SUME\u0301"));
    EXPECT_TRUE(isIn("Faktura", "fAKTURA.pdf"));
    EXPECT_TRUE(isIn("STRASSE", "Straße 1"));
    EXPECT_FALSE(isIn("kone", "KONĚ"));
    EXPECT_FALSE(isIn("KONĚ", "kone"));
    EXPECT_TRUE(isIn("", "a"));
}

TEST(TextPattern, LooksAtEachPlaceOfATextOnce) {
    // Comparing at every place anew would take hours.
    const std::string text(4'000'000, 'a');
    const std::string half(2'000'000, 'a');
    EXPECT_FALSE(TextPattern(half + "b").isIn(text));
    EXPECT_FALSE(TextPattern(half + "ě").isIn(text + "é" + text));
    std::string marked;
    for (int i = 0; i < 200'000; ++i) marked += "a\u030a";
    EXPECT_FALSE(TextPattern(marked + "a").isIn(marked + marked));
}

} // namespace
} // namespace morvex
