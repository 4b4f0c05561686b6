#include "platform/memory/MemoryDefaults.h"
#include "tests/app/customapps/CustomAppsParts.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace morvex {
namespace {

/// When the apps are asked for their tools.
class CustomAppsRefreshTest : public testing::Test {
  protected:
    CustomAppsRefreshTest() {
        changed = service.onChange([this] { ++changes; });
        rowsChanged = service.onRowsChange([this] { ++rowChanges; });
    }

    void lend(const std::string& tool, const std::string& description = "reads") {
        parts.http.replies.push_back(
            {200,
             R"({"result":{"tools":[{"name":")" + tool + R"(","description":")" + description + R"("}]}})",
             {}});
    }

    std::string add(const std::string& name) {
        EXPECT_TRUE(*executor.run(service.save({}, name, "https://a.example", "")));
        return service.apps().back().id;
    }

    [[nodiscard]] std::size_t asked() const { return parts.http.requests.size(); }

    [[nodiscard]] std::size_t tools() const { return service.catalogue().tools().size(); }

    MemoryDefaults defaults;
    ManualExecutor executor;
    CustomAppsParts parts{executor};
    MacCustomAppsService service{parts.services(defaults)};
    int changes = 0;
    int rowChanges = 0;
    Connection changed;
    Connection rowsChanged;
};

TEST_F(CustomAppsRefreshTest, TheStartAsksNobody) {
    executor.runUntilIdle();
    EXPECT_EQ(asked(), 0U);
    EXPECT_EQ(changes, 0);
}

TEST_F(CustomAppsRefreshTest, EachChangeOfAnAppAsksTheEnabledOnes) {
    lend("a");
    const auto id = add("A");
    EXPECT_EQ(asked(), 1U);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(tools(), 1U);
    executor.run(service.setEnabled(id, false));
    EXPECT_EQ(asked(), 1U) << "nobody is enabled";
    EXPECT_EQ(tools(), 0U);
    EXPECT_EQ(changes, 2);
    lend("a");
    executor.run(service.setEnabled(id, true));
    EXPECT_EQ(asked(), 2U);
    executor.run(service.replacePhoneApps({{"p", "P", "https://p.example", ""}}));
    EXPECT_EQ(asked(), 4U);
    executor.run(service.remove(id));
    EXPECT_EQ(asked(), 5U);
    EXPECT_EQ(parts.http.requests.back().url, "https://p.example/api/mcp");
    EXPECT_EQ(changes, 5);
}

TEST_F(CustomAppsRefreshTest, WhatIsOffAsksNobodyAndLendsNothing) {
    lend("a");
    add("A");
    service.setActive(false);
    EXPECT_EQ(tools(), 0U);
    EXPECT_EQ(changes, 2);
    EXPECT_FALSE(service.apps().front().outcome);
    executor.run(service.refresh());
    EXPECT_EQ(asked(), 1U);
    EXPECT_EQ(changes, 2) << "nothing is taken away by that";
    service.setActive(true);
    executor.runUntilIdle();
    EXPECT_EQ(asked(), 1U) << "the caller refreshes";
    EXPECT_EQ(changes, 2);
    lend("a");
    executor.run(service.refresh());
    EXPECT_EQ(tools(), 1U);
}

TEST_F(CustomAppsRefreshTest, ARowTellsItsOutcome) {
    lend("a");
    add("A");
    ASSERT_TRUE(service.apps().front().outcome);
    EXPECT_EQ(service.apps().front().outcome->popis().czech(), "Připojeno · 1 nástrojů · 0 ms");
    executor.run(service.refresh());
    EXPECT_EQ(service.apps().front().outcome->popis().czech(), "Nepřipojeno: síť neodpovídá");
}

TEST_F(CustomAppsRefreshTest, AChangedToolIsShownInItsRowUntilAPersonHasLooked) {
    lend("a");
    const auto id = add("A");
    lend("a", "sends");
    executor.run(service.refresh());
    EXPECT_EQ(service.apps().front().news, 1U);
    const auto news = service.news(id);
    ASSERT_EQ(news.size(), 1U);
    EXPECT_EQ(tools(), 1U);
    const auto before = rowChanges;
    service.looked(id, news);
    EXPECT_EQ(service.apps().front().news, 0U);
    EXPECT_GT(rowChanges, before);
    executor.runUntilIdle();
    EXPECT_EQ(asked(), 2U);
}

TEST_F(CustomAppsRefreshTest, AHeldToolIsOfferedOnceAPersonHasLooked) {
    lend("a");
    const auto id = add("A");
    lend("a", "sends");
    service.setHoldsChanges(id, true);
    executor.runUntilIdle();
    EXPECT_TRUE(service.apps().front().holdsChanges);
    EXPECT_EQ(tools(), 0U);
    lend("a", "sends");
    service.looked(id, service.news(id));
    executor.runUntilIdle();
    EXPECT_EQ(tools(), 1U);
}

TEST_F(CustomAppsRefreshTest, TheToolsOfARemovedAppAreForgotten) {
    lend("a");
    const auto id = add("A");
    parts.seen.setHoldsChanges(id, true);
    executor.run(service.remove(id));
    EXPECT_FALSE(parts.seen.holdsChanges(id));
}

} // namespace
} // namespace morvex
