#include "phone/Terminal.h"

#include "foundation/Printable.h"

#include <array>
#include <utility>

namespace morvex {

namespace {

constexpr std::string_view reset = "\x1b[0m";

std::string_view colour(Style style) {
    constexpr std::array<std::string_view, 5> colours{"", "\x1b[1m", "\x1b[2m", "\x1b[32m", "\x1b[31m"};
    return colours[static_cast<std::size_t>(style)];
}

} // namespace

void Terminal::print(const StyledLine& line) {
    leavePrompt();
    write(results_, line, "\n");
}

void Terminal::print(const std::vector<StyledLine>& lines) {
    for (const auto& line : lines) print(line);
}

void Terminal::printJson(std::string_view json) {
    leavePrompt();
    results_.stream << (results_.isTerminal ? printable(json) : std::string(json)) << '\n' << std::flush;
}

void Terminal::note(const StyledLine& line) {
    leavePrompt();
    write(notes_, line, "\n");
}

void Terminal::problem(const std::string& text) {
    note({{"morvex-phone: ", Style::bad}, {printableLine(text)}});
}

void Terminal::prompt(const std::string& text) {
    leavePrompt();
    write(notes_, {{text, Style::strong}}, "");
    isPrompting_ = true;
}

void Terminal::leavePrompt() {
    if (std::exchange(isPrompting_, false)) write(notes_, {}, "\n");
}

void Terminal::write(const Output& output, const StyledLine& line, std::string_view end) {
    std::string text;
    for (const auto& span : line) {
        const bool isColoured = output.isColoured && span.style != Style::plain;
        if (isColoured) text += colour(span.style);
        text += printable(span.text);
        if (isColoured) text += reset;
    }
    output.stream << text << end << std::flush;
}

} // namespace morvex
