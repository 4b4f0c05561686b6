#include "relay/Login.h"
#include "relay/PairCalls.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/trust/Parovani.h"
#include "shared/trust/Revocation.h"
#include "shared/trust/SessionHandshake.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayCalls.h"
#include "tests/support/Effort.h"
#include "tests/support/UnownedSigningKeys.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvex {
namespace {

/// An attacker without a private key, who chooses a public key under which anybody can make signatures.
class UnownedKeys : public testing::Test {
  protected:
    const PairID pair{"PAIR"};
    const std::vector<test::SigningPoint> keys = test::unownedSigningKeys();
    const std::vector<Bytes> signatures = test::keylessSignatures();
    const std::size_t messages = cases(16, 400);
    const Date now = dateFromSeconds(1'800'000'000);

    static Bytes nonce(std::size_t number) {
        Bytes bytes(32, 7);
        bytes[0] = static_cast<std::uint8_t>(number);
        bytes[1] = static_cast<std::uint8_t>(number >> 8);
        return bytes;
    }

    /// Calls `attack(key, signature, number of the message)` for every combination.
    template <class Attack> std::size_t tryAll(Attack attack) {
        for (const auto& key : keys)
            for (std::size_t message = 0; message < messages; ++message)
                for (const auto& signature : signatures) attack(SigningPublicKey{key}, signature, message);
        return keys.size() * messages * signatures.size();
    }
};

TEST_F(UnownedKeys, NoneLogsInAlsoWhereAnOlderRelayMadeItAMember) {
    auto store = PairStore::open(":memory:").value();
    for (const auto& key : keys) {
        const SigningPublicKey signingKey{key};
        const auto device = deviceID(signingKey);
        ASSERT_TRUE(
            store.create(PairID{device.rawValue}, {device, signingKey, DeviceRole::mac}, sha256(key), now));
    }
    const auto tried = tryAll([&](const SigningPublicKey& key, const Bytes& signature, std::size_t message) {
        const auto device = deviceID(key);
        const auto frame =
            encode(RelayMessage{RelayMessage::Authenticate{PairID{device.rawValue}, device, key, signature}});
        EXPECT_EQ(Login(nonce(message), "1.4").answer(store, frame).value(),
                  LoginAnswer(RelayFailure::badSignature));
    });
    tell("logins under keys nobody owns", tried, "none let in");
}

TEST_F(UnownedKeys, NoneBecomesAMemberOfAPair) {
    auto store = PairStore::open(":memory:").value();
    PairCalls calls(store, [] { return FreshPair{PairID{"PAIR"}, "token"}; });
    const auto refused = refusal(CallRefusal::unusableKey).body;
    for (const auto& key : keys) {
        const SigningPublicKey signingKey{key};
        const auto device = deviceID(signingKey);
        const auto creating = encode(ZalozitPozadavek{device, signingKey, DeviceRole::mac});
        EXPECT_EQ(calls.answer("/v1/pair/create", creating, now).body, refused);
        const auto joining = encode(PripojitPozadavek{"token", device, signingKey, DeviceRole::phone});
        EXPECT_EQ(calls.answer("/v1/pair/join", joining, now).body, refused);
    }
    EXPECT_FALSE(store.find(pair).value());
    tell("pairing calls with keys nobody owns", 2 * keys.size(), "refused in words");
}

TEST_F(UnownedKeys, NoneIntroducesItselfAtAPairingOrASession) {
    const auto agreement = DeviceIdentity::generate().agreementKey();
    const auto tried = tryAll([&](const SigningPublicKey& key, const Bytes& signature, std::size_t message) {
        const PairID numbered{std::to_string(message)};
        EXPECT_FALSE(Parovani::checkHello({deviceID(key), key, agreement, signature}, numbered));
        EXPECT_FALSE(checkSessionHello({deviceID(key), agreement, signature}, numbered, key));
    });
    tell("hellos under keys nobody owns", 2 * tried, "none accepted");
}

} // namespace
} // namespace morvex
