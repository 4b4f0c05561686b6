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

/// A companion with fakes around it, on one executor that the test drives.
class CompanionHarness : public testing::Test, protected FakeDesktop {
  protected:
    /// Outside programs fail unless a test sets another answer.
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

    /// Starts a companion, which is paired only if the store contains a phone.
    void start();
    /// Starts a companion that is already paired with `phone`; returns the socket of its first connection.
    std::shared_ptr<ScriptedSocket> startPaired();
    /// Like `startPaired`, with a session; the messages sent for it are not taken yet.
    std::shared_ptr<ScriptedSocket> startWithSession();
    /// Like `startWithSession`, with all messages sent so far taken.
    std::shared_ptr<ScriptedSocket> startSecured();

    /// Makes a session on a new connection, as after a connection loss; the jobs that follow from it are not
    /// run yet.
    std::shared_ptr<ScriptedSocket> connectAgain() { return connectAgain(phone); }

    std::shared_ptr<ScriptedSocket> connectAgain(ScriptedPhone& device);
    /// Logs in while the phone is offline; the session follows when the phone comes online. The jobs that
    /// follow from it are not run yet.
    void logInBeforeThePhone();
    /// Makes a companion with its features without starting it.
    void make();
    void end();

    CompanionServices services();

    /// Creates a folder of this name below the temporary one and allows it.
    std::string allowFolder(const std::string& name);

    /// Calls a tool as the phone does; returns an empty answer if none came.
    Answer call(const std::string& tool, const std::string& argumentsJSON);

    std::vector<MacStatus> takeStatuses();

    /// The custom apps without what came of asking them.
    [[nodiscard]] std::vector<AppSummary> customApps() const;

    /// The result of a task that waits only for the companion itself.
    template <class T> T ended(Task<T> task) { return executor.run(std::move(task)).value(); }

    [[nodiscard]] std::string availability() const {
        return companion->stav().dostupnost.value().popis(DeviceRole::phone, clock.now()).czech();
    }

    [[nodiscard]] std::string trouble() const {
        return companion->stav().potiz.value().value_or(Sentence("none")).czech();
    }

    TemporaryFolder temporary;
    ManualExecutor executor;
    /// The executor of the vault and the identity store; a test may replace it before the start.
    ManualExecutor* storage = &executor;
    /// The executor on which the stores write; a test may replace it before the start.
    ManualExecutor* records = &executor;
    /// The executor of file work; a test may replace it before the start.
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
