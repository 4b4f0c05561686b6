#include "app/execution/TerminalTools.h"

#include "shared/wire/MacToolName.h"

namespace morvex {

struct CommandToRun {
    std::string program;
    std::optional<std::vector<std::string>> args;
    std::optional<std::string> folder;
};

void describe(auto& io, Is<CommandToRun> auto& command) {
    io.required("program", command.program);
    io.optional("args", command.args);
    io.optional("folder", command.folder);
}

void TerminalTools::addTo(ToolTable& table, std::function<bool()> isOn) {
    table.add(
        MacToolName::terminalRun,
        [this, isOn = std::move(isOn)] { return isOn() && !slozky_.povolene().empty(); }, this,
        &TerminalTools::run);
}

Task<ToolOutcome> TerminalTools::run(CommandToRun command, ToolCall call) {
    if (command.program.empty()) co_return ToolOutcome::refused("Chybí program.");
    std::stop_source ending;
    auto requestStop = [&ending] { ending.request_stop(); };
    std::stop_callback atTheEnd(stop_, requestStop);
    std::stop_callback whenAbandoned(call.abandonment, requestStop);
    auto ended = co_await terminal_.spustitPrikaz(
        std::move(command.program), std::move(command.args).value_or(std::vector<std::string>{}),
        std::move(command.folder), [this] { return slozky_.snapshot(); }, ending.get_token());
    if (!ended) co_return ToolOutcome::refused(ended.error());
    co_return ToolOutcome{
        ended->status == 0,
        {{"exit_code", ended->status}, {"output", ended->vystup}, {"stderr", ended->chyby}}};
}

} // namespace morvex
