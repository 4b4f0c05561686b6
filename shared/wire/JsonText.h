#pragma once

#include <boost/json/fwd.hpp>

#include <cstdint>
#include <string>
#include <string_view>

namespace morvex {

/// Appends `text` as a JSON string. A byte that is no part of valid UTF-8 becomes U+FFFD.
void appendJsonString(std::string& out, std::string_view text);
void appendJsonNumber(std::string& out, std::int64_t number);
void appendJsonNumber(std::string& out, std::uint64_t number);
/// The shortest form that reads back as the same number. A number that is not finite ends the process.
void appendJsonNumber(std::string& out, double number);

/// `value` without white space, keys in the order in which the objects hold them.
void appendJson(std::string& out, const boost::json::value& value);
void appendJson(std::string& out, const boost::json::object& object);
void appendJson(std::string& out, const boost::json::array& array);

} // namespace morvex
