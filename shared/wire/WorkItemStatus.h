#pragma once

#include <string>
#include <string_view>

namespace morvex {

/// The state of a work item. A newer peer may know more states than this program: an unknown word is kept and
/// sent on unchanged. Equality compares the words.
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

    /// `known` must not be `unknown`, which stands for a word of its own.
    WorkItemStatus(Case known);

    explicit WorkItemStatus(std::string word) : rawValue(std::move(word)) {}

    [[nodiscard]] Case kind() const;
    /// For terminals; an unknown status is returned as it came.
    [[nodiscard]] std::string_view words() const;
    bool operator==(const WorkItemStatus&) const = default;
};

} // namespace morvex
