#include "fuzz/RoundTrip.h"
#include "shared/wire/CompanionRecords.h"

/// The named places in the keychain.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    morvex::roundTrip<std::vector<morvex::CompanionPlace>>(data, size);
    return 0;
}
