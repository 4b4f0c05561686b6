#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// Names an event, a task or one occurrence of a series among all sources of the desktop.
struct EventId {
    std::string source; ///< the id of its calendar or list
    std::string uid;    ///< UID of RFC 5545, section 3.8.4.7
    /// Empty if it does not recur; else the time from which the occurrence was planned: `20260405T070000Z`,
    /// a day `20260405`, or without a zone `20260405T090000`.
    std::string recurrence;

    /// ASCII without blanks.
    [[nodiscard]] std::string text() const;

    /// Reads exactly what `text` writes; any text may be given.
    static std::optional<EventId> parse(std::string_view text);

    bool operator==(const EventId&) const = default;
};

} // namespace morvex
