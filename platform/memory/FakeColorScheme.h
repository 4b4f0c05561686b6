#pragma once

#include "platform/ports/ColorScheme.h"

#include <utility>

namespace morvex {

class FakeColorScheme final : public ColorScheme {
  public:
    [[nodiscard]] Preference preference() const override { return preference_; }

    void onChange(std::function<void()> changed) override { changed_ = std::move(changed); }

    void prefer(Preference preference) {
        preference_ = preference;
        if (changed_) changed_();
    }

  private:
    Preference preference_ = Preference::none;
    std::function<void()> changed_;
};

} // namespace morvex
