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
/// and the phone's real synchronisation (`RecordSync`), over a link that loses what is in transit whenever it
/// breaks. It tests how the two stores merge, save and recover, below the computer's `NotesSync` and
/// `PhoneInbox`: those speak over a `SecureLink` only, so what the computer sends, and when it acknowledges,
/// is reimplemented here in its simplest form. `TwoParties` plays with the real ones. The same seed gives the
/// same history. The two sides never lose data at once: before the second one does, the link was quiet.
class NotesHistory {
  public:
    /// `folder` must be empty and exist as long as the history.
    NotesHistory(std::uint64_t seed, std::filesystem::path folder);

    /// Edits, deletions, deliveries, broken links, restarts, temporary disk failures, lost note archives and
    /// new pairings.
    void live(int steps);

    /// Repairs everything and delivers until nothing is in progress, then restarts both sides and does the
    /// same again.
    void finish();

    /// The differences between the two sides, and the summaries that the computer lacks; empty if they agree.
    [[nodiscard]] std::string difference() const;

    /// An edit that the other side acknowledged but that was replaced by an older one, or by one of the phone
    /// with equal precedence; empty if there is none.
    [[nodiscard]] std::string lostEdit() const;

    [[nodiscard]] std::size_t acknowledgedOfPhone() const { return acknowledgedOfPhone_.size(); }

    [[nodiscard]] std::size_t acknowledgedOfMac() const { return acknowledgedOfMac_.size(); }

    /// How many times a side lost data.
    [[nodiscard]] std::size_t losses() const { return losses_; }

  private:
    struct Letter {
        std::string json; ///< of a payload
        std::string requestID;
        std::string subject; ///< of an acknowledgement: the version that was accepted
    };

    /// Sends the phone's messages.
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
    /// Records that the phone's disk may have refused a change that is in its memory.
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
    std::ostringstream problems_; ///< problems reported by the phone
    Terminal terminal_{{problems_}, {problems_}};
    Post post_{*this};
    std::optional<RecordSync> sync_;
    std::deque<Letter> toMac_;
    std::deque<Letter> toPhone_;
    bool isUp_ = false;
    std::set<Side> brokenDisks_;
    bool isUnsaved_ = false;      ///< the computer's latest changes may be only in its memory
    bool isPhoneUnsaved_ = false; ///< the same for the phone
    std::optional<Side> lost_;    ///< the side that lost data since the link was last quiet
    std::size_t losses_ = 0;
    std::map<Revision, MorvexNote> phoneMade_; ///< what the user wrote on the phone
    /// Texts written on the computer, and on the phone while its disk failed.
    std::map<Revision, std::set<std::string>> macBodies_;
    std::map<Revision, MorvexNote> macMade_;
    std::map<Revision, std::string> toldLast_; ///< the last version of each revision sent to the phone
    std::map<Revision, MorvexNote> acknowledgedOfPhone_;
    std::map<Revision, MorvexNote> acknowledgedOfMac_;
};

} // namespace morvex
