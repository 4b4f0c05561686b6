#pragma once

#include "tests/support/TestPair.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace morvex {

/// A connection to a relay on this computer that follows no protocol. Failures are refusals by the relay, to
/// which it has a right, and no failures of the test.
class StrangerSocket {
  public:
    /// `from` is one of this computer's addresses.
    StrangerSocket(std::uint16_t port, const std::string& from);
    ~StrangerSocket();
    StrangerSocket(const StrangerSocket&) = delete;
    StrangerSocket& operator=(const StrangerSocket&) = delete;

    void say(std::string_view bytes) const;
    /// Waits until these words arrive; returns false if the relay closes before.
    bool hears(std::string_view words);
    /// Opens a WebSocket and logs in.
    void logIn(const TestPair& pair, const DeviceIdentity& device);
    /// Sends only the beginning of a frame of 4 MiB. The relay may end the connection meanwhile.
    void sayUnfinished(std::string_view beginning) const;

    /// Waits for the relay to end the connection. False when it does not in twenty seconds.
    [[nodiscard]] bool isCutOff() const;

    /// A masked text frame (RFC 6455, section 5.2) with an all-zero mask.
    static std::string textFrame(std::string_view text);

  private:
    int socket_ = -1;
    std::string heard_;
};

} // namespace morvex
