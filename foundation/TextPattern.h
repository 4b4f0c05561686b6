#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// A text that is looked for in many others, by canonical equivalence: a composed and a decomposed letter are
/// one, and diacritics count. What depends on it alone is done once; a search takes time in proportion to the
/// searched text, whatever both hold. A value; safe from any thread.
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
    [[nodiscard]] bool isInAnyCaseIn(std::string_view text) const;

  private:
    template <class Unit> [[nodiscard]] bool isAmong(std::basic_string_view<Unit> decomposed) const;

    std::u16string decomposed_;
    std::vector<std::uint32_t> borders_; ///< of each beginning: its longest other beginning that also ends it
    bool isAscii_ = false;
};

} // namespace morvex
