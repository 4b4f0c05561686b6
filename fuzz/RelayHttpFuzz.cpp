// A call of the pairing interface, on a relay that knows one pair that waits for its second device and a
// whole one. The first byte chooses the call, the rest is its body; each call finds the relay as every other
// does.

#include "relay/PairCalls.h"
#include "shared/base/Require.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/trust/Fingerprint.h"
#include "shared/trust/Revocation.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayCalls.h"

#include <cstddef>
#include <cstdint>
#include <memory>

using namespace morvex;

namespace {

constexpr Date now{std::chrono::seconds{1'800'000'000}};

DeviceIdentity deviceOf(std::uint8_t byte) {
    return {SigningPrivateKey::fromRaw(Bytes(keySize, byte)).value(),
            AgreementPrivateKey::fromRaw(Bytes(keySize, byte)).value()};
}

/// The devices of the seeds.
const DeviceIdentity mac = deviceOf(1);
const DeviceIdentity phone = deviceOf(2);

Member member(const DeviceIdentity& device, DeviceRole role) {
    return {device.deviceID(), device.signingKey(), role};
}

class Relay {
  public:
    Relay() {
        makePair("WAITING", "token1");
        makePair("WHOLE", "token2");
        vyzaduj(store_.join(PairID{"WHOLE"}, member(phone, DeviceRole::phone)).value(), "no second device");
    }

    /// Each tells whether the call was a good one.
    bool create(std::string_view body) {
        const auto request = decode<ZalozitPozadavek>(body);
        const bool isGood = request && deviceID(request->key) == request->deviceID;
        const auto reply = answer("/v1/pair/create", body, isGood ? 200 : 400);
        const auto stored = find("FRESH");
        vyzaduj(stored.has_value() == isGood, "a refused pair is made, or a good one is not");
        if (!isGood) return false;
        const auto made = decode<ZalozitOdpoved>(reply.body);
        vyzaduj(made && made->pairID.rawValue == "FRESH" && made->pairingToken == "token3" &&
                    made->expiresAt > now,
                "another pair than the new one");
        vyzaduj(stored->members == std::vector{Member{request->deviceID, request->key, request->role}},
                "the pair of another device");
        return true;
    }

    bool join(std::string_view body) {
        const auto request = decode<PripojitPozadavek>(body);
        const bool isKnown = request && deviceID(request->key) == request->deviceID;
        const bool isGood = isKnown && request->pairingToken == "token1" &&
                            request->deviceID != mac.deviceID() && request->role == DeviceRole::phone;
        const auto reply = answer("/v1/pair/join", body, isGood ? 200 : 400);
        vyzaduj(find("WAITING")->members.size() == (isGood ? 2 : 1),
                "a device joined that may not, or did not");
        if (isGood)
            vyzaduj(decode<PripojitOdpoved>(reply.body)->pairID.rawValue == "WAITING", "another pair");
        return isGood;
    }

    bool revoke(std::string_view body) {
        const auto request = decode<OdvolatPozadavek>(body);
        const bool isGood = request && *request == genuine();
        const auto reply = answer("/v1/device/revoke", body, isGood ? 204 : 400);
        vyzaduj(find("WHOLE")->isRevoked == isGood && !find("WAITING")->isRevoked,
                "the wrong pairs are revoked");
        vyzaduj(reply.revoked.has_value() == isGood, "the sockets of another pair end");
        return isGood;
    }

  private:
    void makePair(const char* name, const char* token) {
        vyzaduj(store_
                    .create(PairID{name}, member(mac, DeviceRole::mac), sha256(asBytes(token)),
                            now + std::chrono::minutes{1})
                    .has_value(),
                "no pair");
    }

    std::optional<StoredPair> find(const char* name) { return store_.find(PairID{name}).value(); }

    /// 400 stands for any refusal.
    CallReply answer(const char* path, std::string_view body, unsigned expected) {
        auto reply = calls_.answer(path, body, now);
        vyzaduj(reply.trouble.empty(), "the store has no reason to fail");
        const bool isRefused = reply.status >= 400 && reply.status < 500;
        vyzaduj(expected == 400 ? isRefused : reply.status == expected, "another answer than the rules give");
        const auto refused = decode<VaporDuvod>(reply.body);
        vyzaduj(!isRefused || (refused && refused->reason), "a refusal has a reason");
        return reply;
    }

    /// What the computer signed.
    static const OdvolatPozadavek& genuine() {
        static const auto request = [] {
            OdvolatPozadavek made{PairID{"WHOLE"}, phone.deviceID(), mac.deviceID(), now, {}};
            made.signature =
                mac.sign(asBytes(revocationSignedText(made.pairID, made.target, made.by, made.signedAt)));
            return made;
        }();
        return request;
    }

    PairStore store_ = PairStore::open(":memory:").value();
    PairCalls calls_{store_, [] { return FreshPair{PairID{"FRESH"}, "token3"}; }};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    static std::unique_ptr<Relay> relay;
    if (!relay) relay = std::make_unique<Relay>();
    const auto body = asText({data + 1, size - 1});
    const auto choice = data[0] % 3;
    const bool isChanged = choice == 0   ? relay->create(body)
                           : choice == 1 ? relay->join(body)
                                         : relay->revoke(body);
    if (isChanged) relay.reset();
    return 0;
}
