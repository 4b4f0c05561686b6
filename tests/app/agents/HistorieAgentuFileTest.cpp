#include "shared/base/SystemError.h"
#include "shared/wire/Json.h"
#include "tests/app/agents/HistoryFixture.h"

#include <cerrno>

namespace morvex {
namespace {

using HistorieAgentuFileTest = HistoryFixture;

constexpr const char* oldRecord = R"({
    "id": "00000000-0000-4000-8000-0000000000AA", "nastroj": "codex", "nazev": "Oprav\ntesty",
    "slozka": "/home/jana/Projekty", "zalozeno": 700000000, "dokonceno": 700000060.5, "stav": "hotovo",
    "shrnuti": "Hotovo."})";

std::string record(const std::string& name, const std::string& began, const std::string& more) {
    return R"({"id":")" + name + R"(","nastroj":"codex","nazev":"x","slozka":"/p","zalozeno":)" + began +
           more + "}";
}

const std::string idA = "00000000-0000-4000-8000-0000000000AA";
const std::string idB = "00000000-0000-4000-8000-0000000000BB";
const std::string idC = "00000000-0000-4000-8000-0000000000CC";

TEST_F(HistorieAgentuFileTest, WithoutAFileTheListIsEmptyAndNothingIsWritten) {
    load();
    EXPECT_TRUE(historie->polozky().empty());
    EXPECT_EQ(trouble(), "none");
    EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(HistorieAgentuFileTest, WritesSortedKeysInLinesWithNumericDates) {
    load();
    auto id = begin("codex", "Oprav testy").workItemID;
    historie->nastavRelaci(id, "r1");
    EXPECT_EQ(written(), "[\n  {\n"
                         "    \"aktualizovano\" : 821692801,\n"
                         "    \"dorucenaRevize\" : 0,\n"
                         "    \"id\" : \"00000000-0000-4000-8000-000000000001\",\n"
                         "    \"instrukce\" : \"Oprav testy\",\n"
                         "    \"nastroj\" : \"codex\",\n"
                         "    \"nazev\" : \"Oprav testy\",\n"
                         "    \"relace\" : \"r1\",\n"
                         "    \"revize\" : 2,\n"
                         "    \"slozka\" : \"/home/jana/Projekty\",\n"
                         "    \"stav\" : \"bezi\",\n"
                         "    \"workItemID\" : \"00000000-0000-4000-8000-000000000001\",\n"
                         "    \"zalozeno\" : 821692801\n"
                         "  }\n]");
}

TEST_F(HistorieAgentuFileTest, QuirkTheFolderIsCalledTalkSpan) {
    load();
    begin("codex", "1");
    EXPECT_TRUE(std::filesystem::is_regular_file(temporary.path() / "TalkSpan" / "agent-tasks.json"));
}

TEST_F(HistorieAgentuFileTest, EverythingComesBackAfterARestart) {
    load();
    auto id = begin({{}, random.uuid(), "claude-code", "Název", "Zadání\ns řádky", "/p"}).workItemID;
    historie->dokonci(id, "Hotovo „s uvozovkami“.", "r1");
    auto failed = begin("codex", "Jiné").workItemID;
    historie->selhal(failed, Sentence("Nejde to."));
    auto before = historie->polozky();
    load();
    EXPECT_EQ(historie->polozky(), before);
}

TEST_F(HistorieAgentuFileTest, AnOlderRecordIsFilledIn) {
    write(std::string("[") + oldRecord + "]");
    load();
    ASSERT_EQ(historie->polozky().size(), 1U);
    const auto& ukol = historie->polozky().front();
    EXPECT_EQ(ukol.workItemID, ukol.id);
    EXPECT_EQ(ukol.instrukce, "Oprav testy");
    EXPECT_EQ(ukol.aktualizovano, ukol.dokonceno);
    EXPECT_EQ(ukol.revize, 1U);
    EXPECT_FALSE(ukol.conversationID || ukol.relace || ukol.chyba);
    EXPECT_EQ(trouble(), "none");
}

TEST_F(HistorieAgentuFileTest, AFileInWhichNothingRanIsLeftAsItIs) {
    const auto text = std::string("[") + oldRecord + "]";
    write(text);
    load();
    EXPECT_EQ(historie->polozky().size(), 1U);
    EXPECT_EQ(written(), text);
}

TEST_F(HistorieAgentuFileTest, AnOlderRecordWithoutAnEndIsDatedByItsBeginning) {
    write("[" + record(idA, "700000000", R"(,"stav":"chyba")") + "]");
    load();
    EXPECT_EQ(historie->polozky().front().aktualizovano, historie->polozky().front().zalozeno);
}

TEST_F(HistorieAgentuFileTest, QuirkARecordWithoutADeliveredRevisionCountsAsDelivered) {
    write(std::string("[") + oldRecord + "," + record(idB, "1", R"(,"stav":"hotovo","revize":7)") + "," +
          record(idC, "2", R"(,"stav":"hotovo","revize":7,"dorucenaRevize":6)") + "]");
    load();
    ASSERT_EQ(historie->nedorucene().size(), 1U);
    EXPECT_EQ(historie->nedorucene().front().id.text(), idC);
}

TEST_F(HistorieAgentuFileTest, QuirkLoadingSortsByTheBeginningOfTheTask) {
    write("[" + record(idA, "2", R"(,"stav":"hotovo")") + "," + record(idB, "3.5", R"(,"stav":"hotovo")") +
          "," + record(idC, "-1", R"(,"stav":"hotovo")") + "]");
    load();
    std::vector<std::string> order;
    for (const auto& ukol : historie->polozky()) order.push_back(ukol.id.text());
    EXPECT_EQ(order, (std::vector{idB, idA, idC}));
}

TEST_F(HistorieAgentuFileTest, TasksThatBeganTogetherStayInTheOrderOfTheFile) {
    std::string text;
    std::vector<std::string> wanted;
    for (int i = 10; i < 50; ++i) {
        wanted.push_back("00000000-0000-4000-8000-0000000000" + std::to_string(i));
        text += (text.empty() ? "[" : ",") + record(wanted.back(), "2", R"(,"stav":"hotovo")");
    }
    write(text + "]");
    load();
    std::vector<std::string> order;
    for (const auto& ukol : historie->polozky()) order.push_back(ukol.id.text());
    EXPECT_EQ(order, wanted);
}

TEST_F(HistorieAgentuFileTest, TextsOfTheFileAreBoundedAsWrittenOnesAre) {
    const std::string text(HistorieAgentu::longestText + 1, 'x');
    const std::string kept = std::string(HistorieAgentu::longestText, 'x') + "…";
    write(R"([{"id":")" + idA + R"(","nastroj":"codex","nazev":")" + text + R"(","instrukce":")" + text +
          R"(","slozka":"/p","zalozeno":1,"stav":"chyba","shrnuti":")" + text + R"(","chyba":")" + text +
          R"(","relace":")" + text + "\"}]");
    load();
    const auto& ukol = historie->polozky().front();
    for (const auto& one : {ukol.nazev, ukol.instrukce, *ukol.shrnuti, ukol.chyba->czech()})
        EXPECT_EQ(one, kept);
    EXPECT_FALSE(ukol.relace);
}

TEST_F(HistorieAgentuFileTest, TheAgentAndTheFolderOfTheFileAreBoundedToo) {
    const std::string text(5000, 'x');
    write(R"([{"id":")" + idA + R"(","nastroj":")" + text + R"(","nazev":"x","slozka":"/)" + text +
          R"(","zalozeno":1,"stav":"hotovo"}])");
    load();
    const auto& ukol = historie->polozky().front();
    EXPECT_EQ(ukol.nastroj, std::string(4096, 'x') + "…");
    EXPECT_EQ(ukol.slozka, "/" + std::string(4095, 'x') + "…");
}

TEST_F(HistorieAgentuFileTest, OfALongerFileTheFiftyNewestTasksAreTaken) {
    std::string text;
    for (int i = 10; i < 90; ++i)
        text += (text.empty() ? "[" : ",") + record("00000000-0000-4000-8000-0000000000" + std::to_string(i),
                                                    std::to_string(i), R"(,"stav":"hotovo")");
    write(text + "]");
    load();
    EXPECT_EQ(historie->polozky().size(), 50U);
    EXPECT_EQ(historie->polozky().front().id.text(), "00000000-0000-4000-8000-000000000089");
}

TEST_F(HistorieAgentuFileTest, ASessionOfTheFileThatIsNoneIsPassedOver) {
    write("[" + record(idA, "3", R"(,"stav":"hotovo","relace":"--dangerous")") + "," +
          record(idB, "2", R"(,"stav":"hotovo","relace":"")") + "," +
          record(idC, "1", R"(,"stav":"hotovo","relace":"r1")") + "]");
    load();
    EXPECT_EQ(historie->relaceProSlozku("codex", "/p"), "r1");
    EXPECT_FALSE(historie->relaceProUkol(Uuid::parse(idA).value(), "codex"));
}

TEST_F(HistorieAgentuFileTest, ATaskLeftRunningComesBackInterruptedAndUndelivered) {
    load();
    auto id = begin("codex", "Oprav testy").workItemID;
    historie->potvrd(id, 1);
    clock.advance(std::chrono::hours(1));
    load();
    auto ukol = historie->ukol(id).value();
    EXPECT_EQ(ukol.stav, UkolAgenta::Stav::preruseno);
    EXPECT_EQ(ukol.dokonceno, NumericDate(clock.now()));
    EXPECT_EQ(ukol.revize, 2U);
    EXPECT_EQ(historie->nedorucene(), std::vector{ukol});
    clock.advance(std::chrono::hours(1));
    load();
    EXPECT_EQ(historie->ukol(id), ukol) << "once, and saved";
}

TEST_F(HistorieAgentuFileTest, ATaskLeftRunningUnderTheHighestRevisionKeepsIt) {
    const std::string highest = "18446744073709551615";
    write("[" + record(idA, "2", R"(,"stav":"bezi","dorucenaRevize":7,"revize":)" + highest) + "]");
    load();
    EXPECT_EQ(std::to_string(historie->polozky().front().revize), highest);
    EXPECT_EQ(historie->nedorucene(), historie->polozky());
}

TEST_F(HistorieAgentuFileTest, AnInterruptedTaskKeepsTheEndThatItHas) {
    write("[" + record(idA, "2", R"(,"stav":"bezi","dokonceno":5)") + "]");
    load();
    EXPECT_EQ(wholeSeconds(*historie->polozky().front().dokonceno), 978'307'205);
}

TEST_F(HistorieAgentuFileTest, ADamagedFileGivesTheMessageAndAnEmptyList) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"no JSON", "[{"},
        {"an object", "{}"},
        {"one record without its tool", "[" + std::string(oldRecord) + R"(,{"id":"x"}])"},
        {"an unknown state", "[" + record(idA, "2", R"(,"stav":"spi")") + "]"},
        {"a date beyond the calendar", "[" + record(idA, "1e17", R"(,"stav":"hotovo")") + "]"},
        {"a negative revision", "[" + record(idA, "2", R"(,"stav":"hotovo","revize":-1)") + "]"},
        {"an empty file", ""},
    };
    for (const auto& [name, text] : rows) {
        write(text);
        load();
        EXPECT_TRUE(historie->polozky().empty()) << name;
        const auto why = decode<std::vector<UkolAgenta>>(text).error().popis().czech();
        EXPECT_NE(why, "") << name;
        EXPECT_EQ(trouble(), "Historii úkolů se nepodařilo načíst: " + why) << name;
        EXPECT_EQ(written(), text) << name << ": reading alone leaves it";
    }
}

TEST_F(HistorieAgentuFileTest, TheNextSaveReplacesADamagedFileAndKeepsItAside) {
    write("poškozeno");
    load();
    auto ukol = begin("codex", "Oprav testy");
    EXPECT_EQ(trouble(), "none");
    EXPECT_EQ(contentOf(file().string() + ".damaged"), "poškozeno");
    load();
    EXPECT_EQ(historie->ukol(ukol.workItemID)->nazev, "Oprav testy");
}

TEST_F(HistorieAgentuFileTest, AFailedSaveIsToldAndTheListStaysRight) {
    load();
    std::ofstream(temporary.path() / "TalkSpan") << "v cestě";
    auto ukol = begin("codex", "Oprav testy");
    EXPECT_EQ(trouble(), "Historii úkolů se nepodařilo uložit: " + SystemError{ENOTDIR}.popis().czech());
    EXPECT_EQ(historie->polozky(), std::vector{ukol});
    std::filesystem::remove(temporary.path() / "TalkSpan");
    historie->nastavRelaci(ukol.workItemID, "r1");
    EXPECT_EQ(trouble(), "none");
    load();
    EXPECT_EQ(historie->ukol(ukol.workItemID)->relace, "r1");
}

} // namespace
} // namespace morvex
