#pragma once

#include "platform/memory/ManualExecutor.h"
#include "tests/model/ModelEvent.h"
#include "tests/model/ModelMac.h"
#include "tests/model/ModelPhone.h"
#include "tests/model/ModelRelay.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// A phone, a relay and a computer, made of their real parts, in one process with time and network under
/// control. They are paired at first. The same seed and the same events give the same history.
class TwoParties {
  public:
    /// `folder` must be empty and exist as long as the parties.
    TwoParties(std::uint64_t seed, const std::filesystem::path& folder, RelayConduct conduct);

    void happen(const ModelEvent& event);

    /// Ends all faults and waits until both ends agree. Returns a description of what is wrong then, empty if
    /// nothing.
    std::string comeToRest();

    /// Messages with content received by the busier end from the end of all faults until both were connected
    /// and agreed for good: status, notes, offers, answers, acknowledgements. Messages sent before and
    /// session hellos do not count.
    [[nodiscard]] std::size_t messagesToRest() const { return messagesToRest_.value_or(0); }

    [[nodiscard]] std::size_t calls() const { return calls_.size(); }

    [[nodiscard]] std::size_t doneCalls() const { return doneCalls_; }

    [[nodiscard]] std::size_t answeredCalls() const { return answeredCalls_; }

    [[nodiscard]] std::size_t versions() const { return versionsSeen_; }

  private:
    enum class Tool { note, file, program, agent };

    struct Call {
        Tool tool;
        std::string name; ///< unique
        Uuid workItem;    ///< of an agent
    };

    /// All versions with the highest precedence, among those kept anywhere.
    struct Latest {
        std::pair<std::uint64_t, std::int64_t> order;
        std::vector<std::string> texts;
    };

    void run();
    void flow();
    void trickle(unsigned seed);
    void pass(Clock::Duration time, bool isFlowing);
    /// Returns false if the event is not of this kind.
    bool happenToWires(const ModelEvent& event);
    bool happenToMac(const ModelEvent& event);
    void happenToPhone(const ModelEvent& event);
    bool meddle(const ModelEvent& event);
    void skew(const ModelEvent& event);
    void crash(const ModelEvent& event);
    void fallAsleep(const ModelEvent& event);
    /// Whether one more record may be made; if so, it is counted.
    bool mayCreate();
    void startShell();
    void editOnMac(const ModelEvent& event);
    void editOnPhone(const ModelEvent& event);
    void call(Tool tool);
    void pair();
    void agree();
    void giveUpPairing();
    void takeNote();
    void takeNote(const std::vector<MorvexNote>& notes);

    void mendAll();
    void workOff();
    void restFor(std::chrono::seconds time);
    void noteAgreement();
    bool pairAnew();
    [[nodiscard]] bool arePaired();
    [[nodiscard]] bool areReady();
    [[nodiscard]] std::string difference();
    [[nodiscard]] std::string unconfirmed();
    [[nodiscard]] std::string lostChange();
    [[nodiscard]] std::string wrongEffect();
    [[nodiscard]] std::string states();
    [[nodiscard]] std::size_t effects(const Call& call);
    [[nodiscard]] bool isAnswered(const Call& call, const std::string& answers);
    [[nodiscard]] std::size_t messages() const;

    RelayConduct conduct_;
    Dice ids_;
    ManualClock relayClock_;
    ManualExecutor executor_;
    ModelRelay relay_{relayClock_};
    ModelMac mac_;
    ModelPhone phone_;
    std::vector<Call> calls_;
    std::map<Uuid, Latest> latest_; ///< by note
    std::size_t versionsSeen_ = 0;
    std::size_t doneCalls_ = 0;
    std::size_t answeredCalls_ = 0;
    std::optional<std::size_t> messagesToRest_;
    int records_ = 0;
    unsigned written_ = 0; ///< number of texts so far; makes each of them unique
    bool isDiskHeld_ = false;
    bool isResting_ = false;
};

} // namespace morvex
