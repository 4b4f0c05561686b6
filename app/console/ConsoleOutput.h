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

    /// Prints one line, whatever the text contains, so that the words of a relay, for example, cannot pass
    /// for lines of this program.
    void line(const std::string& text) const;
    /// Prints lines that others wrote, marked so that they differ from those of this program.
    void foreign(const std::string& text) const;
    /// Prints a line if there is a problem.
    void trouble(const std::optional<Sentence>& sentence) const;

    void line(const Sentence& text) const { line(text.czech()); }

    /// Prints the lines unchanged.
    void picture(std::string lines) const;

  private:
    std::function<void(std::string)> print_;
};

} // namespace morvex
