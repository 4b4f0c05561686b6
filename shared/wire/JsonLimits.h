#pragma once

#include <cstddef>

namespace morvex {

/// The longest text that is read when the caller sets no limit of its own.
inline constexpr std::size_t jsonSizeLimit = 16 * 1024 * 1024;
/// Objects and arrays nest at most this deep.
inline constexpr std::size_t jsonDepthLimit = 64;

/// How much of a JSON text is read. What asks for more is refused before it is built.
struct JsonLimits {
    std::size_t size = jsonSizeLimit; ///< bytes of the text
    /// Objects, arrays and what stands in them, names aside.
    std::size_t values = 64 * 1024;

    /// What it may take to find equal names, were all names of an object to fall into one slot of its table:
    /// `JsonMeter::comparisons`. Objects of up to 16 members with names of usual length always fit.
    [[nodiscard]] constexpr std::size_t comparisons() const { return 16 * values; }
};

/// For what others send: a frame, what a frame carries, the arguments of a tool. Whoever waits for a socket
/// waits for these too. An object may have 700 members when it is the only one with more than 16.
inline constexpr JsonLimits messageLimits{.values = 16 * 1024};

/// For a file of records that has `size` bytes and may have `limit`: more values the longer it is, as many as
/// there are in records without long texts.
constexpr JsonLimits fileLimits(std::size_t limit, std::size_t size) {
    constexpr std::size_t bytesPerValue = 16;
    return {.size = limit, .values = JsonLimits{}.values + size / bytesPerValue};
}

} // namespace morvex
