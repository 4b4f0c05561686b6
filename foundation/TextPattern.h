#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// A text to be searched for in many others, by canonical equivalence: composed and decomposed letters are
/// equal, and diacritics count (the first 30 of a letter). The pattern is prepared once; a search takes time
/// proportional to the searched text, whatever both contain. A value type; safe from any thread.
class TextPattern {
  public:
    /// An empty pattern is found in every text.
    explicit TextPattern(std::string_view part);

    /// A pattern for `isInAnyCaseIn`.
    static TextPattern ignoringCase(std::string_view part);

    [[nodiscard]] bool isIn(std::string_view text) const;
    /// Searches in `lowerCase(text)`.
    [[nodiscard]] bool isInLowerCaseOf(std::string_view text) const;

    /// Searches in `foldCase(text)`.
    [[nodiscard]] bool isInAnyCaseIn(std::string_view text) const { return isAmong(searchable(text)); }

    /// The prepared form that `isInAnyCaseIn` searches, for a text that is searched repeatedly. It is up to
    /// three times as long as the text, but for most languages as long as the text.
    static std::string searchable(std::string_view text);
    /// `searchable` must come from the function of this name.
    [[nodiscard]] bool isAmong(std::string_view searchable) const;

  private:
    std::string decomposed_;
    std::vector<std::uint32_t> borders_; ///< longest border of each prefix (Knuth, Morris and Pratt)
};

} // namespace morvex
