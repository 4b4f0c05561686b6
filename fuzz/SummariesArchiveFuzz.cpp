#include "app/personal/SummariesArchive.h"
#include "fuzz/RoundTrip.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    morvex::roundTrip<morvex::SummariesArchive>(data, size);
    return 0;
}
