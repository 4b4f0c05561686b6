#include "app/agents/JsonFields.h"

#include <boost/json.hpp>

namespace morvex::fields {

std::optional<std::string> text(const boost::json::object& object, std::string_view key) {
    const auto* value = object.if_contains(key);
    const auto* found = value ? value->if_string() : nullptr;
    return found ? std::optional<std::string>(std::in_place, *found) : std::nullopt;
}

std::optional<std::string> nonEmptyText(const boost::json::object& object, std::string_view key) {
    auto found = text(object, key);
    return found && !found->empty() ? found : std::nullopt;
}

const boost::json::object* object(const boost::json::object& object, std::string_view key) {
    const auto* value = object.if_contains(key);
    return value ? value->if_object() : nullptr;
}

std::vector<const boost::json::object*> objects(const boost::json::object& object, std::string_view key) {
    const auto* value = object.if_contains(key);
    const auto* list = value ? value->if_array() : nullptr;
    std::vector<const boost::json::object*> all;
    if (!list) return all;
    for (const auto& element : *list) {
        if (!element.is_object()) return {};
        all.push_back(&element.get_object());
    }
    return all;
}

} // namespace morvex::fields
