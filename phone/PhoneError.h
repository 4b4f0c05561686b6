#pragma once

#include "shared/base/Error.h"
#include "shared/base/InCzechAlone.h"

#include <string>

namespace morvex {

/// The exit codes of the program, for scripts.
enum class ExitCode {
    done = 0,
    refused = 1, ///< refused by the tool, the other side or this computer
    usage = 2,
    notPaired = 3,
    macUnreachable = 4,
    relayUnreachable = 5,
    notConfirmed = 6, ///< the user did not confirm the pairing
    interrupted = 130,
};

/// A failure with the exit code that it causes.
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

/// The failures of a wait: the user interrupted it, the relay turned the phone away, or the relay did not
/// answer in time (`trouble`: the failure of the last connection, if there was one).
PhoneError userInterrupted();
PhoneError turnedAway(const std::string& why);
PhoneError relaySilent(const std::string& trouble);

/// Also for the failures of the layers below.
ExitCode exitCodeOf(const Error& error);

} // namespace morvex
