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

/// One connection of a device with the relay. What either end says waits here, frame by frame, until it is
/// passed on, lost, doubled or moved. Like a connection of the network it has two ends that notice its end
/// each by itself.
class ModelWire final : public Line {
  public:
    enum class Owner { mac, phone };
    enum class Way { toRelay, toDevice };

    /// What has passed over all wires of a device.
    struct Ledger {
        std::size_t messages = 0;         ///< with content that came out at the device
        bool isAsleep = false;            ///< the device: nothing passes meanwhile, and no ping is sent
        std::vector<std::string> toRelay; ///< everything that was said, for those who say it again
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

    /// Lets one frame pass, or the end of the connection behind the last one. False when nothing can.
    bool pass(Way way);

    /// Both ends notice, and what was on its way is lost.
    void cut();
    /// Only the device notices.
    void loseRelay();

    /// Nothing passes any more, and nobody is told.
    void stall() { isStalled_ = true; }

    /// Answers the device's pings, unless something that was said before still waits.
    void pong();

    /// What waits in one direction, for those who take frames away, double them or change their order.
    std::deque<std::string>& frames(Way way);

    [[nodiscard]] Ledger& ledger() const { return ledger_; }

    [[nodiscard]] Owner owner() const { return owner_; }

    /// Nobody will use it any more.
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
    bool isEnding_ = false; ///< the relay has said its last
    bool isLeft_ = false;   ///< by the relay
    bool isBroken_ = false; ///< at the device
    bool isStalled_ = false;
};

} // namespace morvex
