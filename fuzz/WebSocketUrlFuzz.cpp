#include "platform/net/WebSocketUrl.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// The address of a socket, part of which comes from a QR code.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    const auto url = WebSocketUrl::parse(asText({data, size}));
    if (!url) return 0;
    for (const auto* part : {&url->host, &url->port, &url->authority, &url->target})
        require(!part->empty() &&
                    std::ranges::all_of(*part, [](char each) { return each > ' ' && each < 127; }),
                "a part that ends a line or a word");
    const std::string scheme = url->security == WebSocketUrl::Security::tls ? "wss://" : "ws://";
    const auto again = WebSocketUrl::parse(scheme + url->authority + url->target);
    require(again && *again == *url, "the parts make another address");
    return 0;
}
