#include "shared/wire/ProtocolVersion.h"

#include "shared/base/Utf8.h"
#include "shared/wire/TalkSpanError.h"

#include <array>
#include <charconv>
#include <optional>

namespace morvex {
namespace {

/// Bytes of an unreadable version that the error message quotes.
constexpr std::size_t longestQuote = 40;

std::optional<std::int64_t> parseInteger(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), number);
    return error == std::errc{} && end == text.end() ? std::optional{number} : std::nullopt;
}

std::optional<ProtocolVersion> read(std::string_view text) {
    std::array<std::int64_t, 2> numbers{};
    std::size_t count = 0;
    for (std::size_t start = 0; start < text.size();) {
        const auto piece = text.substr(start, text.find('.', start) - start);
        start += piece.size() + 1;
        if (piece.empty()) continue;
        const auto number = parseInteger(piece);
        if (!number || count == numbers.size()) return std::nullopt;
        numbers[count++] = *number;
    }
    return count == 2 ? std::optional{ProtocolVersion{numbers[0], numbers[1]}} : std::nullopt;
}

} // namespace

Result<ProtocolVersion> ProtocolVersion::parse(std::string_view text) {
    if (const auto version = read(text)) return *version;
    return fail(TalkSpanError{TalkSpanError::ProtocolMismatch{current.text(), clipped(text, longestQuote)}});
}

std::string ProtocolVersion::text() const {
    return std::to_string(major) + '.' + std::to_string(minor);
}

} // namespace morvex
