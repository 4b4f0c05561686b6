#pragma once

#include "shared/base/Error.h"
#include "shared/wire/JsonLimits.h"

#include <boost/json/value.hpp>

#include <string_view>

namespace morvex {

/// The only place where JSON is read. Strict RFC 8259: valid UTF-8, no extensions, nothing after the value.
/// Of equal keys in one object the last counts. Fails with a `DecodeError`.
///
/// The time is proportional to the length of the text and to its `values`, whatever its names are. Memory is
/// at most four times the length plus 160 bytes for each value.
Result<boost::json::value> parseDocument(std::string_view text, JsonLimits limits = {});

/// Whether `parseDocument` would accept this text; builds nothing. Fails with the same errors.
Result<void> checkReadable(std::string_view json, JsonLimits limits);

} // namespace morvex
