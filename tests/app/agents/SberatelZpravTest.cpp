#include "app/agents/SberatelZprav.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

using Relace = SberatelZprav::Relace;

TEST(SberatelZprav, KeepsTheLatestOfEachKindThatIsNotEmpty) {
    SberatelZprav sberatel;
    sberatel.pridej({.relace = "s1", .prubeh = "p", .text = "t1", .zaver = "z1", .chyba = "c1"});
    sberatel.pridej({.relace = "", .prubeh = {}, .text = "t2", .zaver = {}, .chyba = ""});
    sberatel.pridej({.relace = "s2", .prubeh = {}, .text = "", .zaver = "", .chyba = "c2"});
    VysledekProcesu vysledek;
    vysledek.navratovyKod = 3;
    auto prubeh = sberatel.prubeh(vysledek);
    EXPECT_EQ(prubeh.relace, "s2");
    EXPECT_EQ(prubeh.posledniText, "t2");
    EXPECT_EQ(prubeh.zaver, "z1");
    EXPECT_EQ(prubeh.chyba, "c2");
    EXPECT_EQ(prubeh.vysledek.navratovyKod, 3);
    EXPECT_FALSE(prubeh.navazaniSelhalo);
}

TEST(SberatelZprav, HoldsNothingAtFirst) {
    auto prubeh = SberatelZprav().prubeh({});
    EXPECT_FALSE(prubeh.relace || prubeh.posledniText || prubeh.zaver || prubeh.chyba);
}

TEST(SberatelZprav, TellsWhetherASessionIsNew) {
    SberatelZprav sberatel;
    auto add = [&](std::optional<std::string> id) {
        ZpravaAgenta zprava;
        zprava.relace = std::move(id);
        return sberatel.pridej(zprava);
    };
    EXPECT_EQ(add({}), Relace::znama);
    EXPECT_EQ(add(""), Relace::znama);
    EXPECT_EQ(add("a"), Relace::nova);
    EXPECT_EQ(add("a"), Relace::znama);
    EXPECT_EQ(add({}), Relace::znama);
    EXPECT_EQ(add("b"), Relace::nova);
    EXPECT_EQ(add("a"), Relace::nova);
}

} // namespace
} // namespace morvex
