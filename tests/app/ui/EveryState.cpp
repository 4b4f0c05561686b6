#include "tests/app/ui/EveryState.h"

#include "tests/support/InstalledMail.h"

namespace morvex {

using namespace std::chrono_literals;

void EveryState::lookAtEach(const std::vector<std::pair<std::string, StavParovani>>& states,
                            const Look& look) {
    for (const auto& [name, state] : states) {
        showState(state);
        look(name, window());
    }
    showState({StavParovani::Necinne{}});
}

void EveryState::withoutAPhone(const Look& look) {
    start();
    openWithKeyboard();
    look("no phone, a relay of this computer", window());
    companion->setRelayAdresa("https://relay.example.com");
    settle();
    look("no phone", window());
    lookAtEach(
        {{"creating", {StavParovani::Zakladam{}}},
         {"an undrawable code", {StavParovani::CekamNaTelefon{std::string(3000, 'x'), clock.now() + 5min}}},
         {"a code", {StavParovani::CekamNaTelefon{"{}", clock.now() + 5min}}},
         {"an expired code", {StavParovani::CekamNaTelefon{"{}", clock.now() - 1s}}},
         {"a number", {StavParovani::OverCislo{"482 915"}}},
         {"a failure", {StavParovani::Chyba{Sentence("Adresa relaye nedává smysl.")}}}},
        look);
    companion->stav().phoneHasLeft = true;
    lookAtEach({{"a number of a phone that has left", {StavParovani::OverCislo{"482 915"}}}}, look);
    companion->stav().phoneHasLeft = false;
    companion->stav().areKeysInFiles = true;
    settle();
    look("keys in files", window());
    companion->stav().keys = KeysState{};
    settle();
    look("keys that are awaited", window());
    companion->stav().keys = KeysState{KeysState::Case::missing, keychainLockedExplained};
    settle();
    look("a locked keyring", window());
}

void EveryState::withAPhone(const Look& look) {
    using A = MacAvailability;
    defaults.set("slozky.povolene", std::vector<DefaultsItem>{temporary.path().string()});
    startSecured();
    openWithKeyboard();
    look("paired, a folder to renew", window());
    fill();
    settle();
    look("something in every card", window());
    ask();
    look("an action waits", window());
    for (const auto& availability : {MacAvailability{A::Zaneprazdneny{"codex"}},
                                     {A::Pripojuji{3, 5}},
                                     {A::Spanek{clock.now()}},
                                     {A::Preruseno{Sentence("síť neodpovídá")}},
                                     {A::NeplatneParovani{Sentence("relay pár nezná")}},
                                     {A::Offline{}}}) {
        companion->stav().dostupnost = availability;
        settle();
        look(availability.popis(DeviceRole::phone, clock.now()).czech(), window());
    }
    companion->stav().nextAttempt = clock.sinceBoot() + 20s;
    settle();
    look("the next attempt is waited for", window());
    companion->stav().nextAttempt = std::nullopt;
    companion->stav().potiz = Sentence("Relay neodpověděl.");
    settle();
    look("trouble of the link", window());
    lookAtEach({{"creating another pair", {StavParovani::Zakladam{}}},
                {"a failure with a phone", {StavParovani::Chyba{Sentence("Relay neodpověděl.")}}}},
               look);
}

void EveryState::inSheets(const Look& look) {
    osascript = temporary.path() / "osascript";
    installMail(osascript, programs,
                R"(["Domov","Práce v dlouho pojmenované společnosti s ručením omezeným"])");
    haveCalendars();
    startSecured();
    openWithKeyboard();
    fill();
    settle();
    press("Vymazat: Poslední úkoly");
    look("a question", window());
    press("Zrušit");
    press("Odpojit telefon");
    look("a question about the phone", window());
    press("Zrušit");
    picker.answers.push_back({"/"});
    press("Přidat nebo obnovit složku");
    look("a question about a folder", window());
    press("Zrušit");
    press("Nákup");
    look("a note", window());
    press("Zavřít");
    press("Vybrat: Kalendář");
    look("the calendars", window());
    press("Rodina, eva.novakova@example.com");
    look("a calendar that is not allowed", window());
    press("Hotovo");
    press("Spravovat: Vlastní aplikace");
    look("no custom apps", window());
    addApps();
    look("custom apps", window());
    press("Odebrat: Sklad");
    look("a question about an app", window());
    press("Zrušit");
    press("Přidat aplikaci");
    look("the editor", window());
    press("Uložit");
    look("the editor with an error", window());
    press("Zrušit");
    press("Hotovo");
    inMailSheets(look);
}

void EveryState::inMailSheets(const Look& look) {
    press("Spravovat: SMTP / IMAP");
    look("no mail accounts", window());
    addMailAccounts();
    look("mail accounts", window());
    press("Upravit: Práce");
    look("the editor of a mail account", window());
    press("Odstranit účet");
    look("a question about a mail account", window());
    press("Zrušit");
    press("Hotovo");
    press("Spravovat: Apple Mail");
    look("the accounts of Mail", window());
    press("Domov");
    look("an account of Mail that is not allowed", window());
    press("Hotovo");
}

void EveryState::inTheTrayWindow(const Look& look) {
    startSecured();
    openUi();
    auto openMenu = [this] {
        ui->toggleMenu({});
        giveKeyboard(menu());
    };
    openMenu();
    look("idle", menu());
    fill();
    settle();
    look("an agent works", menu());
    menu()->close();
    // The main window comes up with the question.
    ask();
    clock.advance(1s);
    openMenu();
    look("an action waits", menu());
}

} // namespace morvex
