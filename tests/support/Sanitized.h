#pragma once

namespace morvex {

/// Whether the sanitizers of addresses or threads are in this program: what is freed stays with them, and so
/// memory as the system counts it says nothing of the program's own.
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
inline constexpr bool isSanitized = true;
#else
inline constexpr bool isSanitized = false;
#endif

} // namespace morvex
