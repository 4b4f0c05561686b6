#pragma once

#include "platform/ports/PowerMonitor.h"

namespace morvex {

class FakePower final : public PowerMonitor {
  public:
    [[nodiscard]] bool onMains() const override { return mains; }

    bool mains = true;
};

} // namespace morvex
