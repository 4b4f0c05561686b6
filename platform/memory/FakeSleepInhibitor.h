#pragma once

#include "platform/ports/SleepInhibitor.h"

#include <utility>
#include <vector>

namespace morvex {

/// Records the tokens that prevent sleep.
class FakeSleepInhibitor final : public SleepInhibitor {
  public:
    std::unique_ptr<Token> holdOffIdleSleep(const std::string& reason,
                                            std::function<void(const Error&)> onFailure) override {
        reasons.push_back(reason);
        refuse = std::move(onFailure);
        return std::make_unique<Counted>(live);
    }

    int live = 0;                             ///< tokens alive
    std::vector<std::string> reasons;         ///< of every token, in order
    std::function<void(const Error&)> refuse; ///< makes the last token fail

  private:
    class Counted final : public Token {
      public:
        explicit Counted(int& live) : live_(live) { ++live_; }

        ~Counted() override { --live_; }

        Counted(const Counted&) = delete;
        Counted& operator=(const Counted&) = delete;

      private:
        int& live_;
    };
};

} // namespace morvex
