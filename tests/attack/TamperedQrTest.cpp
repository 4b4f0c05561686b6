#include "phone/PhoneError.h"
#include "phone/PhonePairing.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/memory/ScriptedSockets.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/trust/Parovani.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayCalls.h"
#include "shared/wire/RelayMessage.h"
#include "shared/wire/TalkSpanError.h"
#include "tests/attack/Changes.h"
#include "tests/support/Effort.h"
#include "tests/support/UnownedSigningKeys.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>

namespace morvex {
namespace {

std::string inLowerCase(std::string text) {
    std::ranges::transform(text, text.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return text;
}

/// Fixed keys, since random keys show the same number once in a million times.
std::shared_ptr<const DeviceIdentity> identityOf(std::uint8_t byte) {
    return std::make_shared<const DeviceIdentity>(
        SigningPrivateKey::fromRaw(Bytes(keySize, byte)).value(),
        AgreementPrivateKey::fromRaw(Bytes(keySize, static_cast<std::uint8_t>(byte + 1))).value());
}

/// The relay in the genuine code. It returns the pair only for the token; other addresses do not answer.
class RelayOfTheCode final : public HttpClient {
  public:
    explicit RelayOfTheCode(const PairingBundle& code) : code_(code) {}

    Task<Result<HttpReply>> send(HttpRequest request) override {
        if (inLowerCase(request.url) != code_.relayURL + "/v1/pair/join")
            co_return fail(NetworkError{Sentence("nobody is there")});
        const auto asked = decode<PripojitPozadavek>(request.body);
        if (!asked || asked->pairingToken != code_.pairingToken)
            co_return HttpReply{404, encode(VaporDuvod{"unknown token"})};
        co_return HttpReply{200, encode(PripojitOdpoved{code_.pairID})};
    }

  private:
    const PairingBundle& code_;
};

/// The phone reads a changed code and pairs with it. The relay is that of the genuine code, and the computer
/// has the genuine pair and keys.
class TamperedQr : public testing::Test {
  protected:
    enum class End {
        unreadable,
        foreignVersion,
        otherRelay,
        noToken,
        otherPair,
        refusedKey,
        otherKey,
        paired
    };

    /// How far the phone gets with this code.
    End pairWith(const std::string& qr) {
        ManualExecutor executor;
        ManualClock clock;
        ScriptedSockets sockets;
        ScriptedRandom random;
        Inbox inbox{clock, {}};
        RelayOfTheCode relay{bundle};
        auto pairing = PhonePairing::create(qr, phone, {{executor, clock, sockets}, random}, inbox);
        if (!pairing) return endOf(pairing.error());
        const auto socket = sockets.layOut();
        const auto joined = executor.run((*pairing)->join(relay)).value();
        auto end = joined ? End::otherKey : endOf(joined.error());
        if (joined) {
            socket->deliver(
                encode(RelayMessage{RelayMessage::Challenge{toBytes("výzva"), ProtocolVersion::current}}));
            executor.runUntilIdle();
            socket->deliver(encode(RelayMessage{RelayMessage::Authenticated{true}}));
            EXPECT_TRUE(executor.run((*pairing)->untilIntroduced(std::chrono::seconds{10})).value());
            if (numberAtMac(socket->sent.back()) == (*pairing)->number()) end = End::paired;
            kept = (*pairing)->mac(clock.now());
        }
        EXPECT_TRUE(executor.run((*pairing)->leave()));
        return end;
    }

    static End endOf(const Error& error) {
        if (const auto* shared = error.as<TalkSpanError>())
            if (shared->as<TalkSpanError::ProtocolMismatch>()) return End::foreignVersion;
        if (error.as<NetworkError>()) return End::otherRelay;
        const auto words = error.popis().czech();
        if (words == "unknown token") return End::noToken;
        if (words == "Adresa relaye v QR kódu nedává smysl.") return End::otherRelay;
        if (words == "Relay přiřadil telefon k jinému páru, než je v QR kódu.") return End::otherPair;
        if (words.starts_with("Klíč Macu nejde použít: ")) return End::refusedKey;
        EXPECT_TRUE(words.starts_with("QR kód nejde přečíst: ")) << words;
        return End::unreadable;
    }

    /// The number that the computer shows for the phone's introduction; nothing if the introduction does not
    /// reach this computer.
    std::optional<std::string> numberAtMac(const std::string& frame) {
        const auto message = decode<RelayMessage>(frame).value();
        const auto* forward = message.as<RelayMessage::Forward>();
        if (!forward || forward->envelope.to != mac->deviceID()) return std::nullopt;
        const auto hello = decode<PairingHello>(forward->envelope.ciphertext).value();
        EXPECT_TRUE(Parovani::checkHello(hello, bundle.pairID));
        const auto key =
            Parovani::pairKey(mac->dohodovy(), hello.agreementKey, mac->deviceID(), hello.device);
        return Parovani::comparisonNumber(key.value());
    }

    /// Whether the phone still reaches the same computer, relay and key despite the change.
    [[nodiscard]] bool isHarmless(const std::string& qr) const {
        auto read = Parovani::bundleOf(qr).value();
        // Nothing depends on the minor version.
        read.v = bundle.v;
        // Scheme and host are case-insensitive (RFC 3986, section 6.2.2.1).
        read.relayURL = inLowerCase(read.relayURL);
        // X25519 ignores the top bit of a public key (RFC 7748, section 5).
        if ((read.agreementKey.raw.back() ^ bundle.agreementKey.raw.back()) == 0x80)
            read.agreementKey = bundle.agreementKey;
        return read == bundle;
    }

    void attempt(const std::string& changed, std::size_t place) {
        const auto end = pairWith(changed);
        ++ends[end];
        if (end != End::paired) return;
        EXPECT_TRUE(isHarmless(changed)) << "byte " << place << ": " << changed;
        EXPECT_EQ(kept->deviceID, mac->deviceID()) << changed;
        EXPECT_EQ(kept->podpisovyKlic, mac->signingKey()) << changed;
        EXPECT_EQ(kept->pairID, bundle.pairID) << changed;
    }

    const std::shared_ptr<const DeviceIdentity> mac = identityOf(1), phone = identityOf(3);
    const PairingBundle bundle{
        ProtocolVersion::current, "https://relay.example:8787", {"PAIR-1"}, "c2VjcmV0LXRva2Vu",
        mac->signingKey(),        mac->agreementKey()};
    std::map<End, std::size_t> ends;
    /// The record of the computer that the phone would store after the user has confirmed the number.
    std::optional<PairedPeer> kept;
};

TEST_F(TamperedQr, AChangedBitPairsWithNobodyElse) {
    const auto genuine = Parovani::qrText(bundle);
    const auto count = withEveryBitChanged(
        genuine, [&](const std::string& changed, std::size_t place) { attempt(changed, place); });
    for (auto end :
         {End::unreadable, End::foreignVersion, End::otherRelay, End::noToken, End::otherPair, End::otherKey})
        EXPECT_GT(ends[end], 0U);
    EXPECT_EQ(pairWith(genuine), End::paired);
    tell("bits of a QR code", count,
         std::to_string(ends[End::paired]) +
             " without effect (case of the address, minor version, the bit "
             "that X25519 ignores), with the others the phone pairs with nobody");
}

TEST_F(TamperedQr, EveryBitOfItsKeysMattersButTheOneThatX25519Ignores) {
    std::size_t same = 0;
    for (std::size_t bit = 0; bit < 8 * keySize; ++bit) {
        auto changed = bundle;
        changed.agreementKey.raw[bit / 8] ^= static_cast<std::uint8_t>(1U << bit % 8);
        const auto end = pairWith(Parovani::qrText(changed));
        if (end == End::paired) ++same;
        EXPECT_EQ(end == End::paired, bit == 255) << bit;
        changed = bundle;
        changed.signingKey.raw[bit / 8] ^= static_cast<std::uint8_t>(1U << bit % 8);
        EXPECT_EQ(pairWith(Parovani::qrText(changed)), End::otherKey) << bit;
    }
    tell("bits of the keys in a QR code", 16 * keySize, std::to_string(same) + " without effect");
}

TEST_F(TamperedQr, AKeyThatNobodyOwnsIsRefusedInWords) {
    const auto keys = test::unownedSigningKeys();
    for (const auto& key : keys) {
        auto changed = bundle;
        changed.signingKey.raw = key;
        EXPECT_EQ(pairWith(Parovani::qrText(changed)), End::refusedKey);
    }
    tell("keys nobody owns in a QR code", keys.size(), "refused in words");
}

TEST_F(TamperedQr, NoTruncationIsRead) {
    const auto count = withEveryTruncation(Parovani::qrText(bundle), [&](const std::string& shorter) {
        EXPECT_EQ(pairWith(shorter), End::unreadable) << shorter;
    });
    tell("truncations of a QR code", count, "none is read");
}

} // namespace
} // namespace morvex
