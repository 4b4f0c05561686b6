#pragma once

#include "platform/memory/ScriptedSockets.h"
#include "relay/Line.h"
#include "relay/Login.h"
#include "relay/Switchboard.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace morvex {

/// One connection of a device to the relay. The frames of both ends wait here until they are passed on, lost,
/// duplicated or moved. As in a real network, each end notices the end of the connection by itself.
class ModelWire final : public Line {
  public:
    enum class Owner { mac, phone };
    enum class Way { toRelay, toDevice };

    /// What has passed over all wires of a device.
    struct Ledger {
        std::size_t messages = 0;         ///< messages with content that reached the device
        bool isAsleep = false;            ///< the device sleeps: nothing passes, and no ping is sent
        std::vector<std::string> toRelay; ///< all frames ever sent, for replays
        std::vector<std::string> toDevice;

        std::vector<std::string>& said(Way way) { return way == Way::toRelay ? toRelay : toDevice; }
    };

    ModelWire(Owner owner, Switchboard& switchboard, PairStore& store, Ledger& ledger);
    ~ModelWire() override;
    ModelWire(const ModelWire&) = delete;
    ModelWire& operator=(const ModelWire&) = delete;

    void deliver(std::string frame) override;
    [[nodiscard]] std::size_t waiting() const override;

    [[nodiscard]] std::size_t held() const override { return waiting(); }

    [[nodiscard]] Prefix site() const override { return {}; }

    void pauseReading() override { isPaused_ = true; }

    void resumeReading() override { isPaused_ = false; }

    void end(Ending ending) override;

    /// Passes on one frame, or after the last one the end of the connection. Returns false when nothing can
    /// pass.
    bool pass(Way way);

    /// Both ends notice it, and frames in transit are lost.
    void cut();
    /// Only the device notices that the connection has ended.
    void loseRelay();

    /// Nothing passes any more, and nobody is notified.
    void stall() { isStalled_ = true; }

    /// Answers the device's pings, unless earlier frames still wait.
    void pong();

    /// The waiting frames of one direction, for removing, duplicating or reordering them.
    std::deque<std::string>& frames(Way way);

    [[nodiscard]] Ledger& ledger() const { return ledger_; }

    [[nodiscard]] Owner owner() const { return owner_; }

    /// Neither end will use it any more.
    [[nodiscard]] bool isDead() const { return (isLeft_ || (isStalled_ && isEnding_)) && isDeviceGone(); }

    [[nodiscard]] const std::shared_ptr<ScriptedSocket>& socket() const { return socket_; }

  private:
    [[nodiscard]] bool isDeviceGone() const { return isBroken_ || !socket_->closed.empty(); }

    void collect();
    bool passEnd(Way way);
    void hear(std::string frame);
    void leave();
    void breakSocket();

    Owner owner_;
    Switchboard& switchboard_;
    PairStore& store_;
    Ledger& ledger_;
    Login login_;
    std::shared_ptr<ScriptedSocket> socket_ = std::make_shared<ScriptedSocket>();
    std::size_t collected_ = 0;
    std::deque<std::string> toRelay_;
    std::deque<std::string> toDevice_;
    bool isLoggedIn_ = false;
    bool isPaused_ = false;
    bool isEnding_ = false; ///< the relay has sent its last frame
    bool isLeft_ = false;   ///< the relay has left it
    bool isBroken_ = false; ///< the device's end is broken
    bool isStalled_ = false;
};

} // namespace morvex
