#include "shared-apple/OwnIdentity.h"

#include "platform/memory/MemoryVault.h"
#include "shared-apple/KeychainChyba.h"
#include "shared-apple/KeychainStore.h"
#include "tests/support/Devices.h"

#include <gtest/gtest.h>

#include <string>

namespace morvex {
namespace {

const std::string sluzba = "zz.bramwicks.tolvy";
const std::string signingAccount = "identita.podpisovy";
const std::string agreementAccount = "identita.dohodovy";

class OwnIdentityTest : public testing::Test {
  protected:
    MemoryVault vault;
    KeychainStore store{vault, sluzba};
};

TEST_F(OwnIdentityTest, IsMadeOnceAndStays) {
    auto first = ownIdentity(store).value();
    ASSERT_TRUE(first);
    EXPECT_EQ(ownIdentity(store).value()->deviceID(), first->deviceID());
}

TEST_F(OwnIdentityTest, AKeyThatIsLeftOfAnotherOneIsNeverJoinedWithANewOne) {
    ASSERT_TRUE(store.ulozIdentitu(test::newIdentity()));
    vault.items.erase({sluzba, signingAccount});
    vault.refusals["add " + agreementAccount] = vaultStatus::io;
    EXPECT_FALSE(ownIdentity(store)) << "as if the program had ended between the two keys";
    EXPECT_EQ(store.nactiIdentitu().value(), nullptr);
    vault.refusals.clear();
    EXPECT_TRUE(ownIdentity(store));
}

TEST_F(OwnIdentityTest, ARefusalIsToldAndNothingIsReplaced) {
    ASSERT_TRUE(store.ulozIdentitu(test::newIdentity()));
    const auto before = vault.items;
    vault.refusals["find " + signingAccount] = vaultStatus::interactionNotAllowed;
    auto own = ownIdentity(store);
    ASSERT_FALSE(own);
    EXPECT_TRUE(own.error().as<KeychainChyba>());
    EXPECT_EQ(vault.items, before);
}

} // namespace
} // namespace morvex
