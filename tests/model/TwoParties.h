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

/// A phone, a relay and a computer, each made of its real parts, in one process with time and network by
/// hand. They are paired at first. The same seed and the same events give the same history.
class TwoParties {
  public:
    /// `folder` is empty and stands for as long as the parties.
    TwoParties(std::uint64_t seed, const std::filesystem::path& folder, RelayConduct conduct);

    void happen(const ModelEvent& event);

    /// Ends all faults and waits until both ends say the same. Gives what is wrong then, or nothing.
    std::string comeToRest();

    /// Messages with content that the busier end took since all faults ended until both were connected and
    /// said the same for good: status, notes, offers, answers, acknowledgements. What had been said before
    /// is not among them, nor are the hellos of sessions.
    [[nodiscard]] std::size_t messagesToRest() const { return messagesToRest_.value_or(0); }

    [[nodiscard]] std::size_t calls() const { return calls_.size(); }

    [[nodiscard]] std::size_t doneCalls() const { return doneCalls_; }

    [[nodiscard]] std::size_t answeredCalls() const { return answeredCalls_; }

    [[nodiscard]] std::size_t versions() const { return versionsSeen_; }

  private:
    enum class Tool { note, file, program, agent };

    struct Call {
        Tool tool;
        std::string name; ///< nobody else uses it
        Uuid workItem;    ///< of an agent
    };

    /// Every version of a note that counts most, of those that were kept anywhere.
    struct Latest {
        std::pair<std::uint64_t, std::int64_t> order;
        std::vector<std::string> texts;
    };

    void run();
    void flow();
    void trickle(unsigned seed);
    void pass(Clock::Duration time, bool isFlowing);
    /// False when the event is not of this sort.
    bool happenToWires(const ModelEvent& event);
    bool happenToMac(const ModelEvent& event);
    void happenToPhone(const ModelEvent& event);
    bool meddle(const ModelEvent& event);
    void skew(const ModelEvent& event);
    void crash(const ModelEvent& event);
    void fallAsleep(const ModelEvent& event);
    /// Whether one more record may be made, which is counted then.
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
    unsigned written_ = 0; ///< texts, each another one
    bool isDiskHeld_ = false;
    bool isResting_ = false;
};

} // namespace morvex
