#pragma once

#include <string>
#include <string_view>

namespace morvex {

/// Where a work item stands. A newer peer may know more states than this program: any other word is kept as
/// it came, and goes out again unchanged. Equality compares the words.
struct WorkItemStatus {
    enum Case {
        captured,
        inProgress,
        waitingForMac,
        waitingForApproval,
        completed,
        failed,
        cancelled,
        interrupted,
        unknown, ///< a word outside this list; see `rawValue`
    };

    std::string rawValue;

    WorkItemStatus() : WorkItemStatus(captured) {}

    /// Any case but `unknown`, which has a word of its own.
    WorkItemStatus(Case known);

    explicit WorkItemStatus(std::string word) : rawValue(std::move(word)) {}

    [[nodiscard]] Case kind() const;
    /// For whoever reads a terminal; an unknown status stands as it came.
    [[nodiscard]] std::string_view words() const;
    bool operator==(const WorkItemStatus&) const = default;
};

} // namespace morvex
