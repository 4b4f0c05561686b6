#pragma once

#include "shared/base/Error.h"

#include <functional>
#include <memory>
#include <string>

namespace morvex {

/// Holds off the sleep that comes from idleness; never one that a person asks for, and never the display's.
/// Main thread only.
class SleepInhibitor {
  public:
    /// Holds the sleep off as long as it lives.
    class Token {
      public:
        virtual ~Token() = default;
    };

    virtual ~SleepInhibitor() = default;

    /// `reason` is shown to whoever asks the system why it stays awake. `onFailure` is called when the system
    /// refuses: once, later than this call, and never after the token's end.
    [[nodiscard]] virtual std::unique_ptr<Token>
    holdOffIdleSleep(const std::string& reason, std::function<void(const Error&)> onFailure) = 0;
};

} // namespace morvex
