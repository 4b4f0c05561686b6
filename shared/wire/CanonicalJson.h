#pragma once

#include <string>
#include <string_view>

namespace morvex {

/// The same JSON with the members of each object in the order of their names' bytes and without white space,
/// so that two texts of one value become equal. A text that is no JSON stays as it is. Of RFC 8785 this holds
/// the order and the white space, not the form of numbers.
std::string canonicalJson(std::string_view json);

} // namespace morvex
