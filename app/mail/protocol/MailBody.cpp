#include "app/mail/protocol/MailBody.h"

#include "app/mail/protocol/QuotedPrintable.h"
#include "app/mail/protocol/ReplyLines.h"
#include "foundation/Text.h"
#include "shared/base/Ascii.h"
#include "shared/base/Base64.h"
#include "shared/base/Utf8.h"

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

/// A shorter text is never taken for base64: too many words consist of its digits.
constexpr std::size_t shortestBase64 = 25;

/// An assignment would keep the memory.
void release(std::string& text) {
    std::string().swap(text);
}

bool isBase64Character(char character) {
    return isAsciiLetterOrDigit(character) || character == '+' || character == '/' || character == '=';
}

/// The text in base64 that stands in lines, or nothing if it is another text.
std::optional<std::string> base64Text(std::string_view text) {
    auto digits = trim(text);
    std::erase_if(digits, [](char character) { return character == '\r' || character == '\n'; });
    if (digits.size() < shortestBase64 || !std::ranges::all_of(digits, isBase64Character))
        return std::nullopt;
    const auto bytes = base64Decode(digits);
    if (!bytes) return std::nullopt;
    release(digits);
    return repairUtf8(asText(*bytes));
}

bool bringsBody(std::string_view line) {
    constexpr std::string_view body = "BODY[TEXT]";
    return line.contains("FETCH") && !std::ranges::search(line, body, {}, asciiLower, asciiLower).empty();
}

} // namespace

std::string decodedBody(std::string text) {
    if (auto plain = base64Text(text)) return *std::move(plain);
    if (text.contains('=')) return repairUtf8(quotedPrintableBytes(text));
    return text;
}

std::optional<std::string> fetchedBody(std::string lines) {
    std::string text;
    text.reserve(lines.size());
    bool isThere = false;
    bool isFirst = true;
    ReplyLines reply(lines);
    while (const auto line = reply.next()) {
        if (line->starts_with('*')) isThere = isThere || bringsBody(*line);
        if (line->starts_with('*') || line->starts_with(')')) continue;
        if (!std::exchange(isFirst, false)) text += '\n';
        text += *line;
    }
    if (!isThere) return std::nullopt;
    release(lines);
    if (!isValidUtf8(text)) text = repairUtf8(text);
    return decodedBody(std::move(text));
}

} // namespace morvex
