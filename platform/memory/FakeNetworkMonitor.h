#pragma once

#include "platform/ports/NetworkMonitor.h"

#include <utility>

namespace morvex {

/// A network that a test changes.
class FakeNetworkMonitor final : public NetworkMonitor {
  public:
    Connection onChange(std::function<void()> slot) override { return changes_.connect(std::move(slot)); }

    void change() const { changes_.tell(); }

    [[nodiscard]] bool isWatched() const { return changes_.isHeard(); }

  private:
    Signal<> changes_;
};

} // namespace morvex
