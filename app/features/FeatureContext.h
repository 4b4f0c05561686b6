#pragma once

#include "app/features/CompanionServices.h"
#include "app/link/PhoneInbox.h"
#include "app/link/PhoneLink.h"
#include "app/settings/MacIntegrationSettings.h"
#include "app/tools/ToolTable.h"
#include "foundation/SaveQueue.h"
#include "foundation/TaskScope.h"
#include "shared/base/Sentence.h"

#include <functional>
#include <vector>

namespace morvex {

class Feature;

/// What the companion gives to its features. Outlives them. Main thread only.
struct FeatureContext {
    const CompanionServices& services;
    MacIntegrationSettings& integrations;
    ToolTable& tools;
    PhoneInbox& inbox;
    PhoneLink& phone;
    TaskScope& scope; ///< runs background tasks; joined before the features are destroyed
    /// Tells the phone what this computer can do. Does nothing without a link.
    std::function<Task<void>()> poslatStav;
    /// Shows the user a problem, in place of the previous one.
    std::function<void(Sentence)> tellTrouble;
    /// All features, in the order in which they are asked.
    std::vector<Feature*> features;

    /// Whether the user wants this family of tools; asked each time the tools are offered.
    [[nodiscard]] std::function<bool()> whileOn(Integration integration) const {
        return [&settings = integrations, integration] { return settings.isOn(integration); };
    }

    [[nodiscard]] Clock& clock() const { return services.clock(); }

    [[nodiscard]] Random& random() const { return services.link.random; }

    [[nodiscard]] Saving saving() const { return {services.main, services.recordsThread, clock()}; }
};

} // namespace morvex
