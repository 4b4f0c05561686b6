#include "app/console/ConsoleOutput.h"

#include "foundation/Printable.h"

#include <utility>

namespace morvex {

ConsoleOutput::ConsoleOutput(std::function<void(std::string)> print) : print_(std::move(print)) {}

void ConsoleOutput::line(const std::string& text) const {
    print_(printableLine(text));
}

void ConsoleOutput::foreign(const std::string& text) const {
    auto lines = "  | " + printable(text);
    for (auto end = lines.find('\n'); end != std::string::npos; end = lines.find('\n', end + 1))
        lines.insert(end + 1, "  | ");
    print_(lines);
}

void ConsoleOutput::trouble(const std::optional<Sentence>& sentence) const {
    if (sentence) line("Potíž: " + sentence->czech());
}

void ConsoleOutput::picture(std::string lines) const {
    print_(std::move(lines));
}

} // namespace morvex
