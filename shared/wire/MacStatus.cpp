#include "shared/wire/MacStatus.h"

#include "shared/wire/Describe.h"

namespace morvex {

void describe(auto& io, Is<ToolDescriptor> auto& tool) {
    io.required("name", tool.name);
    io.required("summary", tool.summary);
    io.required("risk", tool.risk);
    io.required("parametersJSON", tool.parametersJSON);
    io.required("streamsProgress", tool.streamsProgress);
}

void describe(auto& io, Is<AgentStatus> auto& agent) {
    io.required("installed", agent.installed);
    io.optional("version", agent.version);
    io.optional("source", agent.source);
    io.optional("problem", agent.problem);
}

void describe(auto& io, Is<RunningTask> auto& task) {
    io.required("requestID", task.requestID);
    io.optional("workItemID", task.workItemID);
    io.required("tool", task.tool);
    io.required("startedAt", task.startedAt);
    io.optional("progress", task.progress);
}

void describe(auto& io, Is<MacStatus> auto& status) {
    io.required("protocolVersion", status.protocolVersion);
    io.required("appVersion", status.appVersion);
    io.required("deviceName", status.deviceName);
    io.required("tools", status.tools);
    io.required("claude", status.claude);
    io.required("codex", status.codex);
    io.required("mailAvailable", status.mailAvailable);
    io.required("allowedFolders", status.allowedFolders);
    io.optional("runningTask", status.runningTask);
    io.required("onPower", status.onPower);
    io.required("sentAt", status.sentAt);
}

template struct Codec<ToolDescriptor>;
template struct Codec<AgentStatus>;
template struct Codec<RunningTask>;
template struct Codec<MacStatus>;

} // namespace morvex
