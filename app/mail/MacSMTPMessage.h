#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// A message in the inbox of a direct account.
struct MacSMTPMessage {
    std::string id; ///< "smtp:", the account's id, ":", the UID
    std::string accountID;
    std::string account; ///< the account's label
    std::string from;
    std::string subject;
    std::string date;
    bool read = false;

    bool operator==(const MacSMTPMessage&) const = default;
};

/// What the id of a message names.
struct MacSMTPMessageID {
    std::string accountID;
    std::uint32_t uid = 0; ///< never 0 (RFC 9051, section 2.3.1.1)

    [[nodiscard]] std::string text() const;

    /// Nothing unless it has exactly three pieces, and the last one is a number from 1 to 2^32 - 1.
    static std::optional<MacSMTPMessageID> parse(std::string_view text);

    bool operator==(const MacSMTPMessageID&) const = default;
};

} // namespace morvex
