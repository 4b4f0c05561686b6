#pragma once

#include <boost/json/fwd.hpp>

#include <string>

namespace morvex {

/// For people: one key or element per line, two blanks of indentation per level, sorted keys.
std::string prettyJson(const boost::json::object& object);
std::string prettyJson(const boost::json::array& array);

} // namespace morvex
