#pragma once

#include "app/approvals/Schvalovani.h"
#include "app/assembly/Features.h"
#include "app/companion/Bdelost.h"
#include "app/companion/Companion.h"
#include "app/companion/CompanionState.h"
#include "app/companion/PairingFlow.h"
#include "app/companion/ToolGate.h"
#include "app/features/FeatureContext.h"
#include "foundation/ThreadExecutor.h"
#include "platform/memory/ManualClock.h"
#include "platform/net/BeastWebSocketClient.h"
#include "platform/net/CurlHttpClient.h"
#include "shared-apple/PametoveUloziste.h"
#include "tests/support/CuttableSockets.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/HastyHttp.h"

#include MORVEX_BASICS

#include <future>
#include <memory>
#include <string>

namespace morvex {

/// A companion in the test's own process, with the real network and a time that the test moves: for behaviour
/// that cannot be triggered from outside.
class RealCompanion {
  public:
    /// `authorities`: certificates (PEM) that it trusts in addition to the system's.
    explicit RealCompanion(const std::string& relayAddress, const std::string& authorities = {});
    /// A companion with this identity that is already paired. Without a home folder it can store no records.
    RealCompanion(std::shared_ptr<const DeviceIdentity> identity, const PairedPeer& peer,
                  const std::string& home = "/nonexistent", const std::string& authorities = {});
    ~RealCompanion();
    RealCompanion(const RealCompanion&) = delete;
    RealCompanion& operator=(const RealCompanion&) = delete;

    /// Runs a function on the companion's thread.
    template <class Work> auto on(Work work) {
        std::packaged_task<decltype(work())()> task(std::move(work));
        auto done = task.get_future();
        main_.post([&task] { task(); });
        return done.get();
    }

    /// Blocks until the function, run on the companion's thread, returns true.
    template <class Condition> void until(Condition condition) {
        auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!on(condition)) {
            require(std::chrono::steady_clock::now() < deadline, "the companion did not get there");
            std::this_thread::yield();
        }
    }

    /// Starts a pairing; returns the text of the QR code.
    std::string qr();
    /// Confirms the number that the phone has shown.
    void agree();

    void allow(const std::string& path);

    /// Requests an approval; the returned future gets the answer.
    std::future<bool> ask(const std::string& title, const std::string& detail);

    /// Advances the time for waits. The wall clock stays equal to that of the other processes.
    void pass(std::chrono::seconds time);

    /// Blocks until the thread of the network, on which the link runs as well, has done all that was due
    /// before.
    void turnNetwork();

    /// Resets the connection to the relay.
    void cutConnection() { sockets_.cut(); }

    /// The client of its HTTP calls.
    HastyHttp& http() { return http_; }

    Companion& companion() { return *companion_; }

    const Clock& clock() { return clock_; }

    /// The stored record of the phone.
    std::optional<PairedPeer> storedPeer() { return store_.nactiProtejsek().value(); }

  private:
    void start(const std::string& relayAddress);
    CompanionServices services();

    ManualClock clock_;
    ThreadExecutor main_{"hlavni"};
    ThreadExecutor workers_{"pracovnik"};
    BeastWebSocketClient network_;
    SystemRandom random_;
    CuttableSockets sockets_{network_};
    CurlHttpClient curl_;
    HastyHttp http_{curl_};
    PametoveUloziste store_;
    FakeDesktop desktop_;
    std::unique_ptr<Companion> companion_;
    std::unique_ptr<Features> features_;
};

} // namespace morvex
