#include "app/companion/CompanionParts.h"

#include "shared/wire/MacToolName.h"

#include <utility>

namespace morvex {

namespace {

Task<void> loadAll(std::vector<Feature*> features) {
    for (auto* feature : features) co_await feature->load();
}

Task<void> begin(Companion* companion, FeatureContext* context) {
    TaskScope preparations(context->services.main);
    for (auto* feature : context->features) preparations.spawn(feature->prepare());
    co_await preparations.join();
    companion->pripojit();
    companion->obnovit();
}

Task<void> decide(Schvalovani* schvalovani, MacPayload::ApprovalDecision decision) {
    schvalovani->vyresit(decision.id, decision.approved);
    co_return;
}

} // namespace

Companion::Parts::Parts(Companion& companion, CompanionServices given)
    : services(std::move(given)),
      scope(services.main),
      schvalovani(services.clock(), services.link.random, scope),
      bdelost({services.power, services.sleep, services.inhibitor, services.loginItem, services.defaults,
               services.clock(), scope}),
      integrations(services.defaults),
      gate(tools, state, schvalovani, services.link.random),
      phone(services.main, scope, inbox,
            [this](std::shared_ptr<SecureLink> link, SecureLink::Udalost event) {
                return events.handle(std::move(link), std::move(event));
            }),
      context{services,
              integrations,
              tools,
              inbox,
              phone,
              scope,
              [this] { return status.poslatStav(); },
              [this](Sentence trouble) { state.potiz = std::move(trouble); },
              {}},
      status({context.features, bdelost.stav().naNapajeni, services.verzeAplikace, services.jmenoZarizeni},
             gate, phone, state, services.clock()),
      calls(gate, phone, inbox, context.features),
      keys({services.vaultThread, services.uloziste, services.vault, services.clock(), scope}, state,
           {[this] { return loadAll(context.features); },
            [&companion, this] { return begin(&companion, &context); }}),
      events({state, services.clock(), schvalovani, context.features, context.poslatStav,
              [&companion] { companion.forgetInvalid(); }}),
      parovani({services.main, services.link.relay, services.http, scope, keys}, state,
               {[&companion] { companion.pripojit(); }, [&companion] { companion.odpojit(); },
                [&companion] { companion.abandonPhone(); }}) {
    tools.add(MacToolName::status, [] { return true; }, &status, &StatusSync::nastroj);
    inbox.take<MacPayload::ToolCall>([this](MacPayload::ToolCall call, Delivery delivery) {
        return calls.handle(std::move(call), std::move(delivery));
    });
    inbox.take<MacPayload::ApprovalDecision>([this](MacPayload::ApprovalDecision decision, const Delivery&) {
        return decide(&schvalovani, std::move(decision));
    });
}

} // namespace morvex
