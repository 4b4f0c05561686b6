#pragma once

#include "platform/ports/Tray.h"

#include <utility>

namespace morvex {

/// A tray that a test makes appear and disappear.
class FakeTray final : public Tray {
  public:
    [[nodiscard]] bool isThere() const override { return there_; }

    void onArrival(std::function<void()> arrived) override { arrived_ = std::move(arrived); }

    void come() {
        there_ = true;
        if (arrived_) arrived_();
    }

    void go() { there_ = false; }

  private:
    bool there_ = false;
    std::function<void()> arrived_;
};

} // namespace morvex
