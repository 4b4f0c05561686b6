#pragma once

#include <cstdlib>
#include <string>

namespace morvex {

/// Whether this program was built with the address or thread sanitizer: they keep freed memory, so the
/// system's memory counts say nothing about the program's own use.
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
inline constexpr bool isSanitized = true;
#else
inline constexpr bool isSanitized = false;
#endif

/// ASAN_OPTIONS with which the whole stack of an allocation is seen, also through libraries without frame
/// pointers. That is slow; without it a leak of such a library cannot be told from one of ours.
inline std::string wholeStacks() {
    const char* set = std::getenv("ASAN_OPTIONS");
    return (set && *set ? std::string(set) + ":" : "") + "fast_unwind_on_malloc=0";
}

} // namespace morvex
