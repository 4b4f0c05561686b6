#pragma once

#include "foundation/FileDescriptor.h"
#include "phone/Inbox.h"
#include "phone/Keyboard.h"

#include <atomic>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <termios.h>

namespace morvex {

/// The standard input, Ctrl-C and the end of the program, on the main thread: `run()` blocks there until
/// `finish()`. Everything else may be called from any thread. One a process, for it takes SIGINT, SIGTERM and
/// SIGHUP; a second one of them ends the process at once.
class Console final : public Keyboard {
  public:
    /// `input` stays the caller's.
    static Result<std::unique_ptr<Console>> create(Inbox& inbox, std::stop_source interruption, int input);
    ~Console() override;

    [[nodiscard]] bool isInteractive() const override;
    void requestLine() override;
    void forgetTypeAhead() override;
    void hideTyping() override;
    void showTyping() override;

    void run();
    void finish();

  private:
    struct Pipe {
        FileDescriptor reading;
        FileDescriptor writing;
    };

    Console(Inbox& inbox, std::stop_source interruption, int input, Pipe pipe);

    void takeSignals();
    void readSome();
    void giveLine();

    Inbox& inbox_;
    std::stop_source interruption_;
    int input_;
    Pipe pipe_;                          ///< ends the waits of `run()`
    const std::optional<termios> usual_; ///< of the terminal, if the input is one
    std::string typed_;
    std::atomic<bool> isWanted_ = false;
    std::atomic<bool> isFinished_ = false;
    bool isAtEnd_ = false;
};

} // namespace morvex
