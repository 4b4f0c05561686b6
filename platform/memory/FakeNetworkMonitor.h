#pragma once

#include "platform/ports/NetworkMonitor.h"

#include <utility>

namespace morvex {

/// A network that a test changes.
class FakeNetworkMonitor final : public NetworkMonitor {
  public:
    void watch(std::function<void()> changed) override { changed_ = std::move(changed); }

    void unwatch() override { changed_ = {}; }

    void change() const { changed_(); }

    [[nodiscard]] bool isWatched() const { return static_cast<bool>(changed_); }

  private:
    std::function<void()> changed_;
};

} // namespace morvex
