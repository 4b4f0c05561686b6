#pragma once

#include "shared/base/Sentence.h"

#include <functional>
#include <optional>
#include <string>

namespace morvex {

/// What the console prints. Main thread.
class ConsoleOutput {
  public:
    /// `print` takes one line, or several.
    explicit ConsoleOutput(std::function<void(std::string)> print);

    /// One line, whatever the text holds: words of a relay, for one, cannot pass for lines of the program.
    void line(const std::string& text) const;
    /// Lines that others wrote, set off from those of the program.
    void foreign(const std::string& text) const;
    /// A line, when there is a trouble.
    void trouble(const std::optional<Sentence>& sentence) const;

    void line(const Sentence& text) const { line(text.czech()); }

    /// Lines as they stand.
    void picture(std::string lines) const;

  private:
    std::function<void(std::string)> print_;
};

} // namespace morvex
