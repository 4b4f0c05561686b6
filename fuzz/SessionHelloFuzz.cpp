#include "fuzz/RoundTrip.h"
#include "shared/wire/SessionHello.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    morvex::roundTrip<morvex::SessionHello>(data, size);
    return 0;
}
