#include "fuzz/RoundTrip.h"
#include "shared/wire/RelayMessage.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    morvex::roundTrip<morvex::RelayMessage>(data, size);
    return 0;
}
