#pragma once

#include "app/agents/AgentAdapter.h"
#include "foundation/Text.h"
#include "shared/base/Require.h"
#include "shared/wire/Json.h"

#include <boost/json.hpp>

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// What a line of an agent's event stream contains.
struct Told {
    bool relace = false;
    bool prubeh = false;
    bool text = false;
    bool zaver = false;
    bool chyba = false;

    bool operator==(const Told&) const = default;

    static Told by(const std::optional<ZpravaAgenta>& zprava) {
        if (!zprava) return {};
        return {zprava->relace.has_value(), zprava->prubeh.has_value(), zprava->text.has_value(),
                zprava->zaver.has_value(), zprava->chyba.has_value()};
    }
};

/// The line as an object; nothing if it is not one.
inline std::optional<boost::json::value> eventIn(std::string_view line) {
    auto value = parseJson(line);
    return value && value->is_object() ? std::optional(*std::move(value)) : std::nullopt;
}

/// The text at this place (RFC 6901); nothing if there is none.
inline std::optional<std::string> textAt(const boost::json::value& value, std::string_view place) {
    boost::system::error_code missing;
    const auto* found = value.find_pointer(place, missing);
    return found && found->is_string() ? std::optional(std::string(found->get_string())) : std::nullopt;
}

/// Whether the text contains one of the phrases, ignoring ASCII case.
inline bool says(std::string_view text, std::initializer_list<std::string_view> phrases) {
    const auto isSame = [](char left, char right) {
        return (left >= 'A' && left <= 'Z' ? left - 'A' + 'a' : left) == right;
    };
    return std::ranges::any_of(
        phrases, [&](std::string_view phrase) { return !std::ranges::search(text, phrase, isSame).empty(); });
}

/// `expected` comes from a second interpretation of the line by its type.
inline void expectMessage(const std::optional<ZpravaAgenta>& zprava, const Told& expected) {
    require(Told::by(zprava) == expected, "an event tells other things than its type says");
    if (!zprava) return;
    for (const auto* said : {&zprava->relace, &zprava->prubeh, &zprava->text, &zprava->zaver})
        require(!*said || isValidUtf8(**said), "an event says what is no text");
    require(!zprava->chyba || isValidUtf8(zprava->chyba->czech()), "an event's error is no text");
}

} // namespace morvex
