#include "app/agents/CodexAdapter.h"

#include "app/agents/AgentId.h"
#include "app/agents/JsonFields.h"
#include "app/agents/OperandText.h"
#include "app/agents/Phrases.h"
#include "foundation/Text.h"
#include "shared/wire/JsonDocument.h"

#include <utility>

namespace morvex {

namespace {

constexpr std::size_t mostOfCommand = 160;
constexpr std::size_t mostPaths = 3;

/// An older stream wraps each event; the event itself is then the inner object.
struct Event {
    const boost::json::object& outer;
    const boost::json::object& inner;
    std::string type;
};

Event unwrap(const boost::json::object& outer) {
    const auto* message = fields::object(outer, "msg");
    const auto& inner = message ? *message : outer;
    auto type = fields::text(inner, "type").or_else([&] { return fields::text(outer, "type"); });
    return {outer, inner, std::move(type).value_or("")};
}

std::optional<std::string> session(const Event& event) {
    for (const auto* object : {&event.outer, &event.inner})
        for (const char* key : {"thread_id", "session_id"})
            if (auto found = fields::text(*object, key)) return found;
    return event.type == "thread.started" ? fields::text(event.outer, "id") : std::nullopt;
}

std::string commandProgress(const boost::json::object& item) {
    auto command = excerpt(fields::text(item, "command").value_or(""), mostOfCommand);
    return command.empty() ? "Spouštím příkaz." : "Spouštím: " + command;
}

std::string changeProgress(const boost::json::object& item) {
    std::vector<std::string> paths;
    for (const auto* change : fields::objects(item, "changes")) {
        if (paths.size() == mostPaths) break;
        if (auto path = fields::text(*change, "path")) paths.push_back(*std::move(path));
    }
    return paths.empty() ? "Upravuji soubory." : "Upravuji: " + join(paths, ", ");
}

void readItem(const boost::json::object& item, ZpravaAgenta& zprava) {
    auto type = fields::text(item, "type");
    if (type == "command_execution") zprava.prubeh = commandProgress(item);
    if (type == "file_change") zprava.prubeh = changeProgress(item);
    if (type == "agent_message") zprava.text = fields::text(item, "text");
}

Sentence failureIn(const boost::json::object& error) {
    auto words = fields::text(error, "message");
    return words ? Sentence(*std::move(words)) : Sentence("Codex skončil chybou."_sentence);
}

ZpravaAgenta read(const Event& event) {
    ZpravaAgenta zprava;
    zprava.relace = session(event);
    const auto& [outer, inner, type] = event;
    if (type == "thread.started" || type == "session_configured") {
        zprava.prubeh = sessionIsThere;
    } else if (type == "item.started" || type == "item.updated" || type == "item.completed") {
        if (const auto* item = fields::object(inner, "item")) readItem(*item, zprava);
    } else if (type == "turn.completed" || type == "task_complete") {
        zprava.zaver = fields::text(inner, "text");
        if (!zprava.zaver) zprava.zaver = fields::text(inner, "last_agent_message");
    } else if (type == "error" || type == "stream_error") {
        zprava.chyba = failureIn(inner);
    }
    return zprava;
}

} // namespace

std::string CodexAdapter::id() const {
    return std::string(AgentId::codex);
}

std::vector<std::string> CodexAdapter::jmenaBinarky() const {
    return {"codex", "codex-cli"};
}

Sentence CodexAdapter::napoveda() const {
    return "Nainstaluj: npm i -g @openai/codex (nebo brew install codex). "
           "Codex ve webovém ChatGPT ani rozšíření do editoru žádné CLI neinstalují."_sentence;
}

std::vector<std::string> CodexAdapter::argumenty(std::string instrukce, std::string slozka,
                                                 std::optional<std::string> relace) const {
    std::vector<std::string> all = {
        "exec", "--json", "--cd", std::move(slozka), "--skip-git-repo-check", "--sandbox", "workspace-write"};
    if (relace) {
        all.emplace_back("resume");
        all.push_back(*std::move(relace));
    }
    all.push_back(operandText(std::move(instrukce)));
    return all;
}

std::optional<ZpravaAgenta> CodexAdapter::precti(std::string_view line) const {
    const auto root = parseDocument(line);
    if (!root || !root->is_object()) return std::nullopt;
    auto zprava = read(unwrap(root->get_object()));
    return zprava == ZpravaAgenta{} ? std::nullopt : std::optional(std::move(zprava));
}

bool CodexAdapter::isSessionGone(std::string_view chyby) const {
    return containsAny(lowerCase(chyby),
                       {"no such thread", "thread not found", "session not found", "invalid session"});
}

} // namespace morvex
