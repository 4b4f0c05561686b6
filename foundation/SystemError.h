#pragma once

#include <string>

namespace morvex {

/// A system call that failed: its errno.
struct SystemError {
    int code = 0;
    /// The system's words for the code.
    [[nodiscard]] std::string popis() const;
    bool operator==(const SystemError&) const = default;
};

} // namespace morvex
