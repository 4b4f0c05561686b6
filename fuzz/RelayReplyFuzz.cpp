#include "fuzz/RoundTrip.h"
#include "shared/wire/RelayCalls.h"

/// The relay's replies to the pairing calls.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    roundTrip<ZalozitOdpoved>(data, size);
    roundTrip<PripojitOdpoved>(data, size);
    roundTrip<VaporDuvod>(data, size);
    return 0;
}
