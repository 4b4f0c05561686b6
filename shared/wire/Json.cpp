#include "shared/wire/Json.h"

#include "shared/base/Base64.h"
#include "shared/base/Try.h"
#include "shared/wire/Describe.h"
#include "shared/wire/JsonText.h"

#include <algorithm>
#include <cmath>

namespace morvex {
namespace {

bool isFinite(const boost::json::value& value) {
    if (const auto* number = value.if_double()) return std::isfinite(*number);
    if (const auto* array = value.if_array()) return std::ranges::all_of(*array, isFinite);
    if (const auto* object = value.if_object())
        return std::ranges::all_of(*object, [](const auto& field) { return isFinite(field.value()); });
    return true;
}

} // namespace

std::string encode(const boost::json::value& value) {
    std::string out;
    appendJson(out, value);
    return out;
}

std::string encode(const boost::json::object& object) {
    std::string out;
    appendJson(out, object);
    return out;
}

Result<boost::json::value> parseJson(std::string_view json, JsonLimits limits) {
    TRY(auto, root, parseDocument(json, limits));
    if (!isFinite(root)) return fail(DecodeError{DecodeError::Reason::outOfRange, {}, {}});
    return root;
}

void writeJson(std::string& out, const Bytes& bytes) {
    // The base64 alphabet needs no escaping.
    out += '"';
    appendBase64(out, bytes);
    out += '"';
}

} // namespace morvex
