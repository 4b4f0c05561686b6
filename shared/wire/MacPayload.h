#pragma once

#include "shared/base/Uuid.h"
#include "shared/wire/ApprovalRequest.h"
#include "shared/wire/Codec.h"
#include "shared/wire/CompanionRecords.h"
#include "shared/wire/MacStatus.h"
#include "shared/wire/MorvexNote.h"
#include "shared/wire/MorvexSummary.h"
#include "shared/wire/WorkItem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace morvex {

/// The only message type between phone and computer, inside the secure channel. The `requestID` of the
/// envelope ties a reply to its call, and a `Cancel` to the call that it cancels.
struct MacPayload {
    struct Status {
        MacStatus status;
        bool operator==(const Status&) const = default;
    };

    struct ToolCall {
        std::string name;
        std::string argumentsJSON;
        bool operator==(const ToolCall&) const = default;
    };

    struct ToolProgress {
        std::string text;
        bool operator==(const ToolProgress&) const = default;
    };

    struct ToolResult {
        bool ok = false;
        std::string json;
        bool operator==(const ToolResult&) const = default;
    };

    struct WorkItemUpdate {
        WorkItem item;
        bool operator==(const WorkItemUpdate&) const = default;
    };

    struct WorkItemAck {
        Uuid id;
        std::uint64_t revision = 0;
        bool operator==(const WorkItemAck&) const = default;
    };

    struct NoteUpdate {
        MorvexNote note;
        bool operator==(const NoteUpdate&) const = default;
    };

    struct NoteAck {
        Uuid id;
        std::uint64_t revision = 0;
        bool operator==(const NoteAck&) const = default;
    };

    struct SummaryUpdate {
        MorvexSummary summary;
        bool operator==(const SummaryUpdate&) const = default;
    };

    struct SummaryAck {
        Uuid id;
        std::uint64_t revision = 0;
        bool operator==(const SummaryAck&) const = default;
    };

    struct OpenAICredential {
        std::string value; ///< secret
        bool operator==(const OpenAICredential&) const = default;
    };

    struct Preferences {
        CompanionPreferences preferences;
        bool operator==(const Preferences&) const = default;
    };

    struct CustomApps {
        std::vector<CompanionCustomApp> apps;
        bool operator==(const CustomApps&) const = default;
    };

    struct Cancel {
        bool operator==(const Cancel&) const = default;
    };

    struct Approval {
        ApprovalRequest request;
        bool operator==(const Approval&) const = default;
    };

    struct ApprovalDecision {
        std::string id; ///< id of the `ApprovalRequest`
        bool approved = false;
        std::optional<std::string> reason;
        bool operator==(const ApprovalDecision&) const = default;
    };

    std::variant<Status, ToolCall, ToolProgress, ToolResult, WorkItemUpdate, WorkItemAck, NoteUpdate, NoteAck,
                 SummaryUpdate, SummaryAck, OpenAICredential, Preferences, CustomApps, Cancel, Approval,
                 ApprovalDecision>
        value;

    /// Null when the value holds another case.
    template <class Case> [[nodiscard]] const Case* as() const { return std::get_if<Case>(&value); }

    bool operator==(const MacPayload&) const = default;
};

extern template struct Codec<MacPayload>;

} // namespace morvex
