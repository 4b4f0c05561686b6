#pragma once

#include "platform/ports/LoginItem.h"

#include <optional>

namespace morvex {

class FakeLoginItem final : public LoginItem {
  public:
    [[nodiscard]] bool isEnabled() const override { return enabled; }

    Result<void> enroll() override { return change(true); }

    Result<void> withdraw() override { return change(false); }

    bool enabled = false;
    std::optional<Error> failure; ///< if set, all changes fail with it

  private:
    Result<void> change(bool wanted) {
        if (failure) return fail(*failure);
        enabled = wanted;
        return {};
    }
};

} // namespace morvex
