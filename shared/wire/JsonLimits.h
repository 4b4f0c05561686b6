#pragma once

#include <cstddef>

namespace morvex {

/// The length limit of a text if the caller sets none, in bytes.
inline constexpr std::size_t jsonSizeLimit = 16 * 1024 * 1024;
/// The deepest allowed nesting of objects and arrays.
inline constexpr std::size_t jsonDepthLimit = 64;

/// Limits for reading a JSON text. A text beyond them is refused before its value is built.
struct JsonLimits {
    std::size_t size = jsonSizeLimit; ///< bytes of the text
    /// Objects, arrays and the values in them, not counting names.
    std::size_t values = 64 * 1024;

    /// The limit for `JsonMeter::comparisons`: the work of finding equal names if all names of an object fall
    /// into one slot of its hash table. Objects of up to 16 members with names of usual length always fit.
    [[nodiscard]] constexpr std::size_t comparisons() const { return 16 * values; }
};

/// Limits for data from outside: a frame, its content, the arguments of a tool. They are tighter because the
/// sockets wait while such a text is read. An object may have 700 members if it is the only one with more
/// than 16.
inline constexpr JsonLimits messageLimits{.values = 16 * 1024};

/// Limits for a file of records that has `size` bytes and may have `limit`. The number of values grows with
/// the size, enough for records without long texts.
constexpr JsonLimits fileLimits(std::size_t limit, std::size_t size) {
    constexpr std::size_t bytesPerValue = 16;
    return {.size = limit, .values = JsonLimits{}.values + size / bytesPerValue};
}

} // namespace morvex
