#pragma once

#include <string>

namespace morvex {

/// A network failure, in Czech: words of a `SystemTrouble` where the system, a library or a peer failed.
struct NetworkError {
    std::string text;

    [[nodiscard]] std::string popis() const { return text; }

    bool operator==(const NetworkError&) const = default;
};

} // namespace morvex
