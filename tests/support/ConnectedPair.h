#pragma once

#include "relay/RelayServer.h"
#include "tests/support/RealCompanion.h"
#include "tests/support/RealPhone.h"
#include "tests/support/TemporaryFolder.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace morvex {

/// A relay, a companion and a phone that were paired before, in this process: real components over real
/// sockets, with a time that the owner moves. For runs of many messages.
class ConnectedPair {
  public:
    ConnectedPair();
    ~ConnectedPair();
    ConnectedPair(const ConnectedPair&) = delete;
    ConnectedPair& operator=(const ConnectedPair&) = delete;

    /// Advances the time until the phone is served, and returns by how much; nothing if it never is.
    std::optional<std::chrono::seconds> connect();

    /// Advances the time of both ends.
    void pass(std::chrono::seconds time);

    RealPhone& phone() { return *phone_; }

    /// Cuts the connection of one end as a failing network does. Call `connect` afterwards.
    void cutPhone() { phone_->cut(); }

    void cutMac();

    /// Ends the relay and starts another one at the same address. Call `connect` afterwards.
    void restartRelay();

    /// The home folder of the companion.
    [[nodiscard]] const std::filesystem::path& home() const { return home_.path(); }

    void allow(const std::filesystem::path& folder) { mac_->allow(folder); }

  private:
    void startRelay(const std::string& port);

    TemporaryFolder home_;
    std::shared_ptr<const DeviceIdentity> macIdentity_;
    std::shared_ptr<const DeviceIdentity> phoneIdentity_;
    std::unique_ptr<RelayServer> relay_;
    std::thread relayThread_;
    std::optional<RealCompanion> mac_;
    std::optional<RealPhone> phone_;
};

} // namespace morvex
