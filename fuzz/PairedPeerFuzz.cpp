#include "fuzz/RoundTrip.h"
#include "shared/wire/PairedPeer.h"

/// The record of the other device in the vault.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    morvex::roundTrip<morvex::PairedPeer>(data, size);
    return 0;
}
