#include "app/customapps/CustomAppsFeature.h"

#include "app/features/FeatureContext.h"

#include <utility>

namespace morvex {

CustomAppsFeature::CustomAppsFeature(FeatureContext& context)
    : Feature(context),
      context_(context),
      keychain_(context.services.vault, context.services.vaultThread),
      service_(context.services.defaults, keychain_, context.random()) {
    switched();
    appsChanged_ = service_.priZmene([&context] { context.statusHasChanged(); });
    context.inbox.take<MacPayload::CustomApps>(
        [this](MacPayload::CustomApps list, const Delivery&) { return takeList(std::move(list.apps)); });
}

void CustomAppsFeature::switched() {
    service_.setActive(context_.integrations.isOn(Integration::customApps));
}

Task<void> CustomAppsFeature::takeList(std::vector<CompanionCustomApp> apps) {
    const auto turn = co_await context_.inbox.settingsTurn();
    if (!turn) co_return;
    co_await service_.replacePhoneApps(std::move(apps));
    co_await context_.sendStatus();
}

} // namespace morvex
