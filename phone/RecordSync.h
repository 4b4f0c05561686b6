#pragma once

#include "phone/Inbox.h"
#include "phone/Outbox.h"
#include "phone/PhoneRecords.h"
#include "phone/Terminal.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace morvex {

/// Keeps the phone's records in sync with the Mac during a session, in rounds. A round sends a few offers of
/// unconfirmed records, possibly none, and a milestone after them. Until the milestone is reached, arriving
/// changes are kept in memory; then they are saved at once and acknowledged, and the next round begins. When
/// nothing is left to offer, arriving changes are saved one by one.
///
/// The first round of a session ends when the Mac has reported all its notes: what the Mac turned out to lack
/// is then offered, too. Offers that the Mac does not take are repeated once, and again in the next session.
/// A record that is too long for a frame is reported to the user and stays here.
///
///     session: offers, milestone →            round: offers, milestone →
///              ← notes, acks, result                 ← acks, result            ... until all is offered
///              saved once, note acks →               saved once
///
/// Owned by the attendant; use on the phone's executor.
class RecordSync {
  public:
    /// While busy with a long catch-up, a Mac opens only a few messages ahead, and messages waiting behind
    /// them may expire. So these offers and the first calls of a command must be fewer than that.
    static constexpr std::size_t offersOfFirstRound = 8;
    /// Later the Mac is not busy, and it saves together what arrives together, since it writes its whole file
    /// for each round.
    static constexpr std::size_t offersOfRound = 512;
    /// Bytes of texts after which a round takes no further offer.
    static constexpr std::size_t textOfRound = 1024 * 1024;

    RecordSync(PhoneRecords& records, Outbox& outbox, Terminal& terminal)
        : records_(records), outbox_(outbox), terminal_(terminal) {}

    Task<void> heard(const Inbox::Event& event);

    /// Offers these records as soon as the running round is over.
    Task<void> offer(std::vector<Uuid> ids);

    /// Nothing is in progress, and nothing is left to offer in this session.
    [[nodiscard]] bool isSettled() const { return isCaughtUp_ && milestone_.empty(); }

    /// Whether the message is the end of a round, which nothing else waits for.
    [[nodiscard]] bool isMilestone(const SecureLink::Zprava& message) const;

    /// Saves what is only in memory, and acknowledges it. Call before the session ends.
    Task<Result<void>> finish();

  private:
    Task<void> begin();
    Task<void> endRound();
    Task<void> nextRound();
    [[nodiscard]] std::vector<MacPayload> nextOffers();
    void take(MorvexNote note);
    void confirm(const Uuid& id, std::uint64_t revision);
    /// Calls `finish` and reports its failure.
    Task<void> saveNews();

    void noteNews(bool isNews) { isUnsaved_ = isUnsaved_ || isNews; }

    PhoneRecords& records_;
    Outbox& outbox_;
    Terminal& terminal_;
    std::deque<Uuid> queue_;                ///< still to be offered in this session
    std::string milestone_;                 ///< of the running round; empty between rounds
    std::map<Uuid, std::uint64_t> waiting_; ///< revisions to acknowledge as soon as they are saved
    std::set<Uuid> told_;                   ///< reported or confirmed by the Mac before its first milestone
    std::set<std::string> tooLong_;         ///< versions too long for a frame, already reported to the user
    bool isCaughtUp_ = false;
    bool isSecondPass_ = false;
    bool isUnsaved_ = false;
};

} // namespace morvex
