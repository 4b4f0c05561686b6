#pragma once

#include "app/companion/CompanionState.h"
#include "app/features/Feature.h"
#include "app/settings/MacIntegrationSettings.h"
#include "shared/wire/MacStatus.h"

#include <QProperty>
#include <boost/json/object.hpp>

#include <string>
#include <vector>

namespace morvex {

/// What the phone is told about this computer, computed at each send. Main thread; everything it refers to
/// outlives it.
struct StatusReport {
    const std::vector<Feature*>& features;
    const QProperty<bool>& naNapajeni;
    std::string appVersion;
    std::string deviceName;

    /// `tools` are the tools that the status names at this moment.
    [[nodiscard]] MacStatus at(Date now, std::vector<ToolDescriptor> tools) const;

    /// The answer of the tool `mac.status`, which lists the whole offer.
    [[nodiscard]] boost::json::object forTool(const std::vector<ToolDescriptor>& offer) const;
};

/// A shorter version for a report that exceeds the frame limit: texts are cut, and of the tools and folders
/// only those that fit are listed, in their order.
[[nodiscard]] MacStatus shortened(MacStatus status);

} // namespace morvex
