#include "app/mail/protocol/SmtpReply.h"

#include "app/mail/protocol/MacMailProtocolError.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace morvex {

namespace {

std::optional<int> codeOf(std::string_view line) {
    constexpr std::size_t digits = 3;
    const auto code = line.substr(0, digits);
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    if (code.size() < digits || !std::ranges::all_of(code, isDigit)) return std::nullopt;
    int number = 0;
    std::from_chars(code.data(), code.data() + code.size(), number);
    return number;
}

} // namespace

bool continuesSmtpReply(std::string_view line) {
    return line.size() >= 4 && line[3] != ' ';
}

Result<void> checkSmtpReply(std::string_view lastLine, int wanted) {
    const auto code = codeOf(lastLine);
    if (!code)
        return fail(MacMailProtocolError::protocolError("Nesrozumitelná odpověď SMTP serveru."_sentence));
    if (*code == 534 || *code == 535) return fail(MacMailProtocolError::login());
    if (*code == wanted) return {};
    return fail(MacMailProtocolError::protocolError("SMTP server odpověděl: {odpoved}"_sentence(lastLine)));
}

} // namespace morvex
