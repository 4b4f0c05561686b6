#include "app/agents/AgentNews.h"

#include <utility>

namespace morvex {

void AgentNews::prubeh(std::string text, std::string requestID) {
    pridej(Prubeh{std::move(text), std::move(requestID)});
}

void AgentNews::ukol(UkolAgenta ukol) {
    pridej(std::move(ukol));
}

Task<void> AgentNews::odeslano() {
    if (!posila_) co_return;
    auto konec = std::make_shared<OneShot<bool>>();
    cekajici_.push_back(konec);
    co_await konec->wait();
}

void AgentNews::pridej(Novinka novinka) {
    if (scope_.token().stop_requested()) return;
    fronta_.push_back(std::move(novinka));
    if (fronta_.size() > mostWaiting) fronta_.pop_front();
    if (!std::exchange(posila_, true)) scope_.spawn(posli());
}

Task<void> AgentNews::posli() {
    while (!fronta_.empty()) {
        auto novinka = std::move(fronta_.front());
        fronta_.pop_front();
        Task<void> sending = std::visit([this](auto& held) { return posli(std::move(held)); }, novinka);
        co_await std::move(sending);
    }
    posila_ = false;
    for (auto& konec : std::exchange(cekajici_, {})) konec->answer(true);
}

Task<void> AgentNews::posli(Prubeh prubeh) {
    co_await hlaseni_.poslatPrubeh(std::move(prubeh.text), std::move(prubeh.requestID));
    co_await hlaseni_.poslatStav();
}

Task<void> AgentNews::posli(UkolAgenta ukol) {
    co_await hlaseni_.poslatUkol(std::move(ukol));
}

} // namespace morvex
