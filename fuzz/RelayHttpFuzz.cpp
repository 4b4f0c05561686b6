// A call of the pairing interface, on a relay with one pair that waits for its second device and one complete
// pair. The first byte selects the call, the rest is its body; each call finds the relay in the same state.

#include "relay/PairCalls.h"
#include "shared/base/Require.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/trust/Fingerprint.h"
#include "shared/trust/Revocation.h"
#include "shared/trust/UsableSigningKey.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayCalls.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

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

/// Why a call is refused; nothing for a valid one.
using Cause = std::optional<CallRefusal>;

class Relay {
  public:
    Relay() {
        makePair("WAITING", "token1");
        makePair("WHOLE", "token2");
        require(store_.join(PairID{"WHOLE"}, member(phone, DeviceRole::phone)).value(), "no second device");
    }

    /// Each call returns whether it was accepted.
    bool create(std::string_view body) {
        const auto request = decode<ZalozitPozadavek>(body);
        const auto cause = strangeness(request);
        const auto reply = answer("/v1/pair/create", body, cause);
        const auto stored = find("FRESH");
        require(stored.has_value() == !cause, "a refused pair is made, or a good one is not");
        if (cause) return false;
        const auto made = decode<ZalozitOdpoved>(reply.body);
        require(made && made->pairID.rawValue == "FRESH" && made->pairingToken == "token3" &&
                    made->expiresAt > now,
                "another pair than the new one");
        require(stored->members == std::vector{Member{request->deviceID, request->key, request->role}},
                "the pair of another device");
        return true;
    }

    bool join(std::string_view body) {
        const auto request = decode<PripojitPozadavek>(body);
        const auto cause = strangeness(request).or_else([&] { return whyNotJoined(*request); });
        const auto reply = answer("/v1/pair/join", body, cause);
        require(find("WAITING")->members.size() == (cause ? 1 : 2),
                "a device joined that may not, or did not");
        if (!cause)
            require(decode<PripojitOdpoved>(reply.body)->pairID.rawValue == "WAITING", "another pair");
        return !cause;
    }

    bool revoke(std::string_view body) {
        const auto request = decode<OdvolatPozadavek>(body);
        const auto cause = request ? whyNotRevoked(*request) : Cause(CallRefusal::unreadable);
        const auto reply = answer("/v1/device/revoke", body, cause);
        require(find("WHOLE")->isRevoked == !cause && !find("WAITING")->isRevoked,
                "the wrong pairs are revoked");
        require(reply.revoked.has_value() == !cause, "the sockets of another pair end");
        return !cause;
    }

  private:
    void makePair(const char* name, const char* token) {
        require(store_
                    .create(PairID{name}, member(mac, DeviceRole::mac), sha256(asBytes(token)),
                            now + std::chrono::minutes{1})
                    .has_value(),
                "no pair");
    }

    std::optional<StoredPair> find(const char* name) { return store_.find(PairID{name}).value(); }

    CallReply answer(const char* path, std::string_view body, Cause cause) {
        auto reply = calls_.answer(path, body, now);
        require(reply.trouble.empty(), "the store has no reason to fail");
        require(cause ? reply.body == refusal(*cause).body : reply.status < 300,
                "another answer than the rules give");
        const auto refused = decode<VaporDuvod>(reply.body);
        require(!cause || (reply.status >= 400 && refused && refused->reason), "a refusal has a reason");
        return reply;
    }

    template <class Request> static Cause strangeness(const Result<Request>& request) {
        if (!request) return CallRefusal::unreadable;
        if (deviceID(request->key) != request->deviceID) return CallRefusal::wrongFingerprint;
        return isUsableSigningKey(request->key.raw) ? Cause{} : CallRefusal::unusableKey;
    }

    static Cause whyNotJoined(const PripojitPozadavek& request) {
        if (request.pairingToken == "token2") return CallRefusal::usedToken;
        if (request.pairingToken != "token1") return CallRefusal::unknownToken;
        if (request.deviceID == mac.deviceID()) return CallRefusal::sameDevice;
        return request.role == DeviceRole::mac ? CallRefusal::sameRole : Cause{};
    }

    /// Only the two devices can sign.
    static Cause whyNotRevoked(const OdvolatPozadavek& request) {
        const bool isWhole = request.pairID.rawValue == "WHOLE";
        if (!isWhole && request.pairID.rawValue != "WAITING") return CallRefusal::unknownPair;
        const bool isMember = request.by == mac.deviceID() || (isWhole && request.by == phone.deviceID());
        if (!isMember) return CallRefusal::notMember;
        return request == genuine() ? Cause{} : CallRefusal::badSignature;
    }

    /// A request signed by the computer.
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
