#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Error.h"
#include "shared/wire/Codec.h"
#include "shared/wire/JsonDocument.h"
#include "shared/wire/JsonNode.h"

#include <boost/json/fwd.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace morvex {

/// The JSON text of any record that has a `Codec`: UTF-8, no white space, keys in the order of the fields, an
/// optional field without a value left out.
template <class T> std::string encode(const T& record) {
    std::string out;
    Codec<T>::write(out, record);
    return out;
}

/// No white space; keys in the order of the objects.
std::string encode(const boost::json::value& value);
std::string encode(const boost::json::object& object);

/// Reads exactly one record; ignores unknown keys, and treats `null` as a missing key. Fails with a
/// `DecodeError`, for an unreadable version with `TalkSpanError::ProtocolMismatch`, for a bad key with
/// `KryptoChyba`. Memory is bounded as described at `parseDocument`; the record itself takes at most twice as
/// much again.
template <class T> Result<T> decode(std::string_view json, JsonLimits limits = {}) {
    const auto root = parseDocument(json, limits);
    if (!root) return fail(root.error());
    const JsonPath path;
    std::optional<Error> failure;
    T record{};
    if (!Codec<T>::read(JsonNode{*root, path, failure}, record)) return fail(std::move(*failure));
    return record;
}

template <class T> Result<T> decode(ByteView json, JsonLimits limits = {}) {
    return decode<T>(asText(json), limits);
}

/// Reads any JSON, by the same rules and limits, where there is no record type: arguments of tools, answers
/// of foreign services. A number too large for a double is refused, so that everything that was read can be
/// written.
Result<boost::json::value> parseJson(std::string_view json, JsonLimits limits = {});

} // namespace morvex
