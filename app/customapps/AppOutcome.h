#pragma once

#include "shared/base/Sentence.h"

#include <chrono>
#include <cstddef>
#include <optional>

namespace morvex {

/// What came of asking an app for its tools.
struct AppOutcome {
    bool isAsking = false;                ///< no answer yet; the rest does not count
    std::size_t tools = 0;                ///< that are offered
    std::size_t waiting = 0;              ///< tools that wait until a person has looked at them
    std::size_t leftOut = 0;              ///< that the server named too, but that cannot be used
    std::chrono::milliseconds took{0};    ///< from the question to the answer
    std::optional<Sentence> failure = {}; ///< why there are none

    [[nodiscard]] bool isConnected() const { return !isAsking && !failure; }

    [[nodiscard]] Sentence popis() const;

    bool operator==(const AppOutcome&) const = default;
};

} // namespace morvex
