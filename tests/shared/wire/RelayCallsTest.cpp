#include "shared/wire/RelayCalls.h"

#include "shared/wire/Json.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

template <class Record> void expectForm(const char* text) {
    const auto read = decode<Record>(text);
    ASSERT_TRUE(read) << text;
    EXPECT_EQ(encode(*read), text);
}

TEST(RelayCalls, HaveOneFormEach) {
    expectForm<ZalozitPozadavek>(
        R"({"deviceID":"D","key":"cmwqM3xGMJVSKt1eEBVQwtisuyhvw8BkzWmUXnrpXro=","role":"mac"})");
    expectForm<ZalozitOdpoved>(R"({"pairID":"P","pairingToken":"T","expiresAt":"2026-11-16T00:45:56Z"})");
    expectForm<PripojitPozadavek>(
        R"({"pairingToken":"T","deviceID":"D","key":"cmwqM3xGMJVSKt1eEBVQwtisuyhvw8BkzWmUXnrpXro=","role":"phone"})");
    expectForm<PripojitOdpoved>(R"({"pairID":"P"})");
    expectForm<OdvolatPozadavek>(
        R"({"pairID":"P","target":"A","by":"B","signedAt":"2026-11-16T00:45:56Z","signature":"AQI="})");
    expectForm<VaporDuvod>(R"({"reason":"pair not found"})");
    expectForm<VaporDuvod>("{}");
}

TEST(RelayCalls, NeedABodyAndARoleThatExists) {
    EXPECT_FALSE(decode<ZalozitOdpoved>(""));
    EXPECT_FALSE(decode<VaporDuvod>("<html>500</html>"));
    EXPECT_FALSE(decode<ZalozitPozadavek>(
        R"({"deviceID":"D","key":"cmwqM3xGMJVSKt1eEBVQwtisuyhvw8BkzWmUXnrpXro=","role":"server"})"));
}

} // namespace
} // namespace morvex
