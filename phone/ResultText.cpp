#include "phone/ResultText.h"

#include "shared/wire/Json.h"
#include "shared/wire/JsonText.h"

#include <boost/json.hpp>

#include <algorithm>

namespace morvex {

namespace {

namespace json = boost::json;

bool isScalar(const json::value& value) {
    return !value.is_structured();
}

std::string scalarText(const json::value& value) {
    if (const auto* text = value.if_string()) return std::string(*text);
    if (const auto* flag = value.if_bool()) return *flag ? "ano" : "ne";
    return value.is_null() ? "—" : encode(value);
}

/// Writes the lines of `value`, indented by `indent`; the first line follows `head` if it fits there.
class Writer {
  public:
    void value(const StyledLine& head, std::size_t indent, const json::value& value) {
        if (isScalar(value)) return scalar(head, indent, scalarText(value));
        const bool isEmpty = value.is_array() ? value.get_array().empty() : value.get_object().empty();
        if (isEmpty) return scalar(head, indent, "nic");
        if (!head.empty()) lines.push_back(head);
        if (const auto* array = value.if_array()) return items(indent, *array);
        fields(indent, value.get_object());
    }

    void fields(std::size_t indent, const json::object& object) {
        for (const auto& [key, field] : object)
            value({{std::string(indent, ' ') + std::string(key) + ":", Style::faint}}, indent + 2, field);
    }

    std::vector<StyledLine> lines;

  private:
    void items(std::size_t indent, const json::array& array) {
        for (const auto& item : array) {
            const auto first = lines.size();
            value({}, indent + 2, item);
            // The dash replaces the first of the item's two blanks.
            if (first < lines.size()) lines[first].front().text.replace(indent, 1, "-");
        }
    }

    void scalar(StyledLine head, std::size_t indent, const std::string& text) {
        if (text.find('\n') == std::string::npos) {
            head.push_back({head.empty() ? std::string(indent, ' ') + text : " " + text});
            return lines.push_back(std::move(head));
        }
        if (!head.empty()) lines.push_back(std::move(head));
        for (std::size_t start = 0; start < text.size();) {
            auto end = std::min(text.find('\n', start), text.size());
            lines.push_back({{std::string(indent, ' ') + text.substr(start, end - start)}});
            start = end + 1;
        }
    }
};

} // namespace

std::vector<StyledLine> resultLines(const std::string& json) {
    auto parsed = parseJson(json);
    if (!parsed) return {{{json}}};
    if (auto* object = parsed->if_object()) {
        object->erase("error");
        Writer writer;
        writer.fields(0, *object);
        return std::move(writer.lines);
    }
    Writer writer;
    writer.value({}, 0, *parsed);
    return std::move(writer.lines);
}

std::string resultJson(const std::string& json) {
    auto parsed = parseJson(json);
    if (parsed) return encode(*parsed);
    std::string text;
    appendJsonString(text, json);
    return text;
}

std::string errorSentence(const std::string& json) {
    auto parsed = parseJson(json);
    const auto* object = parsed ? parsed->if_object() : nullptr;
    const auto* error = object ? object->if_contains("error") : nullptr;
    return error && error->is_string() ? std::string(error->get_string()) : std::string();
}

} // namespace morvex
