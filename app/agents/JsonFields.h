#pragma once

#include <boost/json/object.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Read a value under a key of an agent's event; empty or null if it is absent or of another type.
namespace morvex::fields {

std::optional<std::string> text(const boost::json::object& object, std::string_view key);

/// The same; also empty if the text is empty.
std::optional<std::string> nonEmptyText(const boost::json::object& object, std::string_view key);

const boost::json::object* object(const boost::json::object& object, std::string_view key);

/// The elements of a list of objects. A list that also contains anything else counts as empty.
std::vector<const boost::json::object*> objects(const boost::json::object& object, std::string_view key);

} // namespace morvex::fields
