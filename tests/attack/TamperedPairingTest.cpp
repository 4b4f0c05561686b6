#include "shared-apple/RelayAddress.h"
#include "tests/attack/Changes.h"
#include "tests/support/Effort.h"
#include "tests/support/PairingHarness.h"

#include <algorithm>
#include <map>
#include <string>

namespace morvex {
namespace {

std::string changedPlace(std::size_t place) {
    return "byte " + std::to_string(place);
}

/// The computer waits for the phone; everything that the relay makes of the phone's hello reaches it.
class TamperedPairing : public PairingHarness {
  protected:
    TamperedPairing() {
        start();
        beginPairing();
    }

    void expectRefused(const std::string& changed, const std::string& what) {
        sendBytes(toBytes(changed));
        EXPECT_TRUE(state().as<StavParovani::Chyba>()) << what;
        EXPECT_FALSE(store.held.nactiProtejsek().value()) << what;
    }

    void expectTheGenuineOneAccepted(const std::string& genuine) {
        sendBytes(toBytes(genuine));
        const auto* compare = state().as<StavParovani::OverCislo>();
        ASSERT_TRUE(compare);
        EXPECT_EQ(compare->cislo, number());
        flow().potvrditCislo(compare->cislo);
        executor.runUntilIdle();
        EXPECT_EQ(store.held.nactiProtejsek().value()->deviceID, phone.identity.deviceID());
    }
};

TEST_F(TamperedPairing, NoBitOfTheHelloMayChange) {
    const auto genuine = encode(hello());
    const auto count = withEveryBitChanged(genuine, [&](const std::string& changed, std::size_t place) {
        expectRefused(changed, changedPlace(place));
    });
    expectTheGenuineOneAccepted(genuine);
    tell("bits of a pairing hello", count, "all refused, the genuine one accepted");
}

TEST_F(TamperedPairing, NoTruncationOfTheHelloIsAccepted) {
    const auto genuine = encode(hello());
    const auto count =
        withEveryTruncation(genuine, [&](const std::string& shorter) { expectRefused(shorter, shorter); });
    expectTheGenuineOneAccepted(genuine);
    tell("truncations of a pairing hello", count, "all refused, the genuine one accepted");
}

TEST_F(TamperedPairing, ARefusedHelloTakesTheNumberFromTheScreenSoThatNothingCanBeConfirmed) {
    sendHello(hello());
    ASSERT_TRUE(state().as<StavParovani::OverCislo>());
    auto forged = hello();
    forged.signature[0] ^= 1;
    sendHello(forged);
    flow().potvrditCislo(number());
    executor.runUntilIdle();
    EXPECT_FALSE(store.held.nactiProtejsek().value());
    expectTheGenuineOneAccepted(encode(hello()));
}

/// What becomes of a pairing that a phone begins with a changed QR code. The relay gives the pair for the
/// token alone; the computer holds the pair and the keys of the genuine code.
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

    End pairWith(const std::string& qr) const {
        const auto read = Parovani::bundleOf(qr);
        if (!read) return End::unreadable;
        if (!ProtocolVersion::current.isCompatible(read->v)) return End::foreignVersion;
        if (!RelayAddress::parse(read->relayURL) || inLowerCase(read->relayURL) != bundle.relayURL)
            return End::otherRelay;
        if (read->pairingToken != bundle.pairingToken) return End::noToken;
        // The phone ends when the relay names another pair than the code does.
        if (read->pairID != bundle.pairID) return End::otherPair;
        const auto atPhone = Parovani::pairKey(phone.dohodovy(), read->agreementKey, phone.deviceID(),
                                               deviceID(read->signingKey));
        if (!atPhone) return End::refusedKey;
        const auto atMac =
            Parovani::pairKey(mac.dohodovy(), phone.agreementKey(), mac.deviceID(), phone.deviceID());
        // Two keys show the same number once in a million times: the keys themselves are compared.
        return std::ranges::equal(atPhone->view(), atMac->view()) ? End::paired : End::otherKey;
    }

    static std::string inLowerCase(std::string text) {
        std::ranges::transform(text, text.begin(),
                               [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
        return text;
    }

    /// The changes by which the phone still reaches the same computer, relay and key.
    [[nodiscard]] bool isHarmless(const std::string& qr) const {
        auto read = Parovani::bundleOf(qr).value();
        // A minor version is for the phone to know; nothing depends on it.
        read.v = bundle.v;
        // Scheme and host have no case (RFC 3986, section 6.2.2.1).
        read.relayURL = inLowerCase(read.relayURL);
        // X25519 ignores the top bit of a public key (RFC 7748, section 5).
        if ((read.agreementKey.raw.back() ^ bundle.agreementKey.raw.back()) == 0x80)
            read.agreementKey = bundle.agreementKey;
        return read == bundle;
    }

    void attempt(const std::string& changed, std::size_t place) {
        const auto end = pairWith(changed);
        ++ends[end];
        if (end == End::paired) EXPECT_TRUE(isHarmless(changed)) << changedPlace(place) << ": " << changed;
    }

    DeviceIdentity mac = DeviceIdentity::generate(), phone = DeviceIdentity::generate();
    PairingBundle bundle{ProtocolVersion::current,
                         "https://relay.example:8787",
                         {"PAIR-1"},
                         "c2VjcmV0LXRva2Vu",
                         mac.signingKey(),
                         mac.agreementKey()};
    std::map<End, std::size_t> ends;
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
         std::to_string(ends[End::paired]) + " without effect (case of the address, minor version, the bit "
                                             "that X25519 ignores), the others pair with nobody");
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

TEST_F(TamperedQr, NoTruncationIsRead) {
    const auto count = withEveryTruncation(Parovani::qrText(bundle), [&](const std::string& shorter) {
        EXPECT_EQ(pairWith(shorter), End::unreadable) << shorter;
    });
    tell("truncations of a QR code", count, "none is read");
}

} // namespace
} // namespace morvex
