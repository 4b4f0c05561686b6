#include "shared/trust/SecretBytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <concepts>
#include <memory>
#include <ostream>

namespace morvex {

namespace {

using Secret = SecretBytes<32>;

template <class T>
concept Printable = requires(std::ostream& stream, const T& value) { stream << value; };

static_assert(!std::copyable<Secret> && std::movable<Secret>);
static_assert(!std::equality_comparable<Secret> && !Printable<Secret>);

void fill(Secret& secret) {
    std::ranges::fill(secret.writable(), std::uint8_t{0xa5});
}

bool holds(const Secret& secret, std::uint8_t value) {
    return std::ranges::all_of(secret.view(), [value](auto byte) { return byte == value; });
}

} // namespace

TEST(SecretBytes, StartsAsZeros) {
    EXPECT_TRUE(holds(Secret{}, 0));
}

TEST(SecretBytes, IsWipedWhenItIsMovedFrom) {
    Secret first, third;
    fill(first);
    Secret second = std::move(first);
    EXPECT_TRUE(holds(first, 0));
    EXPECT_TRUE(holds(second, 0xa5));
    third = std::move(second);
    EXPECT_TRUE(holds(second, 0));
    EXPECT_TRUE(holds(third, 0xa5));
}

TEST(SecretBytes, KeepsItsBytesWhenItIsMovedToItself) {
    Secret secret;
    fill(secret);
    auto& same = secret;
    secret = std::move(same);
    EXPECT_TRUE(holds(secret, 0xa5));
}

TEST(SecretBytes, IsWipedWhenItDies) {
    alignas(Secret) std::array<std::uint8_t, sizeof(Secret)> storage;
    auto* secret = std::construct_at(reinterpret_cast<Secret*>(storage.data()));
    fill(*secret);
    ASSERT_EQ(storage[7], 0xa5);
    std::destroy_at(secret);
    EXPECT_EQ(storage, decltype(storage){});
}

} // namespace morvex
