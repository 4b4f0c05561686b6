#include "app/ui/models/AgentTasksModel.h"
#include "tests/app/ui/ShownCompanion.h"

#include <algorithm>
#include <filesystem>

namespace morvex {
namespace {

class CardsTest : public ShownCompanion {};

TEST_F(CardsTest, StandInTheirOrder) {
    startSecured();
    openUi();
    ask();
    const std::vector<std::string> expected{"Párování s telefonem",
                                            "Spojení",
                                            "Hlas na Macu",
                                            "Čeká na potvrzení: Odeslat e-mail Janě",
                                            "Integrace",
                                            "Povolené složky",
                                            "Dostupnost",
                                            "Poslední úkoly",
                                            "Poznámky Morvex",
                                            "Souhrny Morvex",
                                            "O aplikaci"};
    EXPECT_EQ(names(QAccessible::Heading), expected);
}

TEST_F(CardsTest, EachSwitchOfAFamilyIsTheOneOfTheSettings) {
    start();
    openUi();
    const std::pair<const char*, Integration> rows[] = {
        {"Poznámky Morvex", Integration::notes}, {"Codex", Integration::codex},
        {"Claude Code", Integration::claude},    {"Soubory", Integration::files},
        {"Terminál", Integration::terminal},     {"Vlastní aplikace", Integration::customApps},
    };
    for (const auto& [name, integration] : rows) {
        EXPECT_TRUE(isOn(name)) << name;
        press(name);
        EXPECT_FALSE(companion->integrations().isOn(integration)) << name;
        EXPECT_FALSE(isOn(name)) << name;
        press(name);
        EXPECT_TRUE(companion->integrations().isOn(integration)) << name;
    }
}

TEST_F(CardsTest, TheServicesStandInTheirOrder) {
    start();
    openUi();
    const auto& model = *ui->model().integrations();
    std::vector<std::string> order;
    for (const auto& group : {model.personalData(), model.macTools(), model.customApps()})
        for (const auto* row : group) order.push_back(row->property("name").toString().toStdString());
    EXPECT_EQ(order, (std::vector<std::string>{"Kalendář", "Připomínky", "Kontakty", "Poznámky Morvex",
                                               "Vyhledávání na webu", "Apple Mail", "SMTP / IMAP", "Codex",
                                               "Claude Code", "Soubory", "Terminál", "Vlastní aplikace"}));
}

TEST_F(CardsTest, TheRowOfTheTerminalSaysThatItRunsAnyCode) {
    startSecured();
    openUi();
    EXPECT_TRUE(reads("Spouští příkazy v povolených složkách a umí spustit jakýkoli kód"));
    phone.send({MacPayload::Preferences{{"en", {}, {}}}}, "p");
    settle();
    EXPECT_TRUE(reads("Runs commands in allowed folders and can run any code"));
}

TEST_F(CardsTest, AnAgentWithAProblemCanBeLookedForAgain) {
    start();
    openUi();
    features->agents.stav().codex = AgentStatus{false, {}, {}, Sentence("Codex tu není.")};
    features->agents.stav().claude = AgentStatus{true, "2.1.0", {}, {}};
    settle();
    EXPECT_TRUE(reads("Nenainstalováno"));
    EXPECT_TRUE(reads("Codex tu není."));
    EXPECT_TRUE(reads("Zjistit znovu: Codex"));
    EXPECT_FALSE(mentions("Zjistit znovu: Claude Code"));
    press("Zjistit znovu: Codex");
    EXPECT_FALSE(mentions("Codex tu není.")) << "there is news";
}

TEST_F(CardsTest, ALookForTheAgentsIsSaidAndIsNoProblem) {
    start();
    openUi();
    auto& state = companion->stav();
    auto& agents = features->agents.stav();
    const auto isLooking = [this] {
        EXPECT_TRUE(reads("Zjišťuji…"));
        EXPECT_FALSE(mentions("Nenainstalováno"));
        EXPECT_FALSE(mentions("Codex tu není."));
        EXPECT_FALSE(mentions("Zjistit znovu"));
    };
    for (auto* agent : {&agents.codex, &agents.claude})
        *agent = AgentStatus{false, {}, {}, AgentsFeature::Stav::notKnownYet};
    settle();
    isLooking();
    for (auto* agent : {&agents.codex, &agents.claude})
        *agent = AgentStatus{false, {}, {}, Sentence("Codex tu není.")};
    state.detectionsUnderWay = 1;
    settle();
    isLooking();
    state.detectionsUnderWay = 0;
    settle();
    EXPECT_TRUE(reads("Zjistit znovu: Codex"));
    EXPECT_FALSE(mentions("Zjišťuji…"));
    std::vector<int> looks;
    auto noted = state.detectionsUnderWay.addNotifier([&] { looks.push_back(state.detectionsUnderWay); });
    press("Obnovit stav");
    EXPECT_EQ(looks, (std::vector{1, 0}));
}

TEST_F(CardsTest, TheSwitchOfTheLoginItemShowsWhatReallyHolds) {
    start();
    openUi();
    press("Spouštět po přihlášení");
    EXPECT_TRUE(loginItem.enabled);
    EXPECT_TRUE(isOn("Spouštět po přihlášení"));
    loginItem.failure = TextError{"disk je plný"};
    press("Spouštět po přihlášení");
    EXPECT_TRUE(isOn("Spouštět po přihlášení")) << "it did not come about";
    EXPECT_TRUE(reads("Spouštění po přihlášení se nepodařilo nastavit: disk je plný"));
}

TEST_F(CardsTest, StayingAwakeTellsItsStateAndItsLimit) {
    start();
    openUi();
    EXPECT_TRUE(reads("Po chvíli nečinnosti usne a přestane být dostupný"));
    press("Při napájení udržovat Morvex dostupný");
    EXPECT_TRUE(companion->bdelost().stav().drzetVzhuru);
    EXPECT_TRUE(reads("Zůstane vzhůru, dokud je v zásuvce"));
    EXPECT_TRUE(reads("Na baterii Mac usne bez ohledu na tohle nastavení. Bránit spánku bez napájení by ti "
                      "vybilo notebook v tašce."));
}

TEST_F(CardsTest, ATaskThatRunsCanStillBeStoppedWhenTheListHasForgottenIt) {
    startSecured();
    features->agents.historie().zaloz({{}, {}, "codex", {}, "Oprav testy", "/p"});
    AgentTasksModel model(features->agents);
    const auto id = model.runningId();
    EXPECT_FALSE(id.isEmpty());
    features->agents.historie().vymazat();
    EXPECT_EQ(model.rows()->rowCount(), 0);
    EXPECT_EQ(model.runningId(), id);
    EXPECT_EQ(model.runningTool(), QStringLiteral("Codex"));
}

TEST_F(CardsTest, TasksAreStoppedContinuedAndClearedAfterAQuestion) {
    startSecured();
    openUi();
    fill();
    settle();
    EXPECT_TRUE(reads("Claude Code · Pracuje · 15.01.27 8:21"));
    EXPECT_TRUE(reads("Zastavit: Přidej na web tmavý režim"));
    press("Pokračovat v Codexu: Přelož stránku do angličtiny");
    EXPECT_EQ(opener.opened, std::vector<std::string>{"codex://threads/relace-1"});
    press("Pokračovat v Claude: Najdi, proč padá sestavení");
    EXPECT_TRUE(reads("Tento úkol ještě nemá relaci, ve které by šlo pokračovat."));
    press("Vymazat: Poslední úkoly");
    EXPECT_TRUE(reads("Vymazat historii úkolů?"));
    EXPECT_TRUE(reads("Úkoly zůstanou v Claude a Codexu, ale Morvex už k nim nebude nabízet tlačítka pro "
                      "pokračování."));
    press("Zrušit");
    EXPECT_EQ(features->agents.historie().polozky().size(), 3U);
    press("Vymazat: Poslední úkoly");
    press("Vymazat historii");
    EXPECT_TRUE(features->agents.historie().polozky().empty());
    EXPECT_TRUE(reads("Úkoly zadané Codexu nebo Claude přes telefon se objeví tady. Pak v nich můžeš "
                      "pokračovat jedním kliknutím."));
}

TEST_F(CardsTest, ANoteAndASummaryOpenAndAreCopied) {
    startSecured();
    openUi();
    EXPECT_TRUE(reads("Poznámky vytvořené na iPhonu se po zabezpečeném spojení objeví tady a zůstanou "
                      "dostupné i offline."));
    EXPECT_TRUE(
        reads("Pravidelné souhrny vytvořené na iPhonu se objeví tady a zůstanou dostupné i offline."));
    fill();
    settle();
    EXPECT_TRUE(reads("z iPhonu · E2EE"));
    EXPECT_TRUE(reads("2 synchronizováno"));
    press("Nákup");
    press("Kopírovat");
    EXPECT_EQ(clipboard.text, "Mléko\nChléb\nMáslo");
    EXPECT_TRUE(reads("Zkopírováno"));
    press("Zavřít");
    press("Týden 2");
    EXPECT_TRUE(reads("08.01.27 11:21 – 15.01.27 11:21 · Kalendář · Pošta")) << "the period and the sources";
    press("Kopírovat");
    EXPECT_EQ(clipboard.text, "Dvě schůzky, odevzdaný návrh.");
}

TEST_F(CardsTest, ASummaryHasTheDateOfItsMaking) {
    startSecured();
    openUi();
    (void)ended(features->records.souhrny().prijmout({random.uuid(),
                                                      "Týden 2",
                                                      "Dvě schůzky.",
                                                      clock.now(),
                                                      clock.now() - std::chrono::days(8),
                                                      clock.now() - std::chrono::days(1),
                                                      {"Pošta"},
                                                      1}));
    settle();
    EXPECT_TRUE(reads("Upraveno 15.01.27 8:00")) << "in the card";
    press("Týden 2");
    EXPECT_EQ(std::ranges::count(names(QAccessible::StaticText), "Upraveno 15.01.27 8:00"), 1)
        << "in the sheet too";
    EXPECT_TRUE(reads("07.01.27 8:00 – 14.01.27 8:00 · Pošta"));
}

TEST_F(CardsTest, AnOpenNoteFollowsItsRecordUntilThePhoneDeletesIt) {
    startSecured();
    openUi();
    auto note = ended(features->records.poznamky().vytvorit("Nákup", "Mléko")).value();
    (void)ended(features->records.poznamky().vytvorit("Jiná", "Text"));
    settle();
    press("Nákup");
    EXPECT_TRUE(reads("Upraveno 15.01.27 8:00"));
    note.body = "Mléko\nChléb";
    ++note.revision;
    phone.send({MacPayload::NoteUpdate{note}}, "n1");
    settle();
    EXPECT_TRUE(reads("Chléb"));
    press("Kopírovat");
    EXPECT_EQ(clipboard.text, "Mléko\nChléb");
    phone.send({MacPayload::Preferences{{"en", {}, {}}}}, "p");
    settle();
    EXPECT_TRUE(reads("Edited 15.01.27 8:00"));
    note.deletedAt = clock.now();
    ++note.revision;
    phone.send({MacPayload::NoteUpdate{note}}, "n2");
    settle();
    EXPECT_FALSE(mentions("Close")) << "nothing is open any more";
}

TEST_F(CardsTest, TheKeyOfTheVoiceIsToldOfAndNeverShown) {
    startSecured();
    openUi();
    EXPECT_TRUE(reads("Čekám na OpenAI klíč z iPhonu"));
    EXPECT_TRUE(reads("iPhone zůstává hlavní zařízení"));
    phone.send({MacPayload::OpenAICredential{"sk-tajny"}}, "k");
    settle();
    EXPECT_TRUE(reads("OpenAI klíč bezpečně převzat z iPhonu"));
    EXPECT_FALSE(mentions("sk-tajny"));
}

TEST_F(CardsTest, TheDeviceAndTheProtocolAreNamed) {
    startPaired();
    openUi();
    EXPECT_TRUE(reads("Identifikátor: " + mac->deviceID().rawValue));
    press("Kopírovat: Identifikátor");
    EXPECT_EQ(clipboard.text, mac->deviceID().rawValue);
    EXPECT_TRUE(reads("Zkopírováno: Identifikátor"));
    EXPECT_TRUE(reads("Verze protokolu: 1.4"));
    EXPECT_TRUE(reads("Verze aplikace: 1.2.3 (4)"));
}

TEST_F(CardsTest, SettingsThatCannotBeReadAreToldOf) {
    const auto damaged =
        "Soubor s nastavením byl poškozený; je odložený jako {soubor}"_sentence("defaults.json.damaged-1");
    defaults.setProblem(damaged);
    startSecured();
    openUi();
    EXPECT_TRUE(reads(damaged.czech()));
    phone.send({MacPayload::Preferences{{"en", {}, {}}}}, "p");
    settle();
    EXPECT_TRUE(reads("The settings file was damaged; it is set aside as defaults.json.damaged-1"));
}

TEST_F(CardsTest, ATroubleOfTheLinkIsSaid) {
    startPaired();
    openUi();
    companion->stav().potiz = Sentence("Relay neodpověděl.");
    settle();
    EXPECT_TRUE(reads("Relay neodpověděl."));
}

TEST_F(CardsTest, TheTrayWindowShowsWhatGoesOnAndLeadsToTheMainWindow) {
    startSecured();
    openUi();
    window()->close();
    settle();
    ui->toggleMenu({});
    settle();
    ASSERT_NE(menu(), nullptr);
    EXPECT_TRUE(reads("Připraven", menu()));
    EXPECT_TRUE(reads("Hlasový rozhovor tahle verze ještě neumí.", menu()));
    EXPECT_FALSE(mentions("Běží: ", menu()));
    fill();
    settle();
    EXPECT_TRUE(reads("Běží: Claude Code", menu()));
    press("Otevřít nastavení", menu());
    EXPECT_EQ(menu(), nullptr);
    ASSERT_NE(window(), nullptr);
    clock.advance(std::chrono::seconds(1));
    ui->toggleMenu({});
    settle();
    press("Ukončit Morvex", menu());
    EXPECT_EQ(quits, 1);
}

TEST_F(CardsTest, TheMemoryOfTheWindowsIsGivenBackWhenTheLastOneCloses) {
    startSecured();
    openUi();
    ui->toggleMenu({});
    settle();
    window()->close();
    settle();
    EXPECT_EQ(releases, 0) << "the tray window is open";
    menu()->close();
    settle();
    EXPECT_EQ(releases, 1);
    ui->openMainWindow();
    settle();
    EXPECT_NE(window(), nullptr);
}

TEST_F(CardsTest, APressOfTheTrayItemThatClosedItsWindowDoesNotOpenItAgain) {
    startSecured();
    openUi();
    ui->toggleMenu({});
    settle();
    menu()->close(); // the press took the keyboard from it
    settle();
    ui->toggleMenu({});
    settle();
    EXPECT_EQ(menu(), nullptr);
    clock.advance(std::chrono::seconds(1));
    ui->toggleMenu({});
    settle();
    EXPECT_NE(menu(), nullptr);
}

} // namespace
} // namespace morvex
