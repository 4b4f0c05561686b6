#pragma once

#include "foundation/ThreadExecutor.h"
#include "platform/net/BeastWebSocketClient.h"
#include "platform/net/CurlHttpClient.h"
#include "relay/RelayServer.h"
#include "shared-apple/RelayParovani.h"
#include "shared-apple/SecureLink.h"
#include "tests/support/Await.h"

#include <memory>
#include <string>
#include <thread>
#include <utility>

// A relay and the two devices of a pair, each with its own threads and sockets.

namespace morvex {

/// The relay with its thread.
class Relay {
  public:
    Relay() : server_(make()), thread_([this] { server_->run(); }) {}

    ~Relay() {
        server_->stop();
        thread_.join();
    }

    Relay(const Relay&) = delete;
    Relay& operator=(const Relay&) = delete;

    [[nodiscard]] std::string address() const { return server_->address(); }

  private:
    static std::unique_ptr<RelayServer> make() {
        RelayOptions options;
        options.port = "0";
        return RelayServer::create(options, {}, PairStore::open(":memory:").value(), [](std::string_view) {})
            .value();
    }

    std::unique_ptr<RelayServer> server_;
    std::thread thread_;
};

/// One end of the pair, with its own threads and socket.
struct Device {
    ThreadExecutor main{"main"};
    ThreadExecutor records{"records"};
    ThreadExecutor link{"link"};
    BeastWebSocketClient sockets;
    std::shared_ptr<const DeviceIdentity> identita =
        std::make_shared<const DeviceIdentity>(DeviceIdentity::generate());

    std::shared_ptr<SecureLink> linkTo(const Device& other, PairID pair, const std::string& relay,
                                       DeviceRole role, Clock& clock, Random& random) {
        const auto otherRole = role == DeviceRole::mac ? DeviceRole::phone : DeviceRole::mac;
        auto peer = other.asPeer(std::move(pair), relay, otherRole, clock);
        return SecureLink::create(identita, std::move(peer), role, {{link, clock, sockets}, random}).value();
    }

    /// The record that the other end stores about this one.
    [[nodiscard]] PairedPeer asPeer(PairID pair, const std::string& relay, DeviceRole role,
                                    const Clock& clock) const {
        return {std::move(pair),          relay, identita->deviceID(), identita->signingKey(),
                identita->agreementKey(), role,  clock.now()};
    }
};

inline PairID pairOf(const Device& mac, const Device& phone, const std::string& relay, Executor& executor,
                     const Clock& clock) {
    CurlHttpClient http;
    RelayParovani calls(http, clock);
    auto address = RelayAddress::parse(relay).value();
    auto made = await(executor, calls.zalozit(address, mac.identita, DeviceRole::mac)).value();
    return await(executor, calls.pripojit(address, made.pairingToken, phone.identita, DeviceRole::phone))
        .value();
}

} // namespace morvex
