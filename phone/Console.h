#pragma once

#include "phone/Inbox.h"
#include "phone/Keyboard.h"
#include "platform/posix/TerminalInput.h"

#include <atomic>
#include <memory>
#include <stop_token>
#include <string>
#include <utility>

namespace morvex {

/// The standard input, Ctrl-C and the end of the program, on the main thread: `run()` blocks there until
/// `finish()`. Everything else may be called from any thread. The second signal that asks for the end ends
/// the process at once.
class Console final : public Keyboard {
  public:
    Console(Inbox& inbox, std::stop_source interruption, std::unique_ptr<TerminalInput> input)
        : inbox_(inbox), interruption_(std::move(interruption)), input_(std::move(input)) {}

    [[nodiscard]] bool isInteractive() const override { return input_->isInteractive(); }

    void requestLine() override;

    void forgetTypeAhead() override { input_->forgetTypeAhead(); }

    void hideTyping() override { input_->hideTyping(); }

    void showTyping() override { input_->showTyping(); }

    void run();
    void finish();

  private:
    void interrupt();
    void take(const std::string& typed);
    void giveLine();

    Inbox& inbox_;
    std::stop_source interruption_;
    std::unique_ptr<TerminalInput> input_;
    std::string typed_;
    std::atomic<bool> isWanted_ = false;
    std::atomic<bool> isFinished_ = false;
    bool isAtEnd_ = false;
};

} // namespace morvex
