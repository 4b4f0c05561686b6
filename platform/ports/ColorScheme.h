#pragma once

#include <functional>

namespace morvex {

/// Whether the person prefers light or dark windows. Main thread only.
class ColorScheme {
  public:
    enum class Preference { none, light, dark };

    virtual ~ColorScheme() = default;

    /// `none` too while it is not known yet.
    [[nodiscard]] virtual Preference preference() const = 0;

    /// One at a time; called after each change.
    virtual void onChange(std::function<void()> changed) = 0;
};

} // namespace morvex
