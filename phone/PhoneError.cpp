#include "phone/PhoneError.h"

#include "platform/ports/NetworkError.h"
#include "shared-apple/RelayParovani.h"
#include "shared/base/InCzechAlone.h"
#include "shared/wire/TalkSpanError.h"

namespace morvex {

PhoneError userInterrupted() {
    return {ExitCode::interrupted, inCzechAlone("Přerušeno.")};
}

PhoneError turnedAway(const std::string& why) {
    return {ExitCode::relayUnreachable, inCzechAlone("Relay odmítl spojení: " + why)};
}

PhoneError relaySilent(const std::string& trouble) {
    auto why = trouble.empty() ? std::string("neodpovídá") : trouble;
    return {ExitCode::relayUnreachable, inCzechAlone("Relay se včas neozval: " + why)};
}

ExitCode exitCodeOf(const Error& error) {
    if (const auto* own = error.as<PhoneError>()) return own->code;
    if (error.as<NetworkError>() || error.as<RelayParovani::RelayChyba>()) return ExitCode::relayUnreachable;
    const auto* common = error.as<TalkSpanError>();
    if (common && common->as<TalkSpanError::MacOffline>()) return ExitCode::macUnreachable;
    if (common && common->as<TalkSpanError::NotPaired>()) return ExitCode::notPaired;
    return ExitCode::refused;
}

} // namespace morvex
