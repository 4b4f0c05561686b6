#include "app/console/QrBlocks.h"
#include "platform/posix/qt/LineReader.h"
#include "tests/app/console/ConsoleFixture.h"

#include <QCoreApplication>

#include <fcntl.h>
#include <unistd.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;

class ConsoleShellTest : public ConsoleFixture {};

TEST_F(ConsoleShellTest, AnAddressOfARelayThatCannotBeUsedIsToldAndNotKept) {
    startShell();
    using Told = std::vector<std::string>;
    EXPECT_EQ(type("relay https://relay.example"), Told{"Relay: https://relay.example"});
    const std::string kept = " Zůstává https://relay.example";
    EXPECT_EQ(type("relay nesmysl a další"), Told{"Adresa relaye nedává smysl." + kept});
    EXPECT_EQ(type("relay jiný.example"), Told{"Adresa relaye nedává smysl." + kept});
    EXPECT_EQ(type("relay other.example:8787"),
              Told{"Adresa relaye začíná https:// nebo http://. Napiš „https://other.example:8787“." + kept});
    EXPECT_EQ(companion->stav().relayAdresa.value(), "https://relay.example");
    EXPECT_EQ(defaults.text("relay.adresa"), "https://relay.example");
}

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
    EXPECT_EQ(help.size(), 37U);
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
    defaults.setProblem(Sentence("Nastavení se nepodařilo uložit: Na disku není místo."));
    const std::string told = "Potíž: Nastavení se nepodařilo uložit: Na disku není místo.";
    EXPECT_EQ(lines, std::vector<std::string>{told});
    EXPECT_TRUE(hasLine(type("stav"), told));
    defaults.setProblem({});
    EXPECT_FALSE(hasLine(type("stav"), told));
}

TEST_F(ConsoleShellTest, AnUnpairingThatIsNotSavedIsTold) {
    startShell();
    lines.clear();
    companion->stav().vaultTrouble = Sentence("Odpojení telefonu se nepodařilo uložit: Na disku není místo.");
    const std::string told = "Potíž: Odpojení telefonu se nepodařilo uložit: Na disku není místo.";
    EXPECT_EQ(lines, std::vector<std::string>{told});
    EXPECT_TRUE(hasLine(type("stav"), told));
}

TEST_F(ConsoleShellTest, ATroubleOfTheSettingsThatWasToldBeforeStandsBesideEachChangeToo) {
    startShell();
    companion->stav().settingsTrouble = Sentence("Na disku není místo.");
    const auto folder = allowFolder("Projekty");
    const std::string told = "Potíž: Na disku není místo.";
    EXPECT_TRUE(hasLine(type("vypnout terminal"), told));
    EXPECT_TRUE(hasLine(type("odebrat " + folder), told));
    EXPECT_TRUE(hasLine(type("vzhuru zap"), told));
}

TEST_F(ConsoleShellTest, TellsThatThePhoneHasLeftWhileItsNumberWaits) {
    startShell();
    lines.clear();
    companion->stav().phoneHasLeft = true;
    companion->stav().phoneHasLeft = false;
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
            companion->stav().potiz = Sentence("potíž " + std::to_string(told));
            companion->stav().dostupnost =
                MacAvailability{MacAvailability::Preruseno{Sentence(std::to_string(told))}};
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

TEST_F(ConsoleShellTest, SwitchesAFamilyOfTools) {
    startShell();
    EXPECT_EQ(type("vypnout soubory"), std::vector<std::string>{"Vypnuto: soubory"});
    EXPECT_FALSE(companion->integrations().isOn(Integration::files));
    EXPECT_EQ(type("zapnout web"), std::vector<std::string>{"Zapnuto: web"});
    EXPECT_TRUE(companion->integrations().isOn(Integration::webSearch));
    EXPECT_EQ(type("zapnout vše"), std::vector<std::string>{"Neznámá skupina „vše“. Seznam ukáže „pomoc“."});
}

TEST_F(ConsoleShellTest, WhatCannotBeSavedIsNotSwitchedOnNorAllowedAndSaysWhy) {
    startShell();
    type("vypnout soubory");
    defaults.refusal = TextError{"Na disku není místo."};
    EXPECT_EQ(type("zapnout soubory"),
              std::vector<std::string>{"Potíž: Nastavení se nepodařilo uložit: Na disku není místo."});
    EXPECT_FALSE(companion->integrations().isOn(Integration::files));
    const auto path = (temporary.path() / "Projekty").string();
    std::filesystem::create_directory(path);
    EXPECT_TRUE(hasLine(type("povolit " + path),
                        "Oprávnění ke složce Projekty se nepodařilo uložit: Na disku není místo."));
    EXPECT_TRUE(features->files.slozky().povolene().empty());
}

TEST_F(ConsoleShellTest, QuitsOnCommand) {
    startShell();
    type("konec");
    EXPECT_EQ(quits, 1);
}

TEST_F(ConsoleShellTest, ACommandThatHasNothingToDoSaysSo) {
    startShell();
    const std::pair<const char*, const char*> rows[] = {
        {"souhlasi", "Žádné číslo teď k porovnání není."},
        {"neshoduje", "Žádné číslo teď k porovnání není."},
        {"zrusit", "Žádné párování neprobíhá."},
        {"odpojit", "Žádný telefon spárovaný není."},
        {"odebrat /nic", "Složka „/nic“ povolená není."},
        {"ano", "Na nic se teď neptám."},
        {"ne", "Na nic se teď neptám."},
        {"potvrdit", "Nic nečeká na potvrzení."},
        {"zamitnout", "Nic nečeká na potvrzení."},
        {"ulohy", "Úlohy: žádná tu není"},
        {"zastav", "Žádná úloha neběží."},
        {"pokracovat 1", "Úloha „1“ tu není. Čísla ukáže „ulohy“."},
        {"vymazat-historii ano", "Úlohy: žádná tu není"},
        {"obnovit", "Zjišťuji znovu, co tu je."},
    };
    for (const auto& [line, told] : rows) EXPECT_EQ(type(line), std::vector<std::string>{told}) << line;
    EXPECT_TRUE(companion->stav().parovani.value().as<StavParovani::Necinne>());
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
