#pragma once

#include "app/personal/PoznamkyStore.h"
#include "phone/PhoneRecords.h"
#include "platform/memory/ManualClock.h"
#include "tests/model/Dice.h"

#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace morvex {

/// One random history of the notes of a computer and a phone, with their real stores and files, over a link
/// that loses what is on its way whenever it breaks. The same seed gives the same history. Both sides
/// never forget at once: before the second one does, the link has been quiet.
class NotesHistory {
  public:
    /// `folder` is empty and stands for as long as the history.
    NotesHistory(std::uint64_t seed, std::filesystem::path folder);

    /// Edits, deletions, deliveries, broken links, restarts, a disk of the computer that fails at times, lost
    /// archives and new pairings.
    void live(int steps);

    /// Mends everything, lets the link deliver until nothing is under way, and the same again after a restart
    /// of both.
    void finish();

    /// What differs between the two sides; empty when they are alike.
    [[nodiscard]] std::string difference() const;

    /// An edit that the other side acknowledged and that yet gave way to an older one, or to one of the phone
    /// that counts the same; empty when there is none.
    [[nodiscard]] std::string lostEdit() const;

    [[nodiscard]] std::size_t acknowledgedOfPhone() const { return acknowledgedOfPhone_.size(); }

    [[nodiscard]] std::size_t acknowledgedOfMac() const { return acknowledgedOfMac_.size(); }

    /// How often a side forgot something.
    [[nodiscard]] std::size_t losses() const { return losses_; }

  private:
    enum class Side { mac, phone };

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
    void loseArchive();
    void pairAnew();
    void comeToRest();
    void beginLoss(Side side);
    void loadMac();
    void removeMacArchive();
    void offer();
    [[nodiscard]] std::string fateOf(const Revision& made, const MorvexNote& edit) const;
    std::string title();

    Dice dice_;
    std::filesystem::path folder_;
    ManualClock macClock_;
    ManualClock phoneClock_;
    std::optional<PoznamkyStore> mac_;
    std::optional<PhoneRecords> phone_;
    std::deque<std::string> toMac_; ///< encoded payloads on their way
    std::deque<std::string> toPhone_;
    std::set<Uuid> told_; ///< by the computer, before its first answer in this session
    bool isUp_ = false;
    bool isCaughtUp_ = false;
    bool isDiskBroken_ = false;
    bool isUnsaved_ = false;   ///< only the computer's memory may hold its latest changes
    std::optional<Side> lost_; ///< forgot something since the link was last quiet
    std::size_t losses_ = 0;
    std::map<Revision, MorvexNote> phoneMade_;            ///< what the user wrote on the phone
    std::map<Revision, std::set<std::string>> macBodies_; ///< of what was written on the computer
    std::map<Revision, MorvexNote> macMade_;
    std::map<Revision, std::string> toldLast_; ///< what the phone was told last of a revision
    std::map<Revision, MorvexNote> acknowledgedOfPhone_;
    std::map<Revision, MorvexNote> acknowledgedOfMac_;
};

} // namespace morvex
