#include "fuzz/RoundTrip.h"
#include "shared/wire/MacPayload.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    morvex::roundTrip<morvex::MacPayload>(data, size);
    return 0;
}
