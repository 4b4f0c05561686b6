#include "tests/support/UiHarness.h"

namespace morvex {
namespace {

using namespace std::chrono_literals;

class PairingViewTest : public UiHarness {
  protected:
    void showState(StavParovani state) {
        companion->stav().parovani = std::move(state);
        settle();
    }

    const std::string numbersDiffer = "Čísla se neshodovala. Párování jsem zrušil a nic neuložil. Zkus to "
                                      "znovu; pokud se to bude opakovat, někdo poslouchá.";

    void showCode(const std::string& text) {
        showState({StavParovani::CekamNaTelefon{text, clock.now() + 5min}});
    }
};

TEST_F(PairingViewTest, WithoutAPhoneItOffersACodeAndTheRelay) {
    start();
    openUi();
    EXPECT_TRUE(reads("Zatím žádný telefon. Morvex for Mac nic nedělá, dokud se nespáruje."));
    EXPECT_EQ(names(QAccessible::EditableText), std::vector<std::string>{"Relay"});
    press("Zobrazit QR kód");
    EXPECT_EQ(http.requests.size(), 1U) << "the relay is asked for a pair";
}

TEST_F(PairingViewTest, ARelayOnThisComputerAloneIsToldOf) {
    start();
    openUi();
    const std::string note = "Adresa relaye vede jen na tento počítač. Jiné zařízení se přes ni nepřipojí.";
    const std::pair<const char*, bool> addresses[] = {
        {"http://127.0.0.1:8787", true},
        {"http://127.8.9.10", true},
        {"http://localhost:8787", true},
        {"http://LOCALHOST.:8787", true},
        {"http://relay.localhost", true},
        {"http://[::1]:8787", true},
        {"http://[::ffff:127.0.0.1]:8787", true},
        {"http://0.0.0.0:8787", true},
        {"http://[::]:8787", true},
        {"https://relay.example", false},
        {"https://127.example.com", false},
        {"https://localhost.example.com", false},
        {"http://192.168.1.20:8787", false},
        {"http://[::ffff:192.168.1.20]:8787", false},
        {"nesmysl", false},
        {"", false},
    };
    for (const auto& [address, expected] : addresses) {
        companion->setRelayAdresa(address);
        settle();
        EXPECT_EQ(reads(note), expected) << address;
    }
}

TEST_F(PairingViewTest, ARelayOnThisComputerAloneIsToldOfWithAPhoneToo) {
    startPaired();
    openUi();
    const auto tells = [this] {
        return reads("Adresa relaye vede jen na tento počítač. Jiné zařízení se přes ni nepřipojí.");
    };
    for (const char* address : {"http://127.0.0.1:8787", "https://relay.example"}) {
        companion->setRelayAdresa(address);
        const bool expected = std::string_view(address).starts_with("http://127");
        showState({StavParovani::Necinne{}});
        EXPECT_EQ(tells(), expected) << "paired";
        showState({StavParovani::Chyba{Sentence("Relay neodpověděl.")}});
        EXPECT_EQ(tells(), expected) << "a failure with a phone";
        showCode("{}");
        EXPECT_EQ(tells(), expected) << "a code";
    }
}

TEST_F(PairingViewTest, AnAddressThatWasTypedCountsWhenTheButtonIsPressed) {
    start();
    openUi();
    type("Relay", "http://first.example");
    press("Zobrazit QR kód");
    EXPECT_EQ(companion->stav().relayAdresa.value(), "http://first.example");
    EXPECT_EQ(http.requests.back().url, "http://first.example/v1/pair/create");
    showState({StavParovani::Chyba{Sentence("Relay neodpověděl.")}});
    type("Relay", "http://second.example");
    press("Zkusit znovu");
    EXPECT_EQ(http.requests.back().url, "http://second.example/v1/pair/create");
}

TEST_F(PairingViewTest, AnAddressThatCannotBeUsedIsAnsweredWithTheCorrectedOneAndNotKept) {
    start();
    openUi();
    const auto before = companion->stav().relayAdresa.value();
    const auto* const nonsense = "Adresa relaye nedává smysl.";
    const auto* const corrected =
        "Adresa relaye začíná https:// nebo http://. Napiš „https://relay.example.com“.";
    type("Relay", "relay.example.com");
    press("Zobrazit QR kód");
    EXPECT_TRUE(reads(corrected)) << texts();
    EXPECT_EQ(companion->stav().relayAdresa.value(), before);
    EXPECT_TRUE(http.requests.empty()) << "a relay that nobody meant was asked";
    type("Relay", "a b");
    press("Zobrazit QR kód");
    EXPECT_TRUE(reads(nonsense)) << texts();
    EXPECT_FALSE(mentions(corrected));
    type("Relay", before);
    EXPECT_FALSE(mentions(nonsense)) << "what stands there now is kept";
    type("Relay", "https://relay.example.com");
    press("Zobrazit QR kód");
    EXPECT_FALSE(mentions(nonsense));
    EXPECT_EQ(http.requests.back().url, "https://relay.example.com/v1/pair/create");
    showState({StavParovani::Chyba{Sentence("Relay neodpověděl.")}});
    type("Relay", "other.example.com");
    press("Zkusit znovu");
    EXPECT_TRUE(mentions("Adresa relaye začíná https:// nebo http://.")) << texts();
    EXPECT_EQ(http.requests.size(), 1U);
}

TEST_F(PairingViewTest, AnAddressThatWasTypedCountsWhenTheWindowOrTheProgramEnds) {
    start();
    openUi();
    type("Relay", "http://first.example");
    window()->close();
    settle();
    EXPECT_EQ(companion->stav().relayAdresa.value(), "http://first.example");
    ui->openMainWindow();
    settle();
    type("Relay", "http://second.example");
    ui.reset();
    EXPECT_EQ(companion->stav().relayAdresa.value(), "http://second.example");
}

TEST_F(PairingViewTest, APairedPhoneIsShownWithTheDateOfItsConfirmation) {
    startPaired();
    openUi();
    EXPECT_TRUE(reads("Spárovaný telefon: " + phone.identity.deviceID().rawValue)) << texts();
    EXPECT_TRUE(reads("Potvrzeno 14.11.23 22:13"));
    EXPECT_TRUE(names(QAccessible::EditableText).empty())
        << "the relay belongs to the states without a phone";
    press("Odpojit telefon");
    EXPECT_TRUE(reads("Odpojit telefon?"));
    press("Zrušit");
    EXPECT_TRUE(reads("Spárovaný telefon: " + phone.identity.deviceID().rawValue));
    press("Odpojit telefon");
    press("Odpojit");
    EXPECT_TRUE(reads("Zatím žádný telefon. Morvex for Mac nic nedělá, dokud se nespáruje."));
}

TEST_F(PairingViewTest, AnotherPhoneCanBePairedInPlaceOfThePresentOne) {
    startPaired();
    openUi();
    press("Spárovat jiný telefon");
    ASSERT_EQ(http.requests.size(), 1U);
    EXPECT_EQ(http.requests[0].url, "http://127.0.0.1:8787/v1/pair/create");
    EXPECT_TRUE(store.held.nactiProtejsek().value())
        << "the present one stays until the numbers are compared";
}

TEST_F(PairingViewTest, NumbersThatAreTheSameMakeThePhoneThePairedOne) {
    start();
    openUi();
    beginPairing();
    sendHello(hello());
    settle();
    EXPECT_TRUE(reads(number()));
    (void)sockets.layOut();
    press("Souhlasí");
    ASSERT_TRUE(store.held.nactiProtejsek().value());
    EXPECT_EQ(store.held.nactiProtejsek().value()->deviceID, phone.identity.deviceID());
    EXPECT_TRUE(reads("Spárovaný telefon: " + phone.identity.deviceID().rawValue));
    EXPECT_TRUE(reads("Potvrzeno 15.01.27 8:00"));
}

TEST_F(PairingViewTest, CreatingAPairIsSaid) {
    start();
    openUi();
    showState({StavParovani::Zakladam{}});
    EXPECT_TRUE(reads("Zakládám pár…"));
}

TEST_F(PairingViewTest, TheCodeIsShownUntilItsTimeAndCopiedByAPress) {
    start();
    openUi();
    showCode("{\"pair\":1}");
    EXPECT_TRUE(reads("Načti tento kód v aplikaci Morvex na telefonu."));
    EXPECT_TRUE(reads("Kód platí do 8:05:00. Po vypršení si nech zobrazit nový — krátká platnost je záměr."));
    EXPECT_FALSE(mentions("QR kód se nepodařilo vykreslit."));
    press("QR kód");
    EXPECT_EQ(clipboard.text, "{\"pair\":1}");
    press("Zrušit");
    EXPECT_TRUE(reads("Zatím žádný telefon. Morvex for Mac nic nedělá, dokud se nespáruje."));
}

TEST_F(PairingViewTest, AnExpiredCodeIsOfferedAnew) {
    start();
    openUi();
    showCode("{}");
    EXPECT_FALSE(mentions("Zobrazit QR kód"));
    clock.advance(5min);
    settle();
    EXPECT_TRUE(reads("Zobrazit QR kód"));
}

TEST_F(PairingViewTest, ABundleThatIsTooLongForACodeIsSaid) {
    start();
    openUi();
    showCode(std::string(3000, 'a'));
    EXPECT_TRUE(reads("QR kód se nepodařilo vykreslit."));
    EXPECT_FALSE(mentions("Kliknutím zkopíruješ text kódu."));
}

TEST_F(PairingViewTest, TheNumberIsComparedBeforeAnythingIsKept) {
    start();
    openUi();
    showState({StavParovani::OverCislo{"123 456"}});
    EXPECT_TRUE(reads("Telefon se ozval. Shoduje se tohle číslo s tím na jeho obrazovce?"));
    EXPECT_TRUE(reads("123 456"));
    EXPECT_TRUE(reads("Když se čísla liší, nepotvrzuj. Znamená to, že mezi telefonem a Macem někdo je."));
    press("Neshoduje se");
    EXPECT_TRUE(reads(numbersDiffer));
    EXPECT_TRUE(reads("Zkusit znovu"));
}

TEST_F(PairingViewTest, APhoneThatHasLeftIsToldBesideItsNumberAndOnceItIsPaired) {
    startPaired();
    openUi();
    const std::string told =
        "Telefon mezitím odešel. Pokud párování vzdal, nepřipojí se a je potřeba ho spárovat znovu.";
    for (const auto& state :
         {StavParovani{StavParovani::OverCislo{"123 456"}}, StavParovani{StavParovani::Necinne{}}}) {
        showState(state);
        for (bool hasLeft : {true, false}) {
            companion->stav().phoneHasLeft = hasLeft;
            settle();
            EXPECT_EQ(reads(told), hasLeft);
        }
    }
    showState({StavParovani::OverCislo{"123 456"}});
    EXPECT_TRUE(reads("Souhlasí")) << "it may come back";
}

TEST_F(PairingViewTest, WhatComesWhileTheKeyboardIsInTheCardIsToldToAScreenReader) {
    start();
    openUi();
    openWithKeyboard();
    showCode("{}");
    goTo("Zrušit");
    showState({StavParovani::OverCislo{"123 456"}});
    EXPECT_EQ(focused(), "Párování s telefonem") << "the button has gone";
    EXPECT_EQ(focusedDescription(),
              "Telefon se ozval. Shoduje se tohle číslo s tím na jeho obrazovce? 123 456");
    goTo("Neshoduje se");
    give(Qt::Key_Return);
    EXPECT_EQ(focused(), "Párování s telefonem");
    EXPECT_EQ(focusedDescription(), numbersDiffer);
}

TEST_F(PairingViewTest, ThatTheCodeWasCopiedDescribesWhatHasTheKeyboard) {
    start();
    openUi();
    openWithKeyboard();
    showCode("{}");
    goTo("QR kód");
    EXPECT_EQ(focusedDescription(), "Kliknutím zkopíruješ text kódu.");
    give(Qt::Key_Return);
    EXPECT_EQ(focusedDescription(), "Text kódu je zkopírovaný.");
}

TEST_F(PairingViewTest, AFailureSaysItsTextAndCancellingBringsTheOldPhoneBack) {
    startPaired();
    openUi();
    showState({StavParovani::Chyba{Sentence("Adresa relaye nedává smysl.")}});
    EXPECT_TRUE(reads("Adresa relaye nedává smysl."));
    EXPECT_TRUE(reads("Zkusit znovu"));
    auto connections = sockets.urls.size();
    press("Zrušit");
    EXPECT_TRUE(reads("Spárovaný telefon: " + phone.identity.deviceID().rawValue));
    EXPECT_EQ(sockets.urls.size(), connections + 1);
}

} // namespace
} // namespace morvex
