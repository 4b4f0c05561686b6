#include "app/customapps/MacCustomAppsService.h"
#include "tests/app/customapps/CustomAppsParts.h"
#include "tests/support/SlowDefaults.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvex {
namespace {

CompanionCustomApp phoneApp() {
    return {"p", "Počasí", "https://example.com", "t"};
}

/// Apps whose disk works when the test lets it.
class SlowCustomAppsTest : public testing::Test, public SlowDefaults {
  protected:
    SlowCustomAppsTest() {
        connection = service.onChange([this] { ++told; });
    }

    /// The first app of this computer, saved and off.
    void addOne() {
        EXPECT_FALSE(home.run(service.save({}, "a", "https://a", "tajné")));
        write();
        id = service.apps().at(0).id;
        EXPECT_TRUE(home.run(service.setEnabled(id, false)));
        write();
    }

    void start(Task<Result<void>> task) {
        home.start(note(std::move(task)));
        home.runUntilIdle();
    }

    Task<void> note(Task<Result<void>> task) {
        const auto kept = co_await std::move(task);
        ends.push_back(kept ? "kept" : "refused");
    }

    [[nodiscard]] bool isOn() const { return service.apps().at(0).enabled; }

    [[nodiscard]] std::string keptMetadata() const {
        return std::string(asText(kept().data("custom.apps.metadata").value_or(Bytes())));
    }

    CustomAppsParts parts{home};
    MemoryVault& vault = parts.vault;
    MacCustomAppsService service{parts.services(defaults)};
    int told = 0;
    Connection connection;
    std::string id;
    std::vector<std::string> ends;
};

TEST_F(SlowCustomAppsTest, TheListOfThePhoneIsToldOfWhenItIsOnTheDisk) {
    EXPECT_FALSE(home.run(service.replacePhoneApps({phoneApp()})));
    EXPECT_EQ(told, 0);
    write();
    EXPECT_EQ(told, 1);
    EXPECT_NE(keptMetadata(), "");
}

TEST_F(SlowCustomAppsTest, ANewAppIsThereOnceItIsSaved) {
    start(service.save({}, "a", "https://a", "tajné"));
    EXPECT_TRUE(service.apps().empty());
    write();
    EXPECT_EQ(service.apps().size(), 1U);
    EXPECT_EQ(ends, std::vector<std::string>{"kept"});
}

TEST_F(SlowCustomAppsTest, ANewAppThatCannotBeSavedLeavesNothingBehind) {
    breakSaves();
    start(service.save({}, "a", "https://a", "tajné"));
    write();
    mendSaves();
    write();
    EXPECT_TRUE(service.apps().empty());
    EXPECT_EQ(keptMetadata(), "");
    EXPECT_TRUE(vault.items.empty());
    EXPECT_EQ(ends, std::vector<std::string>{"refused"});
    EXPECT_EQ(told, 0);
}

TEST_F(SlowCustomAppsTest, OnCountsOnceItIsSavedAndOffAtOnce) {
    addOne();
    start(service.setEnabled(id, true));
    EXPECT_FALSE(isOn());
    write();
    EXPECT_TRUE(isOn());
    breakSaves();
    start(service.setEnabled(id, false));
    EXPECT_FALSE(isOn());
    write();
    start(service.setEnabled(id, true));
    write();
    EXPECT_FALSE(isOn());
    EXPECT_EQ(ends, (std::vector<std::string>{"kept", "kept", "refused"}));
    mendSaves();
    retry();
    EXPECT_NE(keptMetadata().find("\"enabled\":false"), std::string::npos);
}

TEST_F(SlowCustomAppsTest, OffEndsAnOnThatIsNotSavedYet) {
    addOne();
    start(service.setEnabled(id, true));
    start(service.setEnabled(id, false));
    for (int save = 0; save < 3; ++save) write();
    EXPECT_FALSE(isOn());
    EXPECT_NE(keptMetadata().find("\"enabled\":false"), std::string::npos);
}

TEST_F(SlowCustomAppsTest, AnAppIsSwitchedOnAlsoWhileThePhoneSendsItsList) {
    addOne();
    start(service.setEnabled(id, true));
    EXPECT_FALSE(home.run(service.replacePhoneApps({phoneApp()})));
    for (int save = 0; save < 3; ++save) write();
    EXPECT_TRUE(isOn());
    EXPECT_EQ(service.apps().size(), 2U);
}

TEST_F(SlowCustomAppsTest, ANewTokenNeverGoesToTheAddressBefore) {
    addOne();
    start(service.setEnabled(id, true));
    write();
    const auto asked = parts.http.requests.size();
    start(service.save(id, "a", "https://other", "nové"));
    service.refreshSoon();
    home.runUntilIdle();
    EXPECT_EQ(parts.http.requests.size(), asked) << "until the address is saved";
    write();
    ASSERT_GT(parts.http.requests.size(), asked);
    for (auto i = asked; i < parts.http.requests.size(); ++i) {
        EXPECT_EQ(parts.http.requests[i].url, "https://other/api/mcp");
        EXPECT_EQ(parts.http.requests[i].headers.at(0).second, "Bearer nové");
    }
}

TEST_F(SlowCustomAppsTest, AnAddressThatCannotBeSavedKeepsItsToken) {
    addOne();
    const auto before = vault.items;
    breakSaves();
    start(service.save(id, "a", "https://other", "nové"));
    write();
    mendSaves();
    write();
    EXPECT_EQ(ends, std::vector<std::string>{"refused"});
    EXPECT_EQ(service.apps().at(0).endpoint, "https://a");
    EXPECT_EQ(vault.items, before);
}

} // namespace
} // namespace morvex
