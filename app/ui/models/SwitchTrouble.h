#pragma once

#include "shared/base/Error.h"
#include "shared/base/Sentence.h"

#include <QProperty>
#include <QString>

#include <functional>
#include <optional>

namespace morvex {

/// What a card with switches says: why the last one could not be switched on, or that the settings are not
/// saved. A refusal is forgotten with the next switch, and once the settings have no trouble any more. Part
/// of its view model; main thread.
class SwitchTrouble {
  public:
    /// `settings` outlives this object. `changed` is called when the text may have changed.
    SwitchTrouble(QProperty<std::optional<Sentence>>& settings, std::function<void()> changed);

    /// What came of the last switch.
    void note(const Result<void>& result);

    [[nodiscard]] QString text() const;

  private:
    QProperty<std::optional<Sentence>>& settings_;
    std::function<void()> changed_;
    Sentence refusal_;
    QPropertyNotifier notifier_;
};

} // namespace morvex
