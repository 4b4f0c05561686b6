#include "shared/wire/Envelope.h"

#include "shared/wire/Json.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(Envelope, WritesAKeyExchangeWithEmptyNonceAndTag) {
    const auto hello =
        keyExchange({"P"}, {"A"}, {"B"}, "session", toBytes("hi"), dateFromSeconds(1795000001), Uuid{});
    EXPECT_EQ(encode(hello),
              R"({"v":"1.4","pair":"P","from":"A","to":"B","msgID":"00000000-0000-0000-0000-000000000000",)"
              R"("requestID":"session","kind":"kex","createdAt":"2026-11-18T11:06:41Z",)"
              R"("expiresAt":"2026-11-18T11:07:41Z","counter":0,"nonce":"","ciphertext":"aGk=","tag":""})");
    EXPECT_EQ(decode<Envelope>(encode(hello)).value(), hello);
}

} // namespace
} // namespace morvex
