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

/// Keeps the phone's records in step with the Mac while a session runs, in rounds. A round is a few offers
/// of what the Mac has not confirmed, maybe none, and a milestone behind them. Until the milestone is
/// reached, what comes is kept in memory; then it is saved at once and acknowledged, and the next round
/// begins. When nothing is left to offer, what comes is saved one by one.
///
/// The first round of a session ends when the Mac has told of all its notes: what it turned out to lack is
/// offered too then. What it does not take is offered a second time, and again in the next session. What no
/// frame can take is told, and stays here.
///
///     session: offers, milestone →            round: offers, milestone →
///              ← notes, acks, result                 ← acks, result            ... until all is offered
///              saved once, note acks →               saved once
///
/// Owned by the attendant; lives on the phone's executor.
class RecordSync {
  public:
    /// A Mac opens a few messages ahead while it is busy with a long catch-up; what waits behind them may
    /// expire before it is opened. These and the first calls of a command are less than that.
    static constexpr std::size_t offersOfFirstRound = 8;
    /// Later it is not, and saves at once what comes together: its file is written whole for each round.
    static constexpr std::size_t offersOfRound = 512;
    /// Bytes of texts after which a round takes no further offer.
    static constexpr std::size_t textOfRound = 1024 * 1024;

    RecordSync(PhoneRecords& records, Outbox& outbox, Terminal& terminal)
        : records_(records), outbox_(outbox), terminal_(terminal) {}

    Task<void> heard(const Inbox::Event& event);

    /// Offers these, as soon as the round that runs is over.
    Task<void> offer(std::vector<Uuid> ids);

    /// Nothing is under way and nothing left to offer in this session.
    [[nodiscard]] bool isSettled() const { return isCaughtUp_ && milestone_.empty(); }

    /// Whether this is the end of a round, which nobody else waits for.
    [[nodiscard]] bool isMilestone(const SecureLink::Zprava& message) const;

    /// Saves what is still in memory only, and acknowledges it. Before the session ends.
    Task<Result<void>> finish();

  private:
    Task<void> begin();
    Task<void> endRound();
    Task<void> nextRound();
    [[nodiscard]] std::vector<MacPayload> nextOffers();
    void take(MorvexNote note);
    void confirm(const Uuid& id, std::uint64_t revision);
    /// `finish`, with its failure told.
    Task<void> saveNews();

    void noteNews(bool isNews) { isUnsaved_ = isUnsaved_ || isNews; }

    PhoneRecords& records_;
    Outbox& outbox_;
    Terminal& terminal_;
    std::deque<Uuid> queue_;                ///< still to be offered in this session
    std::string milestone_;                 ///< of the round that runs; empty between rounds
    std::map<Uuid, std::uint64_t> waiting_; ///< revisions to acknowledge as soon as they are saved
    std::set<Uuid> told_;                   ///< what the Mac told of or confirmed before its first milestone
    std::set<std::string> tooLong_;         ///< versions that no frame can take, which was told
    bool isCaughtUp_ = false;
    bool isSecondPass_ = false;
    bool isUnsaved_ = false;
};

} // namespace morvex
