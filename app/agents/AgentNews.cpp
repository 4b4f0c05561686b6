#include "app/agents/AgentNews.h"

#include <utility>

namespace morvex {

void AgentNews::prubeh(std::string text, std::string requestID) {
    add(Prubeh{std::move(text), std::move(requestID)});
}

void AgentNews::ukol(UkolAgenta ukol) {
    add(std::move(ukol));
}

Task<void> AgentNews::allSent() {
    if (!isSending_) co_return;
    auto ending = std::make_shared<OneShot<bool>>();
    cekajici_.push_back(ending);
    co_await ending->wait();
}

void AgentNews::add(NewsItem newsItem) {
    if (scope_.token().stop_requested()) return;
    queue_.push_back(std::move(newsItem));
    if (queue_.size() > mostWaiting) queue_.pop_front();
    if (!std::exchange(isSending_, true)) scope_.spawn(sendQueued());
}

Task<void> AgentNews::sendQueued() {
    while (!queue_.empty()) {
        auto newsItem = std::move(queue_.front());
        queue_.pop_front();
        Task<void> sending = std::visit([this](auto& held) { return sendQueued(std::move(held)); }, newsItem);
        co_await std::move(sending);
    }
    isSending_ = false;
    for (auto& ending : std::exchange(cekajici_, {})) ending->answer(true);
}

Task<void> AgentNews::sendQueued(Prubeh prubeh) {
    co_await reports_.sendProgress(std::move(prubeh.text), std::move(prubeh.requestID));
    co_await reports_.poslatStav();
}

Task<void> AgentNews::sendQueued(UkolAgenta ukol) {
    co_await reports_.poslatUkol(std::move(ukol));
}

} // namespace morvex
