#include "app/ui/models/SwitchTrouble.h"

#include "app/ui/Localized.h"
#include "platform/ports/UserDefaults.h"

#include <utility>

namespace morvex {

SwitchTrouble::SwitchTrouble(QProperty<std::optional<Sentence>>& settings, std::function<void()> changed)
    : settings_(settings), changed_(std::move(changed)), notifier_(settings.addNotifier([this] {
          if (!settings_.value()) refusal_ = {};
          changed_();
      })) {}

void SwitchTrouble::note(const Result<void>& result) {
    refusal_ = result ? Sentence() : notSavedBecause(result.error());
    changed_();
}

QString SwitchTrouble::text() const {
    return localized(refusal_.empty() ? settings_.value().value_or(Sentence()) : refusal_);
}

} // namespace morvex
