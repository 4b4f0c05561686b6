#include "foundation/Text.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"
#include "shared/wire/NormalizedAddress.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// The address of a custom app, from the phone or typed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    auto address = normalizedAddress(asText({data, size}));
    if (!address) return 0;
    require(std::ranges::all_of(*address, [](char each) { return each > ' ' && each < 127; }),
            "a character that ends a line or a word");
    require(normalizedAddress(*address).has_value(), "an address that is not accepted again");
    auto scheme = lowerCase(address->substr(0, 8));
    require(scheme == "https://", "an address of another scheme or without a host");
    return 0;
}
