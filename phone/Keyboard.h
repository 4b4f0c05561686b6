#pragma once

namespace morvex {

/// Where the user's lines come from, one at a time and only when they are asked for, so that a question is
/// never answered by what was meant for something else.
class Keyboard {
  public:
    virtual ~Keyboard() = default;

    /// Whether a person sits there, who can be asked.
    [[nodiscard]] virtual bool isInteractive() const = 0;

    /// One more `Line` (or, once the input is over, `EndOfInput`) comes into the inbox. While one is on its
    /// way, nothing changes.
    virtual void requestLine() = 0;

    /// Forgets what a person typed before being asked.
    virtual void forgetTypeAhead() = 0;

    /// What a person types is not shown until `showTyping`.
    virtual void hideTyping() = 0;
    virtual void showTyping() = 0;
};

} // namespace morvex
