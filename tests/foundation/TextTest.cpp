#include "foundation/Text.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(Text, TrimTakesUnicodeWhiteSpaceFromBothEnds) {
    EXPECT_EQ(trim(" \t\r\n\u00a0\u2003 a b \u2028\n"), "a b");
    EXPECT_EQ(trim(" \n "), "");
    EXPECT_EQ(trim(""), "");
    EXPECT_EQ(trim(" \xff "), "\xff");
}

TEST(Text, FoldIgnoresCaseAndDiacriticsInEveryLocale) {
    EXPECT_TRUE(equalFolded("PLOCHÁ", "plocha"));
    EXPECT_TRUE(equalFolded("Žluťoučký KŮŇ", "zlutoucky kun"));
    EXPECT_TRUE(equalFolded("e\u0301", "É"));
    EXPECT_TRUE(equalFolded("INFO", "info"));
    EXPECT_FALSE(equalFolded("plocha", "plochy"));
}

TEST(Text, FoldLeavesTheLettersOfEveryScript) {
    struct Row {
        const char* left;
        const char* right;
        bool isEqual;
    };

    const Row rows[] = {
        {"Tiếng Việt", "tieng viet", true},
        {"e\u0323\u0302", "\u1ec7", true},
        {"e\u0302\u0323", "\u1ec7", true},
        {"한글", "\u1112\u1161\u11ab\u1100\u1173\u11af", true},
        {"한글", "한굴", false},
        {"👨‍👩‍👧", "👨‍👩‍👧", true},
        {"👨‍👩‍👧", "👨‍👩‍👦", false},
        {"สวัสดี", "สวสด", true},
        {"שָׁלוֹם", "שלום", true},
        {"Ελλάδα", "ελλαδα", true},
        {"ПРИВЕТ", "привет", true},
    };
    for (const auto& row : rows) EXPECT_EQ(equalFolded(row.left, row.right), row.isEqual) << row.left;
}

TEST(Text, FoldTakesMarksWithoutEnd) {
    // Sorting all marks of a letter would take hours. The marks of the second row are no diacritics and stay;
    // that of the last row has no class of its own, but consists of two that have one.
    for (const auto& [first, second] : {std::pair{"\u0301", "\u0316"}, std::pair{"\U0001D16D", "\U0001D165"},
                                        std::pair{"\u0f73", "\u0f73"}}) {
        std::string text = "A";
        for (int i = 0; i < 300'000; ++i) text += first;
        for (int i = 0; i < 300'000; ++i) text += second;
        const auto folded = fold(text + "B");
        EXPECT_TRUE(folded.starts_with('a') && folded.ends_with('b')) << first;
        EXPECT_LE(folded.size(), 2 + 30 * 4U) << first;
    }
}

TEST(Text, CaseIsFoldedAndAccentsStay) {
    EXPECT_EQ(foldCase("Žluťoučký KŮŇ"), "žluťoučký kůň");
    EXPECT_EQ(foldCase("STRASSE"), foldCase("Straße"));
    EXPECT_NE(foldCase("KONĚ"), foldCase("KONE"));
}

TEST(Text, NamesThatAFileSystemTakesForOneFoldToOne) {
    for (const auto* name : {".git", ".GIT", ".gi\u200ct", "\ufeff.git", ".git.", ".git . ", ".ｇｉｔ"})
        EXPECT_EQ(foldFileName(name), ".git") << name;
    EXPECT_EQ(foldFileName("i\u017fa"), "isa");
    EXPECT_EQ(foldFileName("e\u0301"), foldFileName("\u00c9"));
    EXPECT_EQ(foldFileName(" a b"), " a b");
    EXPECT_EQ(foldFileName("..."), "");
    EXPECT_EQ(foldFileName("git"), "git");
    EXPECT_NE(foldFileName(".gít"), ".git");
}

TEST(Text, CharactersAreGraphemeClusters) {
    EXPECT_EQ(countCharacters("e\u0301👨‍👩‍👧🇨🇿"), 3U);
    EXPECT_EQ(firstCharacters("e\u0301👨‍👩‍👧🇨🇿x", 2), "e\u0301👨‍👩‍👧");
    EXPECT_EQ(firstCharacters("abc", 0), "");
    EXPECT_EQ(firstCharacters("abc", 5), "abc");
}

TEST(Text, InvalidSequencesAreRepaired) {
    EXPECT_EQ(repairUtf8("a\xff"
                         "b"),
              "a\ufffdb");

    struct Row {
        const char* text;
        const char* repaired;
    };

    const Row rows[] = {
        {"1234567\xff", "1234567\ufffd"},
        {"12345678\xff", "12345678\ufffd"},
        {"123456789\xffž", "123456789\ufffdž"},
        {"k\xc5", "k\ufffd"},
        {"\xaf\xc5\x88", "\ufffdň"},
        {"\xe2\x82x", "\ufffdx"},
        {"\xf0\x9f\x98", "\ufffd"},
        {"\xf0\x9f\x98\x80", "😀"},
        {"\xc0\xaf", "\ufffd\ufffd"},
        {"\xed\xa0\x80", "\ufffd\ufffd\ufffd"},
        {"\xff\xfe", "\ufffd\ufffd"},
    };
    for (const auto& row : rows) EXPECT_EQ(repairUtf8(row.text), row.repaired) << row.repaired;
    EXPECT_TRUE(isValidUtf8("žluť"));
    EXPECT_FALSE(isValidUtf8("\xed\xa0\x80"));
    EXPECT_EQ(lowerCase("ČAJ"), "čaj");
    EXPECT_EQ(join({"a", "b", "c"}, ", "), "a, b, c");
    EXPECT_EQ(join({}, ", "), "");
}

TEST(Text, TheFirstBytesEndBetweenTwoCodePoints) {
    EXPECT_EQ(firstBytes("abc", 3), "abc");
    EXPECT_EQ(firstBytes("abc", 2), "ab");
    EXPECT_EQ(firstBytes("aň", 2), "a");
    EXPECT_EQ(firstBytes("😀x", 4), "😀");
    EXPECT_EQ(firstBytes("😀x", 3), "");
    EXPECT_EQ(firstBytes("x", 0), "");
}

} // namespace
} // namespace morvex
