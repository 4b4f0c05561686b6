#pragma once

#include "shared/base/Error.h"

#include <functional>
#include <memory>
#include <string>

namespace morvex {

/// Prevents the sleep that follows from idleness; never a sleep that the user asks for, and never that of the
/// display. Main thread only.
class SleepInhibitor {
  public:
    /// Prevents the sleep as long as it lives.
    class Token {
      public:
        virtual ~Token() = default;
    };

    virtual ~SleepInhibitor() = default;

    /// The system shows `reason` to users who ask why it stays awake. `onFailure` is called when the system
    /// refuses: once, after this call has returned, and never after the token was destroyed.
    [[nodiscard]] virtual std::unique_ptr<Token>
    holdOffIdleSleep(const std::string& reason, std::function<void(const Error&)> onFailure) = 0;
};

} // namespace morvex
