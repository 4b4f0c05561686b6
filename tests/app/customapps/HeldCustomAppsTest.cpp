#include "platform/memory/MemoryDefaults.h"
#include "tests/app/customapps/CustomAppsParts.h"
#include "tests/app/customapps/HeldHttp.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace morvex {
namespace {

/// Apps whose servers answer when the test says so.
class HeldCustomAppsTest : public testing::Test {
  protected:
    HeldCustomAppsTest() {
        changed = service.onChange([this] { ++changes; });
    }

    ~HeldCustomAppsTest() override {
        service.setActive(false);
        executor.runUntilIdle();
    }

    std::string add(const std::string& name, const std::string& endpoint) {
        EXPECT_TRUE(*executor.run(service.save({}, name, endpoint, "")));
        return service.apps().back().id;
    }

    void answer(std::size_t number) {
        http.answer(number, {200, R"({"result":{"tools":[{"name":"t"}]}})", {}});
        executor.runUntilIdle();
    }

    [[nodiscard]] std::size_t tools() const { return service.catalogue().tools().size(); }

    MemoryDefaults defaults;
    ManualExecutor executor;
    HeldHttp http;
    CustomAppsParts parts{executor};
    MacCustomAppsService service{
        {defaults, parts.keychain, parts.random, http, executor, parts.clock, parts.seen, parts.scope}};
    int changes = 0;
    Connection changed;
};

TEST_F(HeldCustomAppsTest, TheEditorIsAnsweredWhileTheAppIsAsked) {
    add("A", "https://a.example");
    EXPECT_EQ(service.apps().front().outcome.value().popis().czech(), "Zjišťuji nástroje…");
    answer(0);
    EXPECT_EQ(service.apps().front().outcome.value().popis().czech(), "Připojeno · 1 nástrojů · 0 ms");
    EXPECT_EQ(changes, 1);
}

TEST_F(HeldCustomAppsTest, WhatARefreshTookAwayIsToldAlsoWhenANewerOneAsksNobody) {
    const auto id = add("A", "https://a.example");
    answer(0);
    EXPECT_EQ(changes, 1);
    service.refreshSoon();
    executor.runUntilIdle();
    executor.run(service.setEnabled(id, false));
    executor.runUntilIdle();
    EXPECT_EQ(tools(), 0U);
    EXPECT_EQ(changes, 2);
}

TEST_F(HeldCustomAppsTest, ToolsThatCameDuringARefreshAreToldAway) {
    const auto one = add("A", "https://a.example");
    const auto two = add("B", "https://b.example");
    answer(1);
    EXPECT_EQ(tools(), 1U) << "anybody may read the offer now";
    executor.run(service.setEnabled(one, false));
    executor.run(service.setEnabled(two, false));
    executor.runUntilIdle();
    EXPECT_EQ(tools(), 0U);
    EXPECT_EQ(changes, 1);
}

TEST_F(HeldCustomAppsTest, SwitchingTheFamilyOffEndsARefresh) {
    add("A", "https://a.example");
    service.setActive(false);
    executor.runUntilIdle();
    EXPECT_TRUE(http.requests.at(0).stop.stop_requested());
    EXPECT_EQ(tools(), 0U);
    EXPECT_FALSE(service.apps().front().outcome);
}

TEST_F(HeldCustomAppsTest, AListThatChangesNothingDisturbsNoRefresh) {
    const CompanionCustomApp entry{"p", "P", "https://p.example", "secret"};
    executor.run(service.replacePhoneApps({entry}));
    executor.runUntilIdle();
    ASSERT_EQ(http.requests.size(), 1U);
    executor.run(service.replacePhoneApps({entry}));
    executor.runUntilIdle();
    EXPECT_EQ(http.requests.size(), 1U);
    EXPECT_FALSE(http.requests[0].stop.stop_requested());
    auto other = entry;
    other.token = "other";
    executor.run(service.replacePhoneApps({other}));
    executor.runUntilIdle();
    EXPECT_TRUE(http.requests[0].stop.stop_requested());
    ASSERT_EQ(http.requests.size(), 2U);
    answer(1);
    executor.run(service.replacePhoneApps({other}));
    executor.runUntilIdle();
    EXPECT_EQ(http.requests.size(), 3U) << "a server that was down may be there now";
}

TEST_F(HeldCustomAppsTest, AnAppThatThePhoneTakesAwayAndBringsBackIsHeldAsBefore) {
    const CompanionCustomApp entry{"p", "P", "https://p.example", ""};
    executor.run(service.replacePhoneApps({entry}));
    executor.runUntilIdle();
    answer(0);
    parts.seen.setHoldsChanges("p", true);
    executor.run(service.replacePhoneApps({}));
    executor.run(service.replacePhoneApps({entry}));
    EXPECT_TRUE(service.apps().front().holdsChanges);
}

} // namespace
} // namespace morvex
