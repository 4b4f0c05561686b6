#include "app/agents/SberatelZprav.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

using Relace = SberatelZprav::Relace;

ZpravaAgenta session(std::optional<std::string> id) {
    ZpravaAgenta zprava;
    zprava.relace = std::move(id);
    return zprava;
}

TEST(SberatelZprav, KeepsTheLatestOfEachKindThatIsNotEmpty) {
    SberatelZprav sberatel;
    sberatel.pridej({.relace = "s1", .prubeh = "p", .text = "t1", .zaver = "z1", .chyba = Sentence("c1")});
    sberatel.pridej({.relace = "", .prubeh = {}, .text = "t2", .zaver = {}, .chyba = Sentence("")});
    sberatel.pridej({.relace = "s2", .prubeh = {}, .text = "", .zaver = "", .chyba = Sentence("c2")});
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

TEST(SberatelZprav, TellsOfASessionOnceARun) {
    SberatelZprav sberatel;
    auto add = [&](std::optional<std::string> id) { return sberatel.pridej(session(std::move(id))); };
    EXPECT_EQ(add({}), Relace::znama);
    EXPECT_EQ(add(""), Relace::znama);
    EXPECT_EQ(add("a"), Relace::nova);
    EXPECT_EQ(add("a"), Relace::znama);
    EXPECT_EQ(add({}), Relace::znama);
    EXPECT_EQ(add("b"), Relace::nova);
    EXPECT_EQ(add("a"), Relace::znama) << "it was told before";
    EXPECT_EQ(add({}), Relace::znama);
    EXPECT_EQ(sberatel.prubeh({}).relace, "a") << "the latest is the one that goes on";
}

TEST(SberatelZprav, AnAgentThatInventsSessionsIsNoNewsAnyMore) {
    SberatelZprav sberatel;
    std::size_t news = 0;
    for (int i = 0; i < 1000; ++i)
        if (sberatel.pridej(session(std::to_string(i))) == Relace::nova) ++news;
    EXPECT_EQ(news, SberatelZprav::mostSessions);
    EXPECT_EQ(sberatel.prubeh({}).relace, "999");
}

} // namespace
} // namespace morvex
