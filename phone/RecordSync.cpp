#include "phone/RecordSync.h"

#include "foundation/Text.h"
#include "shared-apple/MessageTooLong.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace morvex {

namespace {

std::string requestIDOf(const MacPayload& offer) {
    if (const auto* told = offer.as<MacPayload::NoteUpdate>()) return requestID(told->note);
    return "summary:" + offer.as<MacPayload::SummaryUpdate>()->summary.id.text();
}

constexpr std::size_t longestTitle = 60;

/// The message for an offer that would make a frame above the limit.
std::string tooLong(const MacPayload& offer) {
    if (const auto* told = offer.as<MacPayload::NoteUpdate>())
        return "Poznámka „" + excerpt(told->note.title, longestTitle) +
               "“ je na přenos příliš dlouhá. Zůstane jen tady.";
    const auto& title = offer.as<MacPayload::SummaryUpdate>()->summary.title;
    return "Souhrn „" + excerpt(title, longestTitle) + "“ je na přenos příliš dlouhý. Zůstane jen tady.";
}

std::size_t textOf(const MacPayload& offer) {
    if (const auto* told = offer.as<MacPayload::NoteUpdate>())
        return told->note.title.size() + told->note.body.size();
    const auto& summary = offer.as<MacPayload::SummaryUpdate>()->summary;
    return summary.title.size() + summary.body.size();
}

} // namespace

Task<void> RecordSync::heard(const Inbox::Event& event) {
    if (const auto* told = std::get_if<SecureLink::Stav>(&event))
        if (told->stav.as<MacAvailability::Pripraveny>()) co_return co_await begin();
    const auto* message = std::get_if<SecureLink::Zprava>(&event);
    if (!message) co_return;
    if (isMilestone(*message)) co_return co_await endRound();
    if (const auto* told = message->payload.as<MacPayload::NoteAck>()) confirm(told->id, told->revision);
    if (const auto* told = message->payload.as<MacPayload::SummaryAck>()) confirm(told->id, told->revision);
    if (const auto* told = message->payload.as<MacPayload::NoteUpdate>()) take(told->note);
    if (milestone_.empty()) co_await saveNews();
}

Task<void> RecordSync::offer(std::vector<Uuid> ids) {
    std::ranges::move(ids, std::back_inserter(queue_));
    if (milestone_.empty()) co_await nextRound();
}

bool RecordSync::isMilestone(const SecureLink::Zprava& message) const {
    return message.payload.as<MacPayload::ToolResult>() && !milestone_.empty() &&
           message.requestID == milestone_;
}

Task<Result<void>> RecordSync::finish() {
    if (isUnsaved_) CO_CHECK(records_.save());
    isUnsaved_ = false;
    for (const auto& [id, revision] : std::exchange(waiting_, {}))
        (void)co_await outbox_.trySend({MacPayload::NoteAck{id, revision}}, noteAckID(id));
    co_return Result<void>{};
}

Task<void> RecordSync::begin() {
    told_.clear();
    waiting_.clear();
    isCaughtUp_ = false;
    isSecondPass_ = false;
    queue_.assign(records_.unconfirmed().begin(), records_.unconfirmed().end());
    co_await nextRound();
}

Task<void> RecordSync::endRound() {
    if (!std::exchange(isCaughtUp_, true)) noteNews(records_.missedAmong(std::exchange(told_, {})));
    co_await saveNews();
    co_await nextRound();
}

std::vector<MacPayload> RecordSync::nextOffers() {
    std::vector<MacPayload> offers;
    std::size_t text = 0;
    const auto most = isCaughtUp_ ? offersOfRound : offersOfFirstRound;
    while (true) {
        for (; !queue_.empty() && offers.size() < most && text < textOfRound; queue_.pop_front()) {
            auto offer = records_.offer(queue_.front());
            if (!offer) continue;
            text += textOf(*offer);
            offers.push_back(*std::move(offer));
        }
        if (!offers.empty() || !isCaughtUp_ || std::exchange(isSecondPass_, true)) return offers;
        queue_.assign(records_.unconfirmed().begin(), records_.unconfirmed().end());
    }
}

Task<void> RecordSync::nextRound() {
    milestone_.clear();
    const auto offers = nextOffers();
    if (offers.empty() && isCaughtUp_) co_return;
    for (const auto& offer : offers) {
        auto requestID = requestIDOf(offer);
        auto sent = co_await outbox_.trySend(offer, requestID);
        if (sent || !sent.error().as<MessageTooLong>()) continue;
        if (tooLong_.insert(std::move(requestID)).second) terminal_.problem(tooLong(offer));
    }
    milestone_ = co_await outbox_.sendMilestone();
}

void RecordSync::take(MorvexNote note) {
    if (!isCaughtUp_) told_.insert(note.id);
    waiting_[note.id] = note.revision;
    noteNews(records_.merge(std::move(note)));
}

void RecordSync::confirm(const Uuid& id, std::uint64_t revision) {
    if (!isCaughtUp_) told_.insert(id);
    noteNews(records_.confirm(id, revision));
}

Task<void> RecordSync::saveNews() {
    if (auto saved = co_await finish(); !saved) terminal_.problem(saved.error().popis());
}

} // namespace morvex
