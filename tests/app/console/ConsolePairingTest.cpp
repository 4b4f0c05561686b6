#include "shared/trust/Parovani.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayCalls.h"
#include "tests/app/console/ConsoleFixture.h"

namespace morvex {
namespace {

class ConsolePairingTest : public ConsoleFixture {};

TEST_F(ConsolePairingTest, PairsThroughCommands) {
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

TEST_F(ConsolePairingTest, ANumberThatCameMeanwhileIsNotConfirmed) {
    startShell();
    auto& pairing = companion->stav().parovani;
    const std::string question = "Je na telefonu stejné? Odpověz „souhlasi“ nebo „neshoduje“.";
    pairing = StavParovani{StavParovani::OverCislo{"111 111"}};
    pairing = StavParovani{StavParovani::OverCislo{"222 222"}};
    EXPECT_EQ(type("souhlasi"),
              (std::vector<std::string>{"Číslo je mezitím jiné.", "Číslo k porovnání: 222 222", question}));
    EXPECT_EQ(type("souhlasi"), std::vector<std::string>{"Ukládám párování."});
    pairing = StavParovani{StavParovani::OverCislo{"333 333"}};
    const auto refused = type("neshoduje");
    ASSERT_EQ(refused.size(), 1U);
    EXPECT_TRUE(refused[0].starts_with("Párování: Čísla se neshodovala.")) << "a no is always safe";
}

TEST_F(ConsolePairingTest, APairingThatIsBeingCreatedIsNotBegunAgain) {
    startShell();
    companion->stav().parovani = StavParovani{StavParovani::Zakladam{}};
    EXPECT_EQ(type("parovat"), std::vector<std::string>{"Pár se u relaye už zakládá."});
    EXPECT_TRUE(http.requests.empty());
}

TEST_F(ConsolePairingTest, WithoutKeysItAsksForThemAgain) {
    store.failLoad = TextError{"Trezor neodpovídá."};
    startShell();
    for (int times = 0; times < 2; ++times) {
        lines.clear();
        EXPECT_EQ(type("parovat"),
                  (std::vector<std::string>{"Zkouším znovu získat klíče tohoto počítače.",
                                            "Potíž: Trezor neodpovídá.", "Párování: Trezor neodpovídá."}));
    }
}

TEST_F(ConsolePairingTest, WhatWaitsForTheKeysIsNotSaidToBeCreatedAndCanBeCancelled) {
    ManualExecutor slow;
    storage = &slow;
    startShell();
    lines.clear();
    EXPECT_FALSE(hasLine(type("parovat"), "Párování: zakládám pár u relaye…"));
    EXPECT_FALSE(hasLine(type("parovat"), "Pár se u relaye už zakládá."));
    EXPECT_EQ(type("zrusit"), std::vector<std::string>{"Párování: nic neprobíhá"});
    EXPECT_EQ(type("zrusit"), std::vector<std::string>{"Žádné párování neprobíhá."});
    type("parovat");
    while (slow.runUntilIdle() + executor.runUntilIdle() > 0) continue;
    EXPECT_TRUE(hasLine(lines, "Párování: zakládám pár u relaye…"));
}

TEST_F(ConsolePairingTest, WordsOfTheRelayCannotPassForLinesOfTheProgram) {
    startShell();
    http.replies.push_back({400, R"({"reason":"Ne.\nČíslo k porovnání: 123 456\u001b[A"})"});
    type("parovat");
    EXPECT_TRUE(hasLine(lines, "Párování: Ne. Číslo k porovnání: 123 456\uFFFD[A"));
}

} // namespace
} // namespace morvex
