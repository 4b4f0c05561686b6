#pragma once

#include <cstddef>

namespace morvex {

/// The largest frame, in bytes, that passes between a device and the relay. A sender keeps what makes a
/// longer one; a receiver passes over a longer one, and the connection stays.
inline constexpr std::size_t frameLimit = std::size_t{4} * 1024 * 1024;

/// So many bytes of one frame are passed over at most; a frame that goes on longer ends the connection.
inline constexpr std::size_t passedOverLimit = 8 * frameLimit;

} // namespace morvex
