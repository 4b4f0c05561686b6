#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// A text that is looked for in many others, by canonical equivalence: a composed and a decomposed letter are
/// one, and diacritics count, the first 30 of a letter. What depends on it alone is done once; a search takes
/// time in proportion to the searched text, whatever both hold. A value; safe from any thread.
class TextPattern {
  public:
    /// The empty one is in every text.
    explicit TextPattern(std::string_view part);

    /// One for `isInAnyCaseIn`.
    static TextPattern ignoringCase(std::string_view part);

    [[nodiscard]] bool isIn(std::string_view text) const;
    /// The same as in `lowerCase(text)`.
    [[nodiscard]] bool isInLowerCaseOf(std::string_view text) const;

    /// The same as in `foldCase(text)`.
    [[nodiscard]] bool isInAnyCaseIn(std::string_view text) const { return isAmong(searchable(text)); }

    /// What `isInAnyCaseIn` looks at, for a text that is searched again and again. It takes up to three times
    /// the length of the text, and for most languages as much as the text.
    static std::string searchable(std::string_view text);
    /// `searchable` comes from the function of this name.
    [[nodiscard]] bool isAmong(std::string_view searchable) const;

  private:
    std::string decomposed_;
    std::vector<std::uint32_t> borders_; ///< of each beginning: its longest other beginning that also ends it
};

} // namespace morvex
