#pragma once

#include <cstddef>
#include <optional>
#include <string>

/// The name that an agent gives to a session. It comes from outside and goes onto a command line.
namespace morvex::SessionId {

inline constexpr std::size_t longest = 512; ///< bytes

/// Nothing for what is no name of a session: an empty text, one that is too long, one with control
/// characters, and one that begins like an option.
std::optional<std::string> usable(std::optional<std::string> id);

} // namespace morvex::SessionId
