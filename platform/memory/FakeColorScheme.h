#pragma once

#include "platform/ports/ColorScheme.h"

namespace morvex {

class FakeColorScheme final : public ColorScheme {
  public:
    [[nodiscard]] Preference preference() const override { return preference_; }

    void prefer(Preference preference) {
        preference_ = preference;
        tellOfChange();
    }

  private:
    Preference preference_ = Preference::none;
};

} // namespace morvex
