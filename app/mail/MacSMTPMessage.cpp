#include "app/mail/MacSMTPMessage.h"

#include <algorithm>
#include <charconv>

namespace morvex {

namespace {

constexpr std::string_view prefix = "smtp:";

} // namespace

std::string MacSMTPMessageID::text() const {
    return std::string(prefix) + accountID + ":" + std::to_string(uid);
}

std::optional<MacSMTPMessageID> MacSMTPMessageID::parse(std::string_view text) {
    if (!text.starts_with(prefix) || std::ranges::count(text, ':') != 2) return std::nullopt;
    const auto colon = text.rfind(':');
    const auto digits = text.substr(colon + 1);
    MacSMTPMessageID id{std::string(text.substr(prefix.size(), colon - prefix.size()))};
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), id.uid);
    if (error != std::errc() || end != digits.data() + digits.size() || id.uid == 0) return std::nullopt;
    return id;
}

} // namespace morvex
