#pragma once

#include <memory>

namespace morvex {

/// Whether a terminal shows what is typed. Does nothing where the input is no terminal. From any thread, one
/// call at a time; the input stays the caller's.
class TypingEcho {
  public:
    explicit TypingEcho(int input);
    /// Shows typing again.
    ~TypingEcho();
    TypingEcho(const TypingEcho&) = delete;
    TypingEcho& operator=(const TypingEcho&) = delete;

    /// Drops what was typed and not read yet. The end of a line is still shown.
    void hide();
    void show();

  private:
    struct Settings; ///< of the terminal

    int input_;
    std::unique_ptr<const Settings> usual_; ///< null when the input is no terminal
};

} // namespace morvex
