#pragma once

#include "foundation/Signal.h"
#include "foundation/Task.h"
#include "platform/ports/UserDefaults.h"
#include "shared/base/Error.h"

#include <array>
#include <cstddef>
#include <functional>

namespace morvex {

/// The families of tools that the user can switch, in the order in which they are stored.
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

    /// Takes effect at once; saving continues in the background until it succeeds. Does nothing if it is
    /// already off.
    void turnOff(Integration integration);

    /// Takes effect once it is saved. Fails with what prevented saving, but not if it was switched off again
    /// meanwhile. The task ends before this object is destroyed.
    Task<Result<void>> turnOn(Integration integration);

    /// Called after each change.
    [[nodiscard]] Connection onChange(std::function<void()> callback) {
        return onChange_.connect(std::move(callback));
    }

  private:
    void change(Integration integration, bool value);

    static std::size_t index(Integration integration) { return static_cast<std::size_t>(integration); }

    UserDefaults& defaults_;
    std::array<bool, integrationCount> values_{};
    std::array<int, integrationCount> isTurningOn_{}; ///< how many calls of `turnOn` wait for their save
    Signal<> onChange_;
};

} // namespace morvex
