#include "shared/wire/CanonicalJson.h"

#include "shared/wire/Json.h"

#include <boost/json/value.hpp>

#include <algorithm>
#include <utility>
#include <vector>

namespace morvex {

namespace {

void sortMembers(boost::json::value& value);

void sortMembers(boost::json::object& object) {
    std::vector<std::pair<std::string, boost::json::value>> members;
    members.reserve(object.size());
    for (auto& member : object) members.emplace_back(member.key(), std::move(member.value()));
    std::ranges::sort(members, {}, [](const auto& member) -> const std::string& { return member.first; });
    object.clear();
    for (auto& [name, value] : members) {
        sortMembers(value);
        object.emplace(name, std::move(value));
    }
}

/// As deep as the parser allows.
void sortMembers(boost::json::value& value) {
    if (auto* object = value.if_object()) sortMembers(*object);
    if (auto* array = value.if_array())
        for (auto& element : *array) sortMembers(element);
}

} // namespace

std::string canonicalJson(std::string_view json) {
    auto value = parseJson(json);
    if (!value) return std::string(json);
    sortMembers(*value);
    return encode(*value);
}

} // namespace morvex
