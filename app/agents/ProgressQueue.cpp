#include "app/agents/ProgressQueue.h"

#include "foundation/Text.h"

#include <utility>

namespace morvex {

namespace {

constexpr std::size_t mostWaiting = 1024UL * 1024;
constexpr std::size_t mostCharacters = 1000;

std::size_t sizeOf(const std::optional<std::string>& text) {
    return text ? text->size() : 0;
}

std::size_t sizeOf(const ProgressQueue::ProgressItem& progressItem) {
    return sizeof progressItem + sizeOf(progressItem.relace) + sizeOf(progressItem.prubeh);
}

} // namespace

void ProgressQueue::add(ProgressItem progressItem) {
    if (progressItem.prubeh) progressItem.prubeh = excerpt(*progressItem.prubeh, mostCharacters);
    std::lock_guard lock(zamek_);
    bool isAwaited = !queue_.empty();
    size_ += sizeOf(progressItem);
    queue_.push_back(std::move(progressItem));
    while (size_ > mostWaiting && queue_.size() > 1) dropOldest();
    if (!isAwaited) main_.post([self = shared_from_this()] { self->handOver(); });
}

void ProgressQueue::dropOldest() {
    size_ -= sizeOf(queue_.front());
    auto relace = std::move(queue_.front().relace);
    queue_.pop_front();
    // A session is kept when its entry is dropped, unless a newer one waits.
    if (queue_.front().relace || !relace) return;
    size_ += relace->size();
    queue_.front().relace = std::move(relace);
}

void ProgressQueue::handOver() {
    std::deque<ProgressItem> waiting;
    {
        std::lock_guard lock(zamek_);
        waiting.swap(queue_);
        size_ = 0;
    }
    for (auto& one : waiting) progressItem(std::move(one));
}

void ProgressQueue::progressItem(ProgressItem progressItem) const {
    if (progressItem.relace && posluchac_.onSession) posluchac_.onSession(*std::move(progressItem.relace));
    if (!progressItem.prubeh) return;
    if (auto bezici = bezici_.lock()) bezici->prubeh = progressItem.prubeh;
    if (posluchac_.priPrubehu) posluchac_.priPrubehu(*std::move(progressItem.prubeh));
}

} // namespace morvex
