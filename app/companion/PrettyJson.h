#pragma once

#include <boost/json/object.hpp>

#include <string>

namespace morvex {

/// The object for a person's eyes: a key a line, two blanks for each level, keys sorted.
std::string prettyJson(const boost::json::object& object);

} // namespace morvex
