#pragma once

#include "app/agents/AgentReports.h"
#include "foundation/OneShot.h"
#include "shared/wire/Json.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// What the phone would be told, a word each. While it is held, a send does not end.
class HeldReports final : public AgentReports {
  public:
    Task<void> poslatStav() override { return take("status"); }

    Task<void> poslatUkol(UkolAgenta ukol) override {
        return take("task " + asWorkItem(ukol).status.rawValue + " " + std::to_string(ukol.revize));
    }

    Task<void> sendProgress(std::string text, std::string requestID) override {
        return take("progress " + requestID + ": " + text);
    }

    void release() {
        isHeld = false;
        for (auto& gate : std::exchange(gates_, {})) gate->answer(true);
    }

    bool isHeld = false;
    std::vector<std::string> sent;
    std::function<void(const std::string& word)> whenSent = [](const auto&) {};

  private:
    Task<void> take(std::string word) {
        whenSent(word);
        sent.push_back(std::move(word));
        if (!isHeld) co_return;
        auto gate = std::make_shared<OneShot<bool>>();
        gates_.push_back(gate);
        co_await gate->wait();
    }

    std::vector<std::shared_ptr<OneShot<bool>>> gates_;
};

} // namespace morvex
