#include "phone/RecordSync.h"

#include "foundation/Try.h"

#include <string>
#include <utility>

namespace morvex {

Task<void> RecordSync::heard(const Inbox::Event& event) {
    if (const auto* told = std::get_if<SecureLink::Stav>(&event))
        if (told->stav.as<MacAvailability::Pripraveny>()) co_return co_await begin();
    const auto* message = std::get_if<SecureLink::Zprava>(&event);
    if (!message) co_return;
    if (const auto* told = message->payload.as<MacPayload::NoteAck>()) confirm(told->id, told->revision);
    if (const auto* told = message->payload.as<MacPayload::SummaryAck>()) confirm(told->id, told->revision);
    if (const auto* told = message->payload.as<MacPayload::NoteUpdate>()) co_await take(told->note);
    if (message->payload.as<MacPayload::ToolResult>()) co_await caughtUp();
}

Task<void> RecordSync::begin() {
    told_.clear();
    isCaughtUp_ = false;
    co_await offer();
}

Task<void> RecordSync::caughtUp() {
    if (std::exchange(isCaughtUp_, true)) co_return;
    keep(records_.missedAmong(std::exchange(told_, {})));
    co_await offer();
}

Task<void> RecordSync::offer() {
    for (auto& update : records_.unconfirmed()) {
        const auto* note = update.as<MacPayload::NoteUpdate>();
        const auto* summary = update.as<MacPayload::SummaryUpdate>();
        auto requestID = note ? "note:" + note->note.id.text() + ":" + std::to_string(note->note.revision)
                              : "summary:" + summary->summary.id.text();
        co_await session_.trySend(std::move(update), std::move(requestID));
    }
}

Task<Result<void>> RecordSync::release() {
    isHeld_ = false;
    if (isUnsaved_) CO_CHECK(records_.save());
    isUnsaved_ = false;
    for (const auto& taken : std::exchange(waiting_, {})) co_await acknowledge(taken);
    co_return Result<void>{};
}

Task<void> RecordSync::take(MorvexNote note) {
    const MacPayload::NoteAck taken{note.id, note.revision};
    if (!isCaughtUp_) told_.insert(note.id);
    const bool isKept = keep(records_.merge(std::move(note)));
    if (isHeld_)
        waiting_.push_back(taken);
    else if (isKept)
        co_await acknowledge(taken);
}

Task<void> RecordSync::acknowledge(MacPayload::NoteAck taken) {
    co_await session_.trySend({taken}, "note-ack:" + taken.id.text());
}

void RecordSync::confirm(const Uuid& id, std::uint64_t revision) {
    if (!isCaughtUp_) told_.insert(id);
    keep(records_.confirm(id, revision));
}

bool RecordSync::keep(bool isNews) {
    isUnsaved_ = isUnsaved_ || isNews;
    if (isHeld_ || !isUnsaved_) return true;
    auto saved = records_.save();
    isUnsaved_ = !saved;
    if (!saved) terminal_.problem(saved.error().popis());
    return saved.has_value();
}

} // namespace morvex
