#pragma once

#include "platform/ports/WebSocketClient.h"

#include <atomic>
#include <cstdint>

namespace morvex {

/// Records whether a connection reads. Written on the network thread, read from any thread.
class ReadingMeter {
  public:
    void holdBack() {
        if (turns_ % 2 == 0) ++turns_;
    }

    void readOn() {
        if (turns_ % 2 == 1) ++turns_;
    }

    [[nodiscard]] WebSocket::Reading reading() const {
        const auto turns = turns_.load();
        return {turns % 2 == 1, (turns + 1) / 2};
    }

  private:
    std::atomic<std::uint64_t> turns_ = 0; ///< odd while reading is paused
};

} // namespace morvex
