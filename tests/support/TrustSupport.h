#pragma once

#include "shared/base/Error.h"
#include "shared/trust/Crypto.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace morvex::test {

/// The bytes of an even number of hexadecimal digits.
Bytes unhex(std::string_view digits);
std::string hex(ByteView bytes);

/// Exactly 32 bytes; a test that gives another number is wrong and stops.
RawKey key32(ByteView bytes);

/// The cause of a failed result, or null.
template <class Cause, class T> const Cause* causeOf(const Result<T>& result) {
    return result ? nullptr : result.error().template as<Cause>();
}

} // namespace morvex::test
