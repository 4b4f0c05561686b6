#pragma once

#include "platform/ports/UserDefaults.h"

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

    /// An equal value does nothing; another one is kept and told through `onChange`.
    void set(Integration integration, bool value);

    std::function<void()> onChange;

  private:
    static std::size_t index(Integration integration) { return static_cast<std::size_t>(integration); }

    UserDefaults& defaults_;
    std::array<bool, integrationCount> values_{};
};

} // namespace morvex
