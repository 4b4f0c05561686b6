#pragma once

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace morvex {

/// What the user hears when an agent has opened or resumed its session.
inline constexpr std::string_view sessionIsThere = "Relace navázána.";

/// Compares bytes: for phrases in plain ASCII and a text in lower case.
inline bool containsAny(std::string_view text, std::initializer_list<std::string_view> phrases) {
    return std::ranges::any_of(phrases, [text](auto phrase) { return text.contains(phrase); });
}

} // namespace morvex
