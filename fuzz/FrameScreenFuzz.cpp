#include "shared/base/FrameScreen.h"
#include "shared/base/Require.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// Bytes of a peer after the opening of a WebSocket. The first byte selects where they are split; the result
/// must not depend on it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    if (size < 2) return 0;
    const std::size_t piece = 1 + data[0] % 16;
    const auto start = data[0] < 128 ? FrameScreen::Start::frames : FrameScreen::Start::answer;
    const std::vector<std::uint8_t> given(data + 1, data + size);

    auto whole = given;
    FrameScreen atOnce{start};
    require(atOnce.pass(whole), "nothing has gone by that could not be spoilt any more");

    auto pieces = given;
    FrameScreen oneByOne{start};
    for (std::span<std::uint8_t> rest{pieces}; !rest.empty();) {
        const auto next = rest.first(std::min(piece, rest.size()));
        // A forbidden close code in two pieces ends the connection.
        if (!oneByOne.pass(next)) return 0;
        rest = rest.subspan(next.size());
    }
    require(pieces == whole, "what is left depends on the pieces");
    return 0;
}
