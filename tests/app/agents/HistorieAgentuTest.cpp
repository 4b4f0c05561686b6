#include "app/agents/HistorieAgentu.h"

#include "shared/wire/Json.h"
#include "tests/app/agents/HistoryFixture.h"

#include <functional>
#include <thread>

namespace morvex {
namespace {

using namespace std::chrono_literals;

class HistorieAgentuTest : public HistoryFixture {
  protected:
    HistorieAgentuTest() { load(); }

    static Uuid unknown() { return Uuid::parse("99999999-0000-4000-8000-000000000000").value(); }
};

TEST_F(HistorieAgentuTest, ANewTaskRunsUndeliveredUnderItsOwnId) {
    auto ukol = begin({{}, unknown(), "codex", {}, "  Oprav testy \n a hotovo", "/home/jana/Projekty"});
    EXPECT_EQ(ukol.workItemID, ukol.id);
    EXPECT_EQ(ukol.conversationID, unknown());
    EXPECT_EQ(ukol.nazev, "Oprav testy");
    EXPECT_EQ(ukol.instrukce, "  Oprav testy \n a hotovo");
    EXPECT_EQ(ukol.stav, UkolAgenta::Stav::bezi);
    EXPECT_EQ(Date(ukol.zalozeno), clock.now());
    EXPECT_EQ(ukol.aktualizovano, ukol.zalozeno);
    EXPECT_EQ(ukol.revize, 1U);
    EXPECT_EQ(ukol.dorucenaRevize, 0U);
    EXPECT_EQ(historie->polozky(), std::vector{ukol});
    EXPECT_EQ(historie->nedorucene(), std::vector{ukol});
}

TEST_F(HistorieAgentuTest, AGivenNameWinsUnlessItIsBlank) {
    EXPECT_EQ(begin({{}, {}, "codex", " Testy ", "Oprav testy", "/p"}).nazev, "Testy");
    EXPECT_EQ(begin({{}, {}, "codex", " \n", "Oprav testy", "/p"}).nazev, "Oprav testy");
    EXPECT_EQ(begin("codex", "").nazev, "");
    EXPECT_EQ(begin("codex", " \n\n Oprav testy \n a hotovo").nazev, "Oprav testy")
        << "the first line that says something";
}

TEST_F(HistorieAgentuTest, AWorkItemGoesOnUnderItsIdAndSession) {
    auto first = begin("codex", "Oprav testy");
    begin("codex", "Jiné");
    historie->dokonci(first.workItemID, "Hotovo.", "relace-1");
    auto before = historie->ukol(first.workItemID).value();

    auto again = begin({first.workItemID, unknown(), "codex", {}, "A ještě dokumentaci", "/p"});
    EXPECT_EQ(again.id, first.id);
    EXPECT_EQ(again.relace, "relace-1");
    EXPECT_EQ(again.nazev, "Oprav testy");
    EXPECT_EQ(again.instrukce, "A ještě dokumentaci");
    EXPECT_EQ(again.conversationID, unknown());
    EXPECT_EQ(again.stav, UkolAgenta::Stav::bezi);
    EXPECT_FALSE(again.dokonceno || again.shrnuti || again.chyba);
    EXPECT_EQ(again.revize, before.revize + 1);
    EXPECT_EQ(again.zalozeno, first.zalozeno);
    EXPECT_EQ(Date(again.aktualizovano), clock.now());
    ASSERT_EQ(historie->polozky().size(), 2U);
    EXPECT_EQ(historie->polozky().front(), again);
    EXPECT_EQ(begin({first.workItemID, {}, "codex", "Jiný název", "x", "/p"}).nazev, "Jiný název");
}

TEST_F(HistorieAgentuTest, AWorkItemThatGoesOnInAnotherFolderBelongsThere) {
    auto first = begin("codex", "Oprav testy", "/p");
    historie->nastavRelaci(first.workItemID, "r1");
    EXPECT_EQ(begin({first.workItemID, {}, "codex", {}, "Dál", "/jinde"}).slozka, "/jinde");
    EXPECT_EQ(historie->relaceProSlozku("codex", "/jinde"), "r1") << "a later instruction there continues it";
    EXPECT_FALSE(historie->relaceProSlozku("codex", "/p"));
}

TEST_F(HistorieAgentuTest, AGivenUnknownWorkItemIsTheNameOfTheNewTask) {
    auto ukol = begin({unknown(), {}, "codex", {}, "Oprav testy", "/p"});
    EXPECT_EQ(ukol.workItemID, unknown());
    EXPECT_NE(ukol.id, unknown());
}

TEST_F(HistorieAgentuTest, WhatIsNoNameOfASessionIsNotKept) {
    auto id = begin("codex", "1", "/p").workItemID;
    historie->nastavRelaci(id, "r1");
    auto before = historie->ukol(id).value();
    for (const auto& none :
         {std::string("--dangerous"), std::string(), std::string(513, 'x'), std::string("a\nb")}) {
        historie->nastavRelaci(id, none);
        EXPECT_FALSE(historie->prijmiPokracovani({id, {}, {}}, none));
    }
    EXPECT_EQ(historie->ukol(id), before);
    historie->dokonci(id, "Hotovo.", "-");
    EXPECT_EQ(historie->ukol(id)->relace, "r1");
}

TEST_F(HistorieAgentuTest, WithAnIdOnlyThatTaskIsMeant) {
    auto older = begin("codex", "1", "/home/jana/Ukázka");
    begin("claude-code", "2", "/home/jana/Projekty");
    EXPECT_EQ(historie->renameTask({older.workItemID, "claude", "Projekty"}, "Úklid")->id, older.id);
    EXPECT_EQ(historie->prijmiPokracovani({older.workItemID, "claude", "Projekty"}, "r")->id, older.id);
}

TEST_F(HistorieAgentuTest, OfFoldersOfOneNameTheOneAtThePathIsMeant) {
    auto inFirst = begin("codex", "1", "/a/projekt");
    auto inSecond = begin("codex", "2", "/b/projekt");
    EXPECT_EQ(historie->renameTask({{}, {}, "projekt", "/a/projekt"}, "Úklid")->id, inFirst.id);
    EXPECT_EQ(historie->renameTask({{}, {}, "b/projekt", "/b/projekt"}, "Úklid")->id, inSecond.id);
    EXPECT_EQ(historie->renameTask({{}, {}, "projekt", "/c/projekt"}, "Úklid")->id, inSecond.id)
        << "no task ran there, so the name alone counts";
    EXPECT_FALSE(historie->renameTask({{}, {}, "c/projekt", "/c/projekt"}, "Úklid"));
    EXPECT_FALSE(historie->renameTask({{}, "claude", "projekt", "/a/projekt"}, "Úklid"));
}

TEST_F(HistorieAgentuTest, QuirkAWorkItemIsReusedOnlyWithTheSameTool) {
    auto first = begin("codex", "Oprav testy");
    auto other = begin({first.workItemID, {}, "claude-code", {}, "Oprav testy", "/p"});
    EXPECT_NE(other.id, first.id);
    EXPECT_EQ(other.workItemID, first.workItemID);
    EXPECT_EQ(other.revize, 1U);
    EXPECT_EQ(historie->polozky().size(), 2U);
    EXPECT_EQ(historie->ukol(first.workItemID), other);
}

TEST_F(HistorieAgentuTest, EveryEndRaisesTheRevision) {
    struct Row {
        const char* name;
        std::function<void(const Uuid&)> end;
        UkolAgenta::Stav stav;
        std::optional<std::string> shrnuti, chyba, relace;
    };

    const std::vector<Row> rows{
        {"done", [&](const Uuid& id) { historie->dokonci(id, "Hotovo.", "r2"); }, UkolAgenta::Stav::hotovo,
         "Hotovo.", std::nullopt, "r2"},
        {"done without a session", [&](const Uuid& id) { historie->dokonci(id, "Hotovo.", {}); },
         UkolAgenta::Stav::hotovo, "Hotovo.", std::nullopt, "r1"},
        {"failed", [&](const Uuid& id) { historie->selhal(id, Sentence("Nejde to.")); },
         UkolAgenta::Stav::chyba, std::nullopt, "Nejde to.", "r1"},
        {"interrupted", [&](const Uuid& id) { historie->preruseno(id); }, UkolAgenta::Stav::preruseno,
         std::nullopt, std::nullopt, "r1"},
    };
    for (const auto& row : rows) {
        auto id = begin("codex", row.name).workItemID;
        historie->nastavRelaci(id, "r1");
        EXPECT_EQ(historie->ukol(id)->revize, 2U) << row.name;
        clock.advance(5s);
        row.end(id);
        auto ukol = historie->ukol(id).value();
        EXPECT_EQ(ukol.stav, row.stav) << row.name;
        EXPECT_EQ(ukol.shrnuti, row.shrnuti) << row.name;
        EXPECT_EQ(ukol.chyba, row.chyba) << row.name;
        EXPECT_EQ(ukol.relace, row.relace) << row.name;
        EXPECT_EQ(ukol.dokonceno, NumericDate(clock.now())) << row.name;
        EXPECT_EQ(Date(ukol.aktualizovano), clock.now()) << row.name;
        EXPECT_EQ(ukol.revize, 3U) << row.name;
    }
}

TEST_F(HistorieAgentuTest, AGoodEndAndAnInterruptionTakeTheErrorAway) {
    auto id = begin("codex", "1").workItemID;
    historie->selhal(id, Sentence("Nejde to."));
    historie->dokonci(id, "Hotovo.", {});
    EXPECT_EQ(historie->ukol(id)->chyba, std::nullopt);
    historie->selhal(id, Sentence("Nejde to."));
    historie->preruseno(id);
    EXPECT_EQ(historie->ukol(id)->chyba, std::nullopt);
}

TEST_F(HistorieAgentuTest, AnUnknownWorkItemIsIgnored) {
    auto before = begin("codex", "Oprav testy");
    int changes = 0;
    const auto connection = historie->priZmene([&changes] { ++changes; });
    historie->nastavRelaci(unknown(), "r");
    historie->dokonci(unknown(), "x", "r");
    historie->selhal(unknown(), Sentence("x"));
    historie->preruseno(unknown());
    historie->potvrd(unknown(), 5);
    EXPECT_FALSE(historie->prijmiPokracovani({unknown(), {}, {}}, "r"));
    EXPECT_FALSE(historie->renameTask({unknown(), "codex", "Projekty"}, "Název"));
    EXPECT_FALSE(historie->ukol(unknown()));
    EXPECT_EQ(historie->polozky(), std::vector{before});
    EXPECT_EQ(changes, 0);
}

TEST_F(HistorieAgentuTest, AnAcknowledgementNeitherRunsAheadNorTakesBack) {
    auto id = begin("codex", "Oprav testy").workItemID;
    historie->nastavRelaci(id, "r1");
    historie->potvrd(id, 1);
    EXPECT_EQ(historie->ukol(id)->dorucenaRevize, 1U);
    EXPECT_EQ(historie->nedorucene().size(), 1U);
    historie->potvrd(id, 99);
    EXPECT_EQ(historie->ukol(id)->dorucenaRevize, 2U);
    historie->potvrd(id, 1);
    EXPECT_EQ(historie->ukol(id)->dorucenaRevize, 2U);
    EXPECT_TRUE(historie->nedorucene().empty());
    EXPECT_EQ(historie->ukol(id)->revize, 2U) << "a delivery is no change of the task";
    load();
    EXPECT_EQ(historie->ukol(id)->dorucenaRevize, 2U);
}

TEST_F(HistorieAgentuTest, AnAcknowledgementIsMeantForTheTaskThatCanHaveSentIt) {
    auto id = begin("codex", "Oprav testy").workItemID;
    for (int revision = 2; revision <= 6; ++revision) historie->nastavRelaci(id, "r1");
    begin({id, {}, "claude-code", {}, "Oprav testy", "/p"});
    auto delivered = [this] {
        std::vector<std::uint64_t> all;
        for (const auto& ukol : historie->polozky()) all.push_back(ukol.dorucenaRevize);
        return all;
    };
    using Revisions = std::vector<std::uint64_t>;
    historie->potvrd(id, 5);
    EXPECT_EQ(delivered(), (Revisions{0, 5})) << "the new task has no revision 5";
    historie->potvrd(id, 1);
    EXPECT_EQ(delivered(), (Revisions{1, 5}));
    historie->nastavRelaci(id, "r2");
    historie->potvrd(id, 6);
    EXPECT_EQ(delivered(), (Revisions{1, 6}));
    historie->potvrd(id, 99);
    EXPECT_EQ(delivered(), (Revisions{2, 6}));
    EXPECT_TRUE(historie->nedorucene().empty());
}

TEST_F(HistorieAgentuTest, AnAcknowledgementThatSaysNothingNewIsNoChange) {
    auto id = begin("codex", "Oprav testy").workItemID;
    historie->potvrd(id, 1);
    int changes = 0;
    const auto connection = historie->priZmene([&changes] { ++changes; });
    historie->potvrd(id, 1);
    EXPECT_EQ(changes, 0);
}

TEST_F(HistorieAgentuTest, UndeliveredTasksStandInTheOrderOfTheList) {
    auto first = begin("codex", "1");
    auto second = begin("codex", "2");
    auto third = begin("codex", "3");
    historie->potvrd(second.workItemID, 1);
    EXPECT_EQ(historie->nedorucene(), (std::vector{third, first}));
}

TEST_F(HistorieAgentuTest, TheFiftyFirstTaskPushesOutTheOldest) {
    auto oldest = begin("codex", "0");
    auto second = begin("codex", "1");
    for (int i = 2; i <= 50; ++i) begin("codex", std::to_string(i));
    EXPECT_EQ(historie->polozky().size(), 50U);
    EXPECT_EQ(parseJson(written()).value().as_array().size(), 50U) << "the file holds no more either";
    EXPECT_EQ(historie->polozky().front().nazev, "50");
    EXPECT_FALSE(historie->ukol(oldest.workItemID));
    EXPECT_TRUE(historie->ukol(second.workItemID));
}

TEST_F(HistorieAgentuTest, ASessionIsLookedUpByWorkItemOrByFolder) {
    auto first = begin("codex", "1", "/p");
    historie->nastavRelaci(first.workItemID, "starší");
    auto second = begin("codex", "2", "/p");
    historie->nastavRelaci(second.workItemID, "novější");
    auto empty = begin("codex", "3", "/p");
    historie->nastavRelaci(empty.workItemID, "");

    EXPECT_EQ(historie->relaceProUkol(first.workItemID, "codex"), "starší");
    EXPECT_FALSE(historie->relaceProUkol(first.workItemID, "claude-code"));
    EXPECT_FALSE(historie->relaceProUkol(empty.workItemID, "codex"));
    EXPECT_EQ(historie->relaceProSlozku("codex", "/p"), "novější");
    EXPECT_FALSE(historie->relaceProSlozku("codex", "/P")) << "a path is compared exactly";
    EXPECT_FALSE(historie->relaceProSlozku("claude-code", "/p"));
    EXPECT_EQ(historie->ukolProRelaci("codex", "starší")->id, first.id);
    EXPECT_FALSE(historie->ukolProRelaci("claude-code", "starší"));
    EXPECT_FALSE(historie->ukolProRelaci("codex", "jiná"));
}

TEST_F(HistorieAgentuTest, AContinuationFindsItsTask) {
    auto older = begin("codex", "1", "/home/jana/Žluťoučký");
    auto newer = begin("claude-code", "2", "/home/jana/Projekty");

    EXPECT_FALSE(historie->prijmiPokracovani({}, " \n"));
    EXPECT_EQ(historie->prijmiPokracovani({older.workItemID, {}, {}}, " r1 ")->id, older.id);
    EXPECT_EQ(historie->ukol(older.workItemID)->relace, "r1");
    EXPECT_EQ(historie->ukol(older.workItemID)->revize, 2U);
    EXPECT_EQ(historie->prijmiPokracovani({}, "r")->id, newer.id) << "the first of the list";
    EXPECT_EQ(historie->prijmiPokracovani({{}, "Claude", "PROJEKTY"}, "r")->id, newer.id);
    EXPECT_FALSE(historie->prijmiPokracovani({{}, "codex", "Projekty"}, "r"));
    EXPECT_FALSE(historie->prijmiPokracovani({{}, "jiný", {}}, "r"));
    load();
    EXPECT_EQ(historie->ukol(older.workItemID)->relace, "r1") << "it is on the disk";
}

TEST_F(HistorieAgentuTest, AContinuationFindsAFolderThatDiffersOnlyInDiacritics) {
    auto ukol = begin("codex", "1", "/home/jana/Žluťoučký kůň");
    begin("codex", "2", "/home/jana/Jiná");
    EXPECT_EQ(historie->prijmiPokracovani({{}, "Codex CLI", "zlutoucky KUN"}, "r")->id, ukol.id);
}

TEST_F(HistorieAgentuTest, RenamingTrimsAndRefusesABlankName) {
    auto older = begin("codex", "1", "/home/jana/Ukázka");
    auto newer = begin("claude-code", "2");
    EXPECT_FALSE(historie->renameTask({}, "  \n"));
    EXPECT_EQ(historie->renameTask({{}, "codex", "ukazka"}, "  Úklid \n")->nazev, "Úklid");
    EXPECT_EQ(historie->ukol(older.workItemID)->nazev, "Úklid");
    EXPECT_EQ(historie->ukol(older.workItemID)->revize, 2U);
    EXPECT_EQ(historie->renameTask({}, "Poslední")->id, newer.id);
    EXPECT_FALSE(historie->renameTask({{}, "claude", "Ukázka"}, "Nic"));
    load();
    EXPECT_EQ(historie->ukol(older.workItemID)->nazev, "Úklid");
}

TEST_F(HistorieAgentuTest, ClearingForgetsEverythingOnDiskToo) {
    begin("codex", "1");
    historie->vymazat();
    EXPECT_TRUE(historie->polozky().empty());
    EXPECT_EQ(written(), "[]");
}

TEST_F(HistorieAgentuTest, ARunningTaskThatWasForgottenIsKnownUntilThePhoneHasItsEnd) {
    auto id = begin("codex", "1").workItemID;
    historie->vymazat();
    EXPECT_EQ(historie->bezici()->workItemID, id);
    historie->vymazat();
    historie->dokonci(id, "Hotovo.", "r1");
    EXPECT_FALSE(historie->bezici());
    EXPECT_EQ(historie->ukol(id)->shrnuti, "Hotovo.");
    ASSERT_EQ(historie->nedorucene().size(), 1U);
    EXPECT_EQ(historie->nedorucene().front().revize, 2U);
    historie->potvrd(id, 2);
    EXPECT_TRUE(historie->nedorucene().empty());
    EXPECT_TRUE(historie->polozky().empty());
    EXPECT_EQ(written(), "[]");
    EXPECT_NE(begin({id, {}, "codex", {}, "Znovu", "/p"}).relace, "r1") << "it is a new task";
    EXPECT_EQ(historie->ukol(id)->nazev, "Znovu");
}

TEST_F(HistorieAgentuTest, OffTheMainThreadTheProgramEnds) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto id = begin("codex", "1").workItemID;
    const std::vector<std::function<void()>> uses{
        [&] { (void)historie->polozky(); },
        [&] { (void)historie->potiz(); },
        [&] { (void)historie->ukol(id); },
        [&] { (void)historie->nedorucene(); },
        [&] { historie->preruseno(id); },
        [&] { (void)historie->relaceProUkol(id, "codex"); },
        [&] { (void)historie->priZmene([] {}); },
        [&] { (void)historie->relaceProSlozku("codex", "/p"); },
        [&] { (void)historie->bezici(); },
        [&] { (void)historie->ukolProRelaci("codex", "r"); },
        [&] { begin("codex", "2"); },
        [&] { (void)historie->prijmiPokracovani({id, {}, {}}, "r"); },
        [&] { historie->potvrd(id, 1); },
        [&] { (void)historie->renameTask({id, {}, {}}, "Název"); },
        [&] { historie->vymazat(); },
        [&] { (void)historie->otevritRelaci({}); },
    };
    for (const auto& use : uses) EXPECT_DEATH(std::thread(use).join(), "off the main thread");
}

TEST_F(HistorieAgentuTest, ALongTextIsKeptToItsBound) {
    const std::string letter = "ř";
    std::string text = "x";
    while (text.size() <= HistorieAgentu::longestText) text += letter;
    auto id = begin("codex", text).workItemID;
    historie->dokonci(id, text, {});
    for (const auto& kept : {historie->ukol(id)->instrukce, *historie->ukol(id)->shrnuti}) {
        EXPECT_TRUE(kept.ends_with("ř…"));
        EXPECT_LE(kept.size(), HistorieAgentu::longestText + 3);
    }
}

TEST_F(HistorieAgentuTest, TellsEveryWatcherOfAChange) {
    int first = 0;
    int second = 0;
    const auto one = historie->priZmene([&first] { ++first; });
    const auto other = historie->priZmene([&second] { ++second; });
    auto ukol = begin("codex", "1");
    historie->otevritRelaci(ukol);
    EXPECT_EQ(first, 2);
    historie->otevritRelaci(ukol);
    EXPECT_EQ(second, 2) << "an equal trouble is no change";
}

} // namespace
} // namespace morvex
