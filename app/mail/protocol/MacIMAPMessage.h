#pragma once

#include <cstdint>
#include <string>

namespace morvex {

/// A message as the headers of a mailbox tell of it.
struct MacIMAPMessage {
    std::uint32_t uid = 0;
    std::string from;
    std::string subject;
    std::string date; ///< as the message has it
    bool read = false;

    bool operator==(const MacIMAPMessage&) const = default;
};

} // namespace morvex
