#pragma once

#include "foundation/Signal.h"

#include <functional>
#include <utility>

namespace morvex {

/// Whether the user prefers light or dark windows. Main thread only.
class ColorScheme {
  public:
    enum class Preference { none, light, dark };

    virtual ~ColorScheme() = default;

    /// Also `none` while the preference is not known yet.
    [[nodiscard]] virtual Preference preference() const = 0;

    /// Called after each change.
    [[nodiscard]] Connection onChange(std::function<void()> callback) {
        return changed_.connect(std::move(callback));
    }

  protected:
    void tellOfChange() const { changed_.tell(); }

  private:
    Signal<> changed_;
};

} // namespace morvex
