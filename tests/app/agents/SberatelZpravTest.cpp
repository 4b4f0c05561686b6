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
    SberatelZprav collector;
    collector.add({.relace = "s1", .prubeh = "p", .text = "t1", .zaver = "z1", .chyba = Sentence("c1")});
    collector.add({.relace = "", .prubeh = {}, .text = "t2", .zaver = {}, .chyba = Sentence("")});
    collector.add({.relace = "s2", .prubeh = {}, .text = "", .zaver = "", .chyba = Sentence("c2")});
    VysledekProcesu vysledek;
    vysledek.navratovyKod = 3;
    auto prubeh = collector.prubeh(vysledek);
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
    SberatelZprav collector;
    auto add = [&](std::optional<std::string> id) { return collector.add(session(std::move(id))); };
    EXPECT_EQ(add({}), Relace::known);
    EXPECT_EQ(add(""), Relace::known);
    EXPECT_EQ(add("a"), Relace::fresh);
    EXPECT_EQ(add("a"), Relace::known);
    EXPECT_EQ(add({}), Relace::known);
    EXPECT_EQ(add("b"), Relace::fresh);
    EXPECT_EQ(add("a"), Relace::known) << "it was told before";
    EXPECT_EQ(add({}), Relace::known);
    EXPECT_EQ(collector.prubeh({}).relace, "a") << "the latest is the one that goes on";
}

TEST(SberatelZprav, AnAgentThatInventsSessionsIsNoNewsAnyMore) {
    SberatelZprav collector;
    std::size_t news = 0;
    for (int i = 0; i < 1000; ++i)
        if (collector.add(session(std::to_string(i))) == Relace::fresh) ++news;
    EXPECT_EQ(news, SberatelZprav::mostSessions);
    EXPECT_EQ(collector.prubeh({}).relace, "999");
}

} // namespace
} // namespace morvex
