#include "shared/wire/JsonNode.h"

#include "shared/base/Base64.h"
#include "shared/base/Utf8.h"

#include <cmath>
#include <limits>
#include <utility>

namespace morvex {
namespace {

/// 2^53: from here on a double cannot represent every integer.
constexpr double inexactIntegers = 9007199254740992.0;
constexpr std::size_t longestQuote = 40;

Sentence typeName(boost::json::kind kind) {
    switch (kind) {
    case boost::json::kind::null:
        return Sentence("null");
    case boost::json::kind::bool_:
        return "pravdivostní hodnota"_sentence;
    case boost::json::kind::int64:
    case boost::json::kind::uint64:
    case boost::json::kind::double_:
        return "číslo"_sentence;
    case boost::json::kind::string:
        return "text"_sentence;
    case boost::json::kind::array:
        return "pole"_sentence;
    case boost::json::kind::object:
        return "objekt"_sentence;
    }
    std::unreachable();
}

} // namespace

std::string JsonPath::text() const {
    auto before = parent ? parent->text() : std::string{};
    if (!parent) return before;
    if (key.empty()) return before + '[' + std::to_string(index) + ']';
    return before.empty() ? std::string{key} : before + '.' + std::string{key};
}

bool JsonNode::fail(DecodeError::Reason reason, std::string_view found) const {
    return fail(DecodeError{reason, path_.text(), Sentence(clipped(found, longestQuote))});
}

bool JsonNode::fail(Error cause) const {
    failure_ = std::move(cause);
    return false;
}

bool JsonNode::failType() const {
    return fail(DecodeError{DecodeError::Reason::wrongType, path_.text(), typeName(value_.kind())});
}

const boost::json::object* JsonNode::object() const {
    if (const auto* object = value_.if_object()) return object;
    failType();
    return nullptr;
}

const boost::json::array* JsonNode::array() const {
    if (const auto* array = value_.if_array()) return array;
    failType();
    return nullptr;
}

const boost::json::string* JsonNode::string() const {
    if (const auto* string = value_.if_string()) return string;
    failType();
    return nullptr;
}

bool JsonNode::read(bool& flag) const {
    if (!value_.is_bool()) return failType();
    flag = value_.get_bool();
    return true;
}

bool JsonNode::read(std::string& text) const {
    const auto* found = string();
    if (found) text.assign(found->data(), found->size());
    return found != nullptr;
}

bool JsonNode::read(Sentence& sentence) const {
    const auto* found = string();
    if (found) sentence = Sentence(std::string(found->data(), found->size()));
    return found != nullptr;
}

template <class Number> bool JsonNode::readInteger(Number& number) const {
    if (!value_.is_number()) return failType();
    if (const auto* floating = value_.if_double()) {
        const bool isExact = std::abs(*floating) < inexactIntegers && std::trunc(*floating) == *floating;
        if (!isExact || (*floating < 0 && !std::in_range<Number>(-1)))
            return fail(DecodeError::Reason::outOfRange);
        number = static_cast<Number>(*floating);
        return true;
    }
    const auto* positive = value_.if_uint64();
    const bool fits = positive ? std::in_range<Number>(*positive) : std::in_range<Number>(value_.get_int64());
    if (!fits) return fail(DecodeError::Reason::outOfRange);
    number = positive ? static_cast<Number>(*positive) : static_cast<Number>(value_.get_int64());
    return true;
}

bool JsonNode::read(std::int64_t& number) const {
    return readInteger(number);
}

bool JsonNode::read(std::uint64_t& number) const {
    return readInteger(number);
}

bool JsonNode::read(std::uint16_t& number) const {
    std::uint64_t wide = 0;
    if (!readInteger(wide)) return false;
    if (wide > std::numeric_limits<std::uint16_t>::max()) return fail(DecodeError::Reason::outOfRange);
    number = static_cast<std::uint16_t>(wide);
    return true;
}

bool JsonNode::read(double& number) const {
    if (!value_.is_number()) return failType();
    const auto found = value_.to_number<double>();
    if (!(std::abs(found) < 0x1p63)) return fail(DecodeError::Reason::outOfRange);
    number = found;
    return true;
}

bool JsonNode::read(Date& date) const {
    const auto* text = string();
    if (!text) return false;
    const auto read = parseWireDate(*text);
    if (!read) return fail(DecodeError::Reason::badText, *text);
    date = *read;
    return true;
}

bool JsonNode::read(Uuid& uuid) const {
    const auto* text = string();
    if (!text) return false;
    const auto read = Uuid::parse(*text);
    if (!read) return fail(DecodeError::Reason::badText, *text);
    uuid = *read;
    return true;
}

bool JsonNode::read(Bytes& bytes) const {
    const auto* text = string();
    if (!text) return false;
    auto read = base64Decode(*text);
    if (!read) return fail(DecodeError::Reason::badText, *text);
    bytes = std::move(*read);
    return true;
}

} // namespace morvex
