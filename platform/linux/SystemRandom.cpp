#include "platform/linux/SystemRandom.h"

#include "shared/base/Require.h"

#include <cerrno>
#include <sys/random.h>

namespace morvex {

Uuid SystemRandom::uuid() {
    std::array<std::uint8_t, 16> bytes{};
    ssize_t drawn = -1;
    do drawn = ::getrandom(bytes.data(), bytes.size(), 0);
    while (drawn < 0 && errno == EINTR);
    // getrandom(2) never returns fewer of up to 256 bytes once the generator is seeded.
    require(drawn == static_cast<ssize_t>(bytes.size()), "the kernel gives no random bytes");
    return Uuid::fromRandom(bytes);
}

} // namespace morvex
