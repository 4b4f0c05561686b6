#pragma once

#include "app/features/Feature.h"
#include "app/keychain/Keychain.h"
#include "app/link/PhoneInbox.h"
#include "app/voice/MacVoiceController.h"

#include <string>

namespace morvex {

/// The preferences of the voice assistant, most of which the phone sends.
class VoiceFeature final : public Feature {
  public:
    explicit VoiceFeature(FeatureContext& context);

    [[nodiscard]] MacVoiceController& controller() { return controller_; }

    Task<void> load() override;

  private:
    /// The tools on offer depend on the key, so the status is sent afterwards.
    Task<void> takeKey(std::string key);
    Task<void> takePreferences(CompanionPreferences sent);

    FeatureContext& context_;
    Keychain keychain_;
    MacVoiceController controller_;
};

} // namespace morvex
