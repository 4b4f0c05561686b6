#include "tests/support/PairingHarness.h"

namespace morvex {
namespace {

using namespace std::chrono_literals;

using PairingFlowTest = PairingHarness;

const std::string doNotMatch =
    "Čísla se neshodovala. Párování jsem zrušil a nic neuložil. Zkus to znovu; pokud se to bude "
    "opakovat, někdo poslouchá.";

TEST_F(PairingFlowTest, ShowsACodeWithThePublicKeysOfThisComputer) {
    start();
    beginPairing();
    const auto* waiting = state().as<StavParovani::CekamNaTelefon>();
    ASSERT_TRUE(waiting);
    EXPECT_EQ(waiting->platiDo, clock.now() + 10min);
    auto bundle = Parovani::bundleOf(waiting->qr).value();
    EXPECT_EQ(bundle.v, ProtocolVersion::current);
    EXPECT_EQ(bundle.pairID, PairID{"NEW"});
    EXPECT_EQ(bundle.pairingToken, "token-1");
    EXPECT_EQ(bundle.relayURL, "http://127.0.0.1:8787");
    EXPECT_EQ(bundle.signingKey, mac->signingKey());
    EXPECT_EQ(bundle.agreementKey, mac->agreementKey());
    ASSERT_EQ(http.requests.size(), 1U);
    EXPECT_EQ(http.requests[0].url, "http://127.0.0.1:8787/v1/pair/create");
    EXPECT_EQ(decode<ZalozitPozadavek>(http.requests[0].body).value().role, DeviceRole::mac);
}

TEST_F(PairingFlowTest, AgreeingKeepsThePeerAndConnects) {
    start();
    beginPairing();
    clock.advance(5s);
    const auto metAt = clock.now();
    sendHello(hello());
    const auto* compare = state().as<StavParovani::OverCislo>();
    ASSERT_TRUE(compare);
    EXPECT_EQ(compare->cislo, number());
    EXPECT_FALSE(store.held.nactiProtejsek().value()) << "nothing is kept before the user agreed";

    auto linkSocket = sockets.layOut();
    clock.advance(5s);
    flow().potvrditCislo(compare->cislo);
    executor.runUntilIdle();
    EXPECT_EQ(state(), StavParovani{});
    auto kept = store.held.nactiProtejsek().value();
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->deviceID, phone.identity.deviceID());
    EXPECT_EQ(kept->role, DeviceRole::phone);
    EXPECT_EQ(kept->potvrzeno, metAt);
    EXPECT_EQ(kept->relayURL, "http://127.0.0.1:8787");
    EXPECT_EQ(companion->stav().protejsek.value(), kept);
    phone.attach(linkSocket, *mac);
    phone.logIn();
    executor.runUntilIdle();
    phone.exchangeHellos();
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Připraven");
}

TEST_F(PairingFlowTest, ANumberThatIsNoLongerOnScreenConfirmsNothing) {
    start();
    beginPairing();
    sendHello(hello());
    auto first = number();
    auto other = DeviceIdentity::generate();
    sendHello(Parovani::makeHello(other, phone.pair));
    EXPECT_NE(state().as<StavParovani::OverCislo>()->cislo, first) << "a later hello replaces the number";
    flow().potvrditCislo(first);
    executor.runUntilIdle();
    EXPECT_FALSE(store.held.nactiProtejsek().value());
}

TEST_F(PairingFlowTest, ANumberThatDiffersKeepsNothing) {
    start();
    auto socket = beginPairing();
    sendHello(hello());
    flow().odmitnoutCislo();
    executor.runUntilIdle();
    EXPECT_EQ(failure(), doNotMatch);
    EXPECT_FALSE(store.held.nactiProtejsek().value());
    EXPECT_FALSE(socket->closed.empty());
}

TEST_F(PairingFlowTest, SentencesForAHelloThatIsNoGood) {
    start();
    beginPairing();
    sendBytes(toBytes("ne"));
    EXPECT_EQ(failure(), "Telefon poslal nekompatibilní párovací zprávu: Zpráva není platný JSON (bajt 1).");

    auto forged = hello();
    forged.agreementKey = DeviceIdentity::generate().agreementKey();
    sendHello(forged);
    EXPECT_EQ(failure(), "Představení telefonu má neplatný podpis. Nic jsem neuložil.");

    auto otherName = hello();
    otherName.device = {"AAAA"};
    sendHello(otherName);
    EXPECT_EQ(failure(), "Představení telefonu má neplatný podpis. Nic jsem neuložil.");

    auto unsafe = hello();
    unsafe.agreementKey = AgreementPublicKey{};
    auto signedText = Parovani::helloSignedText(phone.pair, unsafe.device, unsafe.agreementKey);
    unsafe.signature = phone.identity.sign(asBytes(signedText));
    sendHello(unsafe);
    EXPECT_EQ(failure(), "Klíč telefonu nejde použít: Veřejný klíč protějšku není bezpečný.");

    flow().potvrditCislo("");
    executor.runUntilIdle();
    EXPECT_FALSE(store.held.nactiProtejsek().value());
    sendHello(hello());
    EXPECT_TRUE(state().as<StavParovani::OverCislo>()) << "a good hello is still accepted afterwards";
}

TEST_F(PairingFlowTest, EnvelopesThatAreNotForThisPairingChangeNothing) {
    start();
    beginPairing();
    auto before = state();
    sendHello(hello(), "session");
    phone.deliver(
        {RelayMessage::Forward{keyExchange({"OTHER"}, phone.identity.deviceID(), mac->deviceID(), "parovani",
                                           toBytes(encode(hello())), clock.now(), {})}});
    phone.deliver(
        {RelayMessage::Forward{keyExchange(phone.pair, phone.identity.deviceID(), {"SOMEBODY"}, "parovani",
                                           toBytes(encode(hello())), clock.now(), {})}});
    auto data = keyExchange(phone.pair, phone.identity.deviceID(), mac->deviceID(), "parovani",
                            toBytes(encode(hello())), clock.now(), {});
    data.kind = EnvelopeKind::data;
    phone.deliver({RelayMessage::Forward{data}});
    executor.runUntilIdle();
    EXPECT_EQ(state(), before);
}

TEST_F(PairingFlowTest, AnAddressWithoutAHostIsRefusedInWords) {
    start();
    for (const char* bad : {"nesmysl", "", "http://", "http:///v1", "a b"}) {
        companion->setRelayAdresa(bad);
        flow().zacitParovani();
        EXPECT_EQ(failure(), "Adresa relaye nedává smysl.") << bad;
    }
    EXPECT_TRUE(http.requests.empty());
}

TEST_F(PairingFlowTest, ARelayThatRefusesIsQuoted) {
    start();
    http.replies.push_back({429, R"({"reason":"Moc pokusů."})"});
    flow().zacitParovani();
    EXPECT_TRUE(state().as<StavParovani::Zakladam>());
    executor.runUntilIdle();
    EXPECT_EQ(failure(), "Moc pokusů.");
    flow().zacitParovani();
    executor.runUntilIdle();
    EXPECT_EQ(failure(), "síť neodpovídá");
}

TEST_F(PairingFlowTest, TheSecondOfTwoBeginningsCounts) {
    start();
    layOutPair("FIRST");
    layOutPair("SECOND");
    flow().zacitParovani();
    flow().zacitParovani();
    executor.runUntilIdle();
    ASSERT_TRUE(state().as<StavParovani::CekamNaTelefon>());
    EXPECT_EQ(Parovani::bundleOf(state().as<StavParovani::CekamNaTelefon>()->qr).value().pairID,
              PairID{"SECOND"});
}

TEST_F(PairingFlowTest, TheOldLinkFallsOnlyAfterTheNewPairWasMade) {
    auto old = startSecured();
    http.replies.push_back({500, ""});
    flow().zacitParovani();
    executor.runUntilIdle();
    EXPECT_EQ(failure(), "Relay odmítl požadavek (500).");
    EXPECT_TRUE(old->closed.empty());
    EXPECT_EQ(availability(), "Připraven");
    beginPairing();
    EXPECT_FALSE(old->closed.empty());
}

TEST_F(PairingFlowTest, CancellingBringsTheOldPhoneBack) {
    startSecured();
    beginPairing();
    auto urls = sockets.urls.size();
    sockets.layOut();
    flow().zrusitParovani();
    executor.runUntilIdle();
    EXPECT_EQ(state(), StavParovani{});
    EXPECT_EQ(sockets.urls.size(), urls + 1);
    EXPECT_EQ(availability(), "Připojuji…");
}

TEST_F(PairingFlowTest, CancellingWhileThePairIsMadeDropsTheLateAnswer) {
    start();
    layOutPair();
    flow().zacitParovani();
    flow().zrusitParovani();
    executor.runUntilIdle();
    EXPECT_EQ(state(), StavParovani{});
    EXPECT_TRUE(sockets.urls.empty());
}

TEST_F(PairingFlowTest, RefusingTheNumberDoesNotReconnectTheOldPhone) {
    startSecured();
    beginPairing();
    sendHello(hello());
    EXPECT_TRUE(store.held.nactiProtejsek().value()) << "the old peer stays until the user agrees";
    auto urls = sockets.urls.size();
    flow().odmitnoutCislo();
    executor.runUntilIdle();
    EXPECT_EQ(sockets.urls.size(), urls);
}

TEST_F(PairingFlowTest, AnEndWhileThePairIsMadeOrThePeerSavedIsClean) {
    start();
    layOutPair();
    flow().zacitParovani();
    end();
    EXPECT_TRUE(sockets.urls.empty());

    start();
    beginPairing();
    sendHello(hello());
    auto urls = sockets.urls.size();
    flow().potvrditCislo(number());
    end();
    EXPECT_EQ(sockets.urls.size(), urls);
    EXPECT_TRUE(store.held.nactiProtejsek().value()) << "the user has confirmed it";
}

TEST_F(PairingFlowTest, APhonePairedDuringARevocationStays) {
    startSecured();
    auto another = phone.asPeer();
    another.pairID = {"ANOTHER"};
    flow().odvolat();
    (void)store.held.ulozProtejsek(another);
    companion->stav().protejsek = another;
    executor.runUntilIdle();
    EXPECT_EQ(store.held.nactiProtejsek().value(), another);
    EXPECT_EQ(companion->stav().protejsek.value(), another);
}

TEST_F(PairingFlowTest, AnotherPhoneEndsWhatTheOneBeforeHasBegunAndTheSamePhoneDoesNot) {
    programs.answer = [](const OutsideProgram& program) -> std::optional<ScriptedPrograms::Answer> {
        if (program.binary.ends_with("/ls")) return std::nullopt;
        return ScriptedPrograms::Answer{.status = 127};
    };
    const DeviceIdentity another = DeviceIdentity::generate();
    for (const auto* next : {&phone.identity, &another}) {
        startSecured();
        allowFolder("Projekty");
        phone.call("mac.terminal.run", R"({"program":"ls"})", "old");
        executor.runUntilIdle();
        auto& running = *programs.children.back();
        beginPairing();
        sendHello(Parovani::makeHello(*next, phone.pair));
        EXPECT_TRUE(running.signals.empty()) << "nobody has agreed yet";
        sockets.layOut();
        flow().potvrditCislo(state().as<StavParovani::OverCislo>()->cislo);
        executor.runUntilIdle();
        EXPECT_EQ(running.signals.empty(), next == &phone.identity);
        EXPECT_EQ(companion->stav().protejsek.value()->deviceID, next->deviceID());
        running.listener->exited(0);
        running.listener->ended();
        phone.pair = {"PAIR"};
        end();
    }
}

TEST_F(PairingFlowTest, APeerThatCannotBeKeptIsToldAndNotUsed) {
    agreeInVain();
    EXPECT_EQ(failure(), "Párování se nepodařilo uložit: Trezor odmítl.");
    EXPECT_FALSE(companion->stav().protejsek.value());
}

TEST_F(PairingFlowTest, RevocationNamesThePhoneAndForgetsItWhateverTheRelaySays) {
    for (int status : {204, 500, 0}) {
        auto socket = startSecured();
        http.requests.clear();
        if (status != 0) http.replies.push_back({status, ""});
        flow().odvolat();
        executor.runUntilIdle();
        ASSERT_EQ(http.requests.size(), 1U);
        EXPECT_EQ(http.requests[0].url, "http://relay.example/v1/device/revoke");
        auto request = decode<OdvolatPozadavek>(http.requests[0].body).value();
        EXPECT_EQ(request.target, phone.identity.deviceID());
        EXPECT_EQ(request.by, mac->deviceID());
        EXPECT_FALSE(store.held.nactiProtejsek().value());
        EXPECT_FALSE(companion->stav().protejsek.value());
        EXPECT_EQ(availability(), "Nespárováno");
        EXPECT_FALSE(socket->closed.empty());
        end();
    }
}

TEST_F(PairingFlowTest, RevocationWithoutAPhoneDoesNothingAndWithoutAUsableAddressItSaysWhy) {
    start();
    flow().odvolat();
    executor.runUntilIdle();
    EXPECT_TRUE(http.requests.empty());
    EXPECT_EQ(failure(), "none");
    end();
    (void)store.held.ulozProtejsek(phone.asPeer("nesmysl"));
    start();
    flow().odvolat();
    executor.runUntilIdle();
    EXPECT_TRUE(http.requests.empty());
    EXPECT_TRUE(companion->stav().protejsek.value());
    EXPECT_EQ(failure(), "Uložená adresa relaye nedává smysl.");
}

} // namespace
} // namespace morvex
