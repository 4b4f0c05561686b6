#include "tests/app/ui/ShownCompanion.h"

#include <algorithm>
#include <filesystem>

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// What the rows say, to the letter: the pictures do not see another digit.
class ValuesInCardsTest : public ShownCompanion {
  protected:
    /// What a screen reader adds to the name of this control.
    std::string descriptionOf(const std::string& control) {
        std::string found = "no such control";
        walk(window(), [&](QAccessibleInterface* node) {
            if (isControl(node) && node->text(QAccessible::Name).toStdString() == control)
                found = node->text(QAccessible::Description).toStdString();
        });
        return found;
    }

    std::ptrdiff_t timesTold(const std::string& text) {
        return std::ranges::count(names(QAccessible::StaticText), text);
    }

    /// The clock of the tests stands at 15 January 2027, 8:00 UTC.
    void goToNextDay() { clock.setWallClock(clock.now() + 26h); }
};

TEST_F(ValuesInCardsTest, OnlyTheFolderWhoseBookmarkDoesNotWorkIsMarked) {
    const auto stale = (temporary.path() / "stará").string();
    std::filesystem::create_directory(stale);
    defaults.set("slozky.povolene", std::vector<DefaultsItem>{stale});
    start();
    allowFolder("nová");
    openUi();
    const auto texts = names(QAccessible::StaticText);
    const std::string mark = "Vyžaduje znovu povolit";
    EXPECT_EQ(std::ranges::count(texts, mark), 1);
    const auto row = std::ranges::find(texts, stale);
    ASSERT_LT(row + 1, texts.end());
    EXPECT_EQ(row[1], mark);
}

TEST_F(ValuesInCardsTest, APhoneHasTheDateOfItsConfirmation) {
    startPaired();
    openUi();
    EXPECT_EQ(timesTold("Potvrzeno 14.11.23 22:13"), 1);
}

TEST_F(ValuesInCardsTest, ACodeHasTheTimeOfItsExpiry) {
    start();
    openUi();
    showState({StavParovani::CekamNaTelefon{"{}", clock.now() + 5min}});
    EXPECT_EQ(
        timesTold("Kód platí do 8:05:00. Po vypršení si nech zobrazit nový — krátká platnost je záměr."), 1);
}

TEST_F(ValuesInCardsTest, ANoteHasTheDateOfItsLastChange) {
    start();
    (void)ended(features->records.poznamky().vytvorit("Nákup", "Mléko"));
    goToNextDay();
    (void)ended(features->records.poznamky().upravit("Nákup", {}, "Chléb"));
    goToNextDay();
    openUi();
    const std::string changed = "Upraveno 16.01.27 10:00";
    EXPECT_EQ(descriptionOf("Nákup"), changed);
    press("Nákup");
    EXPECT_EQ(timesTold(changed), 1) << "in the sheet";
}

TEST_F(ValuesInCardsTest, ASummaryHasTheDateOfItsMaking) {
    start();
    const auto made = clock.now();
    (void)ended(features->records.souhrny().prijmout(
        {random.uuid(), "Týden 2", "Dvě schůzky.", made, made - 168h, made - 24h, {}, 1}));
    goToNextDay();
    openUi();
    const std::string date = "Upraveno 15.01.27 8:00";
    EXPECT_EQ(descriptionOf("Týden 2"), date);
    press("Týden 2");
    EXPECT_EQ(timesTold(date), 1) << "in the sheet";
    EXPECT_EQ(timesTold("08.01.27 8:00 – 14.01.27 8:00"), 1) << "the period that it is about";
}

TEST_F(ValuesInCardsTest, AnEmptyFieldOfTheRelayHintsAtHttps) {
    start();
    openUi();
    type("Relay", "");
    EXPECT_EQ(descriptionOf("Relay"), "https://relay.example.com");
}

TEST_F(ValuesInCardsTest, TheRowOfTheRelayNamesThePhonesOneAndWithoutAPhoneTheNextOne) {
    startPaired();
    companion->setRelayAdresa("https://jina.example");
    openUi();
    EXPECT_EQ(timesTold("Relay: http://relay.example"), 1);
    companion->stav().protejsek = std::nullopt;
    settle();
    EXPECT_EQ(timesTold("Relay: https://jina.example"), 1);
}

TEST_F(ValuesInCardsTest, OnlyAppsThatAnsweredCountAsConnected) {
    startSecured();
    openUi();
    addApps();
    EXPECT_EQ(descriptionOf("Vlastní aplikace"), "2 připojeno · 3 nástrojů");
    features->customApps.service().refreshSoon();
    settle();
    EXPECT_EQ(descriptionOf("Vlastní aplikace"), "0 připojeno · 0 nástrojů") << "nobody answers any more";
}

TEST_F(ValuesInCardsTest, AnAgentIsSaidToBeInstalledExactlyWhenItIs) {
    start();
    openUi();
    const AgentStatus present{true, "2.1.0", "/usr/bin/claude", {}};
    const AgentStatus missing{false, {}, {}, {}};
    auto& agents = features->agents.stav();
    for (bool codex : {true, false}) {
        agents.codex = codex ? present : missing;
        agents.claude = codex ? missing : present;
        settle();
        EXPECT_EQ(descriptionOf("Codex"), codex ? "Nainstalováno" : "Nenainstalováno");
        EXPECT_EQ(descriptionOf("Claude Code"), codex ? "Nenainstalováno" : "Nainstalováno");
    }
}

} // namespace
} // namespace morvex
