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

Task<void> PhoneCalls::zpracovat(MacPayload::ToolCall call, std::string requestID) {
    auto arguments = argumentsOf(call.argumentsJSON);
    auto link = phoneLink_.soucasne();
    if (!link) co_return;
    // What the phone told before a call is kept, and acknowledged, before the call is carried out.
    for (auto* feature : features_) co_await feature->settled();
    if (phoneLink_.soucasne() != link) co_return;
    auto outcome = co_await gate_.provestNastroj(
        {std::move(call.name), std::move(arguments), requestID, inbox_.opusteni()});
    co_await poslatVysledek(std::move(link), std::move(outcome), std::move(requestID));
}

Task<void> PhoneCalls::poslatVysledek(std::shared_ptr<SecureLink> link, ToolOutcome outcome,
                                      std::string requestID) {
    MacPayload::ToolResult result{outcome.ok, encode(outcome.result)};
    auto sent = co_await link->poslat({std::move(result)}, requestID);
    if (sent || !sent.error().as<MessageTooLong>()) co_return;
    auto refused = ToolOutcome::tooLong();
    (void)co_await link->poslat({MacPayload::ToolResult{refused.ok, encode(refused.result)}},
                                std::move(requestID));
}

} // namespace morvex
