#pragma once

#include "platform/ports/Tray.h"

#include <utility>

namespace morvex {

/// A tray that a test makes appear and disappear.
class FakeTray final : public Tray {
  public:
    [[nodiscard]] bool isThere() const override { return there_; }

    Connection onArrival(std::function<void()> slot) override { return arrival_.connect(std::move(slot)); }

    void come() {
        there_ = true;
        arrival_.tell();
    }

    void go() { there_ = false; }

  private:
    bool there_ = false;
    Signal<> arrival_;
};

} // namespace morvex
