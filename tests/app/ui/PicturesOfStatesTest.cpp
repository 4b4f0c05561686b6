#include "tests/app/ui/ShownCompanion.h"

#include <filesystem>

namespace morvex {
namespace {

/// States of single cards that the whole column does not show, and the dark looks.
class PicturesOfStatesTest : public ShownCompanion {
  protected:
    void breakStoreFile(const std::string& name) {
        // A folder where the file should be can be neither read nor written.
        std::filesystem::create_directories(std::filesystem::path(folders.applicationSupport()) / "Morvex" /
                                            name);
    }

    void showAgents(const AgentStatus& codex, const AgentStatus& claude) {
        features->agents.stav().codex = codex;
        features->agents.stav().claude = claude;
        settle();
    }
};

TEST_F(PicturesOfStatesTest, Approvals) {
    start();
    openUi();
    ask("Smazat poznámku", "");
    expectApproved(card("Čeká na potvrzení: Smazat poznámku"), "approval-without-detail");
    press("Zamítnout");
    std::string letter = "Komu: jana@example.com\n\n";
    for (int line = 0; line < 12; ++line)
        letter += "Dlouhá věta, která se do okna nevejde na jeden řádek, a proto se zalomí tam, kde má.\n";
    ask("Odeslat e-mail s velmi dlouhým předmětem, který se na jeden řádek nevejde",
        letter + std::string(120, 'x'));
    expectApproved(
        card("Čeká na potvrzení: Odeslat e-mail s velmi dlouhým předmětem, který se na jeden řádek nevejde"),
        "approval-long");
}

TEST_F(PicturesOfStatesTest, Integrations) {
    start();
    openUi();
    const AgentStatus unknown{false, {}, {}, AgentsFeature::Stav::notKnownYet};
    showAgents(unknown, unknown);
    companion->stav().detectionsUnderWay = 1;
    settle();
    expectApproved(card("Integrace"), "integrations-detecting");
    companion->stav().detectionsUnderWay = 0;
    showAgents({true, "0.9.0", "/usr/bin/codex", {}},
               {true, "2.1.0", "/usr/bin/claude",
                Sentence("Claude Code je nainstalovaný, ale přihlášení není platné nebo kontrola "
                         "neodpověděla. V Terminálu spusť `claude auth login` a potom zde klikni na "
                         "Zjistit znovu.")});
    expectApproved(card("Integrace"), "integrations-problem");
}

TEST_F(PicturesOfStatesTest, Wakefulness) {
    start();
    companion->bdelost().setDrzetVzhuru(true);
    openUi();
    auto& state = companion->bdelost().stav();
    state.naNapajeni = false;
    settle();
    expectApproved(card("Dostupnost"), "wakefulness-battery");
    state.spi = true;
    settle();
    expectApproved(card("Dostupnost"), "wakefulness-asleep");
    state.spi = false;
    state.naNapajeni = true;
    state.keepAwakeTrouble = Sentence(
        "Počítač se nepodařilo udržet vzhůru: Přihlašovací služba systému to nezařídila (Access denied).");
    settle();
    expectApproved(card("Dostupnost"), "wakefulness-not-held");
}

TEST_F(PicturesOfStatesTest, TroubleOfWhatIsKept) {
    for (const char* name : {"notes-from-iphone.json", "summaries-from-iphone.json"}) breakStoreFile(name);
    startSecured();
    openUi();
    const auto path = (temporary.path() / "Smlouvy").string();
    std::filesystem::create_directory(path);
    bookmarks.refusals[path] = "No space left on device";
    picker.answers.push_back({path});
    press("Přidat nebo obnovit složku");
    phone.send({MacPayload::NoteUpdate{{Uuid::parse("22222222-2222-4222-8222-222222222222").value(),
                                        "Nákup",
                                        "Mléko",
                                        clock.now(),
                                        clock.now(),
                                        1,
                                        {}}}},
               "n");
    EXPECT_FALSE(ended(
        features->records.souhrny().prijmout({Uuid::parse("11111111-1111-4111-8111-111111111111").value(),
                                              "Týden 2",
                                              "Dvě schůzky.",
                                              clock.now(),
                                              clock.now(),
                                              clock.now(),
                                              {},
                                              1})));
    settle();
    expectApproved(card("Povolené složky"), "folders-trouble");
    expectApproved(card("Poznámky Morvex"), "notes-trouble");
    expectApproved(card("Souhrny Morvex"), "summaries-trouble");
}

TEST_F(PicturesOfStatesTest, TroubleOfATask) {
    startSecured();
    openUi();
    fill();
    settle();
    press("Pokračovat v Claude: Najdi, proč padá sestavení");
    expectApproved(card("Poslední úkoly"), "tasks-trouble");
}

TEST_F(PicturesOfStatesTest, ACodeThatIsCopied) {
    start();
    companion->setRelayAdresa("https://relay.example.com");
    openUi();
    showState({StavParovani::CekamNaTelefon{"{\"pair\":1}", clock.now() + std::chrono::minutes(5)}});
    press("QR kód");
    expectApproved(card("Párování s telefonem"), "pairing-code-copied");
}

TEST_F(PicturesOfStatesTest, Keys) {
    start();
    openUi();
    auto& state = companion->stav();
    state.keys = KeysState{};
    settle();
    expectApproved(card("Párování s telefonem"), "pairing-keys-awaited");
    expectApproved(card("Spojení"), "link-keys-awaited");
    state.keys = KeysState{KeysState::Case::missing, keychainLockedExplained};
    settle();
    expectApproved(card("Párování s telefonem"), "pairing-keyring-locked");
    state.keys = KeysState{KeysState::Case::present};
    state.areKeysInFiles = true;
    settle();
    expectApproved(card("Spojení"), "link-keys-in-files");
}

TEST_F(PicturesOfStatesTest, WaitingForThePhoneAndForTheRelay) {
    start();
    openUi();
    auto& state = companion->stav();
    state.phoneHasLeft = true;
    showState({StavParovani::OverCislo{"482 915"}});
    expectApproved(card("Párování s telefonem"), "pairing-phone-left");
    state.dostupnost = MacAvailability{MacAvailability::Pripojuji{6, 20}};
    state.nextAttempt = clock.sinceBoot() + std::chrono::seconds(20);
    settle();
    expectApproved(card("Spojení"), "link-next-attempt");
}

TEST_F(PicturesOfStatesTest, DarkPairing) {
    start();
    companion->setRelayAdresa("http://127.0.0.1:8787");
    openUi();
    useColors(true);
    const std::string title = "Párování s telefonem";
    expectApproved(card(title), "pairing-none-dark");
    showState({StavParovani::CekamNaTelefon{"{\"pair\":1}", clock.now() + std::chrono::minutes(5)}});
    expectApproved(card(title), "pairing-code-dark");
    showState({StavParovani::OverCislo{"482 915"}});
    expectApproved(card(title), "pairing-number-dark");
    showState({StavParovani::Chyba{Sentence("Adresa relaye nedává smysl.")}});
    expectApproved(card(title), "pairing-failed-dark");
}

TEST_F(PicturesOfStatesTest, DarkLinkSheetsAndTrayWindow) {
    startSecured();
    openUi();
    fill();
    settle();
    useColors(true);
    companion->stav().dostupnost =
        MacAvailability{MacAvailability::NeplatneParovani{Sentence("relay pár nezná")}};
    companion->stav().potiz = Sentence("Relay neodpověděl.");
    settle();
    expectApproved(card("Spojení"), "link-invalid-dark");
    window()->resize(720, 560);
    press("Týden 2");
    expectApproved(pictureOf(window()), "sheet-summary-dark");
    press("Zavřít");
    press("Spravovat: Vlastní aplikace");
    press("Přidat aplikaci");
    press("Uložit");
    expectApproved(pictureOf(window()), "sheet-app-error-dark");
    press("Zrušit");
    press("Hotovo");
    ask();
    ui->toggleMenu({});
    expectApproved(pictureOf(menu()), "menu-busy-dark");
}

} // namespace
} // namespace morvex
