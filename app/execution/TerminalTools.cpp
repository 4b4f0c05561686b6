#include "app/execution/TerminalTools.h"

#include "app/tools/Arguments.h"
#include "shared/wire/MacToolName.h"

namespace morvex {

void TerminalTools::addTo(ToolTable& table, std::function<bool()> isOn) {
    table.add(
        MacToolName::terminalRun,
        [this, isOn = std::move(isOn)] { return isOn() && !slozky_.povolene().empty(); },
        [this](ToolCall call) { return run(std::move(call)); });
}

Task<ToolOutcome> TerminalTools::run(ToolCall call) {
    Arguments arguments(call.arguments);
    auto program = arguments.textOrEmpty("program");
    if (program.empty()) co_return ToolOutcome::refused("Chybí program.");
    std::stop_source konec;
    auto ukonci = [&konec] { konec.request_stop(); };
    std::stop_callback atTheEnd(stop_, ukonci);
    std::stop_callback whenAbandoned(call.opusteni, ukonci);
    auto ended = co_await terminal_.spustitPrikaz(
        std::move(program), arguments.texts("args").value_or(std::vector<std::string>{}),
        arguments.text("folder"), [this] { return slozky_.snimek(); }, konec.get_token());
    if (!ended) co_return ToolOutcome::refused(ended.error());
    co_return ToolOutcome{
        ended->status == 0,
        {{"exit_code", ended->status}, {"output", ended->vystup}, {"stderr", ended->chyby}}};
}

} // namespace morvex
