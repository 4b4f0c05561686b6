#include "phone/PhoneError.h"

#include "platform/ports/HttpClient.h"
#include "shared-apple/RelayParovani.h"
#include "shared/wire/TalkSpanError.h"

namespace morvex {

ExitCode exitCodeOf(const Error& error) {
    if (const auto* own = error.as<PhoneError>()) return own->code;
    if (error.as<NetworkError>() || error.as<RelayParovani::RelayChyba>()) return ExitCode::relayUnreachable;
    const auto* common = error.as<TalkSpanError>();
    if (common && common->as<TalkSpanError::MacOffline>()) return ExitCode::macUnreachable;
    if (common && common->as<TalkSpanError::NotPaired>()) return ExitCode::notPaired;
    return ExitCode::refused;
}

} // namespace morvex
