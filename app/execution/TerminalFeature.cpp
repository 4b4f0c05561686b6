#include "app/execution/TerminalFeature.h"

#include "app/features/FeatureContext.h"

namespace morvex {

TerminalFeature::TerminalFeature(FeatureContext& context, const Slozky& slozky, ProgramDiscovery& programs)
    : Feature(context),
      tools_(slozky, {context.services.processes, context.clock(), programs, context.services.workers},
             context.scope.token()) {
    tools_.addTo(context.tools, context.whileOn(Integration::terminal));
}

} // namespace morvex
