#pragma once

#include "shared/base/Date.h"
#include "shared/base/Uuid.h"
#include "shared/wire/Codec.h"
#include "shared/wire/RawValues.h"
#include "shared/wire/WorkItemStatus.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

enum class WorkItemSource { iPhone, mac };

template <> inline constexpr std::array<std::string_view, 2> rawValues<WorkItemSource>{"iPhone", "mac"};

/// What is needed to resume a coding agent's session.
struct AgentContinuation {
    std::string tool;
    std::optional<std::string> sessionID;
    std::optional<std::string> folderAlias; ///< the allowed folder it worked in

    bool operator==(const AgentContinuation&) const = default;
};

/// One request of the user, from its capture to its end.
struct WorkItem {
    Uuid id;
    std::optional<Uuid> conversationID;
    std::string title;
    std::string originalRequest;
    std::optional<std::string> summary;
    WorkItemStatus status;
    std::optional<std::string> nextAction;
    std::optional<std::string> lastError;
    WorkItemSource source = WorkItemSource::mac;
    Date createdAt;
    Date updatedAt;
    std::uint64_t revision = 0;
    std::optional<AgentContinuation> agent;

    bool operator==(const WorkItem&) const = default;
};

extern template struct Codec<AgentContinuation>;
extern template struct Codec<WorkItem>;
extern template struct Codec<std::vector<WorkItem>>;

} // namespace morvex
