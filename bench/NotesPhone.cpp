#include "bench/NotesPhone.h"

#include <utility>

namespace morvex {

NotesPhone::NotesPhone(const std::filesystem::path& folder, std::shared_ptr<SecureLink> link, Clock& clock,
                       Random& random)
    : link_(std::move(link)), records_(PhoneRecords::load(folder, clock, random)) {}

Task<void> NotesPhone::listen(std::stop_token stop) {
    while (auto event = co_await link_->udalosti().next(stop)) {
        noteTime(*event);
        co_await sync_.heard(std::visit([](auto& held) { return Inbox::Event(std::move(held)); }, *event));
        if (isInStep || !sync_.isSettled()) continue;
        inStep = std::chrono::steady_clock::now();
        isInStep = true;
    }
}

void NotesPhone::noteTime(const SecureLink::Udalost& event) {
    const auto now = std::chrono::steady_clock::now();
    if (std::holds_alternative<SecureLink::Pripraveno>(event)) {
        ready = now;
        isReady = true;
    }
    const auto* message = std::get_if<SecureLink::Zprava>(&event);
    if (!message || !message->payload.as<MacPayload::NoteUpdate>()) return;
    last = now;
    ++notes;
}

Task<Result<void>> NotesPhone::trySend(MacPayload payload, std::string requestID) {
    co_return co_await link_->poslat(std::move(payload), std::move(requestID));
}

Task<std::string> NotesPhone::sendMilestone() {
    auto id = "milestone:" + std::to_string(++milestones_);
    auto sent = co_await link_->poslat({MacPayload::ToolCall{"mac.status", "{}"}}, id);
    co_return sent ? id : "";
}

} // namespace morvex
