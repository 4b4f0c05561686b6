#include "fuzz/RoundTrip.h"
#include "shared/wire/PairingBundle.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    morvex::roundTrip<morvex::PairingBundle>(data, size);
    return 0;
}
