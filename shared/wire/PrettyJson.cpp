#include "shared/wire/PrettyJson.h"

#include "shared/wire/Json.h"

#include <boost/json/value.hpp>

#include <algorithm>
#include <string_view>
#include <vector>

namespace morvex {

namespace {

void append(std::string& out, const boost::json::value& value, std::size_t level);

void newLine(std::string& out, std::size_t level) {
    out.append("\n").append(2 * level, ' ');
}

void appendObject(std::string& out, const boost::json::object& object, std::size_t level) {
    if (object.empty()) {
        out += "{}";
        return;
    }
    std::vector<const boost::json::key_value_pair*> pairs;
    for (const auto& pair : object) pairs.push_back(&pair);
    std::ranges::sort(pairs, {}, [](const auto* pair) { return std::string_view(pair->key()); });
    out += '{';
    for (const auto* pair : pairs) {
        if (pair != pairs.front()) out += ',';
        newLine(out, level + 1);
        out += encode(boost::json::value(pair->key())) + " : ";
        append(out, pair->value(), level + 1);
    }
    newLine(out, level);
    out += '}';
}

void appendArray(std::string& out, const boost::json::array& array, std::size_t level) {
    out += '[';
    for (const auto& element : array) {
        if (&element != array.data()) out += ',';
        newLine(out, level + 1);
        append(out, element, level + 1);
    }
    if (!array.empty()) newLine(out, level);
    out += ']';
}

void append(std::string& out, const boost::json::value& value, std::size_t level) {
    if (const auto* object = value.if_object())
        appendObject(out, *object, level);
    else if (const auto* array = value.if_array())
        appendArray(out, *array, level);
    else
        out += encode(value);
}

} // namespace

std::string prettyJson(const boost::json::object& object) {
    std::string out;
    appendObject(out, object, 0);
    return out;
}

std::string prettyJson(const boost::json::array& array) {
    std::string out;
    appendArray(out, array, 0);
    return out;
}

} // namespace morvex
