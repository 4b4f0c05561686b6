#include "phone/SettingsSync.h"

#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryVault.h"
#include "shared-apple/MessageTooLong.h"

#include <gtest/gtest.h>

#include <sstream>

namespace morvex {
namespace {

/// A link on which lists of apps are too long.
class NoRoomForApps final : public Outbox {
  public:
    Task<Result<void>> trySend(MacPayload payload, std::string) override {
        if (payload.as<MacPayload::CustomApps>()) co_return fail(MessageTooLong{});
        ++sent;
        co_return Result<void>{};
    }

    Task<std::string> sendMilestone() override { co_return "milestone"; }

    int sent = 0;
};

TEST(SettingsSync, WhatNoFrameCanTakeIsToldOnceAndNeverCountsAsDelivered) {
    ManualExecutor executor;
    MemoryVault vault;
    PhoneSettings settings(vault, "morvex-phone");
    std::ostringstream out;
    std::ostringstream err;
    Terminal terminal{{out}, {err}};
    NoRoomForApps outbox;
    SettingsSync sync{settings, outbox, terminal};
    ASSERT_TRUE(settings.keep(std::vector<CompanionCustomApp>{{"1", "Počasí", "https://example.com", "t"}}));
    for (int session = 0; session < 2; ++session) {
        ASSERT_TRUE(settings.keep(CompanionPreferences{"de", "", {}}));
        ASSERT_TRUE(executor.run(sync.offer()));
        ASSERT_TRUE(
            executor.run(sync.heard(SecureLink::Zprava{{MacPayload::ToolResult{true, "{}"}}, "milestone"})));
        EXPECT_TRUE(sync.isSettled());
    }
    EXPECT_EQ(outbox.sent, 2);
    EXPECT_TRUE(settings.isConfirmed(PhoneSettings::Kind::preferences));
    EXPECT_FALSE(settings.isConfirmed(PhoneSettings::Kind::apps));
    EXPECT_EQ(err.str(), "morvex-phone: Seznam aplikací je na přenos příliš dlouhý. Zůstane jen tady.\n");
}

} // namespace
} // namespace morvex
