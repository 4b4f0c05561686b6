#pragma once

#include "shared/base/Sentence.h"

namespace morvex {

/// A network failure. Its text is that of a `SystemTrouble` where the system, a library or a peer failed.
struct NetworkError {
    Sentence text;

    [[nodiscard]] Sentence popis() const { return text; }

    bool operator==(const NetworkError&) const = default;
};

} // namespace morvex
