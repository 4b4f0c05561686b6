#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// The expression by which an address book finds the contacts whose full name or organization have every word
/// of `name`. Nothing if it has no word, or more than a name can have.
std::optional<std::string> contactQuery(std::string_view name);

} // namespace morvex
