#pragma once

#include <boost/json/object.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What stands under a key of an agent's event; nothing when it is absent or of another type.
namespace morvex::fields {

std::optional<std::string> text(const boost::json::object& object, std::string_view key);

/// The same, also nothing when the text is empty.
std::optional<std::string> nonEmptyText(const boost::json::object& object, std::string_view key);

/// Null for nothing.
const boost::json::object* object(const boost::json::object& object, std::string_view key);

/// The elements of a list of objects; a list that also has something else is none.
std::vector<const boost::json::object*> objects(const boost::json::object& object, std::string_view key);

} // namespace morvex::fields
