#include "app/mail/protocol/ImapReply.h"

#include "app/mail/protocol/MacMailProtocolError.h"
#include "foundation/Text.h"
#include "platform/ports/TlsLines.h"
#include "shared/base/Ascii.h"
#include "shared/base/Try.h"
#include "shared/base/Utf8.h"

#include <algorithm>
#include <charconv>

namespace morvex {

namespace {

constexpr std::size_t longestOutcome = std::size_t{64} * 1024;

std::unexpected<Error> tooLong() {
    return fail(MacMailProtocolError::protocolError(StreamTooLong{}.popis()));
}

/// The digits of `{digits}` at the end of a line; empty if it announces no literal.
std::string_view announcedCount(std::string_view line) {
    if (!line.ends_with('}')) return {};
    line.remove_suffix(1);
    const auto brace = line.rfind('{');
    if (brace == std::string_view::npos) return {};
    const auto digits = line.substr(brace + 1);
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    return std::ranges::all_of(digits, isDigit) ? digits : std::string_view();
}

/// More than any limit if it is too large for the type.
std::size_t countOf(std::string_view digits) {
    std::size_t count = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), count);
    return error == std::errc() ? count : std::string_view::npos;
}

} // namespace

Result<std::optional<std::size_t>> ImapReply::addLine(std::string_view line) {
    if (const auto digits = announcedCount(line); !digits.empty()) {
        const auto count = countOf(digits);
        if (count > longestLiteral) return tooLong();
        CHECK(append(line));
        return count;
    }
    if (!line.starts_with(tag_)) {
        CHECK(append(line));
        return std::nullopt;
    }
    line.remove_prefix(tag_.size());
    outcome_ = trim(firstBytes(line, longestOutcome));
    return std::nullopt;
}

Result<void> ImapReply::addLiteral(std::string_view bytes) {
    return append(bytes);
}

bool ImapReply::isOk() const {
    return outcome_ && equalsIgnoringCase(std::string_view(*outcome_).substr(0, 2), "OK");
}

Result<void> ImapReply::append(std::string_view line) {
    if (line.size() + 1 > longest - lines_.size()) return tooLong();
    lines_ += line;
    lines_ += '\n';
    return {};
}

} // namespace morvex
