#include "app/customapps/CustomAppsFeature.h"

#include "app/features/FeatureContext.h"
#include "shared/wire/MacToolName.h"

#include <utility>

namespace morvex {

CustomAppsFeature::CustomAppsFeature(FeatureContext& context)
    : Feature(context),
      context_(context),
      keychain_(context.services.vault, context.services.vaultThread),
      seen_(context.services.folders.applicationSupport(), context.saving()),
      service_({context.services.defaults, keychain_, context.random(), context.services.http,
                context.services.workers, context.clock(), seen_, context.scope}) {
    service_.setActive(isOn());
    toolsChanged_ = service_.onChange([&context] { context.scope.spawn(context.poslatStav()); });
    context.tools.add(service_.catalogue(), MacToolName::webSearch);
    context.inbox.take<MacPayload::CustomApps>(
        [this](MacPayload::CustomApps list, const Delivery&) { return takeList(std::move(list.apps)); });
}

bool CustomAppsFeature::isOn() const {
    return context_.integrations.isOn(Integration::customApps);
}

/// In the background, so that a slow server holds up nothing.
Task<void> CustomAppsFeature::load() {
    if (isOn()) service_.refreshSoon();
    co_return;
}

void CustomAppsFeature::switched() {
    service_.setActive(isOn());
    if (isOn()) service_.refreshSoon();
}

Task<void> CustomAppsFeature::saved() {
    return seen_.saved();
}

Task<void> CustomAppsFeature::takeList(std::vector<CompanionCustomApp> apps) {
    const auto turn = co_await context_.inbox.settingsTurn();
    if (!turn) co_return;
    co_await service_.replacePhoneApps(std::move(apps));
    co_await context_.poslatStav();
}

} // namespace morvex
