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

std::size_t sizeOf(const ProgressQueue::Ohlas& ohlas) {
    return sizeof ohlas + sizeOf(ohlas.relace) + sizeOf(ohlas.prubeh);
}

} // namespace

void ProgressQueue::pridej(Ohlas ohlas) {
    if (ohlas.prubeh) ohlas.prubeh = excerpt(*ohlas.prubeh, mostCharacters);
    std::lock_guard lock(zamek_);
    bool isAwaited = !fronta_.empty();
    velikost_ += sizeOf(ohlas);
    fronta_.push_back(std::move(ohlas));
    while (velikost_ > mostWaiting && fronta_.size() > 1) zahodNejstarsi();
    if (!isAwaited) main_.post([self = shared_from_this()] { self->predej(); });
}

void ProgressQueue::zahodNejstarsi() {
    velikost_ -= sizeOf(fronta_.front());
    auto relace = std::move(fronta_.front().relace);
    fronta_.pop_front();
    // A session is kept when its entry is dropped, unless a newer one waits.
    if (fronta_.front().relace || !relace) return;
    velikost_ += relace->size();
    fronta_.front().relace = std::move(relace);
}

void ProgressQueue::predej() {
    std::deque<Ohlas> waiting;
    {
        std::lock_guard lock(zamek_);
        waiting.swap(fronta_);
        velikost_ = 0;
    }
    for (auto& one : waiting) ohlas(std::move(one));
}

void ProgressQueue::ohlas(Ohlas ohlas) const {
    if (ohlas.relace && posluchac_.priRelaci) posluchac_.priRelaci(*std::move(ohlas.relace));
    if (!ohlas.prubeh) return;
    if (auto bezici = bezici_.lock()) bezici->prubeh = ohlas.prubeh;
    if (posluchac_.priPrubehu) posluchac_.priPrubehu(*std::move(ohlas.prubeh));
}

} // namespace morvex
