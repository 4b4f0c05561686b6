#pragma once

#include "shared/wire/Codec.h"

#include <string>
#include <vector>

namespace morvex {

/// A mail account that is reached by IMAP and SMTP. Its password is in the keychain.
struct MacSMTPAccount {
    std::string id; ///< empty for one that is not kept yet
    std::string label;
    std::string address; ///< also the user name
    std::string senderName;
    std::string imapHost;
    std::string smtpHost;

    /// Whether it can be used.
    [[nodiscard]] bool isComplete() const;

    /// The label, or the address of an account without one.
    [[nodiscard]] const std::string& shownName() const { return label.empty() ? address : label; }

    bool operator==(const MacSMTPAccount&) const = default;
};

extern template struct Codec<MacSMTPAccount>;
extern template struct Codec<std::vector<MacSMTPAccount>>;

} // namespace morvex
