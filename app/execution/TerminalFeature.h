#pragma once

#include "app/execution/TerminalTools.h"
#include "app/features/Feature.h"

namespace morvex {

/// The tool `mac.terminal.run`.
class TerminalFeature final : public Feature {
  public:
    /// Both references outlive it.
    TerminalFeature(FeatureContext& context, const Slozky& slozky, ProgramDiscovery& programs);

  private:
    TerminalTools tools_;
};

} // namespace morvex
