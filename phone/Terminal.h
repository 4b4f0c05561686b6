#pragma once

#include "shared/base/Sentence.h"

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

enum class Style { plain, strong, faint, good, bad };

/// A piece of text in one style. It may contain anything: the terminal removes control characters.
struct Span {
    std::string text;
    Style style = Style::plain;

    bool operator==(const Span&) const = default;
};

using StyledLine = std::vector<Span>;

/// The output of the program: results go to one stream, all other messages to another. Use on the phone's
/// executor.
class Terminal {
  public:
    struct Output {
        std::ostream& stream;
        bool isTerminal = false;
        bool isColoured = false;
    };

    Terminal(Output results, Output notes) : results_(results), notes_(notes) {}

    void print(const StyledLine& line);
    void print(const std::vector<StyledLine>& lines);
    /// One record for a program: printed exactly, unless the results go to a terminal.
    void printJson(std::string_view json);

    void note(const StyledLine& line);

    void note(const std::string& text) { note(StyledLine{{text, Style::faint}}); }

    void problem(const std::string& text);

    void problem(const Sentence& sentence) { problem(sentence.czech()); }

    /// Stays on its line, for the answer. Output before the answer starts on a new line.
    void prompt(const std::string& text);

    /// The line break that ended the answer was also shown on the terminal.
    void answered() { isPrompting_ = false; }

    [[nodiscard]] bool isPrompting() const { return isPrompting_; }

    /// Ends the line of a prompt that nobody answered.
    void leavePrompt();

    /// False when the reader of the results has gone away.
    [[nodiscard]] bool isOpen() const { return results_.stream.good(); }

  private:
    static void write(const Output& output, const StyledLine& line, std::string_view end);

    Output results_;
    Output notes_;
    bool isPrompting_ = false;
};

} // namespace morvex
