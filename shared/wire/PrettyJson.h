#pragma once

#include <boost/json/fwd.hpp>

#include <string>

namespace morvex {

/// For a person's eyes: a key or an element a line, two blanks for each level, keys sorted.
std::string prettyJson(const boost::json::object& object);
std::string prettyJson(const boost::json::array& array);

} // namespace morvex
