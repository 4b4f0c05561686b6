#include "shared/wire/JsonText.h"

#include "shared/base/Hex.h"
#include "shared/base/Require.h"
#include "shared/base/Utf8.h"

#include <boost/json.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace morvex {
namespace {

constexpr std::uint64_t everyByte = 0x0101010101010101;
constexpr std::uint64_t topBits = everyByte * 0x80;

bool isEscaped(char byte) {
    return static_cast<unsigned char>(byte) < 0x20 || byte == '"' || byte == '\\';
}

/// False only if a JSON string can hold all eight bytes unescaped. A borrow of the subtraction can cause a
/// false alarm but never hide a byte.
bool mayHaveEscaped(const char* eight) {
    std::uint64_t word;
    std::memcpy(&word, eight, sizeof word);
    const auto isZero = [](std::uint64_t bytes) { return (bytes - everyByte) & ~bytes; };
    const auto isControl = (word - everyByte * 0x20) & ~word;
    return ((isControl | isZero(word ^ everyByte * '"') | isZero(word ^ everyByte * '\\')) & topBits) != 0;
}

/// Number of bytes at the start of `text` that need no escaping.
std::size_t cleanLength(std::string_view text) {
    std::size_t index = 0;
    while (text.size() - index >= 8 && !mayHaveEscaped(text.data() + index)) index += 8;
    while (index < text.size() && !isEscaped(text[index])) ++index;
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
    if (!isValidUtf8(text)) return appendJsonString(out, repairUtf8(text));
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
    require(std::isfinite(number), "a number that is not finite has no JSON form");
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
