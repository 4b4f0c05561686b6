#include "app/tools/ArgumentRecord.h"

#include <boost/json/value.hpp>

#include <limits>

namespace morvex {

std::optional<std::string> readArgument(const boost::json::object& arguments, std::string_view name,
                                        std::string) {
    const auto* value = arguments.if_contains(name);
    const auto* text = value ? value->if_string() : nullptr;
    return text ? std::optional<std::string>(std::string_view(*text)) : std::nullopt;
}

std::optional<std::int64_t> readArgument(const boost::json::object& arguments, std::string_view name,
                                         std::int64_t) {
    const auto* value = arguments.if_contains(name);
    if (!value) return std::nullopt;
    if (const auto* whole = value->if_int64()) return *whole;
    constexpr double bound = -static_cast<double>(std::numeric_limits<std::int64_t>::min());
    const auto* number = value->if_double();
    if (!number || !(*number > -bound && *number < bound)) return std::nullopt;
    return static_cast<std::int64_t>(*number);
}

std::optional<bool> readArgument(const boost::json::object& arguments, std::string_view name, bool) {
    const auto* value = arguments.if_contains(name);
    const auto* flag = value ? value->if_bool() : nullptr;
    return flag ? std::optional(*flag) : std::nullopt;
}

std::optional<std::vector<std::string>> readArgument(const boost::json::object& arguments,
                                                     std::string_view name, std::vector<std::string>) {
    const auto* value = arguments.if_contains(name);
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
