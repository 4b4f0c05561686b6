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
/// The shortest form that reads back as the same number. Ends the process if the number is not finite.
void appendJsonNumber(std::string& out, double number);

/// Appends `value` without white space; the keys keep the order of the objects.
void appendJson(std::string& out, const boost::json::value& value);
void appendJson(std::string& out, const boost::json::object& object);
void appendJson(std::string& out, const boost::json::array& array);

} // namespace morvex
