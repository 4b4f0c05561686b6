#include "shared/base/Sentence.h"

#include "shared/base/Overloaded.h"

#include <ostream>

namespace morvex {

Sentence::Sentence(const char* key, std::vector<SentenceValue> values)
    : told_(std::make_shared<const Told>(key, std::move(values))) {}

std::string Sentence::czech() const {
    return told_ ? filled(told_->key, nullptr) : text_;
}

std::string Sentence::in(const Forms& language) const {
    if (!told_) return text_.empty() ? text_ : language(text_, -1);
    std::int64_t number = -1;
    for (const auto& value : told_->values)
        if (const auto* found = std::get_if<std::int64_t>(&value.held); found && number < 0) number = *found;
    return filled(language(told_->key, number), &language);
}

/// An inserted value may itself look like a placeholder, so the inserted text is not scanned again. A
/// placeholder that the key does not have stays as it is.
std::string Sentence::filled(std::string_view form, const Forms* language) const {
    std::string text;
    std::size_t at = 0;
    while (at < form.size()) {
        const auto place = sentencePlaces::next(form, at);
        text += form.substr(at, place.begin - at);
        at = place.end;
        if (place.name.empty()) break;
        const auto index = sentencePlaces::indexOf(told_->key, place.name);
        if (index >= told_->values.size()) {
            text += form.substr(place.begin, place.end - place.begin);
            continue;
        }
        text += std::visit(
            Overloaded{[](const std::string& words) { return words; },
                       [](std::int64_t number) { return std::to_string(number); },
                       [&](const Sentence& inner) { return language ? inner.in(*language) : inner.czech(); }},
            told_->values[index].held);
    }
    return text;
}

std::ostream& operator<<(std::ostream& out, const Sentence& sentence) {
    return out << sentence.czech();
}

} // namespace morvex
