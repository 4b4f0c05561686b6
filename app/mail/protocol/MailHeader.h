#pragma once

#include "app/mail/protocol/MacIMAPMessage.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

// The headers of messages as a server tells them. The cost is linear in their length.

/// A field of a header with its encoded words (RFC 2047) decoded, all of them as UTF-8 whatever charset they
/// name. A word that cannot be decoded stays, and so does white space between two words.
std::string decodedHeader(std::string_view field);

/// The messages in the lines of a reply to FETCH, the highest UID first. A message without a UID, or with one
/// that is not among those `asked` for, is left out. Only the first line of a folded field counts.
std::vector<MacIMAPMessage> fetchedMessages(std::string_view lines, std::vector<std::uint32_t> asked);

} // namespace morvex
