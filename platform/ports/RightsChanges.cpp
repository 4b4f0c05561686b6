#include "platform/ports/RightsChanges.h"

namespace morvex {

Task<Result<void>> RightsChanges::make(std::function<DefaultsValues()> values, std::function<void()> apply) {
    const auto turn = co_await turns_.take();
    auto saved = co_await defaults_.setOnceSaved(values());
    while (!saved && saved.error().as<ChangedMeanwhile>()) saved = co_await defaults_.setOnceSaved(values());
    if (saved) apply();
    co_return saved;
}

} // namespace morvex
