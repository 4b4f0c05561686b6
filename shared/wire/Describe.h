#pragma once

#include "shared/base/Sentence.h"
#include "shared/wire/Codec.h"
#include "shared/wire/JsonNode.h"
#include "shared/wire/JsonText.h"
#include "shared/wire/RawValues.h"

#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace morvex {

// How a record gets its JSON form, once for both directions, in a .cpp file:
//
//     void describe(auto& io, Is<Note> auto& note) {
//         io.required("title", note.title);
//         io.optional("deletedAt", note.deletedAt);
//     }
//     template struct Codec<Note>;
//
// Order of the calls is the order of the keys. A tagged value is a struct whose only member `value` is a
// variant of case structs: each case has a `describe`, unless it is empty, and `caseNames` has the names in
// the variant's order.

template <class T, class Record>
concept Is = std::same_as<std::remove_const_t<T>, Record>;

template <class T> inline constexpr std::array<std::string_view, 0> caseNames{};

/// A list of records can be a whole document.
template <class T>
concept List = std::same_as<T, std::vector<typename T::value_type>>;

template <class T>
concept Tagged = requires { std::variant_size<decltype(T::value)>::value; };

/// A wrapper of one text that any JSON string is.
template <class T>
concept WrappedText = requires(T wrapped) {
    { wrapped.rawValue } -> std::same_as<std::string&>;
};

/// A value with its own text form and its own failure type.
template <class T>
concept ParsedText = requires(const T& value, std::string_view text) {
    { value.text() } -> std::same_as<std::string>;
    { T::parse(text) } -> std::same_as<Result<T>>;
};

template <class T> void writeJson(std::string& out, const T& value);

void writeJson(std::string& out, const Bytes& bytes);

inline void writeJson(std::string& out, const std::string& text) {
    appendJsonString(out, text);
}

/// Writes the Czech text.
inline void writeJson(std::string& out, const Sentence& sentence) {
    appendJsonString(out, sentence.czech());
}

inline void writeJson(std::string& out, bool flag) {
    out += flag ? "true" : "false";
}

inline void writeJson(std::string& out, std::int64_t number) {
    appendJsonNumber(out, number);
}

inline void writeJson(std::string& out, std::uint16_t number) {
    appendJsonNumber(out, std::uint64_t{number});
}

inline void writeJson(std::string& out, std::uint64_t number) {
    appendJsonNumber(out, number);
}

inline void writeJson(std::string& out, double number) {
    appendJsonNumber(out, number);
}

inline void writeJson(std::string& out, Date date) {
    appendJsonString(out, formatDate(date));
}

inline void writeJson(std::string& out, const Uuid& uuid) {
    appendJsonString(out, uuid.text());
}

template <class T> void writeJson(std::string& out, const std::vector<T>& list) {
    out += '[';
    for (const auto& element : list) {
        if (&element != list.data()) out += ',';
        writeJson(out, element);
    }
    out += ']';
}

template <class T> void writeJson(std::string& out, const T& value) {
    if constexpr (WordEnumeration<T>)
        appendJsonString(out, rawValue(value));
    else if constexpr (WrappedText<T>)
        appendJsonString(out, value.rawValue);
    else if constexpr (ParsedText<T>)
        appendJsonString(out, value.text());
    else
        Codec<T>::write(out, value);
}

template <class T>
    requires(!std::same_as<T, Bytes::value_type>)
bool readJson(const JsonNode& node, std::vector<T>& list) {
    const auto* array = node.array();
    if (!array) return false;
    list.clear();
    for (const auto& element : *array) {
        const JsonPath path{&node.path(), {}, list.size()};
        if (!readJson(node.child(element, path), list.emplace_back())) return false;
    }
    return true;
}

template <class T> bool readJson(const JsonNode& node, T& value) {
    if constexpr (requires { node.read(value); }) {
        return node.read(value);
    } else if constexpr (WrappedText<T>) {
        return node.read(value.rawValue);
    } else if constexpr (WordEnumeration<T>) {
        const auto* word = node.string();
        const auto found = word ? fromRawValue<T>(*word) : std::nullopt;
        if (found) value = *found;
        return found || (word && node.fail(DecodeError::Reason::unknownWord, *word));
    } else if constexpr (ParsedText<T>) {
        const auto* text = node.string();
        if (!text) return false;
        auto parsed = T::parse(*text);
        if (!parsed) return node.fail(parsed.error());
        value = std::move(*parsed);
        return true;
    } else {
        return Codec<T>::read(node, value);
    }
}

/// Writes one object. `describe` calls it for each field.
class RecordWriter {
  public:
    explicit RecordWriter(std::string& out) : out_(out) { out_ += '{'; }

    template <class T> void required(std::string_view name, const T& field) {
        if (out_.back() != '{') out_ += ',';
        appendJsonString(out_, name);
        out_ += ':';
        writeJson(out_, field);
    }

    template <class T> void optional(std::string_view name, const std::optional<T>& field) {
        if (field) required(name, *field);
    }

    template <class T> void assumed(std::string_view name, const T& field, const std::type_identity_t<T>&) {
        required(name, field);
    }

    void finish() { out_ += '}'; }

  private:
    std::string& out_;
};

/// Reads one object. After the first failure the remaining fields keep their values.
class RecordReader {
  public:
    RecordReader(const JsonNode& node, const boost::json::object& object) : node_(node), object_(object) {}

    template <class T> void required(std::string_view name, T& field) {
        if (!ok_) return;
        const JsonPath path{&node_.path(), name};
        const auto* found = find(name);
        ok_ = found ? readJson(node_.child(*found, path), field)
                    : node_.child({}, path).fail(DecodeError::Reason::missing);
    }

    template <class T> void optional(std::string_view name, std::optional<T>& field) {
        field.reset();
        if (ok_ && find(name)) required(name, field.emplace());
    }

    /// For a key that older records lack; if it is missing, the field becomes `otherwise`.
    template <class T>
    void assumed(std::string_view name, T& field, const std::type_identity_t<T>& otherwise) {
        if (ok_ && find(name))
            required(name, field);
        else
            field = otherwise;
    }

    [[nodiscard]] bool ok() const { return ok_; }

  private:
    /// Null for a missing key and for `null` alike.
    [[nodiscard]] const boost::json::value* find(std::string_view name) const {
        const auto* found = object_.if_contains(name);
        return found && !found->is_null() ? found : nullptr;
    }

    const JsonNode& node_;
    const boost::json::object& object_;
    bool ok_ = true;
};

template <class Record> void writeFields(std::string& out, const Record& record) {
    RecordWriter io{out};
    if constexpr (!std::is_empty_v<Record>) describe(io, record);
    io.finish();
}

template <class Record> bool readFields(const JsonNode& node, Record& record) {
    const auto* object = node.object();
    if (!object) return false;
    RecordReader io{node, *object};
    if constexpr (!std::is_empty_v<Record>) describe(io, record);
    return io.ok();
}

template <class T> bool readCase(const JsonNode& node, T& tagged) {
    const auto* object = node.object();
    if (!object) return false;
    if (object->size() != 1) return node.fail(DecodeError::Reason::caseCount);
    const auto& [name, content] = *object->begin();
    const JsonPath path{&node.path(), name};
    const auto inner = node.child(content, path);
    return [&]<std::size_t... index>(std::index_sequence<index...>) {
        bool isKnown = false;
        const bool isRead = ((caseNames<T>[index] == name && (isKnown = true) &&
                              readFields(inner, tagged.value.template emplace<index>())) ||
                             ...);
        return isRead || (!isKnown && node.fail(DecodeError::Reason::unknownCase, name));
    }(std::make_index_sequence<caseNames<T>.size()>{});
}

template <class T> void Codec<T>::write(std::string& out, const T& record) {
    if constexpr (Tagged<T>) {
        static_assert(caseNames<T>.size() == std::variant_size_v<decltype(T::value)>);
        out += "{\"";
        out += caseNames<T>[record.value.index()];
        out += "\":";
        std::visit([&](const auto& content) { writeFields(out, content); }, record.value);
        out += '}';
    } else if constexpr (List<T>) {
        writeJson(out, record);
    } else {
        writeFields(out, record);
    }
}

template <class T> bool Codec<T>::read(const JsonNode& node, T& record) {
    if constexpr (Tagged<T>)
        return readCase(node, record);
    else if constexpr (List<T>)
        return readJson(node, record);
    else
        return readFields(node, record);
}

} // namespace morvex
