#include "app/customapps/StoredApp.h"
#include "fuzz/RoundTrip.h"

/// The custom apps in the settings.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    morvex::roundTrip<std::vector<morvex::StoredApp>>(data, size);
    return 0;
}
