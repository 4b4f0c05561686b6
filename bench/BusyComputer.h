#pragma once

#include "app/approvals/Schvalovani.h"
#include "app/assembly/Features.h"
#include "app/companion/Bdelost.h"
#include "app/companion/Companion.h"
#include "app/companion/CompanionState.h"
#include "app/companion/PairingFlow.h"
#include "app/companion/ToolGate.h"
#include "app/features/FeatureContext.h"
#include "bench/PairedDevices.h"
#include "shared-apple/PametoveUloziste.h"
#include "tests/support/FakeDesktop.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

namespace morvex {

/// A companion with the real network and the real time whose file work can be delayed.
class BusyComputer {
  public:
    /// It may work on files in `home`. All arguments must outlive this object.
    BusyComputer(Device& device, const PairedPeer& phone, Clock& clock, Random& random,
                 const std::filesystem::path& home);
    ~BusyComputer();
    BusyComputer(const BusyComputer&) = delete;
    BusyComputer& operator=(const BusyComputer&) = delete;

    /// Delays file work by this time.
    void occupyFileWork(std::chrono::seconds time);

    /// How often it has connected to the relay.
    [[nodiscard]] int connections() const { return sockets_.connections; }

    /// The trouble shown in its window; empty if there is none.
    std::string trouble();

  private:
    static Task<void> start(BusyComputer* self, Clock& clock, Random& random);
    static Task<void> end(BusyComputer* self);
    static Task<std::string> tellTrouble(Companion* companion);

    class CountedSockets final : public WebSocketClient {
      public:
        explicit CountedSockets(WebSocketClient& sockets) : sockets_(sockets) {}

        Task<Result<std::shared_ptr<WebSocket>>> connect(WebSocketRequest request,
                                                         std::stop_token stop) override {
            ++connections;
            return sockets_.connect(std::move(request), std::move(stop));
        }

        std::atomic<int> connections = 0;

      private:
        WebSocketClient& sockets_;
    };

    Device& device_;
    ThreadExecutor files_{"files"};
    CountedSockets sockets_;
    CurlHttpClient http_;
    PametoveUloziste store_;
    FakeDesktop desktop_;
    std::unique_ptr<Companion> companion_;
    std::unique_ptr<Features> features_;
};

} // namespace morvex
