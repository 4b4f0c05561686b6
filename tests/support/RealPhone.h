#pragma once

#include "platform/memory/ManualClock.h"
#include "platform/net/BeastWebSocketClient.h"
#include "shared-apple/SecureLink.h"
#include "tests/support/CuttableSockets.h"

#include MORVEX_BASICS

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace morvex {

/// The phone's end of a link with the real network and a time that the owner moves. Calls block; one at a
/// time, from one thread.
class RealPhone {
  public:
    RealPhone(std::shared_ptr<const DeviceIdentity> identita, PairedPeer mac);
    ~RealPhone();
    RealPhone(const RealPhone&) = delete;
    RealPhone& operator=(const RealPhone&) = delete;

    /// Whether a session exists and the computer's first status of it arrives within this time.
    bool isServed(std::chrono::milliseconds patience);

    /// The result of a tool call; nothing if none came in time.
    std::optional<MacPayload::ToolResult> call(std::string tool, std::string argumentsJSON);

    /// How long the last call took on the link's own thread, from its payload to its result.
    [[nodiscard]] std::chrono::nanoseconds lastCall() const { return resultAt_ - calledAt_; }

    /// Resets the connection and forgets the session.
    void cut();
    /// Treats the session as over, so that `isServed` waits for the next one.
    void forgetSession();
    /// Advances the time for waits, and corrects the wall clock.
    void pass(std::chrono::seconds time);

  private:
    static Task<void> listen(RealPhone* self, std::stop_token stop);
    static Task<void> send(std::shared_ptr<SecureLink> link, MacPayload payload, std::string requestID);
    static Task<void> end(RealPhone* self);
    void take(const SecureLink::Udalost& event);

    ManualClock clock_;
    BeastWebSocketClient network_;
    SystemRandom random_;
    CuttableSockets sockets_{network_};
    std::shared_ptr<SecureLink> link_;
    TaskScope scope_{network_.executor()};
    std::uint64_t lastRequest_ = 0;

    std::mutex mutex_;
    std::condition_variable changed_;
    bool isServed_ = false;
    std::string awaited_; ///< id of the request whose result is awaited
    std::optional<MacPayload::ToolResult> result_;
    std::chrono::steady_clock::time_point calledAt_;
    std::chrono::steady_clock::time_point resultAt_;
};

} // namespace morvex
