#pragma once

#include <optional>
#include <string>

namespace morvex {

class HostName {
  public:
    virtual ~HostName() = default;

    /// The name that a person gave the computer, else its network name; nothing when it has neither.
    [[nodiscard]] virtual std::optional<std::string> name() const = 0;
};

} // namespace morvex
