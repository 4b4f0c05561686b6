#include "app/agents/AgentTools.h"

#include "app/agents/AgentId.h"
#include "foundation/Text.h"
#include "shared/wire/MacToolName.h"
#include "shared/wire/TalkSpanError.h"

#include <utility>

namespace morvex {

struct AgentRun {
    std::string instruction;
    std::optional<std::string> title;
    std::optional<std::string> folder;
    std::optional<std::string> workItemID;
    std::optional<std::string> conversationID;
};

void describe(auto& io, Is<AgentRun> auto& run) {
    io.required("instruction", run.instruction);
    io.optional("title", run.title);
    io.optional("folder", run.folder);
    io.added("work_item_id", run.workItemID);
    io.added("conversation_id", run.conversationID);
}

struct AgentRename {
    std::string title;
    std::optional<std::string> workItemID;
    std::optional<std::string> agent;
    std::optional<std::string> folder;
};

void describe(auto& io, Is<AgentRename> auto& rename) {
    io.required("title", rename.title);
    io.optional("work_item_id", rename.workItemID);
    io.optional("agent", rename.agent);
    io.optional("folder", rename.folder);
}

namespace {

/// Bytes kept of a call's id, which is sent with every progress of its task and in every status.
constexpr std::size_t longestRequestID = 512;

/// A text that is not a UUID counts as absent.
std::optional<Uuid> uuid(const std::optional<std::string>& text) {
    return text ? Uuid::parse(*text) : std::nullopt;
}

/// The trimmed text. A blank one counts as absent, because models like to send blank texts.
std::optional<std::string> named(const std::optional<std::string>& text) {
    auto trimmed = trim(text.value_or(""));
    return trimmed.empty() ? std::nullopt : std::optional(std::move(trimmed));
}

bool isCancelled(const Result<AgentRunner::Vysledek>& vysledek) {
    const auto* known = vysledek ? nullptr : vysledek.error().as<TalkSpanError>();
    return known && known->as<TalkSpanError::Cancelled>();
}

/// Renaming a task other than the named one would be worse than renaming none.
bool namesNoTask(const AgentRename& rename) {
    return named(rename.workItemID) && !uuid(rename.workItemID);
}

} // namespace

void AgentTools::addTo(ToolTable& table, const Offer& offer) {
    auto withFolder = [this](std::function<bool()> condition) {
        return [this, condition = std::move(condition)] { return condition() && !folders_.aliasy().empty(); };
    };
    table.add(MacToolName::codexRun, withFolder(offer.codex), this, &AgentTools::runCodex);
    table.add(MacToolName::codexCancel, withFolder(offer.codex), this, &AgentTools::zrus);
    table.add(MacToolName::claudeRun, withFolder(offer.claude), this, &AgentTools::runClaude);
    table.add(MacToolName::claudeCancel, withFolder(offer.claude), this, &AgentTools::zrus);
    table.add(MacToolName::agentRename, withFolder(offer.rename), this, &AgentTools::renameTask);
}

bool AgentTools::zastavit(const Uuid& workItemID) {
    if (!agentniUloha_ || agentniUloha_->workItemID != workItemID || agentniUloha_->hasEnded) return false;
    if (agenti_.zrus()) return true;
    agentniUloha_->cancellation.request_stop();
    return !agenti_.isRunning();
}

std::optional<Uuid> AgentTools::currentTask() const {
    return agentniUloha_ ? std::optional(agentniUloha_->workItemID) : std::nullopt;
}

Task<ToolOutcome> AgentTools::runCodex(AgentRun run, ToolCall call) {
    return spust(std::string(AgentId::codex), std::move(run), std::move(call));
}

Task<ToolOutcome> AgentTools::runClaude(AgentRun run, ToolCall call) {
    return spust(std::string(AgentId::claudeCode), std::move(run), std::move(call));
}

Task<ToolOutcome> AgentTools::spust(std::string nastroj, AgentRun run, ToolCall call) {
    auto slozka = folders_.slozkaProAlias(run.folder);
    if (!slozka) co_return noFolder();
    if (agenti_.bezici() || agentniUloha_)
        co_return ToolOutcome::refused("Na Macu už běží jiný úkol. Nejdřív ho dokonči nebo zastav.");

    auto workItemID = uuid(run.workItemID);
    auto continued = relace(workItemID, nastroj, *slozka);
    auto ukol =
        historie_.zaloz({workItemID, uuid(run.conversationID), nastroj, run.title, run.instruction, *slozka});
    agentniUloha_.emplace(ukol.workItemID);
    agentniUloha_->onAbandonment.emplace(call.abandonment, [this] { abandon(); });
    // Saved first, so that an accepted task is still known after a restart.
    co_await historie_.saved();
    // The scope starts the task in a later job of this thread, so the reply is sent before anything the task
    // sends.
    scope_.spawn(carryOut({firstBytes(call.requestID, longestRequestID), ukol.workItemID, std::move(nastroj),
                           std::move(run.instruction), *slozka, std::move(continued),
                           agentniUloha_->cancellation.get_token(),
                           [this, cesta = *slozka] { return folders_.isAllowed(cesta); }},
                          ukol.workItemID));
    co_return ToolOutcome::done(
        {{"accepted", true},
         {"completed", false},
         {"message", "Úkol byl přijat. Může běžet několik minut; výsledek oznámím po dokončení."},
         {"work_item_id", ukol.workItemID.text()}});
}

ToolOutcome AgentTools::noFolder() const {
    const auto aliasy = folders_.aliasy();
    if (aliasy.empty())
        return ToolOutcome::refused("Na Macu není povolená žádná složka. Přidej ji v okně Morvex.");
    return ToolOutcome::refused("Neurčil jsi složku. Povolené jsou: " + join(aliasy, ", ") + ".");
}

std::optional<std::string> AgentTools::relace(const std::optional<Uuid>& workItemID,
                                              const std::string& nastroj, const std::string& slozka) const {
    return workItemID ? historie_.relaceProUkol(*workItemID, nastroj)
                      : historie_.relaceProSlozku(nastroj, slozka);
}

Task<void> AgentTools::carryOut(AgentRunner::Assignment assignment, Uuid workItemID) {
    co_await announceTask(workItemID);
    co_await reports_.poslatStav();
    auto listener = posluchac(assignment.requestID, workItemID);
    auto vysledek = co_await agenti_.spust(std::move(assignment), std::move(listener));
    // This program is ending. At its next start it finds the task running and marks it as interrupted.
    if (scope_.token().stop_requested() && isCancelled(vysledek)) co_return;
    agentniUloha_->hasEnded = true;
    recordEnd(workItemID, std::move(vysledek));
    co_await news_.allSent();
    co_await announceTask(workItemID);
    agentniUloha_.reset();
    co_await reports_.poslatStav();
}

AgentRunner::Posluchac AgentTools::posluchac(const std::string& requestID, const Uuid& workItemID) {
    return {.priPrubehu = [this, requestID](std::string text) { news_.prubeh(std::move(text), requestID); },
            .onSession =
                [this, workItemID](std::string relace) {
                    historie_.nastavRelaci(workItemID, std::move(relace));
                    if (auto ukol = historie_.ukol(workItemID)) news_.ukol(*std::move(ukol));
                }};
}

void AgentTools::recordEnd(const Uuid& workItemID, Result<AgentRunner::Vysledek> vysledek) {
    if (vysledek)
        historie_.dokonci(workItemID, std::move(vysledek->text), std::move(vysledek->relace));
    else if (isCancelled(vysledek))
        historie_.preruseno(workItemID);
    else
        historie_.selhal(workItemID, vysledek.error().popis());
}

Task<void> AgentTools::announceTask(Uuid workItemID) {
    auto ukol = historie_.ukol(workItemID);
    if (ukol) co_await reports_.poslatUkol(*std::move(ukol));
}

Task<ToolOutcome> AgentTools::zrus(NoArguments, ToolCall) {
    const auto workItemID = currentTask();
    const bool isStopped = workItemID && zastavit(*workItemID);
    co_return ToolOutcome::done(
        {{"cancelled", isStopped}, {"message", isStopped ? "Zastaveno." : "Nic neběželo."}});
}

void AgentTools::abandon() {
    // Also prevents a new start if the session turns out to be gone.
    agentniUloha_->cancellation.request_stop();
    agenti_.zrus();
}

Task<ToolOutcome> AgentTools::renameTask(AgentRename rename, ToolCall) {
    auto title = trim(rename.title);
    const auto folder = named(rename.folder);
    const HistorieAgentu::SoughtTask sought{uuid(rename.workItemID), named(rename.agent), folder,
                                            folder ? folders_.slozkaProAlias(folder) : std::nullopt};
    auto ukol = namesNoTask(rename) ? std::nullopt : historie_.renameTask(sought, title);
    if (!ukol)
        co_return ToolOutcome::refused(title.empty() ? "Chybí nový název relace."
                                                     : "Odpovídající relaci jsem nenašel.");
    auto workItemID = ukol->workItemID.text();
    title = ukol->nazev;
    co_await reports_.poslatUkol(*std::move(ukol));
    co_return ToolOutcome::done({{"renamed", true},
                                 {"title", title},
                                 {"work_item_id", std::move(workItemID)},
                                 {"message", "Relace se v Morvex jmenuje " + title + "."}});
}

} // namespace morvex
