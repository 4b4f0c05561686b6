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

/// A text for people that has not met its reader yet: the Czech sentence, in which places such as `{slozka}`
/// stand for values, and the values beside it. Whoever shows it renders it in the reader's language. A text
/// that is the same in every language, a name or somebody else's words, is a sentence too.
///
/// Sentences of the program are written as `"Složka {slozka} neexistuje."_sentence(path)`.
class Sentence {
  public:
    /// The form of a sentence in a language, with the same places; `number` is the first number among its
    /// values, or -1, for languages whose words follow it.
    using Forms = std::function<std::string(std::string_view czech, std::int64_t number)>;

    /// Empty.
    Sentence() = default;

    /// The same in every language, unless one knows just this text.
    explicit Sentence(std::string text) : text_(std::move(text)) {}

    [[nodiscard]] bool empty() const { return !told_ && text_.empty(); }

    [[nodiscard]] std::string czech() const;
    [[nodiscard]] std::string in(const Forms& language) const;

    /// Whether both are the same text in Czech.
    bool operator==(const Sentence& other) const { return czech() == other.czech(); }

    friend bool operator==(const Sentence& sentence, std::string_view czech) {
        return sentence.czech() == czech;
    }

    /// For the messages of failed tests.
    friend std::ostream& operator<<(std::ostream& out, const Sentence& sentence);

  private:
    template <SentenceLiteral literal> friend struct SentenceKey;

    /// A sentence of the program.
    struct Told {
        const char* key;                   ///< of static storage
        std::vector<SentenceValue> values; ///< in the order of its places
    };

    Sentence(const char* key, std::vector<SentenceValue> values);

    [[nodiscard]] std::string filled(std::string_view form, const Forms* language) const;

    std::string text_;
    std::shared_ptr<const Told> told_; ///< null for a text
};

/// What stands in a place: a name or a piece of somebody else's text, a number, another sentence.
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

/// The places of a sentence.
namespace sentencePlaces {

/// The name of the first place behind `from`, and where the text goes on; an empty name without one.
struct Found {
    std::string_view name;
    std::size_t begin = 0; ///< of the brace
    std::size_t end = 0;   ///< behind the other one
};

constexpr bool isNameOnly(std::string_view name) {
    return !name.empty() &&
           std::ranges::all_of(name, [](char letter) { return letter >= 'a' && letter <= 'z'; });
}

/// Braces around anything but small letters of ASCII are text.
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

/// How many places come before the one of this name, each name counted once; without that name, how many
/// there are.
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

/// A sentence of the program before it has values. One without places is a `Sentence` by itself.
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

    /// For what is kept or sent as a text; the window finds its translation all the same.
    [[nodiscard]] std::string czech() const
        requires(places == 0)
    {
        return literal.text;
    }
};

/// The build compares these literals with the tables of the languages.
template <SentenceLiteral literal> consteval SentenceKey<literal> operator""_sentence() {
    return {};
}

} // namespace morvex
