#pragma once

#include "phone/Inbox.h"
#include "phone/Keyboard.h"

#include <deque>
#include <string>
#include <utility>

namespace morvex {

/// Types the lines of the test when the phone asks for them.
class ScriptedKeyboard final : public Keyboard {
  public:
    explicit ScriptedKeyboard(Inbox& inbox) : inbox_(inbox) {}

    [[nodiscard]] bool isInteractive() const override { return interactive; }

    void requestLine() override {
        isWanted_ = true;
        give();
    }

    void forgetTypeAhead() override {
        if (interactive) forget();
    }

    void hideTyping() override { isHidden = true; }

    void showTyping() override { isHidden = false; }

    void type(std::string line) {
        lines_.push_back(std::move(line));
        give();
    }

    void end() {
        isOver_ = true;
        give();
    }

    /// Drops the lines that nobody has asked for yet.
    void forget() { lines_.clear(); }

    bool interactive = false;
    bool isHidden = false;

  private:
    void give() {
        if (!isWanted_ || (lines_.empty() && !isOver_)) return;
        isWanted_ = false;
        if (lines_.empty()) return inbox_.push(Inbox::EndOfInput{});
        inbox_.push(Inbox::Line{std::move(lines_.front())});
        lines_.pop_front();
    }

    Inbox& inbox_;
    std::deque<std::string> lines_;
    bool isWanted_ = false;
    bool isOver_ = false;
};

} // namespace morvex
