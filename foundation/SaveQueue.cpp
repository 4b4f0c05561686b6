#include "foundation/SaveQueue.h"

#include "foundation/ProgramLog.h"
#include "shared/base/Require.h"

#include <utility>

namespace morvex {

SaveQueue::SaveQueue(Saving saving, Store store)
    : saving_(saving), store_(std::move(store)), scope_(saving.home) {}

SaveQueue::~SaveQueue() {
    forgetPause();
    require(waiting_.empty(), "a store was destroyed before it was saved");
}

SaveQueue::Ticket SaveQueue::request(std::size_t growth) {
    auto ticket = addTo(waiting_);
    growth_ += growth;
    consider();
    return ticket;
}

SaveQueue::Ticket SaveQueue::addTo(std::vector<Ticket>& tickets) {
    return tickets.emplace_back(std::make_shared<OneShot<Result<void>>>());
}

Task<bool> SaveQueue::onDisk(Standing standing) {
    if (standing == Standing::waiting) return onDisk(request(0));
    return onDisk(standing == Standing::underWay ? addTo(underWay_) : nullptr);
}

Task<bool> SaveQueue::onDisk(Ticket ticket) {
    co_return !ticket || (co_await ticket->wait()).has_value();
}

void SaveQueue::hurry() {
    isHurried_ = !waiting_.empty();
    consider();
}

Task<void> SaveQueue::settled() {
    hurry();
    if (!isUnderWay_) co_return;
    const auto last = addTo(waiting_.empty() ? underWay_ : waiting_);
    (void)co_await last->wait();
}

void SaveQueue::consider() {
    if (isUnderWay_ || waiting_.empty()) return;
    if (isDue())
        begin();
    else
        waitForPause();
}

bool SaveQueue::isDue() const {
    constexpr std::size_t worthWhile = 4; // save when one part in this many is new
    return isHurried_ || bytes_ <= smallFile || growth_ >= bytes_ / worthWhile ||
           saving_.clock.sinceBoot() >= lastEnd_ + pause;
}

void SaveQueue::begin() {
    forgetPause();
    isUnderWay_ = true;
    isHurried_ = false;
    growth_ = 0;
    underWay_ = std::exchange(waiting_, {});
    auto made = store_.begin();
    bytes_ = made.bytes;
    scope_.spawn(save(std::move(made.write)));
}

Task<void> SaveQueue::save(std::move_only_function<Result<void>()> write) {
    const auto result = co_await runOn(saving_.storage, std::move(write));
    if (!result) logCause("saving", result.error());
    isUnderWay_ = false;
    lastEnd_ = saving_.clock.sinceBoot();
    const auto told = std::exchange(underWay_, {});
    store_.end(result);
    for (const auto& ticket : told) ticket->answer(result);
    consider();
}

void SaveQueue::waitForPause() {
    if (timer_ != 0) return;
    auto* home = &saving_.home;
    timer_ = saving_.clock.at(lastEnd_ + pause, [home, self = std::weak_ptr(self_)] {
        home->post([self] {
            const auto queue = self.lock();
            if (!queue) return;
            (*queue)->timer_ = 0;
            (*queue)->consider();
        });
    });
}

void SaveQueue::forgetPause() {
    if (timer_ != 0) saving_.clock.forget(std::exchange(timer_, 0));
}

} // namespace morvex
