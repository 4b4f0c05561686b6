#include "shared/wire/JsonText.h"

#include "shared/base/Hex.h"
#include "shared/base/Require.h"

#include <boost/json.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace morvex {
namespace {

constexpr std::uint64_t everyByte = 0x0101010101010101;
constexpr std::uint64_t topBits = everyByte * 0x80;

/// True when all eight bytes are ASCII that a JSON string holds as it is. A borrow can only make it false.
bool areClean(const char* eight) {
    std::uint64_t word;
    std::memcpy(&word, eight, sizeof word);
    const auto isZero = [](std::uint64_t bytes) { return (bytes - everyByte) & ~bytes; };
    const auto isControl = (word - everyByte * 0x20) & ~word;
    return ((word | isControl | isZero(word ^ everyByte * '"') | isZero(word ^ everyByte * '\\')) &
            topBits) == 0;
}

bool isPlainAscii(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    return code >= 0x20 && code < 0x80 && code != '"' && code != '\\';
}

/// The length of the UTF-8 sequence of a character beyond ASCII at the start of `text`, or 0 (RFC 3629).
std::size_t sequenceLength(std::string_view text) {
    const auto isContinuation = [text](std::size_t index) {
        return index < text.size() && (text[index] & 0xc0) == 0x80;
    };
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0xc2 || first > 0xf4 || !isContinuation(1)) return 0;
    if (first < 0xe0) return 2;

    const auto second = static_cast<unsigned char>(text[1]);
    const bool isOverlong = (first == 0xe0 && second < 0xa0) || (first == 0xf0 && second < 0x90);
    const bool isSurrogate = first == 0xed && second > 0x9f;
    const bool isBeyondUnicode = first == 0xf4 && second > 0x8f;
    if (isOverlong || isSurrogate || isBeyondUnicode || !isContinuation(2)) return 0;
    if (first < 0xf0) return 3;
    return isContinuation(3) ? 4 : 0;
}

/// How many bytes at the start of `text` go out unchanged.
std::size_t cleanLength(std::string_view text) {
    std::size_t index = 0;
    while (index < text.size()) {
        if (text.size() - index >= 8 && areClean(text.data() + index)) {
            index += 8;
            continue;
        }
        for (const auto stop = std::min(text.size(), index + 8); index < stop;) {
            const auto length = isPlainAscii(text[index]) ? 1 : sequenceLength(text.substr(index));
            if (length == 0) return index;
            index += length;
        }
    }
    return index;
}

void appendEscaped(std::string& out, char byte) {
    switch (byte) {
    case '"':
        out += "\\\"";
        return;
    case '\\':
        out += "\\\\";
        return;
    case '\b':
        out += "\\b";
        return;
    case '\f':
        out += "\\f";
        return;
    case '\n':
        out += "\\n";
        return;
    case '\r':
        out += "\\r";
        return;
    case '\t':
        out += "\\t";
        return;
    default:
        break;
    }
    if (static_cast<unsigned char>(byte) >= 0x80) {
        out += "\uFFFD";
        return;
    }
    out += "\\u00";
    out += upperHexDigits[static_cast<std::size_t>(byte >> 4)];
    out += upperHexDigits[static_cast<std::size_t>(byte & 0x0f)];
}

void appendDigits(std::string& out, auto number) {
    char digits[32];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    out.append(digits, end);
}

} // namespace

void appendJsonString(std::string& out, std::string_view text) {
    out += '"';
    while (true) {
        const auto clean = cleanLength(text);
        out.append(text.substr(0, clean));
        if (clean == text.size()) break;
        appendEscaped(out, text[clean]);
        text.remove_prefix(clean + 1);
    }
    out += '"';
}

void appendJsonNumber(std::string& out, std::int64_t number) {
    appendDigits(out, number);
}

void appendJsonNumber(std::string& out, std::uint64_t number) {
    appendDigits(out, number);
}

void appendJsonNumber(std::string& out, double number) {
    vyzaduj(std::isfinite(number), "a number that is not finite has no JSON form");
    appendDigits(out, number);
}

void appendJson(std::string& out, const boost::json::array& array) {
    out += '[';
    for (const auto& element : array) {
        if (&element != array.begin()) out += ',';
        appendJson(out, element);
    }
    out += ']';
}

void appendJson(std::string& out, const boost::json::object& object) {
    out += '{';
    for (const auto& [key, value] : object) {
        if (out.back() != '{') out += ',';
        appendJsonString(out, key);
        out += ':';
        appendJson(out, value);
    }
    out += '}';
}

void appendJson(std::string& out, const boost::json::value& value) {
    switch (value.kind()) {
    case boost::json::kind::null:
        out += "null";
        return;
    case boost::json::kind::bool_:
        out += value.get_bool() ? "true" : "false";
        return;
    case boost::json::kind::int64:
        appendJsonNumber(out, value.get_int64());
        return;
    case boost::json::kind::uint64:
        appendJsonNumber(out, value.get_uint64());
        return;
    case boost::json::kind::double_:
        appendJsonNumber(out, value.get_double());
        return;
    case boost::json::kind::string:
        appendJsonString(out, value.get_string());
        return;
    case boost::json::kind::array:
        appendJson(out, value.get_array());
        return;
    case boost::json::kind::object:
        appendJson(out, value.get_object());
        return;
    }
}

} // namespace morvex
