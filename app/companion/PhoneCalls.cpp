#include "app/companion/PhoneCalls.h"

#include "shared-apple/MessageTooLong.h"
#include "shared/wire/Json.h"

#include <utility>

namespace morvex {

namespace {

/// Arguments that do not parse count as an empty object: the tool then says what is missing.
boost::json::object argumentsOf(const std::string& json) {
    auto parsed = parseJson(json, messageLimits);
    if (!parsed || !parsed->is_object()) return {};
    return std::move(parsed->as_object());
}

} // namespace

Task<void> PhoneCalls::handle(MacPayload::ToolCall call, Delivery delivery) {
    // Messages that the phone sent before the call are stored and acknowledged before the call is carried
    // out.
    for (auto* feature : features_) co_await feature->settled();
    if (phoneLink_.current() != delivery.link) co_return;
    auto outcome = co_await gate_.provestNastroj(
        {std::move(call.name), argumentsOf(call.argumentsJSON), delivery.requestID, inbox_.abandonment()});
    MacPayload::ToolResult result{outcome.ok, encode(outcome.result)};
    auto sent = co_await delivery.link->poslat({std::move(result)}, delivery.requestID);
    if (sent || !sent.error().as<MessageTooLong>()) co_return;
    auto refused = ToolOutcome::tooLong();
    (void)co_await delivery.link->poslat({MacPayload::ToolResult{refused.ok, encode(refused.result)}},
                                         delivery.requestID);
}

} // namespace morvex
