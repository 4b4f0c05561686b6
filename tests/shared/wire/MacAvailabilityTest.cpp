#include "shared/wire/MacAvailability.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;

constexpr auto now = Date{100h};

std::string words(MacAvailability state) {
    return state.popis(DeviceRole::mac, now).czech();
}

TEST(MacAvailability, HasWordsForEveryState) {
    using M = MacAvailability;
    EXPECT_EQ(words({M::NeplatneParovani{Sentence("klíč zmizel")}}), "Párování neplatí — klíč zmizel");
    EXPECT_EQ(words({M::Preruseno{Sentence("síť")}}), "Spojení přerušeno — síť");
    EXPECT_EQ(words({M::Zaneprazdneny{"Codex"}}), "Pracuje: Codex");
    EXPECT_EQ(words({M::Nesparovano{}}), "Nespárováno");
    EXPECT_EQ(words({M::Offline{}}), "Mac není připojený");
    EXPECT_EQ(words({M::Pripraveny{}}), "Připraven");
}

TEST(MacAvailability, NumbersTheAttemptsFromTheSecondOn) {
    EXPECT_EQ(words({MacAvailability::Pripojuji{0, 0}}), "Připojuji…");
    EXPECT_EQ(words({MacAvailability::Pripojuji{1, 0}}), "Připojuji…");
    EXPECT_EQ(words({MacAvailability::Pripojuji{2, 1.5}}), "Připojuji… (2. pokus)");
}

TEST(MacAvailability, SleepsForWholeMinutesAndAtLeastOne) {
    for (const auto& [slept, minutes] :
         {std::pair{10s, "1"}, {119s, "1"}, {120s, "2"}, {3600s, "60"}, {0s, "1"}, {-600s, "1"}})
        EXPECT_EQ(words({MacAvailability::Spanek{now - slept}}),
                  "Mac spí (" + std::string{minutes} + " min)");
}

TEST(MacAvailability, IsUsableWhenReadyOrBusyAlone) {
    using M = MacAvailability;
    EXPECT_TRUE(M{M::Pripraveny{}}.jePouzitelny());
    EXPECT_TRUE(M{M::Zaneprazdneny{}}.jePouzitelny());
    for (const auto& state : {M{M::NeplatneParovani{}}, M{M::Spanek{}}, M{M::Pripojuji{}}, M{M::Preruseno{}},
                              M{M::Nesparovano{}}, M{M::Offline{}}})
        EXPECT_FALSE(state.jePouzitelny());
}

} // namespace
} // namespace morvex
