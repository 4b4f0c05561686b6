#pragma once

#include "relay/RelayServer.h"

#include <memory>
#include <string>
#include <thread>
#include <utility>

namespace morvex {

/// A relay on a free port of this computer, on a thread of its own; stops with the object.
class RunningRelay {
  public:
    explicit RunningRelay(const RelayLimits& limits = quickLimits(), PairStore store = memoryStore(),
                          RelayOptions options = {})
        : server_(make(limits, std::move(store), std::move(options))), thread_([this] { server_->run(); }) {}

    ~RunningRelay() {
        server_->stop();
        thread_.join();
    }

    RunningRelay(const RunningRelay&) = delete;
    RunningRelay& operator=(const RunningRelay&) = delete;

    [[nodiscard]] std::uint16_t port() const { return server_->port(); }

    void stop() { server_->stop(); }

    static PairStore memoryStore() { return PairStore::open(":memory:").value(); }

    /// Those of the program, looked at often.
    static RelayLimits quickLimits() {
        RelayLimits limits;
        limits.tick = RelayLimits::Time{5};
        return limits;
    }

  private:
    static std::unique_ptr<RelayServer> make(const RelayLimits& limits, PairStore store,
                                             RelayOptions options) {
        options.port = "0";
        return RelayServer::create(options, limits, std::move(store), [](std::string_view) {}).value();
    }

    std::unique_ptr<RelayServer> server_;
    std::thread thread_;
};

} // namespace morvex
