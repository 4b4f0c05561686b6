#include "tests/app/ui/ShownCompanion.h"

namespace morvex {
namespace {

/// Every card in every state, against the approved pictures.
class PicturesTest : public ShownCompanion {
  protected:
    StavParovani code(const std::string& text) {
        return {StavParovani::CekamNaTelefon{text, clock.now() + std::chrono::minutes(5)}};
    }
};

/// Run at 100 and at 200 percent.
class PicturesAtAnyScaleTest : public PicturesTest {};

const std::string bundle =
    R"({"agreementKey":"b2JhbGthIHBybyBkb2hvZHUga2xpY2U9PT09PT09PT0=","pairID":"8b6f0f9e-5c1d-4a77-9a54-3f0f6b7a1c11",)"
    R"("pairingToken":"cGFyb3ZhY2kgdG9rZW4","relayURL":"https://relay.example.com","signingKey":"cG9kcGlzIGtsaWM="})";

TEST_F(PicturesTest, PairingInEachOfItsStates) {
    start();
    companion->setRelayAdresa("https://relay.example.com");
    openUi();
    const std::string title = "Párování s telefonem";
    expectApproved(card(title), "pairing-none");
    showState({StavParovani::Zakladam{}});
    expectApproved(card(title), "pairing-creating");
    showState(code(bundle));
    clock.advance(std::chrono::minutes(5));
    settle();
    expectApproved(card(title), "pairing-expired");
    showState(code(std::string(3000, 'x')));
    expectApproved(card(title), "pairing-undrawable");
    showState({StavParovani::OverCislo{"482 915"}});
    expectApproved(card(title), "pairing-number");
    showState({StavParovani::Chyba{Sentence("Adresa relaye nedává smysl.")}});
    expectApproved(card(title), "pairing-failed");
    showState({StavParovani::Necinne{}});
    companion->setRelayAdresa("http://127.0.0.1:8787");
    settle();
    expectApproved(card(title), "pairing-local-relay");
}

TEST_F(PicturesTest, PairingWithAPhone) {
    startPaired();
    openUi();
    const std::string title = "Párování s telefonem";
    expectApproved(card(title), "pairing-paired-local-relay");
    showState({StavParovani::Chyba{Sentence("Relay neodpověděl.")}});
    expectApproved(card(title), "pairing-failed-with-phone-local-relay");
    companion->setRelayAdresa("https://relay.example.com");
    settle();
    expectApproved(card(title), "pairing-failed-with-phone");
    showState({StavParovani::Necinne{}});
    expectApproved(card(title), "pairing-paired");
}

TEST_F(PicturesTest, APairedCompanionWithSomethingInEveryCard) {
    startSecured();
    openUi();
    fill();
    ask();
    expectApproved(column(), "column");
    useColors(true);
    expectApproved(column(), "column-dark");
}

TEST_F(PicturesTest, EmptyCardsSayWhatComesThere) {
    start();
    openUi();
    for (const auto& [title, name] : {std::pair{"Povolené složky", "folders-empty"},
                                      {"Poslední úkoly", "tasks-empty"},
                                      {"Poznámky Morvex", "notes-empty"},
                                      {"Souhrny Morvex", "summaries-empty"}})
        expectApproved(card(title), name);
}

TEST_F(PicturesTest, EachAvailabilityInTheCardOfTheLink) {
    using A = MacAvailability;
    start();
    openUi();
    const std::pair<MacAvailability, const char*> states[] = {
        {{A::Pripraveny{}}, "link-ready"},
        {{A::Zaneprazdneny{"codex"}}, "link-busy"},
        {{A::Pripojuji{3, 5}}, "link-connecting"},
        {{A::Preruseno{Sentence("síť neodpovídá")}}, "link-interrupted"},
        {{A::Spanek{clock.now()}}, "link-asleep"},
        {{A::Offline{}}, "link-offline"},
        {{A::NeplatneParovani{Sentence("relay pár nezná")}}, "link-invalid"},
    };
    for (const auto& [state, name] : states) {
        companion->stav().dostupnost = state;
        settle();
        expectApproved(card("Spojení"), name);
    }
    companion->stav().potiz = Sentence("Relay neodpověděl.");
    settle();
    expectApproved(card("Spojení"), "link-trouble");
}

TEST_F(PicturesTest, WhatIsInTheWayOfACard) {
    defaults.set("slozky.povolene", std::vector<DefaultsItem>{"/usr/share"});
    startSecured();
    // Before there is a switch whose knob would move.
    companion->bdelost().setDrzetVzhuru(true);
    openUi();
    expectApproved(card("Povolené složky"), "folders-renew");
    phone.send({MacPayload::OpenAICredential{"sk-tajny"}}, "k");
    settle();
    expectApproved(card("Hlas na Macu"), "voice-key");
    loginItem.failure = TextError{"disk je plný"};
    press("Spouštět po přihlášení");
    expectApproved(card("Dostupnost"), "wakefulness-trouble");
}

TEST_F(PicturesTest, TheLongestLanguageInTheNarrowestWindow) {
    startSecured();
    openUi();
    fill();
    ask();
    phone.send({MacPayload::Preferences{{"de", {}, {}}}}, "p");
    settle();
    expectApproved(column(window()->minimumWidth()), "column-narrow");
}

TEST_F(PicturesAtAnyScaleTest, TheCodeOfAPairing) {
    start();
    companion->setRelayAdresa("https://relay.example.com");
    openUi();
    showState(code(bundle));
    expectApproved(card("Párování s telefonem"), "pairing-code");
}

TEST_F(PicturesAtAnyScaleTest, TheTrayWindowInItsStates) {
    startSecured();
    openUi();
    ui->toggleMenu({});
    expectApproved(pictureOf(menu()), "menu");
    fill();
    ask();
    expectApproved(pictureOf(menu()), "menu-busy");
}

TEST_F(PicturesTest, Sheets) {
    startSecured();
    openUi();
    fill();
    window()->resize(720, 560);
    press("Vymazat: Poslední úkoly");
    expectApproved(pictureOf(window()), "sheet-clear");
    press("Zrušit");
    press("Odpojit telefon");
    expectApproved(pictureOf(window()), "sheet-unpair");
    press("Zrušit");
    press("Nákup");
    expectApproved(pictureOf(window()), "sheet-note");
    press("Zavřít");
    press("Spravovat: Vlastní aplikace");
    expectApproved(pictureOf(window()), "sheet-apps-empty");
    addApps();
    expectApproved(pictureOf(window()), "sheet-apps");
    press("Odebrat: Sklad");
    expectApproved(pictureOf(window()), "sheet-app-removal");
    press("Zrušit");
    const auto offers = [](const std::string& description) {
        return HttpReply{200,
                         R"({"result":{"tools":[{"name":"find","description":")" + description +
                             R"("},{"name":"remove","description":"Smaže položku."}]}})",
                         {}};
    };
    http.replies.assign({offers("Najde položku ve skladu."), {503, "", {}}});
    features->customApps.service().refreshSoon();
    settle();
    expectApproved(pictureOf(window()), "sheet-apps-news");
    press("Změny nástrojů: Sklad");
    expectApproved(pictureOf(window()), "sheet-tool-news");
    press("Zavřít");
    press("Přidat aplikaci");
    expectApproved(pictureOf(window()), "sheet-app-editor");
    press("Uložit");
    expectApproved(pictureOf(window()), "sheet-app-error");
}

TEST_F(PicturesTest, TheSheetOfTheCalendars) {
    haveCalendars();
    startSecured();
    EXPECT_TRUE(ended(features->organizer.calendar().setCalendarEnabled("b", false)));
    openUi();
    press("Vybrat: Kalendář");
    expectApproved(pictureOf(window()), "sheet-calendars");
}

TEST_F(PicturesTest, MailSheets) {
    startSecured();
    openUi();
    window()->resize(720, 560);
    press("Spravovat: SMTP / IMAP");
    expectApproved(pictureOf(window()), "sheet-mail-empty");
    auto& smtp = features->mail.smtp();
    const auto add = [&](const char* label, const char* address, const char* smtpHost) {
        return ended(smtp.ulozit({"", label, address, "Eva Malá", "imap.example.com", smtpHost}, "x"))
            .value();
    };
    const auto work = add("Práce", "eva@example.com", "smtp.example.com");
    add("", "eva.mala@skola.example", "");
    for (const bool isHeard : {true, false}) {
        if (isHeard) tls.layOut()->deliver("* OK\r\nA0001 OK\r\nA0002 OK\r\n");
        executor.run(smtp.otestovat(isHeard ? work : add("Doma", "eva@doma.example", "smtp.doma.example")));
    }
    settle();
    expectApproved(pictureOf(window()), "sheet-mail");
    press("Upravit: Práce");
    expectApproved(pictureOf(window()), "sheet-mail-editor");
    press("Odstranit účet");
    expectApproved(pictureOf(window()), "sheet-mail-removal");
}

} // namespace
} // namespace morvex
