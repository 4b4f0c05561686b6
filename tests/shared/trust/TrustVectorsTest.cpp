// Values of an independent implementation of the same protocol.

#include "shared/base/Base64.h"
#include "shared/trust/Base32.h"
#include "shared/trust/ContentHash.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/trust/Parovani.h"
#include "shared/trust/Revocation.h"
#include "shared/trust/SecureChannel.h"
#include "shared/trust/SessionHandshake.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayMessage.h"
#include "tests/support/TrustSupport.h"

#include <boost/json.hpp>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace morvex {

namespace {

namespace json = boost::json;

std::string text(const json::value& value) {
    return std::string(value.as_string());
}

Bytes base64(const json::value& value) {
    return base64Decode(text(value)).value();
}

template <class Key> Key privateKey(const json::value& value) {
    return Key::fromRaw(base64(value)).value();
}

template <class Record> Record record(const json::value& value) {
    return decode<Record>(json::serialize(value)).value();
}

/// One of the two devices of a vector file.
struct Device {
    explicit Device(const json::value& vector)
        : identity(privateKey<SigningPrivateKey>(vector.at("signingPrivate")),
                   privateKey<AgreementPrivateKey>(vector.at("agreementPrivate"))),
          ephemeral(privateKey<EphemeralPrivateKey>(vector.at("ephemeralPrivate"))) {}

    DeviceIdentity identity;
    EphemeralPrivateKey ephemeral;
};

PairedPeer peer(const Device& device) {
    return {.pairID = {},
            .relayURL = {},
            .deviceID = device.identity.deviceID(),
            .podpisovyKlic = device.identity.signingKey(),
            .dohodovyKlic = device.identity.agreementKey(),
            .role = DeviceRole::phone,
            .potvrzeno = {}};
}

class TrustVectors : public testing::TestWithParam<const char*> {
  protected:
    TrustVectors()
        : vectors(json::parse(file())),
          mac(vectors.at("mac")),
          phone(vectors.at("phone")),
          pairID{text(vectors.at("pairing").at("pairID"))} {}

    static std::string file() {
        std::ifstream stream(std::string(MORVEX_SOURCE_DIR "/tests/vectors/") + GetParam());
        return {std::istreambuf_iterator(stream), {}};
    }

    SecureChannel channel(const Device& own, const Device& other, DeviceRole role) const {
        return SecureChannel::create(own.identity.pairKey(peer(other)).value(), own.ephemeral,
                                     other.ephemeral.publicKey(),
                                     {.pair = pairID,
                                      .mujID = own.identity.deviceID(),
                                      .protejsek = other.identity.deviceID(),
                                      .role = role})
            .value();
    }

    json::value vectors;
    Device mac, phone;
    PairID pairID;
};

} // namespace

TEST_P(TrustVectors, Base32Agrees) {
    for (auto& row : vectors.at("base32").as_array())
        EXPECT_EQ(Base32::encode(ByteView(test::unhex(row.at("hex").as_string()))), text(row.at("text")));
}

TEST_P(TrustVectors, PublicKeysAndDeviceIdentifiersAgree) {
    for (auto& [name, device] : {std::pair("mac", &mac), std::pair("phone", &phone)}) {
        auto& vector = vectors.at(name);
        EXPECT_EQ(device->identity.signingKey().text(), text(vector.at("signingPublic")));
        EXPECT_EQ(device->identity.agreementKey().text(), text(vector.at("agreementPublic")));
        EXPECT_EQ(device->ephemeral.publicKey().text(), text(vector.at("ephemeralPublic")));
        EXPECT_EQ(device->identity.deviceID().rawValue, text(vector.at("deviceID")));
    }
}

TEST_P(TrustVectors, PairingHelloAgrees) {
    auto& pairing = vectors.at("pairing");
    auto hello = record<PairingHello>(pairing.at("hello"));
    EXPECT_EQ(Parovani::helloSignedText(pairID, hello.device, hello.agreementKey),
              text(pairing.at("helloSignedText")));
    EXPECT_EQ(Parovani::makeHello(phone.identity, pairID), hello);
    EXPECT_EQ(json::parse(encode(hello)), pairing.at("hello"));
    EXPECT_TRUE(Parovani::checkHello(hello, pairID));
}

TEST_P(TrustVectors, PairKeyAndComparisonNumberAgreeOnBothSides) {
    auto& pairing = vectors.at("pairing");
    for (auto& [own, other] : {std::pair(&mac, &phone), std::pair(&phone, &mac)}) {
        auto pairKey = own->identity.pairKey(peer(*other)).value();
        EXPECT_EQ(base64Encode(pairKey.view()), text(pairing.at("pairKey")));
        EXPECT_EQ(Parovani::comparisonNumber(pairKey), text(pairing.at("number")));
    }
}

TEST_P(TrustVectors, QrTextAgreesInBothDirections) {
    PairingBundle bundle{.v = ProtocolVersion::current,
                         .relayURL = "http://127.0.0.1:8787",
                         .pairID = pairID,
                         .pairingToken = "token-" + text(vectors.at("seed")),
                         .signingKey = mac.identity.signingKey(),
                         .agreementKey = mac.identity.agreementKey()};
    auto qr = text(vectors.at("pairing").at("qr"));
    EXPECT_EQ(Parovani::qrText(bundle), qr);
    EXPECT_EQ(Parovani::bundleOf(qr).value(), bundle);
}

TEST_P(TrustVectors, SessionHellosAgree) {
    for (auto& [name, device] : {std::pair("macHello", &mac), std::pair("phoneHello", &phone)}) {
        auto& vector = vectors.at("session").at(name);
        auto hello = record<SessionHello>(vector.at("hello"));
        EXPECT_EQ(sessionHelloSignedText(pairID, hello.device, hello.ephemeral),
                  text(vector.at("signedText")));
        EXPECT_EQ(makeSessionHello(device->identity, device->ephemeral.publicKey(), pairID), hello);
        EXPECT_EQ(json::parse(encode(hello)), vector.at("hello"));
        EXPECT_TRUE(checkSessionHello(hello, pairID, device->identity.signingKey()));
    }
}

TEST_P(TrustVectors, SessionKeysAgreeOnBothSides) {
    auto& session = vectors.at("session");
    auto pairKey = mac.identity.pairKey(peer(phone)).value();
    auto ofMac =
        SessionKeys::derive(pairKey, mac.ephemeral, phone.ephemeral.publicKey(), DeviceRole::mac).value();
    auto ofPhone =
        SessionKeys::derive(pairKey, phone.ephemeral, mac.ephemeral.publicKey(), DeviceRole::phone).value();
    EXPECT_EQ(base64Encode(ofMac.odesilaci.view()), text(session.at("macToPhoneKey")));
    EXPECT_EQ(base64Encode(ofMac.prijimaci.view()), text(session.at("phoneToMacKey")));
    EXPECT_EQ(base64Encode(ofPhone.odesilaci.view()), text(session.at("phoneToMacKey")));
    EXPECT_EQ(base64Encode(ofPhone.prijimaci.view()), text(session.at("macToPhoneKey")));
}

TEST_P(TrustVectors, SealedEnvelopesAgreeByteForByteAndOpen) {
    auto ofMac = channel(mac, phone, DeviceRole::mac);
    auto ofPhone = channel(phone, mac, DeviceRole::phone);
    for (auto& row : vectors.at("sealed").as_array()) {
        bool fromMac = row.at("sender").as_string() == "mac";
        auto& sender = fromMac ? ofMac : ofPhone;
        auto& receiver = fromMac ? ofPhone : ofMac;
        auto plaintext = text(row.at("plaintext"));
        auto expected = record<Envelope>(row.at("envelope"));
        auto now = dateFromSeconds(row.at("createdAtSeconds").as_int64());

        auto sealed =
            sender
                .seal(asBytes(plaintext), expected.requestID, expected.kind, std::chrono::seconds(60),
                      {.now = now, .msgID = Uuid::parse(expected.msgID).value()})
                .value();
        EXPECT_EQ(associatedData(sealed), text(row.at("associatedData")));
        EXPECT_EQ(sealed, expected);
        EXPECT_EQ(json::parse(encode(sealed)), row.at("envelope"));
        EXPECT_EQ(asText(receiver.open(expected, now).value()), plaintext);
    }
}

TEST_P(TrustVectors, LoginSignatureAgrees) {
    auto challenge = record<RelayMessage>(vectors.at("login").at("challenge"));
    auto login = record<RelayMessage>(vectors.at("login").at("authenticate"));
    auto* asked = challenge.as<RelayMessage::Challenge>();
    auto* answer = login.as<RelayMessage::Authenticate>();
    ASSERT_TRUE(asked && answer);
    EXPECT_EQ(asked->v, ProtocolVersion::current);
    EXPECT_EQ(*answer, (RelayMessage::Authenticate{.pair = pairID,
                                                   .device = mac.identity.deviceID(),
                                                   .key = mac.identity.signingKey(),
                                                   .signature = mac.identity.sign(asked->nonce)}));
    EXPECT_TRUE(ed25519Verify(answer->signature, asked->nonce, answer->key.raw));
}

TEST_P(TrustVectors, RevocationSignatureAgrees) {
    auto& revoke = vectors.at("revoke");
    auto signedAt = parseWireDate(revoke.at("signedAt").as_string()).value();
    auto signedText =
        revocationSignedText(pairID, phone.identity.deviceID(), mac.identity.deviceID(), signedAt);
    EXPECT_EQ(signedText, text(revoke.at("signedText")));
    EXPECT_EQ(mac.identity.sign(asBytes(signedText)), base64(revoke.at("signature")));
}

TEST_P(TrustVectors, ContentHashesAgree) {
    for (auto& row : vectors.at("contentHash").as_array())
        EXPECT_EQ(contentHash(text(row.at("detail"))), text(row.at("hash")));
}

INSTANTIATE_TEST_SUITE_P(Files, TrustVectors, testing::Values("trust-1.json", "trust-2.json"),
                         [](auto& info) { return "Seed" + std::to_string(info.index + 1); });

} // namespace morvex
