#include "platform/linux/evolution/EventId.h"

#include "shared/base/Utf8.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace morvex {

namespace {

/// Far beyond the ids that calendars give; a longer one names nothing.
constexpr std::size_t longestText = 8192;

bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

bool isPlain(char letter) {
    return isDigit(letter) || (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
           letter == '-' || letter == '_' || letter == '.' || letter == '@';
}

void appendEncoded(std::string& text, std::string_view part) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    for (const char letter : part) {
        if (isPlain(letter)) {
            text += letter;
            continue;
        }
        const auto byte = static_cast<unsigned char>(letter);
        text += '%';
        text += digits[byte / 16];
        text += digits[byte % 16];
    }
}

std::string decoded(std::string_view text) {
    std::string part;
    for (std::size_t place = 0; place < text.size(); ++place) {
        unsigned byte = 0;
        const auto hex = text.substr(place + 1, 2);
        if (text[place] == '%' && hex.size() == 2 &&
            std::from_chars(hex.data(), hex.data() + 2, byte, 16).ptr == hex.data() + 2) {
            part += static_cast<char>(byte);
            place += 2;
        } else {
            part += text[place];
        }
    }
    return part;
}

bool hasForm(std::string_view text, std::string_view form) {
    return std::ranges::equal(text, form, [](char letter, char wanted) {
        return wanted == '0' ? isDigit(letter) : letter == wanted;
    });
}

bool isRecurrence(std::string_view text) {
    return text.empty() || hasForm(text, "00000000") || hasForm(text, "00000000T000000") ||
           hasForm(text, "00000000T000000Z");
}

/// What may be asked of the service: its texts are UTF-8 without NUL.
bool isName(const std::string& text) {
    return !text.empty() && !text.contains('\0') && isValidUtf8(text);
}

} // namespace

std::string EventId::text() const {
    std::string text;
    appendEncoded(text, source);
    text += ':';
    appendEncoded(text, uid);
    text += ':';
    return text + recurrence;
}

std::optional<EventId> EventId::parse(std::string_view text) {
    if (text.size() > longestText) return std::nullopt;
    const auto first = text.find(':');
    const auto second = first == std::string_view::npos ? first : text.find(':', first + 1);
    if (second == std::string_view::npos) return std::nullopt;
    EventId id{decoded(text.substr(0, first)), decoded(text.substr(first + 1, second - first - 1)),
               std::string(text.substr(second + 1))};
    if (!isName(id.source) || !isName(id.uid) || !isRecurrence(id.recurrence)) return std::nullopt;
    // One event has one id, so another spelling is not one.
    if (id.text() != text) return std::nullopt;
    return id;
}

} // namespace morvex
