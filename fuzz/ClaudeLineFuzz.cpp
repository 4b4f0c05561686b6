// One line of the event stream of Claude Code, interpreted a second time by its type.

#include "app/agents/ClaudeCodeAdapter.h"
#include "fuzz/AgentLine.h"
#include "shared/base/Bytes.h"

#include <cstddef>
#include <cstdint>

using namespace morvex;

namespace {

std::string errorText(const boost::json::value& event) {
    for (const char* place :
         {"/error", "/error/message", "/error/detail", "/message", "/message/error", "/result"})
        if (auto text = textAt(event, place); text && !text->empty()) return *std::move(text);
    return "";
}

void readBlocks(const boost::json::value& event, Told& told) {
    boost::system::error_code missing;
    const auto* content = event.find_pointer("/message/content", missing);
    if (!content || !content->is_array()) return;
    const auto& blocks = content->get_array();
    if (!std::ranges::all_of(blocks, [](const auto& block) { return block.is_object(); })) return;
    for (const auto& block : blocks) {
        told.text = told.text || (textAt(block, "/type") == "text" && textAt(block, "/text"));
        told.prubeh = told.prubeh || (textAt(block, "/type") == "tool_use" && textAt(block, "/name"));
    }
}

Told toldBy(const boost::json::value& event) {
    Told told{.relace = textAt(event, "/session_id").has_value()};
    const auto type = textAt(event, "/type");
    if (type == "system") {
        told.prubeh = textAt(event, "/subtype") == "init";
    } else if (type == "assistant") {
        readBlocks(event, told);
    } else if (type == "result") {
        const auto* flag = event.get_object().if_contains("is_error");
        told.chyba = (flag && *flag == boost::json::value(true)) ||
                     textAt(event, "/subtype") == "error_during_execution";
        told.zaver = !told.chyba;
    } else {
        told.chyba = type == "error" || type == "stream_error" ||
                     says(errorText(event), {"authentication failed", "sign in again", "not authenticated",
                                             "unauthorized", "invalid api key", "expired token"});
    }
    return told;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ClaudeCodeAdapter claude;
    const auto line = asText({data, size});
    const auto event = eventIn(line);
    const auto zprava = claude.precti(line);
    expectMessage(zprava, event ? toldBy(*event) : Told{});
    require(!zprava || zprava->relace == textAt(*event, "/session_id"), "another session than the line's");
    require(!zprava || !zprava->chyba || !zprava->chyba->empty(), "an error has no words");
    require(claude.isSessionGone(line) == says(line, {"no conversation found", "session not found",
                                                      "could not find session", "invalid session"}),
            "a session is gone, or is not");
    return 0;
}
