#pragma once

namespace morvex {

/// Whether this program was built with the address or thread sanitizer: they keep freed memory, so the
/// system's memory counts say nothing about the program's own use.
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
inline constexpr bool isSanitized = true;
#else
inline constexpr bool isSanitized = false;
#endif

} // namespace morvex
