#include "app/console/ConsoleShell.h"

#include "app/console/LineReader.h"
#include "app/console/QrBlocks.h"
#include "shared/trust/Parovani.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayCalls.h"
#include "tests/support/CompanionHarness.h"

#include <QCoreApplication>

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;

class ConsoleShellTest : public CompanionHarness {
  protected:
    ~ConsoleShellTest() override {
        shell.reset();
        EXPECT_TRUE(executor.run(scope->join()));
    }

    void startShell() {
        askedPicker = &consolePicker;
        start();
        makeShell();
    }

    void makeShell() {
        shell = std::make_unique<ConsoleShell>(
            *companion, ConsoleShell::Surroundings{clock, consolePicker, folders, *scope,
                                                   [this](const std::string& text) { lines.push_back(text); },
                                                   [this] { ++quits; }});
    }

    std::vector<std::string> type(const std::string& line) {
        lines.clear();
        shell->handle(line);
        executor.runUntilIdle();
        return lines;
    }

    static bool hasLine(const std::vector<std::string>& all, const std::string& line) {
        return std::ranges::find(all, line) != all.end();
    }

    std::unique_ptr<TaskScope> scope = std::make_unique<TaskScope>(executor);
    ConsoleFolderPicker consolePicker;
    std::vector<std::string> lines;
    int quits = 0;
    std::unique_ptr<ConsoleShell> shell;
};

TEST_F(ConsoleShellTest, AnUnknownCommandIsToldAndABlankLineIsNot) {
    startShell();
    EXPECT_EQ(type("tanči"), std::vector<std::string>{"Neznámý příkaz „tanci“. Seznam ukáže „pomoc“."});
    EXPECT_TRUE(type("   ").empty());
    EXPECT_EQ(type("odebrat"), std::vector<std::string>{"Správně: odebrat CESTA"});
    EXPECT_EQ(type("stav hned"), std::vector<std::string>{"Správně: stav"});
}

TEST_F(ConsoleShellTest, HelpNamesEveryCommand) {
    startShell();
    auto help = type("POMOC");
    EXPECT_EQ(help.size(), 26U);
    EXPECT_TRUE(hasLine(help, "  povolit CESTA          povolí složku"));
}

TEST_F(ConsoleShellTest, StatusShowsLinkPhoneRelayFoldersAndSwitches) {
    startShell();
    auto status = type("stav");
    EXPECT_TRUE(hasLine(status, "Stav: Nespárováno"));
    EXPECT_TRUE(hasLine(status, "Telefon: žádný"));
    EXPECT_TRUE(hasLine(status, "Relay: http://127.0.0.1:8787"));
    EXPECT_TRUE(hasLine(status, "Složky: žádná není povolená"));
    EXPECT_TRUE(hasLine(status, "Bdění: Po chvíli nečinnosti usne a přestane být dostupný"));
    EXPECT_TRUE(hasLine(status, "Po přihlášení: nespouští se"));
}

TEST_F(ConsoleShellTest, KeepsTheComputerAwakeAndTellsWhenThatFails) {
    startShell();
    EXPECT_EQ(type("vzhuru zap"), std::vector<std::string>{"Bdění: Zůstane vzhůru, dokud je v zásuvce"});
    lines.clear();
    inhibitor.refuse(TextError{"Nejde to."});
    const std::string told = "Potíž: Počítač se nepodařilo udržet vzhůru: Nejde to.";
    EXPECT_EQ(lines, std::vector<std::string>{told});
    EXPECT_TRUE(hasLine(type("stav"), told));
    EXPECT_EQ(type("vzhuru VYP"),
              std::vector<std::string>{"Bdění: Po chvíli nečinnosti usne a přestane být dostupný"});
    EXPECT_EQ(inhibitor.live, 0);
    EXPECT_EQ(type("vzhuru ano"), std::vector<std::string>{"Napiš „zap“ nebo „vyp“."});
}

TEST_F(ConsoleShellTest, TellsAtOnceAndInTheStatusThatTheSettingsAreNotSaved) {
    startShell();
    lines.clear();
    defaults.setProblem("Nastavení se nepodařilo uložit: Na disku není místo.");
    const std::string told = "Potíž: Nastavení se nepodařilo uložit: Na disku není místo.";
    EXPECT_EQ(lines, std::vector<std::string>{told});
    EXPECT_TRUE(hasLine(type("stav"), told));
    defaults.setProblem({});
    EXPECT_FALSE(hasLine(type("stav"), told));
}

TEST_F(ConsoleShellTest, TellsThatThePhoneHasLeftWhileItsNumberWaits) {
    startShell();
    lines.clear();
    companion->stav().telefonOdesel = true;
    companion->stav().telefonOdesel = false;
    EXPECT_EQ(lines,
              std::vector<std::string>{"Párování: Telefon mezitím odešel. Pokud párování vzdal, nepřipojí "
                                       "se a je potřeba ho spárovat znovu."});
}

TEST_F(ConsoleShellTest, TellsWhenTheLinkTriesNextAndTriesAtOnceWhenAsked) {
    auto socket = startPaired();
    executor.runUntilIdle();
    makeShell();
    EXPECT_EQ(type("zkusit"), std::vector<std::string>{"Na další pokus se nečeká."});
    socket->breakWith("Relay neodpověděl.");
    executor.runUntilIdle();
    for (auto wait : {1s, 2s}) {
        clock.advance(wait);
        executor.runUntilIdle();
    }
    clock.advance(1500ms);
    EXPECT_TRUE(hasLine(type("stav"), "Další pokus za 4 s"));
    const auto attempts = sockets.urls.size();
    EXPECT_EQ(type("zkusit").front(), "Zkouším to hned.");
    EXPECT_EQ(sockets.urls.size(), attempts + 1);
}

TEST_F(ConsoleShellTest, TellsThatTheKeysAreAwaitedAndAsksForThemAgain) {
    ManualExecutor slow;
    storage = &slow;
    store.failLoad = TextError{"Trezor odmítl."};
    startShell();
    shell->greet("1.2.3");
    EXPECT_TRUE(hasLine(lines, "Stav: Čekám na klíče tohoto počítače…"));
    EXPECT_TRUE(hasLine(type("stav"), "Stav: Čekám na klíče tohoto počítače…"));
    slow.runUntilIdle();
    EXPECT_TRUE(hasLine(type("stav"), "Potíž: Trezor odmítl."));
    store.failLoad.reset();
    EXPECT_EQ(type("zkusit").front(), "Zkouším znovu získat klíče tohoto počítače.");
    while (slow.runUntilIdle() + executor.runUntilIdle() > 0) continue;
    EXPECT_TRUE(hasLine(type("stav"), "Stav: Nespárováno"));
    end();
}

TEST_F(ConsoleShellTest, TellsThatTheKeysLieInFiles) {
    vault.where = SecretVault::Place::privateFiles;
    startShell();
    EXPECT_TRUE(hasLine(type("stav"),
                        "Klíče leží v souborech, které smí číst jen tvůj účet, protože tu není klíčenka."));
}

TEST_F(ConsoleShellTest, ARelayThatComplainsWithoutEndIsShownSixtyTimesAMinute) {
    startShell();
    int told = 0;
    const auto complain = [this, &told](int times) {
        lines.clear();
        for (const int end = told + times; told < end; ++told) {
            companion->stav().potiz = "potíž " + std::to_string(told);
            companion->stav().dostupnost = MacAvailability{MacAvailability::Preruseno{std::to_string(told)}};
        }
        return lines.size();
    };
    const std::string more =
        "Zpráv o spojení je příliš mnoho, minutu se další neukážou. Co platí, vypíše „stav“.";
    EXPECT_EQ(complain(100), 61U);
    EXPECT_EQ(lines.back(), more);
    clock.advance(59s);
    EXPECT_EQ(complain(1), 0U);
    EXPECT_TRUE(hasLine(type("stav"), "Potíž: potíž 100"));
    clock.advance(1s);
    EXPECT_EQ(complain(30), 60U);
    EXPECT_EQ(complain(1), 1U);
    EXPECT_EQ(lines.back(), more);
}

TEST_F(ConsoleShellTest, SwitchesTheStartAtLoginAndShowsWhatHolds) {
    startShell();
    EXPECT_EQ(type("po-prihlaseni zap"), std::vector<std::string>{"Po přihlášení: spouští se"});
    EXPECT_TRUE(loginItem.enabled);
    loginItem.failure = TextError{"Nesmíš."};
    EXPECT_EQ(type("po-prihlaseni vyp"),
              (std::vector<std::string>{"Potíž: Spouštění po přihlášení se nepodařilo nastavit: Nesmíš.",
                                        "Po přihlášení: spouští se"}));
    EXPECT_EQ(type("po-prihlaseni"), std::vector<std::string>{"Správně: po-prihlaseni zap|vyp"});
}

TEST_F(ConsoleShellTest, AllowsAndRemovesFoldersAlsoBelowTheHomeFolder) {
    std::filesystem::create_directory(temporary.path() / "Projekty");
    startShell();
    auto path = (temporary.path() / "Projekty").string();
    EXPECT_EQ(type("povolit ~/Projekty"), std::vector<std::string>{"Složka: " + path});
    EXPECT_EQ(type("povolit Projekty"), std::vector<std::string>{"Cesta ke složce začíná „/“ nebo „~“."});
    EXPECT_EQ(type("odebrat ~/Jiné"), std::vector<std::string>{"Složka „~/Jiné“ povolená není."});
    EXPECT_EQ(type("odebrat ~/Projekty/"), std::vector<std::string>{"Složky: žádná není povolená"});
}

TEST_F(ConsoleShellTest, AsksBeforeAFolderThatReachesFar) {
    startShell();
    const auto home = temporary.path().string();
    const std::vector<std::string> question{
        "Povolit složku " + home +
            "? To je tvoje domovská složka: telefon se pak dostane ke všem tvým souborům.",
        "Odpověz „ano“ nebo „ne“."};
    EXPECT_EQ(type("povolit ~"), question);
    EXPECT_TRUE(companion->slozky().povolene().empty());
    EXPECT_EQ(type("ne"), std::vector<std::string>{"Složky: žádná není povolená"});
    EXPECT_EQ(type("povolit ~/"), question);
    EXPECT_EQ(type("ano"), std::vector<std::string>{"Složka: " + home});
    EXPECT_EQ(type("ano"), std::vector<std::string>{"Na nic se teď neptám."});
    EXPECT_EQ(type("ne"), std::vector<std::string>{"Na nic se teď neptám."});
}

TEST_F(ConsoleShellTest, AQuestionThatIsOpenAtTheEndDoesNotHoldTheProgram) {
    startShell();
    type("povolit /");
    EXPECT_TRUE(executor.run(companion->ukoncit()));
    EXPECT_TRUE(companion->slozky().povolene().empty());
}

TEST_F(ConsoleShellTest, OfFoldersOfOneNameTheSecondIsListedUnderItsOwn) {
    startShell();
    const auto at = [this](const std::string& name) { return (temporary.path() / name).string(); };
    for (const char* name : {"osobni/projekt", "prace/projekt"}) {
        std::filesystem::create_directories(at(name));
        type("povolit " + at(name));
    }
    EXPECT_EQ(type("odebrat /nic"), std::vector<std::string>{"Složka „/nic“ povolená není."});
    auto status = type("stav");
    EXPECT_TRUE(hasLine(status, "Složka: " + at("osobni/projekt")));
    EXPECT_TRUE(hasLine(status, "Složka: " + at("prace/projekt") + ", jménem prace/projekt"));
}

TEST_F(ConsoleShellTest, SwitchesAFamilyOfTools) {
    startShell();
    EXPECT_EQ(type("vypnout soubory"), std::vector<std::string>{"Vypnuto: soubory"});
    EXPECT_FALSE(companion->integrations().isOn(Integration::files));
    EXPECT_EQ(type("zapnout web"), std::vector<std::string>{"Zapnuto: web"});
    EXPECT_TRUE(companion->integrations().isOn(Integration::webSearch));
    EXPECT_EQ(type("zapnout vše"), std::vector<std::string>{"Neznámá skupina „vše“. Seznam ukáže „pomoc“."});
}

TEST_F(ConsoleShellTest, QuitsOnCommand) {
    startShell();
    type("konec");
    EXPECT_EQ(quits, 1);
}

TEST_F(ConsoleShellTest, PairsThroughCommands) {
    startShell();
    ZalozitOdpoved reply{{"NEW"}, "token", dateFromSeconds(1'800'000'600)};
    http.replies.push_back({200, encode(reply)});
    auto socket = sockets.layOut();
    auto begun = type("parovat");
    EXPECT_TRUE(hasLine(begun, "Kód pro telefon, platí do 2027-01-15T08:10:00Z:"));
    auto code = std::ranges::find_if(begun, [](const std::string& line) { return line.starts_with("{"); });
    ASSERT_NE(code, begun.end());
    EXPECT_EQ(Parovani::bundleOf(*code).value().pairID, PairID{"NEW"});

    mac = store.held.nactiIdentitu().value();
    phone.pair = {"NEW"};
    phone.attach(socket, *mac);
    phone.logIn(false);
    phone.deliver({RelayMessage::Forward{
        keyExchange(phone.pair, phone.identity.deviceID(), mac->deviceID(), "parovani",
                    toBytes(encode(Parovani::makeHello(phone.identity, phone.pair))), clock.now(), {})}});
    lines.clear();
    executor.runUntilIdle();
    auto number = Parovani::comparisonNumber(mac->pairKey(phone.asPeer()).value());
    EXPECT_TRUE(hasLine(lines, "Číslo k porovnání: " + number));
    auto agreed = type("souhlasi");
    EXPECT_TRUE(hasLine(agreed, "Párování: nic neprobíhá"));
    EXPECT_TRUE(store.held.nactiProtejsek().value());
}

TEST_F(ConsoleShellTest, ShowsAnApprovalAndTakesTheDecision) {
    startShell();
    auto answer = std::make_shared<std::optional<bool>>();
    auto ask = [](Schvalovani& approvals, std::shared_ptr<std::optional<bool>> into) -> Task<void> {
        into->emplace(co_await approvals.pozadat("mac.mail.send", "Odeslat mail", "Mám?",
                                                 "celý text\nČíslo k porovnání: 123 456"));
    };
    executor.start(ask(companion->schvalovani(), answer));
    executor.runUntilIdle();
    EXPECT_TRUE(hasLine(lines, "Čeká na potvrzení: Odeslat mail"));
    EXPECT_TRUE(hasLine(lines, "  | celý text\n  | Číslo k porovnání: 123 456"));
    type("zamitnout");
    EXPECT_EQ(*answer, false);
}

TEST_F(ConsoleShellTest, WordsOfTheRelayCannotPassForLinesOfTheProgram) {
    startShell();
    http.replies.push_back({400, R"({"reason":"Ne.\nČíslo k porovnání: 123 456\u001b[A"})"});
    type("parovat");
    EXPECT_TRUE(hasLine(lines, "Párování: Ne. Číslo k porovnání: 123 456\uFFFD[A"));
}

TEST(QrBlocks, DrawsACodeWithAQuietZone) {
    auto text = qrBlocks("ahoj");
    // Version 1 has 21 modules; with 4 on each side that is 29, two of them in a line.
    EXPECT_EQ(std::ranges::count(text, '\n'), 15);
    EXPECT_EQ(qrBlocks(std::string(5000, 'a')), "");
}

TEST(LineReader, TakesLinesAsTheyComeAndStopsAtTheEnd) {
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    QCoreApplication application(argc, argv);
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    EXPECT_TRUE(LineReader::hasInput(ends[0]));
    std::vector<std::string> lines;
    LineReader reader(ends[0], [&lines](const std::string& line) { lines.push_back(line); });
    ASSERT_EQ(::write(ends[1], "jedna\ndv", 8), 8);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(lines, std::vector<std::string>{"jedna"});
    ASSERT_EQ(::write(ends[1], "ě\n", 3), 3);
    ::close(ends[1]);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    EXPECT_EQ(lines, (std::vector<std::string>{"jedna", "dvě"}));
    ::close(ends[0]);
}

TEST(LineReader, TheNullDeviceIsNoInput) {
    int null = ::open("/dev/null", O_RDONLY);
    EXPECT_FALSE(LineReader::hasInput(null));
    ::close(null);
    EXPECT_FALSE(LineReader::hasInput(-1));
}

} // namespace
} // namespace morvex
