#pragma once

#include "shared/base/Date.h"
#include "shared/base/Sentence.h"
#include "shared/base/Uuid.h"
#include "shared/wire/Codec.h"
#include "shared/wire/ProtocolVersion.h"
#include "shared/wire/ToolDescriptor.h"

#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// Whether a coding agent can be used.
struct AgentStatus {
    bool installed = false;
    std::optional<std::string> version;
    std::optional<std::string> source; ///< where it was found
    std::optional<Sentence> problem;   ///< why it cannot be used

    bool operator==(const AgentStatus&) const = default;
};

struct RunningTask {
    std::string requestID; ///< request id of the call that started it
    std::optional<Uuid> workItemID;
    std::string tool;
    Date startedAt;
    std::optional<std::string> progress;

    bool operator==(const RunningTask&) const = default;
};

/// What the computer can do right now, as reported to the phone.
struct MacStatus {
    ProtocolVersion protocolVersion;
    std::string appVersion;
    std::string deviceName;
    std::vector<ToolDescriptor> tools;
    AgentStatus claude;
    AgentStatus codex;
    bool mailAvailable = false;
    std::vector<std::string> allowedFolders; ///< names, not paths
    std::optional<RunningTask> runningTask;
    bool onPower = false;
    Date sentAt;

    bool operator==(const MacStatus&) const = default;
};

extern template struct Codec<AgentStatus>;
extern template struct Codec<RunningTask>;
extern template struct Codec<MacStatus>;

} // namespace morvex
