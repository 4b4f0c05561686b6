#include "tests/app/console/ConsoleFixture.h"

namespace morvex {
namespace {

class ConsoleAppsTest : public ConsoleFixture {
  protected:
    using Lines = std::vector<std::string>;
    using Typing = ConsoleQuestions::Typing;

    /// Types a new app; returns what follows the last answer.
    Lines add(const std::string& name, const std::string& address, const std::string& token) {
        type("aplikace-pridat");
        type(name);
        type(address);
        return type(token);
    }

    /// The next app that is asked names this tool.
    void lend(const std::string& tool, const std::string& description) {
        http.replies.push_back(
            {200,
             R"({"result":{"tools":[{"name":")" + tool + R"(","description":")" + description + R"("}]}})",
             {}});
    }

    MacCustomAppsService& apps() { return features->customApps.service(); }

    void takeFromPhone(std::vector<CompanionCustomApp> list) {
        executor.run(apps().replacePhoneApps(std::move(list)));
    }
};

TEST_F(ConsoleAppsTest, AnAppIsAskedForLineByLineAndItsTokenIsNotShown) {
    startShell();
    EXPECT_EQ(type("aplikace"), Lines{"Žádné vlastní aplikace. Přidá je „aplikace-pridat“."});
    EXPECT_EQ(type("aplikace-pridat"), Lines{"Název nové aplikace? Prázdný řádek přidávání zruší."});
    EXPECT_EQ(type("  Počasí "), Lines{"Adresa služby MCP? Začíná https://."});
    EXPECT_TRUE(typings.empty());
    EXPECT_EQ(type("https://apps.example"), Lines{"Přístupový token? Není povinný."});
    EXPECT_EQ(typings, std::vector{Typing::hidden});
    EXPECT_EQ(type("secret"), Lines{"Přidáno: Počasí"});
    EXPECT_EQ(typings, (std::vector{Typing::hidden, Typing::shown}));
    ASSERT_EQ(apps().apps().size(), 1U);
    const auto token = vault.items.find({Keychain::service, "custom.app." + apps().apps()[0].id + ".token"});
    ASSERT_NE(token, vault.items.end());
    EXPECT_EQ(asText(token->second), "secret");
    EXPECT_EQ(type("aplikace"), (Lines{"Aplikace 1: Počasí, https://apps.example, zapnutá, přidaná na Macu",
                                       "  Nepřipojeno: síť neodpovídá"}));
}

TEST_F(ConsoleAppsTest, AnAppNeedsNoToken) {
    startShell();
    EXPECT_EQ(add("Počasí", "https://apps.example", ""), Lines{"Přidáno: Počasí"});
}

TEST_F(ConsoleAppsTest, AnswersAreNoCommands) {
    startShell();
    EXPECT_EQ(add("stav", "https://apps.example", "konec"), Lines{"Přidáno: stav"});
    EXPECT_EQ(quits, 0);
}

TEST_F(ConsoleAppsTest, AnEmptyNameOrAddressGivesUp) {
    startShell();
    type("aplikace-pridat");
    EXPECT_EQ(type(""), Lines{"Nic jsem nepřidal."});
    type("aplikace-pridat");
    type("Počasí");
    EXPECT_EQ(type("  "), Lines{"Nic jsem nepřidal."});
    EXPECT_TRUE(apps().apps().empty());
    EXPECT_FALSE(type("pomoc").empty()) << "the next line is a command again";
}

TEST_F(ConsoleAppsTest, AnAddressThatCannotBeUsedIsTold) {
    startShell();
    EXPECT_EQ(add("Počasí", "http://apps.example", ""),
              Lines{"Potíž: Adresa vlastní aplikace musí být platné HTTPS."});
    EXPECT_TRUE(apps().apps().empty());
}

TEST_F(ConsoleAppsTest, SwitchesAndRemovesByNameInAnyCase) {
    startShell();
    add("Počasí", "https://apps.example", "");
    EXPECT_EQ(type("aplikace vyp POCASI"), Lines{"Vypnuto: Počasí"});
    EXPECT_FALSE(apps().apps()[0].enabled);
    EXPECT_EQ(type("aplikace zap počasí"), Lines{"Zapnuto: Počasí"});
    EXPECT_TRUE(apps().apps()[0].enabled);
    EXPECT_EQ(type("aplikace odebrat Počasí"), Lines{"Odebráno: Počasí"});
    EXPECT_TRUE(apps().apps().empty());
}

TEST_F(ConsoleAppsTest, AnAppOfThePhoneIsOnlySwitched) {
    startShell();
    takeFromPhone({{"p1", "Domov", "https://home.example", ""}});
    EXPECT_EQ(type("aplikace odebrat Domov"),
              Lines{"Aplikaci z iPhonu tu jde jen vypnout: „aplikace vyp Domov“."});
    EXPECT_EQ(type("aplikace vyp Domov"), Lines{"Vypnuto: Domov"});
    EXPECT_EQ(type("aplikace"),
              Lines{"Aplikace 1: Domov, https://home.example, vypnutá, synchronizovaná z iPhonu"})
        << "an app that is off is not asked";
}

TEST_F(ConsoleAppsTest, OfTwoAppsWithOneNameTheAddressTellsWhich) {
    startShell();
    add("Domov", "https://one.example", "");
    add("domov", "https://two.example", "");
    EXPECT_EQ(type("aplikace vyp Domov"),
              Lines{"Aplikací „Domov“ je tu víc. Napiš místo názvu číslo ze seznamu."});
    EXPECT_EQ(type("aplikace vyp https://two.example"), Lines{"Vypnuto: domov"});
    EXPECT_TRUE(apps().apps()[0].enabled);
    EXPECT_FALSE(apps().apps()[1].enabled);
}

TEST_F(ConsoleAppsTest, AnAppIsFoundByItsNumber) {
    startShell();
    add("Domov", "https://same.example", "");
    takeFromPhone({{"p1", "Domov", "https://same.example", ""}});
    EXPECT_EQ(type("aplikace vyp https://same.example"),
              Lines{"Aplikací „https://same.example“ je tu víc. Napiš místo názvu číslo ze seznamu."});
    EXPECT_EQ(type("aplikace vyp 2"), Lines{"Vypnuto: Domov"});
    EXPECT_TRUE(apps().apps()[0].enabled);
    EXPECT_FALSE(apps().apps()[1].enabled);
    EXPECT_EQ(type("aplikace vyp 3"), Lines{"Aplikace „3“ tu není. Seznam ukáže „aplikace“."});
}

TEST_F(ConsoleAppsTest, TellsWhatCameOfAskingAndAsksAgain) {
    startShell();
    lend("now", "Says");
    add("Počasí", "https://apps.example", "");
    EXPECT_TRUE(hasLine(type("aplikace"), "  Připojeno · 1 nástrojů · 0 ms"));
    EXPECT_EQ(type("aplikace znovu"), Lines{"Ptám se aplikací znovu. Výsledek ukáže „aplikace“."});
    EXPECT_TRUE(hasLine(type("aplikace"), "  Nepřipojeno: síť neodpovídá"));
}

TEST_F(ConsoleAppsTest, ChangesOfToolsAreShownAndThenMarkedAsSeen) {
    startShell();
    lend("now", "Says");
    add("Počasí", "https://apps.example", "");
    EXPECT_EQ(type("aplikace zmeny Počasí"), Lines{"Od posledního pohledu se nic nezměnilo."});
    EXPECT_EQ(type("aplikace videl Počasí"), Lines{"Nejdřív si je prohlédni: „aplikace zmeny Počasí“."});
    lend("now", "Sends");
    type("aplikace znovu");
    EXPECT_TRUE(
        hasLine(type("aplikace"), "  Změněné nebo nové nástroje: 1. Ukáže je „aplikace zmeny Počasí“."));
    const auto told = type("aplikace zmeny Počasí");
    EXPECT_TRUE(hasLine(told, "Změněný nástroj: now"));
    EXPECT_EQ(told.size(), 4U);
    EXPECT_EQ(type("aplikace videl Počasí"), Lines{"Poznamenáno: Počasí"});
    EXPECT_EQ(apps().apps()[0].news, 0U);
}

TEST_F(ConsoleAppsTest, ChangedToolsWaitWhereThatIsWanted) {
    startShell();
    lend("now", "Says");
    add("Počasí", "https://apps.example", "");
    lend("now", "Sends");
    EXPECT_EQ(type("aplikace hlidat Počasí"), Lines{"Změněné a nové nástroje čekají, až je uvidíš: Počasí"});
    EXPECT_TRUE(hasLine(type("aplikace"), "  Připojeno · 0 nástrojů · 1 čeká na schválení · 0 ms"));
    lend("now", "Sends");
    EXPECT_EQ(type("aplikace nehlidat Počasí"), Lines{"Změněné a nové nástroje nečekají: Počasí"});
    EXPECT_TRUE(hasLine(type("aplikace"), "  Připojeno · 1 nástrojů · 0 ms"));
}

TEST_F(ConsoleAppsTest, WhatIsNotUnderstoodIsTold) {
    startShell();
    const std::string usage = "Správně: aplikace zap|vyp|odebrat|zmeny|videl|hlidat|nehlidat NÁZEV, znovu";
    EXPECT_EQ(type("aplikace zap"), Lines{usage});
    EXPECT_EQ(type("aplikace smaž Domov"), Lines{usage});
    EXPECT_EQ(type("aplikace zap Nikdo"), Lines{"Aplikace „Nikdo“ tu není. Seznam ukáže „aplikace“."});
}

} // namespace
} // namespace morvex
