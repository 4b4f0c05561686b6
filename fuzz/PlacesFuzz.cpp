#include "fuzz/RoundTrip.h"
#include "shared/wire/CompanionRecords.h"

/// What the keychain holds of the named places.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    morvex::roundTrip<std::vector<morvex::CompanionPlace>>(data, size);
    return 0;
}
