#include "shared/base/Sentence.h"

#include "shared/base/Overloaded.h"

#include <ostream>

namespace morvex {

Sentence::Sentence(const char* key, std::vector<SentenceValue> values)
    : key_(key), values_(std::make_shared<const std::vector<SentenceValue>>(std::move(values))) {}

std::string Sentence::czech() const {
    return key_ ? filled(key_, nullptr) : text_;
}

std::string Sentence::in(const Forms& language) const {
    if (!key_) return text_.empty() ? text_ : language(text_, -1);
    std::int64_t number = -1;
    for (const auto& value : *values_)
        if (const auto* found = std::get_if<std::int64_t>(&value.held); found && number < 0) number = *found;
    return filled(language(key_, number), &language);
}

/// A value may look like a place for another one, so that what was filled in is not read again. A place that
/// the key does not have stays as it is.
std::string Sentence::filled(std::string_view form, const Forms* language) const {
    std::string text;
    std::size_t at = 0;
    while (at < form.size()) {
        const auto place = sentencePlaces::next(form, at);
        text += form.substr(at, place.begin - at);
        at = place.end;
        if (place.name.empty()) break;
        const auto index = sentencePlaces::indexOf(key_, place.name);
        if (index >= values_->size()) {
            text += form.substr(place.begin, place.end - place.begin);
            continue;
        }
        text += std::visit(
            Overloaded{[](const std::string& words) { return words; },
                       [](std::int64_t number) { return std::to_string(number); },
                       [&](const Sentence& inner) { return language ? inner.in(*language) : inner.czech(); }},
            (*values_)[index].held);
    }
    return text;
}

std::ostream& operator<<(std::ostream& out, const Sentence& sentence) {
    return out << sentence.czech();
}

} // namespace morvex
