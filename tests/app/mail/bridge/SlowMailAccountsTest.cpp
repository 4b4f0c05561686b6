#include "app/mail/bridge/MacMailAccounts.h"
#include "tests/app/mail/bridge/ScriptedMail.h"
#include "tests/support/SlowDefaults.h"

#include <gtest/gtest.h>

#include <utility>

namespace morvex {
namespace {

using Names = ScriptedMail::Names;

/// Accounts whose choice is saved when the test runs the disk.
class SlowMailAccountsTest : public testing::Test {
  protected:
    SlowMailAccountsTest() {
        mail.has({"A", "B", "C"});
        EXPECT_TRUE(disk.home.run(accounts.obnovit()));
        disk.write();
        for (const std::string name : {"B", "C"})
            EXPECT_TRUE(disk.home.run(accounts.nastav(name, false)).value());
        writeAll();
    }

    void TearDown() override { writeAll(); }

    void allow(const std::string& name) {
        disk.home.start(store(accounts.nastav(name, true)));
        disk.home.runUntilIdle();
    }

    Task<void> store(Task<Result<void>> task) { allowed.push_back((co_await std::move(task)).has_value()); }

    void writeAll() {
        constexpr int saves = 4; // more than a test makes
        for (int i = 0; i < saves; ++i) disk.write();
    }

    SlowDefaults disk;
    ScriptedMail mail{disk.home};
    MacMailAccounts accounts{{disk.defaults, mail.bridge}};
    std::vector<bool> allowed;
};

TEST_F(SlowMailAccountsTest, AnAccountIsAllowedOnceThatIsSaved) {
    allow("B");
    EXPECT_EQ(accounts.povolene(), Names{"A"});
    disk.write();
    EXPECT_EQ(accounts.povolene(), (Names{"A", "B"}));
    EXPECT_EQ(disk.kept().texts("mail.selectedAccounts"), (Names{"A", "B"}));
}

TEST_F(SlowMailAccountsTest, AnAccountIsForbiddenAtOnce) {
    disk.home.start(store(accounts.nastav("A", false)));
    disk.home.runUntilIdle();
    EXPECT_EQ(accounts.povolene(), Names{});
}

TEST_F(SlowMailAccountsTest, SwitchingOffEndsAnOnThatIsNotSaved) {
    allow("B");
    EXPECT_TRUE(disk.home.run(accounts.nastav("B", false)).value());
    writeAll();
    EXPECT_EQ(accounts.povolene(), Names{"A"});
    EXPECT_EQ(disk.kept().texts("mail.selectedAccounts"), Names{"A"});
}

TEST_F(SlowMailAccountsTest, AccountsThatAreAllowedTogetherAreAllAllowed) {
    allow("B");
    allow("C");
    writeAll();
    EXPECT_EQ(allowed, (std::vector<bool>{true, true}));
    EXPECT_EQ(accounts.povolene(), (Names{"A", "B", "C"}));
    EXPECT_EQ(disk.kept().texts("mail.selectedAccounts"), (Names{"A", "B", "C"}));
}

TEST_F(SlowMailAccountsTest, AnAccountThatIsForgottenWhileItIsAllowedStaysOff) {
    allow("B");
    mail.has({"A", "C"});
    EXPECT_TRUE(disk.home.run(accounts.obnovit()));
    writeAll();
    mail.has({"A", "B", "C"});
    EXPECT_TRUE(disk.home.run(accounts.obnovit()));
    EXPECT_EQ(accounts.povolene(), Names{"A"});
}

} // namespace
} // namespace morvex
