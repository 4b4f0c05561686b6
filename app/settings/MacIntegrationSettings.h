#pragma once

#include "foundation/Signal.h"
#include "foundation/Task.h"
#include "platform/ports/UserDefaults.h"
#include "shared/base/Error.h"

#include <array>
#include <cstddef>
#include <functional>

namespace morvex {

/// The families of tools that the user can switch, in the order in which they are kept.
enum class Integration {
    calendar,
    reminders,
    contacts,
    notes,
    customApps,
    appleMail,
    smtp,
    codex,
    claude,
    files,
    terminal,
    webSearch,
};
inline constexpr std::size_t integrationCount = 12;

/// The user's on and off switches, kept in the user defaults. Main thread only.
class MacIntegrationSettings {
  public:
    explicit MacIntegrationSettings(UserDefaults& defaults);

    [[nodiscard]] bool isOn(Integration integration) const { return values_[index(integration)]; }

    /// Counts at once; saving goes on behind it until it succeeds. One that is off already is left alone.
    void vypnout(Integration integration);

    /// Counts once it is saved. Fails with what prevented that; an interrupted one that is off again does
    /// not. The task ends before this object goes.
    Task<Result<void>> zapnout(Integration integration);

    /// Called after each change.
    [[nodiscard]] Connection onChange(std::function<void()> zavolat) {
        return onChange_.connect(std::move(zavolat));
    }

  private:
    void change(Integration integration, bool value);

    static std::size_t index(Integration integration) { return static_cast<std::size_t>(integration); }

    UserDefaults& defaults_;
    std::array<bool, integrationCount> values_{};
    std::array<int, integrationCount> isTurningOn_{}; ///< how many wait for their save
    Signal<> onChange_;
};

} // namespace morvex
