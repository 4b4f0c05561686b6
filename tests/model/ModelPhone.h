#pragma once

#include "phone/Phone.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryVault.h"
#include "shared-apple/PametoveUloziste.h"
#include "tests/model/Dice.h"
#include "tests/model/ModelRelay.h"

#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace morvex {

/// The phone of a model: the real program, started and ended like by a user, and the data that survive in
/// between.
class ModelPhone {
  public:
    ModelPhone(ManualExecutor& executor, ModelRelay& relay, std::shared_ptr<const DeviceIdentity> identity,
               std::filesystem::path folder, std::uint64_t seed);
    ~ModelPhone();

    /// Ends the running program and starts one with these arguments.
    void start(const std::vector<const char*>& arguments);
    void stop();
    /// Ends abruptly; the disk is as it was.
    void crash();

    [[nodiscard]] bool isRunning() const;

    /// Whether it waits for lines in a session, current or past.
    [[nodiscard]] bool isShell() const { return isRunning() && isShell_; }

    /// Types a line as soon as the program asks for it.
    void type(std::string line);
    /// Drops the lines that the program has not asked for yet.
    void forgetLines();

    [[nodiscard]] std::optional<PairedPeer> mac() { return store_.nactiProtejsek().value(); }

    void pairWith(const PairedPeer& mac) { store_.ulozProtejsek(mac).value(); }

    [[nodiscard]] const PhoneRecords& records() const;
    [[nodiscard]] const PhoneTasks& tasks() const;

    /// All answers to calls so far, one line each.
    [[nodiscard]] std::string answers() const;
    /// The program's other output.
    [[nodiscard]] std::string notes() const;

    ManualClock clock;
    ModelRelay::Access network;

  private:
    struct Program;

    static Task<void> drive(Program* program);

    ManualExecutor& executor_;
    Dice random_;
    PametoveUloziste store_;
    MemoryVault vault_;
    std::filesystem::path folder_;
    std::ostringstream answers_;
    std::ostringstream notes_;
    std::unique_ptr<Program> program_;
    bool isShell_ = false;
};

} // namespace morvex
