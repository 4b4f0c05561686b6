#pragma once

#include "app/personal/PoznamkyStore.h"
#include "phone/PhoneRecords.h"
#include "platform/memory/ManualClock.h"

#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <utility>

namespace morvex {

/// One random history of the notes of a computer and a phone, with their real stores and files, over a link
/// that loses what is on its way whenever it breaks. The same seed gives the same history.
class NotesHistory {
  public:
    /// `folder` is empty and stands for as long as the history.
    NotesHistory(std::uint64_t seed, std::filesystem::path folder);

    /// Edits, deletions, deliveries, losses, restarts, and a disk of the computer that fails at times.
    void live(int steps);

    /// Mends everything and lets the link deliver until nothing is under way.
    void comeToRest();

    /// What differs between the two sides; empty when they are alike.
    [[nodiscard]] std::string difference() const;

    /// An edit of the phone that was acknowledged and yet gave way to an older one; empty when there is none.
    [[nodiscard]] std::string lostEdit() const;

    [[nodiscard]] std::size_t acknowledgedEdits() const { return acknowledged_.size(); }

  private:
    class Dice final : public Random {
      public:
        explicit Dice(std::uint64_t seed) : engine_(seed) {}

        int below(int bound) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(bound)); }

        Uuid uuid() override;

      private:
        std::mt19937_64 engine_;
    };

    using Revision = std::pair<Uuid, std::uint64_t>; ///< of a note

    void step();
    void editOnMac();
    void editOnPhone();
    void connect();
    void breakLink();
    void deliverToMac();
    void deliverToPhone();
    void restart();
    void breakDisk();
    void mendDisk();
    void loadMac();
    void offer();
    std::string title();

    Dice dice_;
    std::filesystem::path folder_;
    ManualClock macClock_;
    ManualClock phoneClock_;
    std::optional<PoznamkyStore> mac_;
    std::optional<PhoneRecords> phone_;
    std::deque<std::string> toMac_; ///< encoded payloads on their way
    std::deque<std::string> toPhone_;
    bool isUp_ = false;
    bool isDiskBroken_ = false;
    bool isUnsaved_ = false;                   ///< only the computer's memory holds its latest changes
    std::map<Revision, MorvexNote> phoneMade_; ///< what the user wrote on the phone
    std::set<Revision> macMade_;
    std::set<Revision> acknowledged_; ///< of `phoneMade_`
};

} // namespace morvex
