#include "platform/ports/UserDefaults.h"

#include <utility>

namespace morvex {

namespace {

template <class T> std::optional<T> valueAs(std::optional<DefaultsValue> value) {
    if (auto* held = value ? std::get_if<T>(&*value) : nullptr) return std::move(*held);
    return std::nullopt;
}

template <class T> std::optional<std::vector<T>> listOf(std::optional<DefaultsValue> value) {
    auto items = valueAs<std::vector<DefaultsItem>>(std::move(value));
    if (!items) return std::nullopt;
    std::vector<T> list;
    for (auto& item : *items) {
        auto* held = std::get_if<T>(&item);
        if (!held) return std::nullopt;
        list.push_back(std::move(*held));
    }
    return list;
}

} // namespace

Sentence notSavedBecause(const Error& error) {
    return "Nastavení se nepodařilo uložit: {duvod}"_sentence(error.popis());
}

void UserDefaults::set(const std::string& key, DefaultsValue value) {
    DefaultsValues values;
    values.emplace(key, std::move(value));
    setTogether(std::move(values));
}

std::optional<bool> UserDefaults::boolean(const std::string& key) const {
    return valueAs<bool>(get(key));
}

std::optional<std::string> UserDefaults::text(const std::string& key) const {
    return valueAs<std::string>(get(key));
}

std::optional<Bytes> UserDefaults::data(const std::string& key) const {
    return valueAs<Bytes>(get(key));
}

std::optional<std::vector<std::string>> UserDefaults::texts(const std::string& key) const {
    return listOf<std::string>(get(key));
}

std::optional<std::vector<Bytes>> UserDefaults::dataList(const std::string& key) const {
    return listOf<Bytes>(get(key));
}

} // namespace morvex
