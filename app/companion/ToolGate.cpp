#include "app/companion/ToolGate.h"

#include "shared/base/Utf8.h"
#include "shared/wire/PrettyJson.h"

#include <utility>

namespace morvex {

namespace {

/// No tool has a longer name, but the phone may send any text.
constexpr std::size_t longestName = 200;

std::string notHere(std::string_view name) {
    return "Nástroj " + clipped(name, longestName) + " tenhle Mac nemá.";
}

/// Null when the tool is not on offer at this moment.
std::shared_ptr<const Tool> findOffered(const ToolTable& table, const std::string& name) {
    auto tool = table.find(name);
    if (tool && !tool->isOffered()) tool.reset();
    return tool;
}

} // namespace

Task<ToolOutcome> ToolGate::provestNastroj(ToolCall call) {
    // Keeps the tool alive until the call has ended, because its row may be removed meanwhile.
    const auto tool = findOffered(table_, call.name);
    if (!tool) {
        state_.potiz = "Byl požadován nástroj {nastroj}, který tento Mac neumí."_sentence(
            clipped(call.name, longestName));
        co_return ToolOutcome::refused(notHere(call.name));
    }
    co_return co_await tool->run(std::move(call));
}

Task<boost::json::object> ToolGate::provestMistne(std::string name, boost::json::object arguments) {
    const auto tool = findOffered(table_, name);
    if (!tool) co_return ToolOutcome::refused(notHere(name)).result;
    if (requiresApproval(tool->descriptor.risk) && !co_await askForApproval(name, arguments))
        co_return ToolOutcome::refused("Akce nebyla potvrzena.").result;
    auto requestID = "mac-local:" + random_.uuid().text();
    auto outcome = co_await provestNastroj({std::move(name), std::move(arguments), std::move(requestID)});
    co_return std::move(outcome.result);
}

Task<bool> ToolGate::askForApproval(const std::string& name, const boost::json::object& arguments) {
    return schvalovani_.pozadat(name, "Povolit akci na Macu"_sentence.czech(),
                                "Tato akce změní data na Macu. Potvrď ji v okně Morvex.",
                                name + "\n\n" + prettyJson(arguments));
}

} // namespace morvex
