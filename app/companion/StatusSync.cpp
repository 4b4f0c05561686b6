#include "app/companion/StatusSync.h"

#include "shared-apple/MessageTooLong.h"

#include <string>
#include <utility>

namespace morvex {

namespace {

const std::string statusRequestID = "status";

} // namespace

Task<void> StatusSync::poslatStav() {
    const auto link = phoneLink_.current();
    if (!link) co_return;
    auto status = report_.at(clock_.now(), gate_.toolsInStatus());
    auto sent = co_await phoneLink_.poslat({MacPayload::Status{status}}, statusRequestID);
    if (sent || phoneLink_.current() != link) co_return;
    state_.potiz = "Stav se nepodařilo odeslat: {duvod}"_sentence(sent.error().popis());
    if (sent.error().as<MessageTooLong>())
        (void)co_await phoneLink_.poslat({MacPayload::Status{shortened(std::move(status))}}, statusRequestID);
}

Task<ToolOutcome> StatusSync::nastroj(NoArguments, ToolCall) {
    co_return ToolOutcome::done(report_.forTool(gate_.nabizeneNastroje()));
}

} // namespace morvex
