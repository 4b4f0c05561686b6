#pragma once

#include <cstddef>
#include <optional>
#include <string>

/// The id that an agent gives to a session. It comes from outside and is passed on a command line.
namespace morvex::SessionId {

inline constexpr std::size_t longest = 512; ///< bytes

/// Empty if `id` cannot be a session's id: it is empty, too long, contains control characters, or begins like
/// an option.
std::optional<std::string> usable(std::optional<std::string> id);

} // namespace morvex::SessionId
