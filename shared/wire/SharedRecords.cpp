#include "shared/wire/Conversation.h"
#include "shared/wire/DescribeArchive.h"
#include "shared/wire/MorvexNote.h"
#include "shared/wire/MorvexSummary.h"
#include "shared/wire/WorkItem.h"

namespace morvex {

void describe(auto& io, Is<AgentContinuation> auto& agent) {
    io.required("tool", agent.tool);
    io.optional("sessionID", agent.sessionID);
    io.optional("folderAlias", agent.folderAlias);
}

void describe(auto& io, Is<WorkItem> auto& item) {
    io.required("id", item.id);
    io.optional("conversationID", item.conversationID);
    io.required("title", item.title);
    io.required("originalRequest", item.originalRequest);
    io.optional("summary", item.summary);
    io.required("status", item.status);
    io.optional("nextAction", item.nextAction);
    io.optional("lastError", item.lastError);
    io.required("source", item.source);
    io.required("createdAt", item.createdAt);
    io.required("updatedAt", item.updatedAt);
    io.required("revision", item.revision);
    io.optional("agent", item.agent);
}

void describe(auto& io, Is<MorvexNote> auto& note) {
    io.required("id", note.id);
    io.required("title", note.title);
    io.required("body", note.body);
    io.required("createdAt", note.createdAt);
    io.required("updatedAt", note.updatedAt);
    io.required("revision", note.revision);
    io.optional("deletedAt", note.deletedAt);
}

void describe(auto& io, Is<MorvexSummary> auto& summary) {
    io.required("id", summary.id);
    io.required("title", summary.title);
    io.required("body", summary.body);
    io.required("createdAt", summary.createdAt);
    io.required("periodStart", summary.periodStart);
    io.required("periodEnd", summary.periodEnd);
    io.required("sources", summary.sources);
    io.required("revision", summary.revision);
}

void describe(auto& io, Is<ConversationTurn> auto& turn) {
    io.required("id", turn.id);
    io.required("role", turn.role);
    io.required("text", turn.text);
    io.required("createdAt", turn.createdAt);
}

void describe(auto& io, Is<Conversation> auto& conversation) {
    io.required("id", conversation.id);
    io.required("title", conversation.title);
    io.required("createdAt", conversation.createdAt);
    io.required("updatedAt", conversation.updatedAt);
    io.required("turns", conversation.turns);
}

template struct Codec<AgentContinuation>;
template struct Codec<WorkItem>;
template struct Codec<std::vector<WorkItem>>;
template struct Codec<MorvexNote>;
template struct Codec<MorvexSummary>;
template struct Codec<ConversationTurn>;
template struct Codec<Conversation>;
template struct Codec<ArchivedList<MorvexNote>>;
template struct Codec<ArchivedList<MorvexSummary>>;

std::string requestID(const MorvexNote& note) {
    return "note:" + note.id.text() + ":" + std::to_string(note.revision);
}

std::string noteAckID(const Uuid& id) {
    return "note-ack:" + id.text();
}

} // namespace morvex
