#include "app/customapps/CustomAppsFeature.h"

#include "app/companion/ToolGate.h"
#include "app/settings/MacIntegrationSettings.h"
#include "tests/support/CompanionHarness.h"
#include "tests/support/InstalledAgents.h"

#include <algorithm>

namespace morvex {
namespace {

class CustomAppsFeatureTest : public CompanionHarness {
  protected:
    void lend(const std::string& tool, int times = 1) {
        for (int time = 0; time < times; ++time)
            http.replies.push_back({200, R"({"result":{"tools":[{"name":")" + tool + R"("}]}})", {}});
    }

    void add(const std::string& name) {
        EXPECT_TRUE(
            ended(features->customApps.service().save({}, name, "https://a.example", "")).has_value());
        executor.runUntilIdle();
    }

    std::vector<std::string> offered() {
        std::vector<std::string> names;
        for (const auto& tool : companion->toolGate().nabizeneNastroje()) names.push_back(tool.name);
        return names;
    }

    std::string customTool() {
        for (const auto& name : offered())
            if (name.starts_with("mac.custom.")) return name;
        return "none";
    }

    std::vector<std::string> inStatus(const MacStatus& status) {
        std::vector<std::string> names;
        for (const auto& tool : status.tools) names.push_back(tool.name);
        return names;
    }
};

TEST_F(CustomAppsFeatureTest, AnAppsToolRuns) {
    startSecured();
    lend("now");
    add("Počasí");
    const auto name = customTool();
    ASSERT_NE(name, "none");
    http.replies.push_back({200, R"({"result":{"content":[{"text":"12"}]}})", {}});
    const auto answer = call(name, R"({"town":"Brno"})");
    EXPECT_TRUE(answer.ok);
    EXPECT_EQ(answer.json, R"({"ok":true,"app":"Počasí","text":"12"})");
    EXPECT_TRUE(http.requests.back().body.contains(R"("arguments":{"town":"Brno"})"));
    http.replies.push_back({200, R"({"result":{"isError":true}})", {}});
    EXPECT_FALSE(call(name, "{}").ok);
}

TEST_F(CustomAppsFeatureTest, AfterTheStartTheAppsAreAsked) {
    startSecured();
    lend("now");
    add("Počasí");
    end();
    lend("now");
    startSecured();
    EXPECT_NE(customTool(), "none");
}

TEST_F(CustomAppsFeatureTest, EachChangedSwitchAsksAnewWhileTheFamilyIsOn) {
    startSecured();
    lend("now", 3);
    add("Počasí");
    EXPECT_EQ(http.requests.size(), 1U);
    companion->integrations().turnOff(Integration::notes);
    executor.runUntilIdle();
    EXPECT_EQ(http.requests.size(), 2U);
    EXPECT_NE(customTool(), "none");
    companion->integrations().turnOff(Integration::customApps);
    executor.runUntilIdle();
    EXPECT_EQ(http.requests.size(), 2U);
    EXPECT_EQ(customTool(), "none");
    EXPECT_TRUE(ended(companion->integrations().turnOn(Integration::customApps)).has_value());
    executor.runUntilIdle();
    EXPECT_EQ(http.requests.size(), 3U);
    EXPECT_NE(customTool(), "none");
}

TEST_F(CustomAppsFeatureTest, TheStatusNamesTheToolsOfThisComputersAppsOnly) {
    startSecured();
    lend("now");
    add("Počasí");
    auto statuses = takeStatuses();
    ASSERT_FALSE(statuses.empty());
    EXPECT_EQ(std::ranges::count(inStatus(statuses.back()), customTool()), 1);
    lend("now", 2);
    executor.run(features->customApps.service().replacePhoneApps({{"p", "P", "https://p.example", ""}}));
    executor.runUntilIdle();
    statuses = takeStatuses();
    ASSERT_FALSE(statuses.empty());
    const auto named = inStatus(statuses.back());
    EXPECT_EQ(std::ranges::count_if(named, [](const auto& name) { return name.starts_with("mac.custom."); }),
              1);
    EXPECT_EQ(std::ranges::count(offered(), "mac.custom.p.now"), 1);
}

TEST_F(CustomAppsFeatureTest, TheComputersOwnAssistantAsksBeforeACustomTool) {
    startSecured();
    lend("now");
    add("Počasí");
    executor.start([](ToolGate& gate, std::string name) -> Task<void> {
        (void)co_await gate.provestMistne(std::move(name), {});
    }(companion->toolGate(), customTool()));
    executor.runUntilIdle();
    EXPECT_TRUE(companion->schvalovani().zadost().value());
    EXPECT_EQ(http.requests.size(), 1U);
    companion->schvalovani().vyresit(companion->schvalovani().zadost().value()->id, false);
    executor.runUntilIdle();
}

TEST_F(CustomAppsFeatureTest, AnAppsToolIsOfferedBetweenWebSearchAndTheAgents) {
    installAgents(temporary.path() / "bin", environment, programs);
    startSecured();
    allowFolder("f");
    EXPECT_TRUE(executor.run(features->voice.controller().setAPIKey("k")));
    EXPECT_TRUE(ended(companion->integrations().turnOn(Integration::webSearch)).has_value());
    lend("now");
    add("Počasí");
    const auto names = offered();
    const auto custom = std::ranges::find(names, customTool());
    ASSERT_NE(custom, names.end());
    ASSERT_NE(custom, names.begin());
    EXPECT_EQ(*(custom - 1), "mac.web.search");
    ASSERT_NE(custom + 1, names.end());
    EXPECT_EQ(*(custom + 1), "mac.codex.run");
}

TEST_F(CustomAppsFeatureTest, TheLargestListsOfToolsFitIntoAStatus) {
    startSecured();
    // A quotation mark is the byte that grows most in a text within a text.
    const std::string schema = R"(,"inputSchema":{"a":")" + [] {
        std::string quotes;
        while (quotes.size() < 16'000) quotes += R"(\")";
        return quotes;
    }() + "\"}}";
    std::string tools;
    for (int i = 0; i < 256; ++i)
        tools += (i == 0 ? "" : ",") + (R"({"name":"t)" + std::to_string(i) + "\"" + schema);
    const HttpReply list{200, R"({"result":{"tools":[)" + tools + "]}}", {}};
    http.replies.push_back(list);
    add("A");
    http.replies.push_back(list);
    http.replies.push_back(list);
    add("B");
    const auto statuses = takeStatuses();
    ASSERT_FALSE(statuses.empty());
    EXPECT_EQ(trouble(), "none");
    EXPECT_EQ(std::ranges::count_if(inStatus(statuses.back()),
                                    [](const auto& name) { return name.starts_with("mac.custom."); }),
              2 * static_cast<int>(customToolLimits::longestOfApp / 16'020));
}

} // namespace
} // namespace morvex
