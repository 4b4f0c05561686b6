#include "shared-apple/RelayAddress.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"

#include <cstddef>
#include <cstdint>

/// The relay address from a QR code or the settings, and one typed by the user.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    auto entered = RelayAddress::entered(asText({data, size}));
    const auto* refused = entered ? nullptr : entered.error().as<RelayAddressRefused>();
    require(entered || refused, "an address was refused without a reason");
    if (refused && !refused->corrected.empty())
        require(RelayAddress::entered(refused->corrected).has_value(), "a correction that is refused too");
    auto address = RelayAddress::parse(asText({data, size}));
    if (!address) return 0;
    auto socket = address->socket();
    require(socket.starts_with("ws://") || socket.starts_with("wss://"),
            "a socket address of another scheme");
    require(socket.ends_with("/v1/ws?v=1.4"), "a socket address with another end");
    require(RelayAddress::parse(address->call("v1/pair/create")).has_value(), "a call without an address");
    return 0;
}
