#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace morvex {

// What the collected lines of a reply to SELECT and to SEARCH say (RFC 3501, section 7). The cost is linear.

/// The number of messages in the selected mailbox, 0 if no line tells it.
std::int64_t existingMessages(std::string_view lines);

/// The UIDs that were found, the last one first. What is no UID is left out.
std::vector<std::uint32_t> foundUids(std::string_view lines);

} // namespace morvex
