#include "tests/app/execution/TerminalTable.h"

#include "shared/base/Require.h"

#include <fstream>
#include <string_view>

namespace morvex {

namespace {

constexpr std::string_view arrow = " => ";

char unescaped(char sign) {
    if (sign == '0') return '\0';
    return sign == 'n' ? '\n' : sign;
}

/// Takes one word from the front of `text`.
std::string takeWord(std::string_view& text) {
    std::string word;
    bool quoted = false;
    for (; !text.empty() && (quoted || text.front() != ' '); text.remove_prefix(1)) {
        if (text.front() == '"') {
            quoted = !quoted;
        } else {
            bool isEscape = quoted && text.front() == '\\';
            if (isEscape) text.remove_prefix(1);
            word += isEscape ? unescaped(text.front()) : text.front();
        }
    }
    require(!quoted, "a quote is open in the table");
    text.remove_prefix(text.empty() ? 0 : 1);
    return word;
}

std::vector<std::string> words(std::string_view text, const std::string& root) {
    std::vector<std::string> all;
    while (!text.empty()) {
        auto word = takeWord(text);
        if (word.starts_with('@')) word.replace(0, 1, root);
        all.push_back(std::move(word));
    }
    return all;
}

/// The detail of a verdict may have spaces in it, and quotes around it where they stand at an end.
TerminalRow row(int line, std::string_view text, const std::string& root) {
    auto middle = text.find(arrow);
    require(middle != std::string_view::npos, "a row without a verdict");
    auto verdict = text.substr(middle + arrow.size());
    TerminalRow made{
        .line = line, .command = words(text.substr(0, middle), root), .verdict = {}, .detail = {}};
    made.verdict = takeWord(verdict);
    made.detail = verdict.starts_with('"') ? takeWord(verdict) : std::string(verdict);
    return made;
}

} // namespace

std::vector<TerminalRow> readTerminalTable(const std::string& root) {
    std::ifstream file(MORVEX_SOURCE_DIR "/tests/app/execution/terminal-gate-table.txt");
    std::vector<TerminalRow> rows;
    std::string text;
    for (int line = 1; std::getline(file, text); ++line)
        if (!text.empty() && !text.starts_with('#')) rows.push_back(row(line, text, root));
    return rows;
}

} // namespace morvex
