// Any bytes as the introduction of a phone: what is accepted is named by its own key and written as it was
// read.

#include "shared/base/Require.h"
#include "shared/trust/Parovani.h"
#include "shared/wire/Json.h"

using namespace morvex;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto hello = decode<PairingHello>(ByteView(data, size));
    if (!hello) return 0;
    if (Parovani::checkHello(*hello, PairID{"PAIR"}))
        vyzaduj(deviceID(hello->signingKey) == hello->device, "an accepted hello is named by its key");
    auto again = decode<PairingHello>(encode(*hello));
    vyzaduj(again.has_value() && *again == *hello, "a hello is written as it was read");
    return 0;
}
