#include "shared/base/Sentence.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <type_traits>
#include <utility>

namespace morvex {
namespace {

std::string shouted(std::string_view czech, std::int64_t) {
    return "<" + std::string(czech) + ">";
}

TEST(Sentence, IsCzechWithItsValuesInTheirPlaces) {
    EXPECT_EQ(Sentence().czech(), "");
    EXPECT_TRUE(Sentence().empty());
    EXPECT_EQ(Sentence("Hotovo."_sentence).czech(), "Hotovo.");
    EXPECT_EQ("Hotovo."_sentence.czech(), "Hotovo.");
    EXPECT_EQ("{jmeno} má {pocet} z {celkem}."_sentence("web", 3, std::size_t{5}).czech(), "web má 3 z 5.");
    EXPECT_EQ("Nejde to: {duvod}"_sentence("Dvakrát: {duvod}"_sentence("konec")).czech(),
              "Nejde to: Dvakrát: konec");
    const auto least = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ("{cislo}"_sentence(least).czech(), std::to_string(least));
}

TEST(Sentence, APlaceThatStandsTwiceHasOneValue) {
    EXPECT_EQ("{a} {b} {a}"_sentence("x", "y").czech(), "x y x");
}

TEST(Sentence, BracesAroundAnythingButSmallLettersAreText) {
    for (const auto* text : {"{}", "{1}", "{A}", "{a b}", "{", "}", "{a", "a}", "{{", "}{"})
        EXPECT_EQ(Sentence(std::string(text)).czech(), text);
    EXPECT_EQ("{} {1} {A} {a b} { } {x} {"_sentence("v").czech(), "{} {1} {A} {a b} { } v {");
}

TEST(Sentence, AValueIsNotReadForPlaces) {
    EXPECT_EQ("{a} a {b}"_sentence("{b}", "{a}").czech(), "{b} a {a}");
    EXPECT_EQ("{a}: {b}"_sentence(Sentence("{b}"), "x").czech(), "{b}: x");
}

TEST(Sentence, ALanguageMayTurnThePlacesRound) {
    const auto turned = [](std::string_view, std::int64_t) { return std::string("{b} {c} before {a}, {a}"); };
    EXPECT_EQ("{a} a {b}"_sentence("1", "2").in(turned), "2 {c} before 1, 1");
}

TEST(Sentence, SentencesInPlacesAreTranslatedAndTextsAreNot) {
    EXPECT_EQ("A {a} {b}"_sentence("B {c}"_sentence("text"), "jméno").in(shouted), "<A <B text> jméno>");
}

TEST(Sentence, ATextOfItsOwnIsLookedUpWhole) {
    EXPECT_EQ(Sentence("kept {a}").in(shouted), "<kept {a}>");
    EXPECT_EQ(Sentence().in(shouted), "");
}

TEST(Sentence, TheFirstNumberAmongItsValuesChoosesTheForm) {
    std::int64_t asked = 0;
    const auto note = [&asked](std::string_view czech, std::int64_t number) {
        asked = number;
        return std::string(czech);
    };
    (void)"{jmeno} {a} {b}"_sentence("5", 7, 9).in(note);
    EXPECT_EQ(asked, 7);
    (void)"{jmeno}"_sentence("5").in(note);
    EXPECT_EQ(asked, -1);
}

TEST(Sentence, OneThatWasMovedFromIsEmpty) {
    for (auto sentence : {"Nejde to: {duvod}"_sentence("konec"), Sentence("text")}) {
        const auto taken = std::move(sentence);
        EXPECT_FALSE(taken.empty());
        EXPECT_TRUE(sentence.empty()); // NOLINT(bugprone-use-after-move)
        EXPECT_EQ(sentence.czech(), "");
        EXPECT_EQ(sentence.in(shouted), "");
    }
}

static_assert(!std::is_constructible_v<SentenceValue, char> && !std::is_constructible_v<SentenceValue, bool>,
              "neither is a number to a person");

TEST(Sentence, SentencesOfTheSameCzechTextAreEqual) {
    EXPECT_EQ("Číslo {a}"_sentence(5), Sentence("Číslo 5"));
    EXPECT_FALSE("Číslo {a}"_sentence(5) == "Číslo {a}"_sentence(6));
    EXPECT_TRUE("Číslo {a}"_sentence(5) == "Číslo 5");
}

} // namespace
} // namespace morvex
