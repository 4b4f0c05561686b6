#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// A text that is looked for in many others, by canonical equivalence: a composed and a decomposed letter are
/// one. What depends on it alone is done once. A value; safe from any thread.
class TextPattern {
  public:
    /// The empty one is in every text.
    explicit TextPattern(std::string_view part);

    [[nodiscard]] bool isIn(std::string_view text) const;
    /// The same as in `lowerCase(text)`.
    [[nodiscard]] bool isInLowerCaseOf(std::string_view text) const;

  private:
    std::u16string decomposed_;
    std::optional<std::string> ascii_; ///< the same, when it is ASCII
};

} // namespace morvex
