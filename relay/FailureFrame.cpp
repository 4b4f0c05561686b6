#include "relay/FailureFrame.h"

#include "shared/wire/Json.h"

#include <utility>

namespace morvex {

namespace {

constexpr std::uint16_t policyViolation = 1008;

const char* words(RelayFailure code) {
    switch (code) {
    case RelayFailure::protocolMismatch:
        return "Relay mluví jinou verzí protokolu.";
    case RelayFailure::badSignature:
        return "Podpis přihlášení nesedí.";
    case RelayFailure::unknownPair:
        return "Relay tenhle pár nezná.";
    case RelayFailure::revoked:
        return "Párování bylo zrušené.";
    case RelayFailure::notAuthenticated:
        return "Zařízení se relayi ještě nepřihlásilo.";
    case RelayFailure::expired:
        return "Zpráva dorazila na relay pozdě.";
    case RelayFailure::tooLarge:
        return "Zpráva je pro relay moc velká.";
    case RelayFailure::rateLimited:
        return "Relay dostává moc zpráv najednou.";
    case RelayFailure::peerOffline:
        return "Druhé zařízení není připojené.";
    case RelayFailure::malformed:
        return "Relay dostal zprávu, které nerozumí.";
    }
    std::unreachable();
}

} // namespace

std::string failureFrame(RelayFailure code) {
    return encode(RelayMessage{RelayMessage::Failure{code, words(code)}});
}

Ending refusalEnding(RelayFailure code) {
    return {failureFrame(code), policyViolation};
}

} // namespace morvex
