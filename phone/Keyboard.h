#pragma once

namespace morvex {

/// The source of the user's lines. It delivers one line per request, so that a question is never answered by
/// a line that was meant for something else.
class Keyboard {
  public:
    virtual ~Keyboard() = default;

    /// Whether a user is at the input and can be asked.
    [[nodiscard]] virtual bool isInteractive() const = 0;

    /// Requests one more `Line` (or `EndOfInput`) in the inbox. Does nothing if a request is already pending.
    virtual void requestLine() = 0;

    /// Discards what the user typed before being asked.
    virtual void forgetTypeAhead() = 0;

    /// Hides what the user types until `showTyping`.
    virtual void hideTyping() = 0;
    virtual void showTyping() = 0;
};

} // namespace morvex
