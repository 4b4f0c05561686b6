#include "app/voice/VoiceFeature.h"

#include "app/features/FeatureContext.h"

#include <utility>

namespace morvex {

VoiceFeature::VoiceFeature(FeatureContext& context)
    : Feature(context),
      context_(context),
      keychain_(context.services.vault, context.services.vaultThread),
      controller_(context.services.defaults, keychain_) {
    context.inbox.take<MacPayload::OpenAICredential>(
        [this](MacPayload::OpenAICredential sent, const Delivery&) {
            return takeKey(std::move(sent.value));
        });
    context.inbox.take<MacPayload::Preferences>([this](MacPayload::Preferences sent, const Delivery&) {
        return takePreferences(std::move(sent.preferences));
    });
}

Task<void> VoiceFeature::load() {
    return controller_.load();
}

Task<void> VoiceFeature::takeKey(std::string key) {
    const auto turn = co_await context_.inbox.settingsTurn();
    if (!turn) co_return;
    co_await controller_.setAPIKey(std::move(key));
    co_await context_.poslatStav();
}

Task<void> VoiceFeature::takePreferences(CompanionPreferences sent) {
    const auto turn = co_await context_.inbox.settingsTurn();
    if (!turn) co_return;
    co_await controller_.applyPreferences(std::move(sent));
}

} // namespace morvex
