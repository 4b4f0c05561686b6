#include "app/companion/PhoneInbox.h"

#include "shared-apple/MessageTooLong.h"
#include "shared/wire/Json.h"

#include <concepts>
#include <utility>

namespace morvex {

namespace {

template <class Case, class... Cases>
concept OneOf = (std::same_as<Case, Cases> || ...);

/// Messages that change nothing here: what only this computer sends, acknowledgements of records whose
/// delivery is not kept, and a cancel (agents are stopped by tools of their own).
template <class Case>
concept Ignored = OneOf<Case, MacPayload::Status, MacPayload::ToolProgress, MacPayload::ToolResult,
                        MacPayload::WorkItemUpdate, MacPayload::NoteAck, MacPayload::SummaryAck,
                        MacPayload::Cancel, MacPayload::Approval>;

/// Arguments that do not parse count as an empty object: the tool then says what is missing.
boost::json::object argumentsOf(const std::string& json) {
    auto parsed = parseJson(json, messageLimits);
    if (!parsed || !parsed->is_object()) return {};
    return std::move(parsed->as_object());
}

} // namespace

Task<void> PhoneInbox::zpracovatZpravu(MacPayload payload, std::string requestID) {
    Task<void> handling = std::visit(
        [this, &requestID]<class Case>(Case& message) {
            if constexpr (Ignored<Case>)
                return ignore();
            else
                return handle(std::move(message), std::move(requestID));
        },
        payload.value);
    co_await std::move(handling);
}

Task<void> PhoneInbox::handle(MacPayload::ToolCall call, std::string requestID) {
    auto arguments = argumentsOf(call.argumentsJSON);
    auto link = services_.spojeni.soucasne();
    if (!link) co_return;
    // What the phone told before a call is kept, and acknowledged, before the call is carried out.
    co_await services_.poznamky.vyrizeno();
    if (services_.spojeni.soucasne() != link) co_return;
    auto outcome = co_await services_.nastroje.provestNastroj(
        {std::move(call.name), std::move(arguments), requestID, prace_.get_token()});
    co_await poslatVysledek(std::move(link), std::move(outcome), std::move(requestID));
}

Task<void> PhoneInbox::handle(MacPayload::ApprovalDecision decision, std::string) {
    services_.schvalovani.vyresit(decision.id, decision.approved);
    co_return;
}

Task<void> PhoneInbox::handle(MacPayload::WorkItemAck potvrzeni, std::string) {
    services_.ukoly.potvrzeno(potvrzeni);
    co_return;
}

Task<void> PhoneInbox::handle(MacPayload::OpenAICredential credential, std::string) {
    const auto turn = co_await naRade();
    if (!turn) co_return;
    co_await services_.hlas.setAPIKey(std::move(credential.value));
    co_await services_.poslatStav();
}

Task<void> PhoneInbox::handle(MacPayload::Preferences sent, std::string) {
    const auto turn = co_await naRade();
    if (!turn) co_return;
    co_await services_.hlas.applyPreferences(std::move(sent.preferences));
}

Task<void> PhoneInbox::handle(MacPayload::CustomApps list, std::string) {
    const auto turn = co_await naRade();
    if (!turn) co_return;
    co_await services_.customApps.replacePhoneApps(std::move(list.apps));
    co_await services_.poslatStav();
}

Task<void> PhoneInbox::handle(MacPayload::NoteUpdate update, std::string) {
    return services_.poznamky.prijmout(std::move(update));
}

Task<void> PhoneInbox::handle(MacPayload::SummaryUpdate update, std::string) {
    return services_.poznamky.prijmout(std::move(update));
}

Task<void> PhoneInbox::ignore() {
    co_return;
}

Task<PhoneInbox::SettingsTurn> PhoneInbox::naRade() {
    const auto opusteni = prace_.get_token();
    auto turn = co_await settings_.take();
    if (opusteni.stop_requested()) co_return std::nullopt;
    co_return SettingsTurn(std::move(turn));
}

Task<void> PhoneInbox::poslatVysledek(std::shared_ptr<SecureLink> link, ToolOutcome outcome,
                                      std::string requestID) {
    MacPayload::ToolResult result{outcome.ok, encode(outcome.result)};
    auto sent = co_await link->poslat({std::move(result)}, requestID);
    if (sent || !sent.error().as<MessageTooLong>()) co_return;
    auto refused = ToolOutcome::tooLong();
    (void)co_await link->poslat({MacPayload::ToolResult{refused.ok, encode(refused.result)}},
                                std::move(requestID));
}

} // namespace morvex
