// One line of the event stream of Codex, interpreted a second time by its type.

#include "app/agents/CodexAdapter.h"
#include "fuzz/AgentLine.h"
#include "shared/base/Bytes.h"

#include <cstddef>
#include <cstdint>

using namespace morvex;

namespace {

/// The place of the event, which older streams wrap in another object.
std::string place(const boost::json::value& event, std::string_view name) {
    const auto* inner = event.get_object().if_contains("msg");
    return (inner && inner->is_object() ? "/msg/" : "/") + std::string(name);
}

bool namesSession(const boost::json::value& event, std::string_view type) {
    for (const char* name : {"thread_id", "session_id"})
        if (textAt(event, "/" + std::string(name)) || textAt(event, place(event, name))) return true;
    return type == "thread.started" && textAt(event, "/id");
}

Told toldBy(const boost::json::value& event) {
    const auto has = [&event](std::string_view name) {
        return textAt(event, place(event, name)).has_value();
    };
    const auto type = textAt(event, place(event, "type")).value_or(textAt(event, "/type").value_or(""));
    Told told{.relace = namesSession(event, type)};
    if (type == "thread.started" || type == "session_configured") told.prubeh = true;
    if (type == "item.started" || type == "item.updated" || type == "item.completed") {
        const auto item = textAt(event, place(event, "item/type"));
        told.prubeh = item == "command_execution" || item == "file_change";
        told.text = item == "agent_message" && has("item/text");
    }
    if (type == "turn.completed" || type == "task_complete")
        told.zaver = has("text") || has("last_agent_message");
    if (type == "error" || type == "stream_error") told.chyba = true;
    return told;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const CodexAdapter codex;
    const auto line = asText({data, size});
    const auto event = eventIn(line);
    const auto zprava = codex.precti(line);
    expectMessage(zprava, event ? toldBy(*event) : Told{});
    require(codex.isSessionGone(line) ==
                says(line, {"no such thread", "thread not found", "session not found", "invalid session"}),
            "a session is gone, or is not");
    const std::string command = "Spouštím: ";
    if (zprava && zprava->prubeh && zprava->prubeh->starts_with(command))
        require(countCharacters(zprava->prubeh->substr(command.size())) <= 160,
                "a command is shown beyond its limit");
    return 0;
}
