#include "app/personal/RecordsFeature.h"

#include "app/features/FeatureContext.h"

#include <utility>

namespace morvex {

RecordsFeature::RecordsFeature(FeatureContext& context)
    : Feature(context),
      poznamky_(context.services.folders.applicationSupport(), context.saving(), context.random()),
      souhrny_(context.services.folders.applicationSupport(), context.saving()),
      tools_(poznamky_),
      sync_(poznamky_, souhrny_, {context.phone, context.services.main, context.scope, context.tellTrouble}) {
    tools_.addTo(context.tools, context.whileOn(Integration::notes));
    context.inbox.take<MacPayload::NoteUpdate>([this](MacPayload::NoteUpdate update, Delivery delivery) {
        return sync_.prijmout(std::move(update), std::move(delivery.link));
    });
    context.inbox.take<MacPayload::SummaryUpdate>(
        [this](MacPayload::SummaryUpdate update, Delivery delivery) {
            return sync_.prijmout(std::move(update), std::move(delivery.link));
        });
}

Task<void> RecordsFeature::catchUp(std::shared_ptr<SecureLink> link) {
    return sync_.catchUp(std::move(link));
}

Task<void> RecordsFeature::settled() {
    return sync_.allSettled();
}

Task<void> RecordsFeature::saved() {
    co_await sync_.allSettled();
    co_await poznamky_.saved();
    co_await souhrny_.saved();
}

} // namespace morvex
