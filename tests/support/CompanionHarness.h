#pragma once

#include "app/approvals/Schvalovani.h"
#include "app/assembly/Features.h"
#include "app/companion/Bdelost.h"
#include "app/companion/Companion.h"
#include "app/companion/CompanionState.h"
#include "app/companion/PairingFlow.h"
#include "app/companion/ToolGate.h"
#include "app/features/FeatureContext.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedHttp.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/memory/ScriptedSockets.h"
#include "tests/support/FailingStore.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/ScriptedPhone.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvex {

/// A companion among fakes, on one executor that the test drives.
class CompanionHarness : public testing::Test, protected FakeDesktop {
  protected:
    /// Outside programs fail, unless a test says otherwise.
    CompanionHarness() {
        folders.homeFolder = temporary.path().string();
        programs.answer = [](const OutsideProgram&) { return ScriptedPrograms::Answer{.status = 127}; };
    }

    struct Answer {
        bool ok = false;
        std::string json;
        std::string requestID;
    };

    ~CompanionHarness() override {
        if (companion) end();
    }

    /// A companion that knows no phone unless the store does, started.
    void start();
    /// A companion that was paired with `phone` before, started; the socket of its first connection.
    std::shared_ptr<ScriptedSocket> startPaired();
    /// The same with a session; what was sent for it is still to be taken.
    std::shared_ptr<ScriptedSocket> startWithSession();
    /// The same, and everything taken that was sent until then.
    std::shared_ptr<ScriptedSocket> startSecured();

    /// A session on a new connection, as after a loss; what it leads to is not run yet.
    std::shared_ptr<ScriptedSocket> connectAgain() { return connectAgain(phone); }

    std::shared_ptr<ScriptedSocket> connectAgain(ScriptedPhone& device);
    /// A login while the phone is away, and the session when it comes; what that leads to is not run yet.
    void logInBeforeThePhone();
    /// A companion with its features that is not started.
    void make();
    void end();

    CompanionServices services();

    /// Allows a new folder with this name below the temporary one.
    std::string allowFolder(const std::string& name);

    /// Calls a tool as the phone does; an empty answer when none came.
    Answer call(const std::string& tool, const std::string& argumentsJSON);

    std::vector<MacStatus> takeStatuses();

    /// What the task ends with, which waits for nothing but the companion itself.
    template <class T> T ended(Task<T> task) { return executor.run(std::move(task)).value(); }

    [[nodiscard]] std::string availability() const {
        return companion->stav().dostupnost.value().popis(DeviceRole::phone, clock.now()).czech();
    }

    [[nodiscard]] std::string trouble() const {
        return companion->stav().potiz.value().value_or(Sentence("none")).czech();
    }

    TemporaryFolder temporary;
    ManualExecutor executor;
    /// Where the vault and the identity store work; a test may set another one before the start.
    ManualExecutor* storage = &executor;
    /// Where the stores write; a test may set another one before the start.
    ManualExecutor* records = &executor;
    /// Where file work runs; a test may set another one before the start.
    ManualExecutor* workers = &executor;
    ManualClock clock;
    ScriptedRandom random;
    ScriptedSockets sockets;
    ScriptedHttp http;
    FailingStore store;
    Environment environment{{"PATH", "/usr/bin:/bin"}};
    ScriptedPhone phone{clock};
    std::shared_ptr<const DeviceIdentity> mac;
    std::unique_ptr<Companion> companion;
    std::unique_ptr<Features> features;
};

} // namespace morvex
