#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace morvex {

/// The characters of a literal, as a template argument.
template <std::size_t size> struct SentenceLiteral {
    char text[size];

    consteval SentenceLiteral(const char (&literal)[size]) { std::ranges::copy(literal, text); }
};

template <SentenceLiteral literal> struct SentenceKey;
struct SentenceValue;

/// A text for people whose language is not chosen yet: a Czech sentence with placeholders such as `{slozka}`,
/// and the values for them. The code that shows it renders it in the reader's language. A text that is the
/// same in every language (a name, or somebody else's words) is a sentence too.
///
/// Sentences of the program are written as `"Složka {slozka} neexistuje."_sentence(path)`.
class Sentence {
  public:
    /// Returns the form of a sentence in a language, with the same placeholders. `number` is the first number
    /// among its values, or -1; some languages inflect words by it.
    using Forms = std::function<std::string(std::string_view czech, std::int64_t number)>;

    Sentence() = default;

    /// Shown unchanged in every language, unless a language has a translation of exactly this text.
    explicit Sentence(std::string text) : text_(std::move(text)) {}

    [[nodiscard]] bool empty() const { return !told_ && text_.empty(); }

    [[nodiscard]] std::string czech() const;
    [[nodiscard]] std::string in(const Forms& language) const;

    /// Compares the Czech texts.
    bool operator==(const Sentence& other) const { return czech() == other.czech(); }

    friend bool operator==(const Sentence& sentence, std::string_view czech) {
        return sentence.czech() == czech;
    }

    /// For the messages of failed tests.
    friend std::ostream& operator<<(std::ostream& out, const Sentence& sentence);

  private:
    template <SentenceLiteral literal> friend struct SentenceKey;

    /// A sentence that is part of the program.
    struct Told {
        const char* key;                   ///< static storage
        std::vector<SentenceValue> values; ///< in the order of the placeholders
    };

    Sentence(const char* key, std::vector<SentenceValue> values);

    [[nodiscard]] std::string filled(std::string_view form, const Forms* language) const;

    std::string text_;
    std::shared_ptr<const Told> told_; ///< null if this is a plain text
};

/// The value for a placeholder: a text (a name, somebody else's words), a number or another sentence.
struct SentenceValue {
    std::variant<std::string, std::int64_t, Sentence> held;

    SentenceValue(std::string text) : held(std::move(text)) {}

    SentenceValue(std::string_view text) : held(std::string(text)) {}

    SentenceValue(const char* text) : held(std::string(text)) {}

    SentenceValue(Sentence sentence) : held(std::move(sentence)) {}

    template <std::convertible_to<Sentence> Key>
        requires std::is_empty_v<Key>
    SentenceValue(Key key) : held(Sentence(key)) {}

    template <class Number>
        requires std::is_integral_v<Number> &&
                 (!std::is_same_v<Number, bool> && !std::is_same_v<Number, char>)
    SentenceValue(Number number) : held(static_cast<std::int64_t>(number)) {}
};

/// The placeholders of a sentence.
namespace sentencePlaces {

/// One placeholder and its position; the name is empty if there are no more.
struct Found {
    std::string_view name;
    std::size_t begin = 0; ///< position of the opening brace
    std::size_t end = 0;   ///< position after the closing brace
};

constexpr bool isNameOnly(std::string_view name) {
    return !name.empty() &&
           std::ranges::all_of(name, [](char letter) { return letter >= 'a' && letter <= 'z'; });
}

/// Finds the next placeholder at or after `from`. Braces around anything but lower-case ASCII letters are
/// plain text.
constexpr Found next(std::string_view text, std::size_t from) {
    for (auto begin = text.find('{', from); begin != std::string_view::npos;
         begin = text.find('{', begin + 1)) {
        const auto close = text.find('}', begin);
        if (close == std::string_view::npos) break;
        const auto name = text.substr(begin + 1, close - begin - 1);
        if (isNameOnly(name)) return {name, begin, close + 1};
    }
    return {{}, text.size(), text.size()};
}

/// The index of the placeholder `wanted` among the distinct names, in order of first appearance; the number
/// of distinct names if there is none of that name.
constexpr std::size_t indexOf(std::string_view text, std::string_view wanted) {
    std::size_t count = 0;
    for (auto place = next(text, 0); !place.name.empty(); place = next(text, place.end)) {
        if (place.name == wanted) return count;
        bool isFirst = true;
        for (auto earlier = next(text, 0); earlier.begin < place.begin; earlier = next(text, earlier.end))
            isFirst = isFirst && earlier.name != place.name;
        if (isFirst) ++count;
    }
    return count;
}

constexpr std::size_t count(std::string_view text) {
    return indexOf(text, "");
}

} // namespace sentencePlaces

/// A sentence of the program before its values are given. One without placeholders converts to a `Sentence`.
template <SentenceLiteral literal> struct SentenceKey {
    static constexpr std::size_t places = sentencePlaces::count(literal.text);

    template <class... Values>
        requires(sizeof...(Values) == places)
    Sentence operator()(Values&&... values) const {
        std::vector<SentenceValue> all;
        all.reserve(places);
        (all.emplace_back(std::forward<Values>(values)), ...);
        return {literal.text, std::move(all)};
    }

    operator Sentence() const
        requires(places == 0)
    {
        return {literal.text, {}};
    }

    /// For text that is stored or sent; the window still finds its translation.
    [[nodiscard]] std::string czech() const
        requires(places == 0)
    {
        return literal.text;
    }
};

/// The build checks these literals against the translation tables.
template <SentenceLiteral literal> consteval SentenceKey<literal> operator""_sentence() {
    return {};
}

} // namespace morvex
