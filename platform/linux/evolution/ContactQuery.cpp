#include "platform/linux/evolution/ContactQuery.h"

#include "foundation/TextFilter.h"
#include "shared/base/Utf8.h"

#include <cstddef>
#include <vector>

namespace morvex {

namespace {

constexpr std::size_t longestName = 1000; ///< bytes
constexpr std::size_t mostWords = 20;

std::vector<std::string> wordsOf(std::string_view name) {
    std::vector<std::string> words;
    std::string word;
    // Control characters and line breaks are blanks here, and nothing invisible is left.
    for (const char letter : visibleText(name) + " ") {
        if (letter != ' ') {
            word += letter;
        } else if (!word.empty()) {
            words.push_back(std::move(word));
            word.clear();
        }
    }
    return words;
}

std::string inQuotes(std::string_view word) {
    std::string text = "\"";
    for (const char letter : word) {
        if (letter == '"' || letter == '\\') text += '\\';
        text += letter;
    }
    return text + '"';
}

} // namespace

std::optional<std::string> contactQuery(std::string_view name) {
    if (name.size() > longestName) return std::nullopt;
    const auto words = wordsOf(name);
    if (words.empty() || words.size() > mostWords) return std::nullopt;
    std::string query = "(and";
    for (const auto& word : words)
        query +=
            " (or (contains \"full_name\" " + inQuotes(word) + ") (contains \"org\" " + inQuotes(word) + "))";
    return query + ")";
}

} // namespace morvex
