#include "shared-apple/PametoveUloziste.h"

#include "tests/support/Devices.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace morvex {
namespace {

TEST(PametoveUloziste, IsEmptyAtFirstAndLetsNothingBeDeleted) {
    PametoveUloziste uloziste;
    EXPECT_EQ(uloziste.nactiIdentitu().value(), nullptr);
    EXPECT_EQ(uloziste.nactiProtejsek().value(), std::nullopt);
    EXPECT_TRUE(uloziste.smazIdentitu());
    EXPECT_TRUE(uloziste.smazProtejsek());
}

TEST(PametoveUloziste, SavingReplacesAndDeletingClearsTheIdentityAlone) {
    PametoveUloziste uloziste;
    auto first = test::newIdentity();
    auto second = test::newIdentity();
    auto peer = test::remembered(*first, DeviceRole::phone);
    ASSERT_TRUE(uloziste.ulozProtejsek(peer));
    ASSERT_TRUE(uloziste.ulozIdentitu(first));
    ASSERT_TRUE(uloziste.ulozIdentitu(second));
    EXPECT_EQ(uloziste.nactiIdentitu().value(), second);
    ASSERT_TRUE(uloziste.smazIdentitu());
    EXPECT_EQ(uloziste.nactiIdentitu().value(), nullptr);
    EXPECT_EQ(uloziste.nactiProtejsek().value(), peer);
}

TEST(PametoveUloziste, SavingReplacesAndDeletingClearsThePeerAlone) {
    PametoveUloziste uloziste;
    auto identity = test::newIdentity();
    ASSERT_TRUE(uloziste.ulozIdentitu(identity));
    ASSERT_TRUE(uloziste.ulozProtejsek(test::remembered(*test::newIdentity(), DeviceRole::phone)));
    auto peer = test::remembered(*test::newIdentity(), DeviceRole::phone);
    ASSERT_TRUE(uloziste.ulozProtejsek(peer));
    EXPECT_EQ(uloziste.nactiProtejsek().value(), peer);
    ASSERT_TRUE(uloziste.smazProtejsek());
    EXPECT_EQ(uloziste.nactiProtejsek().value(), std::nullopt);
    EXPECT_EQ(uloziste.nactiIdentitu().value(), identity);
}

TEST(PametoveUloziste, ServesSeveralThreads) {
    PametoveUloziste uloziste;
    const auto identity = test::newIdentity();
    const auto peer = test::remembered(*identity, DeviceRole::phone);
    auto work = [&] {
        for (int i = 0; i < 500; ++i) {
            ASSERT_TRUE(uloziste.ulozIdentitu(identity));
            ASSERT_TRUE(uloziste.ulozProtejsek(peer));
            auto identityRead = uloziste.nactiIdentitu().value();
            auto peerRead = uloziste.nactiProtejsek().value();
            EXPECT_TRUE(!identityRead || identityRead == identity);
            EXPECT_TRUE(!peerRead || *peerRead == peer);
            ASSERT_TRUE(uloziste.smazIdentitu());
            ASSERT_TRUE(uloziste.smazProtejsek());
        }
    };
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 4; ++i) threads.emplace_back(work);
    }
    EXPECT_EQ(uloziste.nactiIdentitu().value(), nullptr);
    EXPECT_EQ(uloziste.nactiProtejsek().value(), std::nullopt);
}

} // namespace
} // namespace morvex
