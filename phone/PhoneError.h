#pragma once

#include "shared/base/Error.h"
#include "shared/base/InCzechAlone.h"

#include <string>

namespace morvex {

/// How the program ends, for scripts.
enum class ExitCode {
    done = 0,
    refused = 1, ///< the tool or the other side said no, or this computer did
    usage = 2,
    notPaired = 3,
    macUnreachable = 4,
    relayUnreachable = 5,
    notConfirmed = 6, ///< the user did not confirm the pairing
    interrupted = 130,
};

/// A failure that knows how the program ends because of it.
struct PhoneError {
    ExitCode code = ExitCode::refused;
    Sentence text;

    [[nodiscard]] Sentence popis() const { return text; }

    bool operator==(const PhoneError&) const = default;
};

inline std::unexpected<Error> failWith(ExitCode code, Sentence text) {
    return fail(PhoneError{code, std::move(text)});
}

inline std::unexpected<Error> failWith(ExitCode code, std::string text) {
    return failWith(code, inCzechAlone(std::move(text)));
}

/// What a wait ends in when the user interrupts, the relay turns the phone away, or the relay is not heard of
/// in time (`trouble`: the failure of the last connection, if there was one).
PhoneError userInterrupted();
PhoneError turnedAway(const std::string& why);
PhoneError relaySilent(const std::string& trouble);

/// Also for the failures of the layers below.
ExitCode exitCodeOf(const Error& error);

} // namespace morvex
