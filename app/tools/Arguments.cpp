#include "app/tools/Arguments.h"

#include <boost/json/value.hpp>

#include <limits>

namespace morvex {

std::optional<std::string> Arguments::text(std::string_view key) const {
    const auto* value = arguments_.if_contains(key);
    const auto* text = value ? value->if_string() : nullptr;
    return text ? std::optional<std::string>(std::string_view(*text)) : std::nullopt;
}

std::optional<std::int64_t> Arguments::integer(std::string_view key) const {
    const auto* value = arguments_.if_contains(key);
    if (!value) return std::nullopt;
    if (const auto* whole = value->if_int64()) return *whole;
    constexpr double bound = -static_cast<double>(std::numeric_limits<std::int64_t>::min());
    const auto* number = value->if_double();
    if (!number || !(*number > -bound && *number < bound)) return std::nullopt;
    return static_cast<std::int64_t>(*number);
}

std::optional<bool> Arguments::boolean(std::string_view key) const {
    const auto* value = arguments_.if_contains(key);
    const auto* flag = value ? value->if_bool() : nullptr;
    return flag ? std::optional(*flag) : std::nullopt;
}

std::optional<std::vector<std::string>> Arguments::texts(std::string_view key) const {
    const auto* value = arguments_.if_contains(key);
    const auto* list = value ? value->if_array() : nullptr;
    if (!list) return std::nullopt;
    std::vector<std::string> texts;
    for (const auto& element : *list) {
        const auto* text = element.if_string();
        if (!text) return std::nullopt;
        texts.emplace_back(std::string_view(*text));
    }
    return texts;
}

} // namespace morvex
