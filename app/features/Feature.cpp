#include "app/features/Feature.h"

#include "app/features/FeatureContext.h"

namespace morvex {

Feature::Feature(FeatureContext& context) {
    context.features.push_back(this);
}

Task<void> Feature::load() {
    co_return;
}

Task<void> Feature::prepare() {
    co_return;
}

Task<void> Feature::refresh() {
    co_return;
}

Task<void> Feature::catchUp(std::shared_ptr<SecureLink>) {
    co_return;
}

Task<void> Feature::settled() {
    co_return;
}

Task<void> Feature::saved() {
    co_return;
}

} // namespace morvex
