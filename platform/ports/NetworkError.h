#pragma once

#include <string>

namespace morvex {

/// A network failure, in the platform's words.
struct NetworkError {
    std::string text;

    [[nodiscard]] std::string popis() const { return text; }

    bool operator==(const NetworkError&) const = default;
};

} // namespace morvex
