#include "shared/wire/MacPayload.h"

#include "shared/wire/Describe.h"

namespace morvex {

void describe(auto& io, Is<ApprovalRequest> auto& request) {
    io.required("id", request.id);
    io.required("tool", request.tool);
    io.required("title", request.title);
    io.required("spoken", request.spoken);
    io.required("detail", request.detail);
    io.required("expiresAt", request.expiresAt);
    io.required("contentHash", request.contentHash);
}

template <>
inline constexpr auto caseNames<MacPayload> = std::to_array<std::string_view>(
    {"status", "toolCall", "toolProgress", "toolResult", "workItemUpdate", "workItemAck", "noteUpdate",
     "noteAck", "summaryUpdate", "summaryAck", "openAICredential", "companionPreferences", "customApps",
     "cancel", "approvalRequest", "approvalDecision"});

void describe(auto& io, Is<MacPayload::Status> auto& payload) {
    io.required("_0", payload.status);
}

void describe(auto& io, Is<MacPayload::ToolCall> auto& call) {
    io.required("name", call.name);
    io.required("argumentsJSON", call.argumentsJSON);
}

void describe(auto& io, Is<MacPayload::ToolProgress> auto& progress) {
    io.required("text", progress.text);
}

void describe(auto& io, Is<MacPayload::ToolResult> auto& result) {
    io.required("ok", result.ok);
    io.required("json", result.json);
}

template <class T>
concept Acknowledgement =
    Is<T, MacPayload::WorkItemAck> || Is<T, MacPayload::NoteAck> || Is<T, MacPayload::SummaryAck>;

void describe(auto& io, Acknowledgement auto& ack) {
    io.required("id", ack.id);
    io.required("revision", ack.revision);
}

void describe(auto& io, Is<MacPayload::WorkItemUpdate> auto& update) {
    io.required("_0", update.item);
}

void describe(auto& io, Is<MacPayload::NoteUpdate> auto& update) {
    io.required("_0", update.note);
}

void describe(auto& io, Is<MacPayload::SummaryUpdate> auto& update) {
    io.required("_0", update.summary);
}

void describe(auto& io, Is<MacPayload::OpenAICredential> auto& credential) {
    io.required("value", credential.value);
}

void describe(auto& io, Is<MacPayload::Preferences> auto& payload) {
    io.required("_0", payload.preferences);
}

void describe(auto& io, Is<MacPayload::CustomApps> auto& payload) {
    io.required("_0", payload.apps);
}

void describe(auto& io, Is<MacPayload::Approval> auto& payload) {
    io.required("_0", payload.request);
}

void describe(auto& io, Is<MacPayload::ApprovalDecision> auto& decision) {
    io.required("id", decision.id);
    io.required("approved", decision.approved);
    io.optional("reason", decision.reason);
}

template struct Codec<ApprovalRequest>;
template struct Codec<MacPayload>;

} // namespace morvex
