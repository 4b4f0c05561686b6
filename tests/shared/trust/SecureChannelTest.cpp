#include "shared/trust/SecureChannel.h"

#include "shared/trust/CryptoError.h"
#include "tests/support/TrustSupport.h"

#include <gtest/gtest.h>

#include <climits>
#include <set>
#include <sys/mman.h>

namespace morvex {

namespace {

using namespace std::chrono_literals;
using Chyba = SecureChannel::Chyba;
using Duvod = Chyba::Duvod;

const Date now = dateFromSeconds(1795000000) + 250ms;

PairKey pairKey() {
    SecretKeyBytes bytes;
    std::ranges::fill(bytes.writable(), std::uint8_t{7});
    return PairKey(std::move(bytes));
}

Uuid uuid(std::uint64_t number) {
    Uuid id;
    for (std::size_t i = 0; i < 8; ++i) id.bytes[15 - i] = static_cast<std::uint8_t>(number >> 8 * i);
    return id;
}

class SecureChannelTest : public testing::Test {
  protected:
    static SecureChannel channel(const EphemeralPrivateKey& own, const EphemeralPrivateKey& peer,
                                 SecureChannel::Ends ends) {
        return SecureChannel::create(pairKey(), own, peer.publicKey(), std::move(ends)).value();
    }

    Envelope seal(SecureChannel& sender, std::string_view plaintext = "text") {
        return sender.seal(asBytes(plaintext), "request", EnvelopeKind::data, 60s, {now, uuid(++messages)})
            .value();
    }

    static void expectRefusal(const Result<Bytes>& opened, Duvod duvod) {
        auto* chyba = test::causeOf<Chyba>(opened);
        ASSERT_TRUE(chyba);
        EXPECT_EQ(chyba->duvod, duvod);
    }

    void expectForeign(const Envelope& envelope, const char* words) {
        auto opened = phone.open(envelope, now);
        auto* chyba = test::causeOf<Chyba>(opened);
        ASSERT_TRUE(chyba);
        EXPECT_EQ(*chyba, (Chyba{Duvod::cizi, Sentence(words)}));
        EXPECT_EQ(chyba->popis().czech(), words);
    }

    EphemeralPrivateKey macKey = EphemeralPrivateKey::generate();
    EphemeralPrivateKey phoneKey = EphemeralPrivateKey::generate();
    SecureChannel mac = channel(macKey, phoneKey, {{"PAIR"}, {"MAC"}, {"PHONE"}, DeviceRole::mac});
    SecureChannel phone = channel(phoneKey, macKey, {{"PAIR"}, {"PHONE"}, {"MAC"}, DeviceRole::phone});
    std::uint64_t messages = 0;
};

} // namespace

TEST_F(SecureChannelTest, EachSideOpensWhatTheOtherSeals) {
    for (std::string text : {"", "one", "Příliš žluťoučký kůň"}) {
        EXPECT_EQ(asText(phone.open(seal(mac, text), now).value()), text);
        EXPECT_EQ(asText(mac.open(seal(phone, text), now).value()), text);
    }
}

TEST_F(SecureChannelTest, ASealedEnvelopeCarriesEveryFieldAsGiven) {
    auto envelope = mac.seal(asBytes("text"), "R-1", EnvelopeKind::pong, 90s, {now, uuid(0xabc)}).value();
    EXPECT_EQ(envelope.v, ProtocolVersion::current);
    EXPECT_EQ(envelope.pair, PairID{"PAIR"});
    EXPECT_EQ(envelope.from, DeviceID{"MAC"});
    EXPECT_EQ(envelope.to, DeviceID{"PHONE"});
    EXPECT_EQ(envelope.msgID, "00000000-0000-0000-0000-000000000ABC");
    EXPECT_EQ(envelope.requestID, "R-1");
    EXPECT_EQ(envelope.kind, EnvelopeKind::pong);
    EXPECT_EQ(envelope.createdAt, now);
    EXPECT_EQ(envelope.expiresAt, now + 90s);
    EXPECT_EQ(envelope.ciphertext.size(), 4u);
    EXPECT_EQ(envelope.tag.size(), 16u);
}

TEST_F(SecureChannelTest, CountsFromOneAndMakesTheNonceOfTheCounter) {
    auto first = seal(mac);
    EXPECT_EQ(first.counter, 1u);
    EXPECT_EQ(test::hex(first.nonce), "000000000000000000000001");
    for (int i = 2; i < 258; ++i) seal(mac);
    auto later = seal(mac);
    EXPECT_EQ(later.counter, 258u);
    EXPECT_EQ(test::hex(later.nonce), "000000000000000000000102");
}

TEST_F(SecureChannelTest, TheCounterRisesEvenIfSealingFails) {
    auto size = static_cast<std::size_t>(INT_MAX) + 1;
    // Addresses only: whoever touched the bytes would crash.
    void* addresses = mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(addresses, MAP_FAILED);
    ByteView tooLong(static_cast<const std::uint8_t*>(addresses), size);
    auto sealed = mac.seal(tooLong, "request", EnvelopeKind::data, 60s, {now, uuid(1)});
    munmap(addresses, size);
    auto* cause = test::causeOf<CryptoError>(sealed);
    ASSERT_TRUE(cause);
    EXPECT_EQ(cause->failure, CryptoFailure::tooLong);
    EXPECT_EQ(seal(mac).counter, 2u);
}

TEST_F(SecureChannelTest, RefusesASecondOpeningOfTheSameEnvelope) {
    auto envelope = seal(mac);
    EXPECT_TRUE(phone.open(envelope, now));
    expectRefusal(phone.open(envelope, now), Duvod::prehrani);
}

TEST_F(SecureChannelTest, RefusesTheCounterThatWasAcceptedLastUnderAnotherIdentity) {
    auto envelope = seal(mac);
    EXPECT_TRUE(phone.open(envelope, now));
    envelope.msgID = uuid(77).text();
    expectRefusal(phone.open(envelope, now), Duvod::prehrani);
}

TEST_F(SecureChannelTest, RefusesAGenuineEnvelopeThatWasOvertaken) {
    auto first = seal(mac), second = seal(mac), third = seal(mac);
    EXPECT_TRUE(phone.open(second, now));
    expectRefusal(phone.open(first, now), Duvod::prehrani);
    EXPECT_TRUE(phone.open(third, now));
}

TEST_F(SecureChannelTest, RefusesAnIdentityThatWasSeenUnderAHigherCounter) {
    auto stamp = SecureChannel::Stamp{now, uuid(5)};
    auto first = mac.seal({}, "request", EnvelopeKind::data, 60s, stamp).value();
    auto second = mac.seal({}, "request", EnvelopeKind::data, 60s, stamp).value();
    EXPECT_TRUE(phone.open(first, now));
    expectRefusal(phone.open(second, now), Duvod::prehrani);
}

TEST_F(SecureChannelTest, ForgetsTheFirstOf513Identities) {
    for (int i = 0; i < 513; ++i) ASSERT_TRUE(phone.open(seal(mac), now));
    auto sealAgain = [&](std::uint64_t id) {
        return mac.seal({}, "request", EnvelopeKind::data, 60s, {now, uuid(id)}).value();
    };
    expectRefusal(phone.open(sealAgain(2), now), Duvod::prehrani);
    EXPECT_TRUE(phone.open(sealAgain(1), now));
}

TEST_F(SecureChannelTest, RefusesAnEnvelopeThatIsAddressedOtherwise) {
    auto genuine = seal(mac);
    auto otherPair = genuine, otherSender = genuine, otherReceiver = genuine;
    otherPair.pair = {"ELSE"};
    otherSender.from = {"ELSE"};
    otherReceiver.to = {"ELSE"};
    expectForeign(otherPair, "Obálka patří jinému páru.");
    expectForeign(otherSender, "Obálka je od jiného zařízení.");
    expectForeign(otherReceiver, "Obálka není pro mě.");
    otherReceiver.from = {"ELSE"};
    expectForeign(otherReceiver, "Obálka je od jiného zařízení.");
    otherReceiver.pair = {"ELSE"};
    expectForeign(otherReceiver, "Obálka patří jinému páru.");
    EXPECT_TRUE(phone.open(genuine, now));
}

TEST_F(SecureChannelTest, RefusesItsOwnEnvelopeThatTheRelaySendsBack) {
    expectForeign(seal(phone), "Obálka je od jiného zařízení.");
}

TEST_F(SecureChannelTest, AcceptsThirtySecondsOfDifferenceBetweenTheClocks) {
    struct {
        Date opened;
        bool accepted;
    } table[] = {
        {now + 60s + 30s, true},  {now + 60s + 30s + 1us, false},
        {now + 60s + 31s, false}, {now - 30s, true},
        {now - 30s - 1us, false}, {now - 31s, false},
        {now + 60s, true},        {now, true},
    };

    for (auto& row : table) {
        auto envelope = seal(mac);
        auto opened = phone.open(envelope, row.opened);
        EXPECT_EQ(opened.has_value(), row.accepted) << (row.opened - now).count();
        if (!row.accepted) expectRefusal(opened, Duvod::prosla);
    }
}

TEST_F(SecureChannelTest, ATimeOnTheWireHasNoFractionAndStillVerifies) {
    auto envelope = seal(mac);
    envelope.createdAt = dateFromSeconds(wholeSeconds(envelope.createdAt));
    envelope.expiresAt = dateFromSeconds(wholeSeconds(envelope.expiresAt));
    EXPECT_TRUE(phone.open(envelope, now));
}

TEST_F(SecureChannelTest, AnyChangedFieldIsUnverifiable) {
    struct {
        const char* what;
        void (*change)(Envelope&);
    } table[] = {
        {"version", [](Envelope& e) { ++e.v.minor; }},
        {"identity", [](Envelope& e) { e.msgID = uuid(99).text(); }},
        {"request", [](Envelope& e) { e.requestID += "x"; }},
        {"kind", [](Envelope& e) { e.kind = EnvelopeKind::ping; }},
        {"key exchange kind", [](Envelope& e) { e.kind = EnvelopeKind::keyExchange; }},
        {"creation", [](Envelope& e) { e.createdAt -= 1s; }},
        {"expiry", [](Envelope& e) { e.expiresAt += 1s; }},
        {"counter", [](Envelope& e) { ++e.counter; }},
        {"largest counter", [](Envelope& e) { e.counter = UINT64_MAX; }},
        {"nonce", [](Envelope& e) { e.nonce[0] ^= 1; }},
        {"short nonce", [](Envelope& e) { e.nonce.pop_back(); }},
        {"long nonce", [](Envelope& e) { e.nonce.push_back(0); }},
        {"no nonce", [](Envelope& e) { e.nonce.clear(); }},
        {"ciphertext", [](Envelope& e) { e.ciphertext[0] ^= 1; }},
        {"short ciphertext", [](Envelope& e) { e.ciphertext.pop_back(); }},
        {"no ciphertext", [](Envelope& e) { e.ciphertext.clear(); }},
        {"tag", [](Envelope& e) { e.tag[15] ^= 0x80; }},
    };

    auto genuine = seal(mac);
    for (auto& row : table) {
        auto changed = genuine;
        row.change(changed);
        SCOPED_TRACE(row.what);
        expectRefusal(phone.open(changed, now), Duvod::neoveritelna);
    }
    EXPECT_EQ(asText(phone.open(genuine, now).value()), "text");
}

TEST_F(SecureChannelTest, AForgedEnvelopeLeavesTheGenuineOneAcceptable) {
    auto genuine = seal(mac);
    auto forged = genuine;
    forged.tag[0] ^= 1;
    for (int i = 0; i < 3; ++i) expectRefusal(phone.open(forged, now), Duvod::neoveritelna);
    forged.counter = 1'000'000;
    expectRefusal(phone.open(forged, now), Duvod::neoveritelna);
    EXPECT_TRUE(phone.open(genuine, now));
}

TEST_F(SecureChannelTest, ATagOfTheWrongSizeIsAnErrorButNoChyba) {
    auto genuine = seal(mac);
    for (std::size_t size : {0u, 15u, 17u}) {
        auto envelope = genuine;
        envelope.tag.resize(size);
        auto opened = phone.open(envelope, now);
        EXPECT_FALSE(test::causeOf<Chyba>(opened));
        auto* cause = test::causeOf<CryptoError>(opened);
        ASSERT_TRUE(cause);
        EXPECT_EQ(cause->failure, CryptoFailure::wrongTag);
    }
    EXPECT_TRUE(phone.open(genuine, now));
}

TEST_F(SecureChannelTest, TheNonceIsTakenFromTheEnvelopeAndNotFromTheCounter) {
    auto envelope = seal(mac);
    auto keys = SessionKeys::derive(pairKey(), macKey, phoneKey.publicKey(), DeviceRole::mac).value();
    envelope.nonce = test::unhex("ffeeddccbbaa998877665544");
    auto sealed =
        chachaSeal(keys.odesilaci.view(), envelope.nonce, asBytes(associatedData(envelope)), asBytes("own"))
            .value();
    envelope.ciphertext = sealed.ciphertext;
    envelope.tag = sealed.tag;
    EXPECT_EQ(asText(phone.open(envelope, now).value()), "own");
}

TEST_F(SecureChannelTest, ChecksAddressThenTimeThenReplayThenNonceThenTag) {
    auto envelope = seal(mac);
    ASSERT_TRUE(phone.open(envelope, now));
    envelope.to = {"ELSE"};
    envelope.nonce.clear();
    envelope.tag.clear();
    auto late = now + 1h;
    expectRefusal(phone.open(envelope, late), Duvod::cizi);
    envelope.to = {"PHONE"};
    expectRefusal(phone.open(envelope, late), Duvod::prosla);
    expectRefusal(phone.open(envelope, now), Duvod::prehrani);
    envelope.counter = 2;
    envelope.msgID = uuid(2).text();
    expectRefusal(phone.open(envelope, now), Duvod::neoveritelna);
    envelope.nonce.resize(12);
    EXPECT_TRUE(test::causeOf<CryptoError>(phone.open(envelope, now)));
}

TEST_F(SecureChannelTest, ANewSessionDoesNotOpenEnvelopesOfTheOldOne) {
    auto old = seal(mac);
    auto freshKey = EphemeralPrivateKey::generate();
    auto fresh = channel(freshKey, macKey, {{"PAIR"}, {"PHONE"}, {"MAC"}, DeviceRole::phone});
    expectRefusal(fresh.open(old, now), Duvod::neoveritelna);
}

TEST_F(SecureChannelTest, TheSameEphemeralKeysWithoutThePairKeyOpenNothing) {
    SecretKeyBytes guessed;
    auto stranger = SecureChannel::create(PairKey(std::move(guessed)), phoneKey, macKey.publicKey(),
                                          {{"PAIR"}, {"PHONE"}, {"MAC"}, DeviceRole::phone});
    expectRefusal(stranger.value().open(seal(mac), now), Duvod::neoveritelna);
}

TEST_F(SecureChannelTest, SealsUnderNoRequestIdWithABar) {
    const auto refused = mac.seal(asBytes("x"), "note|1", EnvelopeKind::data, envelopeLifetime, {now, {}});
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().popis().czech(), "Identita zprávy nebo požadavku obsahuje svislou čáru.");
    const auto sealed = mac.seal(asBytes("x"), "note:1", EnvelopeKind::data, envelopeLifetime, {now, {}});
    EXPECT_EQ(sealed.value().counter, 2u);
}

TEST_F(SecureChannelTest, IsNotMadeWithAnUnsafeKeyOfThePeer) {
    auto channel = SecureChannel::create(pairKey(), macKey, AgreementPublicKey{},
                                         {{"PAIR"}, {"MAC"}, {"PHONE"}, DeviceRole::mac});
    auto* cause = test::causeOf<CryptoError>(channel);
    ASSERT_TRUE(cause);
    EXPECT_EQ(cause->failure, CryptoFailure::refusedKey);
}

TEST(SecureChannelChyba, HasWordsOfItsOwnForEveryReason) {
    std::set<std::string> sentences;
    for (auto duvod : {Duvod::prehrani, Duvod::prosla, Duvod::neoveritelna}) {
        EXPECT_TRUE(Chyba{duvod}.popis().czech().ends_with('.'));
        sentences.insert(Chyba{duvod}.popis().czech());
    }
    EXPECT_EQ(sentences.size(), 3U);
}

} // namespace morvex
