#pragma once

#include "foundation/Signal.h"
#include "phone/RecordSync.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "tests/model/Dice.h"
#include "tests/support/AwaitedStores.h"

#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <utility>

namespace morvex {

/// One random history of the notes and summaries of a computer and a phone, with their real stores and files
/// and the phone's real way of keeping them in step (`RecordSync`), over a link that loses what is on its way
/// whenever it breaks. What the computer sends, and when it acknowledges, is written down here once more. The
/// same seed gives the same history. Both sides never forget at once: before the second one does, the link
/// has been quiet.
class NotesHistory {
  public:
    /// `folder` is empty and stands for as long as the history.
    NotesHistory(std::uint64_t seed, std::filesystem::path folder);

    /// Edits, deletions, deliveries, broken links, restarts, disks that fail at times, lost archives of notes
    /// and new pairings.
    void live(int steps);

    /// Mends everything, lets the link deliver until nothing is under way, and the same again after a restart
    /// of both.
    void finish();

    /// What differs between the two sides, and the summaries that the computer lacks; empty when they are
    /// alike.
    [[nodiscard]] std::string difference() const;

    /// An edit that the other side acknowledged and that yet gave way to an older one, or to one of the phone
    /// that counts the same; empty when there is none.
    [[nodiscard]] std::string lostEdit() const;

    [[nodiscard]] std::size_t acknowledgedOfPhone() const { return acknowledgedOfPhone_.size(); }

    [[nodiscard]] std::size_t acknowledgedOfMac() const { return acknowledgedOfMac_.size(); }

    /// How often a side forgot something.
    [[nodiscard]] std::size_t losses() const { return losses_; }

  private:
    struct Letter {
        std::string json; ///< of a payload
        std::string requestID;
        std::string subject; ///< of an acknowledgement: what was taken
    };

    /// What the phone sends.
    class Post final : public Outbox {
      public:
        explicit Post(NotesHistory& history) : history_(history) {}

        Task<Result<void>> trySend(MacPayload payload, std::string requestID) override;
        Task<std::string> sendMilestone() override;

      private:
        NotesHistory& history_;
        int milestones_ = 0;
    };

    enum class Side { mac, phone };

    using Revision = std::pair<Uuid, std::uint64_t>; ///< of a note

    void step();
    void editOnMac();
    void editOnPhone();
    void connect();
    void breakLink();
    void deliverToMac();
    void deliverToPhone();
    void tellPhone(MacPayload payload, std::string requestID = {}, std::string subject = {});
    void phoneHears(Inbox::Event event);
    void restart();
    void breakDisk(Side side);
    void mendDisks();
    void loseArchive();
    void pairAnew();
    void comeToRest();
    void beginLoss(Side side);
    void loadMac();
    void loadPhone();
    void removeMacArchive(const char* name);
    [[nodiscard]] std::string fateOf(const Revision& made, const MorvexNote& edit) const;
    /// The phone's disk may have refused a change, which is in its memory.
    void noteUnsaved();
    std::string title();

    Side anySide() { return dice_.below(2) ? Side::mac : Side::phone; }

    Dice dice_;
    std::filesystem::path folder_;
    ManualClock macClock_;
    ManualClock phoneClock_;
    std::optional<AwaitedNotes> mac_;
    Connection noteChanged_;
    std::optional<AwaitedSummaries> summaries_;
    std::optional<PhoneRecords> phone_;
    ManualExecutor executor_;
    std::ostringstream problems_; ///< that the phone told
    Terminal terminal_{{problems_}, {problems_}};
    Post post_{*this};
    std::optional<RecordSync> sync_;
    std::deque<Letter> toMac_;
    std::deque<Letter> toPhone_;
    bool isUp_ = false;
    std::set<Side> brokenDisks_;
    bool isUnsaved_ = false;      ///< only the computer's memory may hold its latest changes
    bool isPhoneUnsaved_ = false; ///< and the phone's
    std::optional<Side> lost_;    ///< forgot something since the link was last quiet
    std::size_t losses_ = 0;
    std::map<Revision, MorvexNote> phoneMade_; ///< what the user wrote on the phone
    /// Of what was written on the computer, and on the phone while its disk failed.
    std::map<Revision, std::set<std::string>> macBodies_;
    std::map<Revision, MorvexNote> macMade_;
    std::map<Revision, std::string> toldLast_; ///< what the phone was told last of a revision
    std::map<Revision, MorvexNote> acknowledgedOfPhone_;
    std::map<Revision, MorvexNote> acknowledgedOfMac_;
};

} // namespace morvex
