#pragma once

#include "tests/relay/TestPair.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace morvex {

/// A connection to a relay of this computer that keeps to no protocol. Whatever fails is the relay's right to
/// refuse, and no failure of the test.
class StrangerSocket {
  public:
    /// `from` is one of this computer's addresses.
    StrangerSocket(std::uint16_t port, const std::string& from);
    ~StrangerSocket();
    StrangerSocket(const StrangerSocket&) = delete;
    StrangerSocket& operator=(const StrangerSocket&) = delete;

    void say(std::string_view bytes) const;
    /// Waits until these words have come; false when the relay closes before.
    bool hears(std::string_view words);
    /// Opens a WebSocket and logs in.
    void logIn(const TestPair& pair, const DeviceIdentity& device);
    /// A frame of 4 MiB of which only this much comes. The relay may end the connection meanwhile.
    void sayUnfinished(std::string_view beginning) const;

    /// Waits for the relay to end the connection. False when it does not in twenty seconds.
    [[nodiscard]] bool isCutOff() const;

    /// One masked text frame (RFC 6455, section 5.2), its mask all zeros.
    static std::string textFrame(std::string_view text);

  private:
    int socket_ = -1;
    std::string heard_;
};

} // namespace morvex
