#include "relay/Login.h"

#include "shared/base/Try.h"
#include "shared/trust/Fingerprint.h"
#include "shared/wire/Json.h"

#include <utility>

namespace morvex {

namespace {

constexpr std::size_t nonceLength = 32;

LoginAnswer seat(const StoredPair& pair, const RelayMessage::Authenticate& given) {
    const auto* member = pair.member(given.device);
    if (!member || member->key != given.key) return RelayFailure::unknownPair;
    if (pair.isRevoked) return RelayFailure::revoked;
    const auto* peer = pair.peerOf(given.device);
    return Seat{pair.id, given.device, peer ? std::optional{peer->device} : std::nullopt, pair.expiresAt};
}

bool speaksOurVersion(std::string_view clientVersion) {
    const auto version = ProtocolVersion::parse(clientVersion);
    return version && version->isCompatible(ProtocolVersion::current);
}

} // namespace

Login Login::start(std::string_view clientVersion) {
    Bytes nonce(nonceLength);
    fillRandom(nonce);
    return {std::move(nonce), clientVersion};
}

Login::Login(Bytes nonce, std::string_view clientVersion)
    : nonce_(std::move(nonce)), isCompatible_(speaksOurVersion(clientVersion)) {}

std::string Login::challenge() const {
    return encode(RelayMessage{RelayMessage::Challenge{nonce_, ProtocolVersion::current}});
}

Result<LoginAnswer> Login::answer(PairStore& store, std::string_view frame) const {
    const auto message = decode<RelayMessage>(frame, messageLimits);
    if (!message) return RelayFailure::malformed;
    if (message->as<RelayMessage::Forward>()) return RelayFailure::notAuthenticated;
    const auto* given = message->as<RelayMessage::Authenticate>();
    if (!given) return RelayFailure::malformed;
    // The challenge contained the relay's version, so a device of an incompatible version disconnects by
    // itself.
    if (!isCompatible_) return RelayFailure::protocolMismatch;
    return check(store, *given);
}

Result<LoginAnswer> Login::check(PairStore& store, const RelayMessage::Authenticate& given) const {
    if (deviceID(given.key) != given.device || !ed25519Verify(given.signature, nonce_, given.key.raw))
        return RelayFailure::badSignature;
    TRY(const auto, pair, store.find(given.pair));
    if (!pair) return RelayFailure::unknownPair;
    return seat(*pair, given);
}

} // namespace morvex
