#pragma once

#include "platform/ports/Notifications.h"

#include <optional>
#include <utility>

namespace morvex {

/// Keeps the shown notice; a test presses its buttons.
class FakeNotifications final : public Notifications {
  public:
    void show(Notice notice) override { shown = std::move(notice); }

    void withdraw() override { shown.reset(); }

    std::optional<Notice> shown;
};

} // namespace morvex
