#include "shared/trust/SessionHandshake.h"
#include "shared/wire/Json.h"
#include "tests/support/SecureLinkFixture.h"

#include <string>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;

const std::string illegible = "Protějšek poslal představení, kterému nerozumím.";
const std::string badlySigned = "Představení protějšku má neplatný podpis. Spojení nešifruju.";
const std::string underivable = "Klíč pro spojení nejde odvodit: Veřejný klíč protějšku není bezpečný.";

/// What the link does with the hellos of its peer.
class SecureLinkHelloTest : public test::SecureLinkFixture {
  protected:
    using SecureLinkFixture::SecureLinkFixture;

    Envelope inEnvelope(const SessionHello& hello) { return phone.keyExchangeWith(encode(hello)); }
};

TEST_F(SecureLinkHelloTest, ThePeerCountsAsOfflineBeforeTheHelloHasLeft) {
    connect();
    socket->holdSends();
    relay(RelayMessage::Authenticated{true});
    EXPECT_EQ(sentHellos().size(), 1U);
    EXPECT_EQ(takeEvents(), (Udalosti{stav(MacAvailability::Pripojuji{1, 0}), offline}));
}

TEST_F(SecureLinkHelloTest, AMalformedHelloKeepsTheSession) {
    const auto whole = encode(phone.helloWith(EphemeralPrivateKey::generate().publicKey()));
    const auto key = whole.find("\"ephemeral\":\"") + 13;
    const std::vector<std::string> rows{
        "",
        "ne",
        "{}",
        "null",
        whole.substr(0, whole.size() - 1),
        whole + "}",
        std::string(whole).replace(key, 4, "****"),
        std::string(whole).erase(key, 4),
        std::string(whole).replace(whole.find("signature"), 9, "signatura"),
    };
    secure();
    for (const auto& row : rows) {
        relay(phone.keyExchangeWith(row));
        EXPECT_EQ(takeEvents(), (Udalosti{chyba(illegible)})) << row;
        EXPECT_TRUE(isSecured()) << row;
    }
}

TEST_F(SecureLinkHelloTest, ABadlySignedHelloDropsTheSessionUntilTheNextHello) {
    const auto stranger = test::newIdentity();
    const auto key = EphemeralPrivateKey::generate().publicKey();
    const auto genuine = phone.helloWith(key);
    auto otherKey = genuine;
    otherKey.ephemeral = EphemeralPrivateKey::generate().publicKey();
    auto strangersSignature = genuine;
    strangersSignature.signature = makeSessionHello(*stranger, key, {"PAIR"}).signature;
    auto strangersName = genuine;
    strangersName.device = stranger->deviceID();
    auto cutSignature = genuine;
    cutSignature.signature.pop_back();
    auto noSignature = genuine;
    noSignature.signature.clear();
    const std::vector<SessionHello> rows{
        otherKey,
        strangersSignature,
        strangersName,
        cutSignature,
        noSignature,
        makeSessionHello(*stranger, key, {"PAIR"}),
        makeSessionHello(*phone.identita, key, {"ANOTHER PAIR"}),
        // Our own hello, thrown back at us.
        makeSessionHello(*identita, key, {"PAIR"}),
    };
    secure();
    for (const auto& row : rows) {
        relay(inEnvelope(row));
        EXPECT_EQ(takeEvents(), (Udalosti{chyba(badlySigned)}));
        EXPECT_TRUE(hasNoSession());
        exchangeHellos();
        EXPECT_EQ(takeEvents(), (Udalosti{pripraveny, pripraveno}));
        EXPECT_TRUE(isSecured());
    }
}

TEST_F(SecureLinkHelloTest, ABadlySignedHelloDoesNotUseUpTheKeyThatItNames) {
    logIn();
    auto genuine = phone.newHello();
    phone.meet(*identita, sentHellos().back());
    auto forged = decode<SessionHello>(genuine.ciphertext).value();
    forged.signature.assign(64, 0);
    relay(inEnvelope(forged));
    relay(genuine);
    EXPECT_TRUE(isSecured());
}

TEST_F(SecureLinkHelloTest, AKeyThatIsNotSafeDropsTheSessionInWords) {
    secure();
    relay(inEnvelope(phone.helloWith(AgreementPublicKey{})));
    EXPECT_EQ(takeEvents(), (Udalosti{chyba(underivable)}));
    EXPECT_TRUE(hasNoSession());
    exchangeHellos();
    EXPECT_TRUE(isSecured());
}

class SecureLinkWithAnUnsafePeerTest : public SecureLinkHelloTest {
  protected:
    SecureLinkWithAnUnsafePeerTest() : SecureLinkHelloTest(AgreementPublicKey{}) {}
};

TEST_F(SecureLinkWithAnUnsafePeerTest, AStoredKeyThatIsNotSafeMakesNoSession) {
    logIn();
    takeEvents();
    relay(phone.newHello());
    EXPECT_EQ(takeEvents(), (Udalosti{chyba(underivable)}));
    EXPECT_TRUE(hasNoSession());
}

TEST_F(SecureLinkHelloTest, OnlyTheSignatureOfAHelloCounts) {
    logIn();
    auto hello = phone.newHello();
    phone.meet(*identita, sentHellos().back());
    hello.createdAt = clock.now() - 24h;
    hello.expiresAt = clock.now() - 23h;
    hello.counter = 77;
    hello.requestID = "anything";
    hello.from = {"SOMEBODY"};
    relay(hello);
    EXPECT_TRUE(isSecured());
}

TEST_F(SecureLinkHelloTest, EachOfTwoHellosInARowReplacesTheSessionWithCountersFromOne) {
    secure();
    relay(phone.seal(note("first session")));
    takeEvents();
    for (int i = 0; i < 2; ++i) {
        exchangeHellos();
        EXPECT_EQ(takeEvents(), (Udalosti{pripraveny, pripraveno}));
        ASSERT_TRUE(poslat(note("out")));
        EXPECT_EQ(sentEnvelopes().back().counter, 1U);
        EXPECT_EQ(phone.open(sentEnvelopes().back()).value(), note("out"));
        auto in = phone.seal(note("in"));
        EXPECT_EQ(in.counter, 1U);
        relay(in);
        EXPECT_EQ(takeEvents(), (Udalosti{zprava(note("in"))}));
    }
}

TEST_F(SecureLinkHelloTest, ARepeatedHelloDoesNotStartTheCountersAgain) {
    logIn();
    auto hello = phone.newHello();
    phone.meet(*identita, sentHellos().back());
    relay(hello);
    ASSERT_TRUE(poslat(note("one")));
    auto old = phone.seal(note("old"));
    relay(old);
    takeEvents();

    relay(hello);
    EXPECT_TRUE(takeEvents().empty());
    ASSERT_TRUE(poslat(note("two")));
    EXPECT_EQ(sentEnvelopes().back().counter, 2U);
    relay(old);
    EXPECT_TRUE(takeEvents().empty());
    relay(phone.seal(note("new")));
    EXPECT_EQ(takeEvents(), (Udalosti{zprava(note("new"))}));
}

TEST_F(SecureLinkHelloTest, AnOlderHelloThanTheLastDoesNotBringItsSessionBack) {
    logIn();
    auto older = phone.newHello();
    relay(older);
    exchangeHellos();
    takeEvents();
    relay(older);
    EXPECT_TRUE(takeEvents().empty());
    EXPECT_TRUE(isSecured());
}

TEST_F(SecureLinkHelloTest, ARepeatedHelloDoesNotBringADroppedSessionBack) {
    logIn();
    auto hello = phone.newHello();
    relay(hello);
    relay(RelayMessage::Failure{RelayFailure::rateLimited, "Pomaleji."});
    takeEvents();
    relay(hello);
    EXPECT_TRUE(takeEvents().empty());
    EXPECT_TRUE(hasNoSession());
}

TEST_F(SecureLinkHelloTest, AHelloThatMetAnEarlierKeyOfOursIsNewToTheNextKey) {
    logIn();
    auto hello = phone.newHello();
    relay(hello);
    relay(RelayMessage::PeerOnline{true});
    takeEvents();
    phone.meet(*identita, sentHellos().back());
    relay(hello);
    EXPECT_EQ(takeEvents(), (Udalosti{pripraveny, pripraveno}));
    EXPECT_TRUE(isSecured());
}

TEST_F(SecureLinkHelloTest, AFloodOfHellosIsHeldOffUntilTheNextKeyOfOurs) {
    logIn();
    takeEvents();
    for (int i = 0; i < 1024; ++i) relay(phone.newHello());
    EXPECT_EQ(takeEvents().size(), 2048U);
    relay(phone.newHello());
    EXPECT_TRUE(takeEvents().empty());
    relay(RelayMessage::PeerOnline{true});
    exchangeHellos();
    EXPECT_EQ(takeEvents(), (Udalosti{pripraveny, pripraveno}));
    EXPECT_TRUE(isSecured());
}

} // namespace
} // namespace morvex
