#pragma once

#include "app/customapps/MacCustomAppsService.h"
#include "app/features/Feature.h"
#include "app/keychain/Keychain.h"
#include "foundation/Signal.h"
#include "shared/wire/CompanionRecords.h"

#include <vector>

namespace morvex {

/// The custom apps of this computer and of the phone.
class CustomAppsFeature final : public Feature {
  public:
    explicit CustomAppsFeature(FeatureContext& context);

    [[nodiscard]] MacCustomAppsService& service() { return service_; }

    Task<void> load() override;
    void switched() override;
    Task<void> saved() override;

  private:
    [[nodiscard]] bool isOn() const;
    /// The tools on offer depend on the apps, so the status is sent afterwards.
    Task<void> takeList(std::vector<CompanionCustomApp> apps);

    FeatureContext& context_;
    Keychain keychain_;
    SeenTools seen_;
    MacCustomAppsService service_;
    Connection toolsChanged_;
};

} // namespace morvex
