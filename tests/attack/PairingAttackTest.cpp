#include "shared/trust/SessionHandshake.h"
#include "tests/attack/MemoryMeter.h"
#include "tests/support/Effort.h"
#include "tests/support/PairingHarness.h"
#include "tests/support/SmallOrderPoints.h"
#include "tests/support/TrustSupport.h"

#include <string>
#include <vector>

namespace morvex {
namespace {

/// A relay, or an attacker on the path to it, during a pairing. The phone has read the genuine code and shows
/// `number()`.
class PairingAttack : public PairingHarness {
  protected:
    PairingAttack() {
        start();
        beginPairing();
    }

    void TearDown() override {
        EXPECT_FALSE(store.held.nactiProtejsek().value()) << "a stranger was kept";
        expectRecovery();
        tell(testing::UnitTest::GetInstance()->current_test_info()->name(), tries,
             counted + ", recovered, " + expectLittleMemory(memory));
    }

    /// The phone tries again and the user agrees to its number.
    void expectRecovery() {
        beginPairing("AGAIN");
        sendHello(hello());
        EXPECT_EQ(shownNumber(), number());
        flow().potvrditCislo(number());
        executor.runUntilIdle();
        auto kept = store.held.nactiProtejsek().value();
        ASSERT_TRUE(kept);
        EXPECT_EQ(kept->deviceID, phone.identity.deviceID());
    }

    /// The number that the computer shows; empty if it shows none.
    std::string shownNumber() {
        const auto* compare = state().as<StavParovani::OverCislo>();
        return compare ? compare->cislo : "";
    }

    /// The computer shows another number than the phone, so its user refuses.
    void expectANumberThatDiffers() {
        EXPECT_NE(shownNumber(), "");
        EXPECT_NE(shownNumber(), number());
        flow().odmitnoutCislo();
        executor.runUntilIdle();
    }

    void expectRefused(const std::string& beginning) {
        EXPECT_TRUE(failure().starts_with(beginning)) << failure();
    }

    /// A hello with a valid signature of `signer` and any agreement key.
    PairingHello signedBy(const DeviceIdentity& signer, const AgreementPublicKey& agreementKey) {
        auto text = Parovani::helloSignedText(phone.pair, signer.deviceID(), agreementKey);
        return {signer.deviceID(), signer.signingKey(), agreementKey, signer.sign(asBytes(text))};
    }

    const std::string badSignature = "Představení telefonu má neplatný podpis.";
    const std::string illegible = "Telefon poslal nekompatibilní párovací zprávu: ";
    const DeviceIdentity stranger = DeviceIdentity::generate();
    std::size_t tries = 1;
    std::string counted = "nobody paired";
    const MemoryMeter memory;
};

TEST_F(PairingAttack, AHelloOfTheRelaysOwnShowsAnotherNumber) {
    sendHello(Parovani::makeHello(stranger, phone.pair));
    expectANumberThatDiffers();
}

TEST_F(PairingAttack, ThePhonesNameWithTheRelaysKeysIsRefused) {
    auto forged = Parovani::makeHello(stranger, phone.pair);
    forged.device = phone.identity.deviceID();
    sendHello(forged);
    expectRefused(badSignature);
}

TEST_F(PairingAttack, ThePhonesHelloWithTheRelaysAgreementKeyIsRefused) {
    auto forged = hello();
    forged.agreementKey = stranger.agreementKey();
    sendHello(forged);
    expectRefused(badSignature);
}

TEST_F(PairingAttack, ThePhonesAgreementKeyUnderTheRelaysNameShowsAnotherNumber) {
    sendHello(signedBy(stranger, phone.identity.agreementKey()));
    expectANumberThatDiffers();
}

TEST_F(PairingAttack, ASignatureThatThePhoneGaveForALoginShowsAnotherNumber) {
    // A phone that signs any challenge would sign a hello with the relay's key.
    sendHello(signedBy(phone.identity, stranger.agreementKey()));
    expectANumberThatDiffers();
}

TEST_F(PairingAttack, AHelloOfAnEarlierPairingIsRefused) {
    const auto old = Parovani::makeHello(phone.identity, PairID{"OLD"});
    sendHello(old);
    expectRefused(badSignature);
}

TEST_F(PairingAttack, APairOfTheRelaysChoiceMovesNoHelloToAnother) {
    // The bars of the signed text could be shifted between its fields.
    for (const char* pair : {"NEW|", "NE", "", "NEW|X"}) {
        sendHello(Parovani::makeHello(phone.identity, PairID{pair}));
        expectRefused(badSignature);
    }
    // The same if the pair for which the computer waits has such a name.
    for (const char* pair : {"NEW|X", "|"}) {
        beginPairing(pair);
        auto shifted = Parovani::makeHello(phone.identity, PairID{std::string(pair) + "|"});
        sendHello(shifted);
        expectRefused(badSignature);
    }
    tries = 6;
}

TEST_F(PairingAttack, ASessionHelloIsNoPairingHello) {
    const auto session = makeSessionHello(phone.identity, phone.identity.agreementKey(), phone.pair);
    sendBytes(toBytes(encode(session)));
    expectRefused(illegible);
    auto dressed = hello();
    dressed.signature = session.signature;
    sendHello(dressed);
    expectRefused(badSignature);
    tries = 2;
}

TEST_F(PairingAttack, KeysWhoseSecretEverybodyKnowsAreRefused) {
    for (const auto* point : test::smallOrderPoints) {
        sendHello(signedBy(stranger, {test::key32(test::unhex(point))}));
        expectRefused("Klíč telefonu nejde použít: ");
    }
    tries = std::size(test::smallOrderPoints);
}

TEST_F(PairingAttack, AHelloBehindTheGenuineOneTakesItsNumberAway) {
    sendHello(hello());
    const auto genuine = shownNumber();
    sendHello(Parovani::makeHello(stranger, phone.pair));
    flow().potvrditCislo(genuine);
    executor.runUntilIdle();
}

TEST_F(PairingAttack, AHelloBetweenTheAgreementAndTheSaveIsNotKept) {
    sendHello(hello());
    flow().potvrditCislo(number());
    phone.deliver({RelayMessage::Forward{
        keyExchange(phone.pair, phone.identity.deviceID(), mac->deviceID(), "parovani",
                    toBytes(encode(Parovani::makeHello(stranger, phone.pair))), clock.now(), {})}});
    executor.runUntilIdle();
    EXPECT_EQ(store.held.nactiProtejsek().value()->deviceID, phone.identity.deviceID());
    (void)store.held.smazProtejsek();
}

TEST_F(PairingAttack, HellosAfterARefusalOrACancelAreNotHeard) {
    const auto late = hello();
    sendHello(late);
    flow().odmitnoutCislo();
    executor.runUntilIdle();
    auto before = state();
    sendHello(late);
    EXPECT_EQ(state(), before);
    beginPairing("SECOND");
    flow().zrusitParovani();
    executor.runUntilIdle();
    before = state();
    sendHello(hello());
    EXPECT_EQ(state(), before);
    tries = 2;
}

TEST_F(PairingAttack, EnvelopesForSomethingElseAreNotHeard) {
    const auto before = state();

    struct {
        PairID pair;
        DeviceID to;
        const char* requestID;
        EnvelopeKind kind;
    } rows[] = {
        {{"OTHER"}, mac->deviceID(), "parovani", EnvelopeKind::keyExchange},
        {phone.pair, phone.identity.deviceID(), "parovani", EnvelopeKind::keyExchange},
        {phone.pair, mac->deviceID(), "session", EnvelopeKind::keyExchange},
        {phone.pair, mac->deviceID(), "", EnvelopeKind::keyExchange},
        {phone.pair, mac->deviceID(), "parovani", EnvelopeKind::data},
        {phone.pair, mac->deviceID(), "parovani", EnvelopeKind::ping},
    };

    for (const auto& row : rows) {
        auto envelope = keyExchange(row.pair, phone.identity.deviceID(), row.to, row.requestID,
                                    toBytes(encode(hello())), clock.now(), {});
        envelope.kind = row.kind;
        phone.deliver({RelayMessage::Forward{envelope}});
        executor.runUntilIdle();
        EXPECT_EQ(state(), before);
    }
    tries = std::size(rows);
}

TEST_F(PairingAttack, AFloodOfHellosLeavesTheLastNumberAlone) {
    const auto hellos = cases(500, 20'000);
    for (std::size_t i = 0; i < hellos; ++i)
        sendHello(Parovani::makeHello(i % 2 == 0 ? stranger : phone.identity, phone.pair));
    EXPECT_EQ(shownNumber(), number());
    flow().odmitnoutCislo();
    executor.runUntilIdle();
    counted = std::to_string(hellos) + " hellos, nobody paired";
}

TEST_F(PairingAttack, TheRelayIsNotToldWhatItWouldNeedToFindAFittingNumber) {
    // The number depends on the computer's agreement key, which is in the code on the screen alone.
    ASSERT_EQ(http.requests.size(), 1U);
    EXPECT_EQ(http.requests[0].body.find(mac->agreementKey().text()), std::string::npos);
    for (const auto& url : sockets.urls) EXPECT_EQ(url.find(mac->agreementKey().text()), std::string::npos);
    const auto socket = beginPairing("NEXT");
    sendHello(hello());
    EXPECT_EQ(shownNumber(), number());
    EXPECT_FALSE(socket->sent.empty());
    for (const auto& frame : socket->sent)
        EXPECT_EQ(frame.find(mac->agreementKey().text()), std::string::npos) << frame;
    flow().odmitnoutCislo();
    executor.runUntilIdle();
}

} // namespace
} // namespace morvex
