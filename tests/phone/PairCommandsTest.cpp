#include "phone/PairCommands.h"

#include "shared/trust/Parovani.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayCalls.h"
#include "tests/phone/PhoneFixture.h"

#include <gmock/gmock.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

class PairCommandsTest : public PhoneFixture {
  protected:
    std::string qr() const { return Parovani::qrText(mac.bundle()); }

    std::string number() const {
        auto key = Parovani::pairKey(mac.identity.dohodovy(), identita->agreementKey(), identita->deviceID(),
                                     mac.identity.deviceID());
        return Parovani::comparisonNumber(*key);
    }

    /// The introductions that reached the relay, each of them checked as the Mac does.
    std::size_t takeIntroductions() {
        std::size_t count = 0;
        for (const auto& envelope : mac.takeEnvelopes()) {
            EXPECT_EQ(envelope.kind, EnvelopeKind::keyExchange);
            EXPECT_EQ(envelope.requestID, "parovani");
            EXPECT_EQ(envelope.pair, mac.pair);
            EXPECT_EQ(envelope.to, mac.identity.deviceID());
            auto hello = decode<PairingHello>(envelope.ciphertext);
            EXPECT_TRUE(hello && Parovani::checkHello(*hello, mac.pair));
            ++count;
        }
        return count;
    }

    bool isStored() { return store.nactiProtejsek().value().has_value(); }
};

TEST_F(PairCommandsTest, AYesOnTheTerminalStoresTheMac) {
    keyboard.interactive = true;
    startPairing({"pair", qr().c_str()});
    EXPECT_EQ(takeIntroductions(), 1U);
    EXPECT_THAT(out.str(), HasSubstr(number()));
    EXPECT_THAT(err.str(), HasSubstr("Souhlasí číslo? [a/n]"));
    EXPECT_FALSE(ended);
    EXPECT_FALSE(isStored());

    keyboard.type("a");
    run();
    EXPECT_EQ(ended, ExitCode::done);
    auto stored = store.nactiProtejsek().value();
    ASSERT_TRUE(stored);
    auto expected = mac.asPeer();
    expected.potvrzeno = clock.now();
    EXPECT_EQ(*stored, expected);
}

TEST_F(PairCommandsTest, ANewMacHasNothingOfWhatTheOneBeforeHad) {
    const auto note = records.create("Nákup", "mléko").value();
    ASSERT_TRUE(records.confirm(note.id, 1));
    ASSERT_TRUE(settings.keep(std::vector<CompanionCustomApp>{}));
    settings.confirm(PhoneSettings::Kind::apps);
    startPairing({"pair", "--yes", qr().c_str()});
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_FALSE(PhoneRecords::load(folder.path(), clock, random).isConfirmed(note.id));
    EXPECT_FALSE(settings.isConfirmed(PhoneSettings::Kind::apps));
}

TEST_F(PairCommandsTest, JoinsAtTheRelayAsThePhoneWithTheToken) {
    startPairing({"pair", "--yes", qr().c_str()});
    ASSERT_EQ(http.requests.size(), 1U);
    EXPECT_EQ(http.requests[0].url, "http://relay.example/v1/pair/join");
    auto call = decode<PripojitPozadavek>(http.requests[0].body).value();
    EXPECT_EQ(call,
              (PripojitPozadavek{"token", identita->deviceID(), identita->signingKey(), DeviceRole::phone}));
}

TEST_F(PairCommandsTest, ANoStoresNothing) {
    startPairing({"pair", qr().c_str()});
    keyboard.type("NE");
    run();
    EXPECT_EQ(ended, ExitCode::notConfirmed);
    EXPECT_FALSE(isStored());
}

TEST_F(PairCommandsTest, OtherWordsAreAskedAgainAndTheEndOfTheInputIsANo) {
    startPairing({"pair", qr().c_str()});
    keyboard.type("možná");
    run();
    EXPECT_FALSE(ended);
    keyboard.end();
    run();
    EXPECT_EQ(ended, ExitCode::notConfirmed);
    EXPECT_FALSE(isStored());
}

TEST_F(PairCommandsTest, AQuestionThatNobodyAnswersEndsAfterFiveMinutes) {
    startPairing({"pair", qr().c_str()});
    pass(5min);
    EXPECT_EQ(ended, ExitCode::notConfirmed);
    EXPECT_FALSE(isStored());
}

TEST_F(PairCommandsTest, WhatWasTypedBeforeTheQuestionIsNoAnswer) {
    keyboard.interactive = true;
    keyboard.type("a");
    startPairing({"pair", qr().c_str()});
    EXPECT_FALSE(ended);
}

TEST_F(PairCommandsTest, YesConfirmsWithoutAQuestionAndStillShowsTheNumber) {
    startPairing({"pair", "--yes", qr().c_str()});
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_EQ(takeIntroductions(), 1U);
    EXPECT_EQ(out.str(), "Číslo pro porovnání s Macem: " + number() + "\n");
    EXPECT_TRUE(isStored());
}

TEST_F(PairCommandsTest, JsonGivesTheNumberAlone) {
    startPairing({"pair", "--yes", "--json", qr().c_str()});
    EXPECT_EQ(out.str(), R"({"number":")" + number() + "\"}\n");
}

TEST_F(PairCommandsTest, ReadsTheCodeFromTheInputAndTheAnswerBehindIt) {
    keyboard.type("  " + qr() + " ");
    keyboard.type("ano");
    startPairing({"pair", "-"});
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_TRUE(isStored());
}

TEST_F(PairCommandsTest, IntroducesItselfWhenTheMacComesAndAgainWhenItComesBack) {
    startPairing({"pair", qr().c_str()}, false);
    EXPECT_EQ(takeIntroductions(), 0U);
    EXPECT_EQ(out.str(), "");
    mac.deliver({RelayMessage::PeerOnline{true}});
    run();
    EXPECT_EQ(takeIntroductions(), 1U);
    EXPECT_THAT(out.str(), HasSubstr(number()));
    mac.deliver({RelayMessage::PeerOnline{false}});
    mac.deliver({RelayMessage::PeerOnline{true}});
    run();
    EXPECT_EQ(takeIntroductions(), 1U);
}

TEST_F(PairCommandsTest, GoesOnWhenTheConnectionBreaksDuringTheQuestion) {
    startPairing({"pair", qr().c_str()});
    takeIntroductions();
    auto second = sockets.layOut();
    socket->breakWith("přerušeno");
    run();
    mac.attach(second, *identita);
    pass(1s);
    mac.logIn();
    run();
    EXPECT_EQ(takeIntroductions(), 1U);
    keyboard.type("a");
    run();
    EXPECT_EQ(ended, ExitCode::done);
}

TEST_F(PairCommandsTest, AMacThatDoesNotComeIsUnreachable) {
    startPairing({"pair", "--timeout", "10", qr().c_str()}, false);
    pass(9s);
    EXPECT_FALSE(ended);
    pass(1s);
    EXPECT_EQ(ended, ExitCode::macUnreachable);
    EXPECT_FALSE(isStored());
}

TEST_F(PairCommandsTest, TheRelaysRefusalsEndThePairing) {
    http.replies.push_back({410, R"({"reason":"Tenhle párovací kód už někdo použil."})"});
    start({"pair", "--yes", qr().c_str()});
    EXPECT_EQ(ended, ExitCode::relayUnreachable);
    EXPECT_THAT(err.str(), HasSubstr("Tenhle párovací kód už někdo použil."));

    start({"pair", "--yes", qr().c_str()});
    EXPECT_EQ(ended, ExitCode::relayUnreachable);
    EXPECT_THAT(err.str(), HasSubstr("síť neodpovídá"));
    EXPECT_FALSE(isStored());
}

TEST_F(PairCommandsTest, AFailureAtTheLoginEndsThePairing) {
    startPairing({"pair", "--yes", qr().c_str()}, false);
    mac.deliver({RelayMessage::Failure{RelayFailure::peerOffline, "Mac tu není."}});
    run();
    EXPECT_FALSE(ended);
    mac.deliver({RelayMessage::Failure{RelayFailure::revoked, "Pár je zrušený."}});
    run();
    EXPECT_EQ(ended, ExitCode::relayUnreachable);
    EXPECT_THAT(err.str(), HasSubstr("Pár je zrušený."));
}

TEST_F(PairCommandsTest, ARelayThatNamesAnotherPairIsNotBelieved) {
    http.replies.push_back({200, encode(PripojitOdpoved{PairID{"OTHER"}})});
    start({"pair", "--yes", qr().c_str()});
    EXPECT_EQ(ended, ExitCode::relayUnreachable);
    EXPECT_TRUE(sockets.urls.empty());
    EXPECT_FALSE(isStored());
}

TEST_F(PairCommandsTest, BadCodesAreRefusedBeforeTheRelayHearsOfThem) {
    auto foreign = mac.bundle();
    foreign.v = {2, 0};
    auto nowhere = mac.bundle();
    nowhere.relayURL = "nikam";
    auto weak = mac.bundle();
    weak.agreementKey = {};
    const std::vector<std::tuple<std::string, ExitCode, std::string>> rows{
        {"nesmysl", ExitCode::usage, "QR kód nejde přečíst: "},
        {"{}", ExitCode::usage, "QR kód nejde přečíst: "},
        {"chybi.png", ExitCode::usage, "Takový soubor není."},
        {Parovani::qrText(foreign), ExitCode::refused, "jinou verzí protokolu (1.4 proti 2.0)"},
        {Parovani::qrText(nowhere), ExitCode::usage, "Adresa relaye v QR kódu nedává smysl."},
        {Parovani::qrText(weak), ExitCode::refused, "Klíč Macu nejde použít: "},
    };
    for (const auto& [text, code, words] : rows) {
        start({"pair", "--yes", text.c_str()});
        EXPECT_EQ(ended, code) << text;
        EXPECT_THAT(err.str(), HasSubstr(words));
    }
    EXPECT_TRUE(http.requests.empty());
    EXPECT_FALSE(isStored());
}

TEST_F(PairCommandsTest, AnotherMinorVersionIsWelcome) {
    auto newer = mac.bundle();
    newer.v = {1, 9};
    startPairing({"pair", "--yes", Parovani::qrText(newer).c_str()});
    EXPECT_EQ(ended, ExitCode::done);
}

TEST_F(PairCommandsTest, CtrlCEndsThePairingAndStoresNothing) {
    startPairing({"pair", qr().c_str()});
    interruption.request_stop();
    run();
    EXPECT_EQ(ended, ExitCode::interrupted);
    EXPECT_FALSE(isStored());
}

TEST_F(PairCommandsTest, AnInputWithoutACodeIsWrongUsage) {
    start({"pair"});
    keyboard.end();
    run();
    EXPECT_EQ(ended, ExitCode::usage);
    start({"pair", "-"});
    EXPECT_EQ(ended, ExitCode::usage);
}

TEST_F(PairCommandsTest, CtrlCWhileTheCodeIsAwaitedIsAnInterruption) {
    start({"pair"});
    interruption.request_stop();
    run();
    EXPECT_EQ(ended, ExitCode::interrupted);
}

TEST_F(PairCommandsTest, TheFirstPairingMakesAnIdentityThatStays) {
    http.replies.push_back({500, ""});
    start({"pair", "--yes", qr().c_str()});
    auto first = store.nactiIdentitu().value();
    ASSERT_TRUE(first);
    http.replies.push_back({500, ""});
    start({"pair", "--yes", qr().c_str()});
    EXPECT_EQ(store.nactiIdentitu().value()->deviceID(), first->deviceID());
}

TEST_F(PairCommandsTest, NothingSecretIsPrinted) {
    startPairing({"pair", "--yes", qr().c_str()});
    EXPECT_THAT(out.str() + err.str(), testing::Not(HasSubstr("token")));
}

TEST_F(PairCommandsTest, UnpairRevokesTheMacAndForgetsIt) {
    paired();
    http.replies.push_back({204, ""});
    start({"unpair"});
    EXPECT_EQ(ended, ExitCode::done);
    auto call = decode<OdvolatPozadavek>(http.requests.at(0).body).value();
    EXPECT_EQ(call.target, mac.identity.deviceID());
    EXPECT_EQ(call.by, identita->deviceID());
    EXPECT_FALSE(isStored());
}

TEST_F(PairCommandsTest, UnpairForgetsTheMacAlsoWhenTheRelayDoesNotAnswer) {
    paired();
    start({"unpair"});
    EXPECT_EQ(ended, ExitCode::relayUnreachable);
    EXPECT_FALSE(isStored());
    EXPECT_TRUE(store.nactiIdentitu().value());
}

TEST_F(PairCommandsTest, EveryOtherCommandNeedsAPairing) {
    for (const char* command : {"status", "tools", "watch", "approve", "shell", "unpair"}) {
        start({command});
        EXPECT_EQ(ended, ExitCode::notPaired) << command;
    }
    start({"call", "mac.status"});
    EXPECT_EQ(ended, ExitCode::notPaired);
    EXPECT_TRUE(sockets.urls.empty());
}

} // namespace
} // namespace morvex
