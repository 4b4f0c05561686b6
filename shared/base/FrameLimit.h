#pragma once

#include <cstddef>

namespace morvex {

/// The largest frame, in bytes, that may pass between a device and the relay. A sender does not send a
/// message that would make a longer frame; a receiver skips a longer frame and keeps the connection.
inline constexpr std::size_t frameLimit = std::size_t{4} * 1024 * 1024;

/// The most bytes of one frame that a receiver skips; a longer frame ends the connection.
inline constexpr std::size_t passedOverLimit = 8 * frameLimit;

} // namespace morvex
