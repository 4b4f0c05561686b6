#include "app/companion/ToolGate.h"

#include "shared/wire/PrettyJson.h"

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

std::string notHere(const std::string& name) {
    return "Nástroj " + name + " tenhle Mac nemá.";
}

const ToolDescriptor* find(const std::vector<ToolDescriptor>& offer, const std::string& name) {
    auto found = std::ranges::find(offer, name, &ToolDescriptor::name);
    return found == offer.end() ? nullptr : &*found;
}

} // namespace

Task<ToolOutcome> ToolGate::provestNastroj(ToolCall call) {
    if (!find(nabizeneNastroje(), call.name)) {
        state_.potiz = "Byl požadován nástroj " + call.name + ", který tento Mac neumí.";
        co_return ToolOutcome::refused(notHere(call.name));
    }
    const auto* tool = table_.find(call.name);
    if (!tool) co_return ToolOutcome::refused("Nástroj " + call.name + " zatím neumím provést.");
    co_return co_await tool->run(std::move(call));
}

Task<boost::json::object> ToolGate::provestMistne(std::string name, boost::json::object arguments) {
    auto offer = nabizeneNastroje();
    const auto* descriptor = find(offer, name);
    if (!descriptor) co_return ToolOutcome::refused(notHere(name)).result;
    if (requiresApproval(descriptor->risk) && !co_await isApproved(name, arguments))
        co_return ToolOutcome::refused("Akce nebyla potvrzena.").result;
    auto requestID = "mac-local:" + random_.uuid().text();
    auto outcome = co_await provestNastroj({std::move(name), std::move(arguments), std::move(requestID)});
    co_return std::move(outcome.result);
}

Task<bool> ToolGate::isApproved(const std::string& name, const boost::json::object& arguments) {
    return schvalovani_.pozadat(name, "Povolit akci na Macu",
                                "Tato akce změní data na Macu. Potvrď ji v okně Morvex.",
                                name + "\n\n" + prettyJson(arguments));
}

} // namespace morvex
