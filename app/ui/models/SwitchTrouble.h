#pragma once

#include "shared/base/Error.h"
#include "shared/base/Sentence.h"

#include <QProperty>
#include <QString>

#include <functional>
#include <optional>

namespace morvex {

/// The problem that a card with switches shows: why the last one could not be switched on, or that the
/// settings are not saved. A refusal is forgotten at the next switching and when the settings have no problem
/// any more. Part of its view model; main thread.
class SwitchTrouble {
  public:
    /// `settings` outlives this object. `changed` is called when the text may have changed.
    SwitchTrouble(QProperty<std::optional<Sentence>>& settings, std::function<void()> changed);

    /// Takes the result of the last switching.
    void note(const Result<void>& result);

    [[nodiscard]] QString text() const;

  private:
    QProperty<std::optional<Sentence>>& settings_;
    std::function<void()> changed_;
    Sentence refusal_;
    QPropertyNotifier notifier_;
};

} // namespace morvex
