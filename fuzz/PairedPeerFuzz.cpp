#include "fuzz/RoundTrip.h"
#include "shared/wire/PairedPeer.h"

/// What the vault holds of the other device.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    morvex::roundTrip<morvex::PairedPeer>(data, size);
    return 0;
}
