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
#include "shared-apple/PametoveUloziste.h"
#include "tests/model/Dice.h"
#include "tests/model/ModelRelay.h"
#include "tests/support/FakeDesktop.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>

namespace morvex {

/// The computer of a model: the real companion among fakes of its system, what these keep over its restarts,
/// and the person who sits before it.
class ModelMac {
  public:
    /// `folder` is the home folder; one below it is allowed.
    ModelMac(ManualExecutor& executor, ModelRelay& relay, std::shared_ptr<const DeviceIdentity> identity,
             const std::filesystem::path& folder, std::uint64_t seed);
    ~ModelMac();

    void start();
    void stop();
    /// Ends without a word, and its disk is as it was: what waits for it never happens.
    void crash();

    [[nodiscard]] Companion& companion() { return *companion_; }

    [[nodiscard]] Features& features() { return *features_; }

    [[nodiscard]] std::optional<PairedPeer> phone() { return companion_->stav().protejsek.value(); }

    /// All notes on its disk, deleted ones too.
    [[nodiscard]] std::vector<MorvexNote> savedNotes() const;

    void pairWith(const PairedPeer& phone) { store_.ulozProtejsek(phone).value(); }

    [[nodiscard]] bool isReady() const;

    /// Its time and its disk stand still from now on.
    void fallAsleep();
    /// Its wires work again too, and its time has gone on.
    void wake();

    [[nodiscard]] bool isAsleep() const { return isAsleep_; }

    /// Time passes, also while it sleeps.
    void advance(Clock::Duration time);
    /// Until its next timer; nothing while it sleeps.
    [[nodiscard]] std::optional<Clock::Duration> untilNext() const;

    /// Does what waits for the disk. Gives the number of jobs, none while it sleeps. A written file is
    /// counted and taken away, so that the same call could write it again.
    int runDisk();

    /// The agent that works now tells of its session, or ends; nothing without one.
    void agentSpeaks();
    void agentEnds();

    /// How often a program was started with this argument.
    [[nodiscard]] std::size_t starts(const std::string& argument) const;
    /// How often a file of this name was written into the allowed folder.
    [[nodiscard]] std::size_t writes(const std::string& name) const;

    [[nodiscard]] std::filesystem::path allowedFolder() const { return folder_ / "Projekty"; }

    ManualClock clock;
    ModelRelay::Access network;

  private:
    CompanionServices services();
    /// The number of the agent's program among those that were started; one beyond them when none runs.
    [[nodiscard]] std::size_t agent() const;
    [[nodiscard]] std::optional<ScriptedPrograms::Answer> answer(const OutsideProgram& program) const;

    [[nodiscard]] std::filesystem::path aside() const { return folder_.string() + "-aside"; }

    void countFiles();

    ManualExecutor& executor_;
    ManualExecutor disk_; ///< vault, store and file work
    ModelRelay& relay_;
    Dice random_;
    std::filesystem::path folder_;
    PametoveUloziste store_;
    FakeDesktop desktop_;
    std::unique_ptr<Companion> companion_;
    std::unique_ptr<Features> features_;
    std::size_t ended_ = 0; ///< the first agents among the programs, which say nothing more
    std::map<std::string, std::size_t> writes_; ///< by name
    bool isAsleep_ = false;
    Clock::Duration slept_{0};
};

} // namespace morvex
