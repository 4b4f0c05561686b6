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

/// The computer of a model: the real companion with fakes of its system, the data that survive its restarts,
/// and its user.
class ModelMac {
  public:
    /// `folder` is the home folder; one below it is allowed.
    ModelMac(ManualExecutor& executor, ModelRelay& relay, std::shared_ptr<const DeviceIdentity> identity,
             const std::filesystem::path& folder, std::uint64_t seed);
    ~ModelMac();

    void start();
    void stop();
    /// Ends abruptly. Its disk is as it was: jobs that wait for the disk never happen.
    void crash();

    [[nodiscard]] Companion& companion() { return *companion_; }

    [[nodiscard]] Features& features() { return *features_; }

    [[nodiscard]] std::optional<PairedPeer> phone() { return companion_->stav().protejsek.value(); }

    /// All notes on its disk, including deleted ones.
    [[nodiscard]] std::vector<MorvexNote> savedNotes() const;

    void pairWith(const PairedPeer& phone) { store_.ulozProtejsek(phone).value(); }

    [[nodiscard]] bool isReady() const;

    /// Stops its time and its disk.
    void fallAsleep();
    /// Resumes them and its wires; its clock has advanced meanwhile.
    void wake();

    [[nodiscard]] bool isAsleep() const { return isAsleep_; }

    /// Advances the time, also while it sleeps.
    void advance(Clock::Duration time);
    /// Time until its next timer; nothing while it sleeps.
    [[nodiscard]] std::optional<Clock::Duration> untilNext() const;

    /// Runs the jobs that wait for the disk. Returns their number, zero while it sleeps. A written file is
    /// counted and removed, so that the same call could write it again.
    int runDisk();

    /// The running agent reports its session, or ends; does nothing if none is running.
    void agentSpeaks();
    void agentEnds();

    /// How many programs were started with this argument.
    [[nodiscard]] std::size_t starts(const std::string& argument) const;
    /// How often a file of this name was written into the allowed folder.
    [[nodiscard]] std::size_t writes(const std::string& name) const;

    [[nodiscard]] std::filesystem::path allowedFolder() const { return folder_ / "Projekty"; }

    ManualClock clock;
    ModelRelay::Access network;

  private:
    CompanionServices services();
    /// The index of the running agent among the started programs; their number if none is running.
    [[nodiscard]] std::size_t agent() const;
    [[nodiscard]] std::optional<ScriptedPrograms::Answer> answer(const OutsideProgram& program) const;

    [[nodiscard]] std::filesystem::path aside() const { return folder_.string() + "-aside"; }

    void countFiles();

    ManualExecutor& executor_;
    ManualExecutor disk_; ///< for vault, stores and file work
    ModelRelay& relay_;
    Dice random_;
    std::filesystem::path folder_;
    PametoveUloziste store_;
    FakeDesktop desktop_;
    std::unique_ptr<Companion> companion_;
    std::unique_ptr<Features> features_;
    std::size_t ended_ = 0;                     ///< the programs before this index are no running agents
    std::map<std::string, std::size_t> writes_; ///< by file name
    bool isAsleep_ = false;
    Clock::Duration slept_{0};
};

} // namespace morvex
