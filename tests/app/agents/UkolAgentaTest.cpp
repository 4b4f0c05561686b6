#include "app/agents/UkolAgenta.h"

#include "app/agents/AgentId.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

UkolAgenta example() {
    UkolAgenta ukol;
    ukol.id = Uuid::parse("00000000-0000-4000-8000-0000000000AA").value();
    ukol.workItemID = Uuid::parse("00000000-0000-4000-8000-0000000000BB").value();
    ukol.conversationID = Uuid::parse("00000000-0000-4000-8000-0000000000CC").value();
    ukol.nastroj = "codex";
    ukol.nazev = "Testy";
    ukol.instrukce = "Oprav testy";
    ukol.slozka = "/home/jana/Projekty";
    ukol.zalozeno = dateFromSeconds(1'800'000'000);
    ukol.aktualizovano = dateFromSeconds(1'800'000'060);
    ukol.revize = 3;
    return ukol;
}

TEST(UkolAgenta, ThePhoneIsToldOfItAsAWorkItem) {
    auto ukol = example();
    ukol.stav = UkolAgenta::Stav::hotovo;
    ukol.shrnuti = "Hotovo.";
    ukol.relace = "r1";
    WorkItem item{ukol.workItemID,
                  ukol.conversationID,
                  "Testy",
                  "Oprav testy",
                  "Hotovo.",
                  WorkItemStatus::completed,
                  std::nullopt,
                  std::nullopt,
                  WorkItemSource::mac,
                  ukol.zalozeno,
                  ukol.aktualizovano,
                  3,
                  AgentContinuation{"codex", "r1", "Projekty"}};
    EXPECT_EQ(asWorkItem(ukol), item);
}

TEST(UkolAgenta, WithoutASessionThereIsNothingToContinue) {
    EXPECT_FALSE(asWorkItem(example()).agent);
}

TEST(UkolAgenta, EveryStateHasItsWordForThePhone) {
    const std::vector<std::pair<UkolAgenta::Stav, WorkItemStatus>> rows{
        {UkolAgenta::Stav::bezi, WorkItemStatus::inProgress},
        {UkolAgenta::Stav::hotovo, WorkItemStatus::completed},
        {UkolAgenta::Stav::chyba, WorkItemStatus::failed},
        {UkolAgenta::Stav::preruseno, WorkItemStatus::interrupted},
    };
    for (const auto& [stav, status] : rows) {
        auto ukol = example();
        ukol.stav = stav;
        ukol.chyba = Sentence("Nejde to.");
        EXPECT_EQ(asWorkItem(ukol).status, status);
        EXPECT_EQ(asWorkItem(ukol).lastError, "Nejde to.");
    }
}

TEST(AgentId, NamesThatPeopleUseAreOneKey) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"claude", "claude-code"},
        {"Claude Code", "claude-code"},
        {"CLAUDE-CODE", "claude-code"},
        {"codex", "codex"},
        {"Codex CLI", "codex"},
        {"můj Codex", "codex"},
        {"claude i codex", "claude-code"},
        {"Jiný", "Jiný"},
        {"", ""},
    };
    for (const auto& [name, id] : rows) EXPECT_EQ(AgentId::normalized(name), id) << name;
}

} // namespace
} // namespace morvex
