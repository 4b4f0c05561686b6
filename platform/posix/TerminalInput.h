#pragma once

#include "platform/posix/TypingEcho.h"
#include "platform/posix/base/FileDescriptor.h"
#include "shared/base/Error.h"

#include <memory>
#include <optional>
#include <string>

namespace morvex {

/// The input of a program on a terminal, or on a pipe in its place, and the signals that ask the program to
/// end. One a process, since it takes these signals over. `wait` blocks one thread; `wake` and what concerns
/// the terminal may be called from any thread.
class TerminalInput {
  public:
    struct Event {
        int interruptions = 0;            ///< signals that asked for the end
        std::optional<std::string> typed; ///< what has come; empty at the end of the input
    };

    /// `input` stays the caller's. Fails with `SystemError`.
    static Result<std::unique_ptr<TerminalInput>> create(int input);
    /// Shows typing again and gives the signals up.
    ~TerminalInput();
    TerminalInput(const TerminalInput&) = delete;
    TerminalInput& operator=(const TerminalInput&) = delete;

    /// Whether a person sits at both ends: input and standard error are terminals.
    [[nodiscard]] bool isInteractive() const;

    /// Drops what was typed and not read yet.
    void forgetTypeAhead();

    /// Whether the terminal shows what is typed.
    void hideTyping() { echo_.hide(); }

    void showTyping() { echo_.show(); }

    /// Waits for a signal, for `wake`, and for input where it is wanted.
    Event wait(bool wantsInput);
    void wake();

    /// At once, as after a second Ctrl-C.
    [[noreturn]] void endProcess();

  private:
    struct Pipe {
        FileDescriptor reading;
        FileDescriptor writing;
    };

    TerminalInput(int input, Pipe pipe);
    int takeSignals();
    std::optional<std::string> readSome();

    int input_;
    Pipe pipe_;
    TypingEcho echo_;
};

} // namespace morvex
