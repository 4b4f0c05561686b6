#pragma once

#include "shared/base/Require.h"
#include "shared/wire/Json.h"

#include <cstddef>
#include <cstdint>

namespace morvex {

/// If the input decodes, the record must encode to a text that decodes to an equal record.
template <class Record> void roundTrip(const std::uint8_t* data, std::size_t size) {
    const auto first = decode<Record>(ByteView{data, size});
    if (!first) return require(!first.error().popis().empty(), "a failure without words");
    const auto again = decode<Record>(encode(*first));
    require(again.has_value(), "what was written cannot be read");
    require(*again == *first, "the record changed on its way");
}

} // namespace morvex
