#pragma once

#include "app/companion/Companion.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "shared-apple/PametoveUloziste.h"
#include "tests/model/Dice.h"
#include "tests/model/ModelRelay.h"
#include "tests/support/FakeDesktop.h"

#include <filesystem>
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

    [[nodiscard]] Companion& companion() { return *companion_; }

    [[nodiscard]] std::optional<PairedPeer> phone() { return companion_->stav().protejsek.value(); }

    void pairWith(const PairedPeer& phone) { store_.ulozProtejsek(phone).value(); }

    [[nodiscard]] bool isReady() const;

    void fallAsleep();
    void wake();

    [[nodiscard]] bool isAsleep() const { return isAsleep_; }

    /// The agent that works now tells of its session, or ends; nothing without one.
    void agentSpeaks();
    void agentEnds();

    /// How often a program was started with this argument.
    [[nodiscard]] std::size_t starts(const std::string& argument) const;

    [[nodiscard]] std::filesystem::path allowedFolder() const { return folder_ / "Projekty"; }

    ManualClock clock;
    ModelRelay::Access network;
    ManualExecutor disk; ///< vault, store and file work

  private:
    CompanionServices services();
    /// The number of the agent's program among those that were started; one beyond them when none runs.
    [[nodiscard]] std::size_t agent() const;
    [[nodiscard]] std::optional<ScriptedPrograms::Answer> answer(const OutsideProgram& program) const;

    ManualExecutor& executor_;
    Dice random_;
    std::filesystem::path folder_;
    PametoveUloziste store_;
    FakeDesktop desktop_;
    std::unique_ptr<Companion> companion_;
    std::size_t ended_ = 0; ///< the first agents among the programs, which say nothing more
    bool isAsleep_ = false;
};

} // namespace morvex
