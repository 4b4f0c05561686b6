#include "relay/StoreUpkeep.h"

#include "tests/relay/RunningRelay.h"
#include "tests/support/RelayClient.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

using namespace morvex;

namespace {

using std::chrono::days;

constexpr Date now{std::chrono::seconds{1'800'000'000}};

Date today() {
    return std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
}

struct StoreUpkeepTest : testing::Test {
    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "relay.db";
    TestPair devices;
    /// That of the relay, open beside the upkeep's.
    PairStore serving = PairStore::open(file).value();

    void createJoined(const std::string& name, Date tokenEnd = now) {
        const Member mac{devices.mac.deviceID(), devices.mac.signingKey(), DeviceRole::mac};
        const Member phone{devices.phone.deviceID(), devices.phone.signingKey(), DeviceRole::phone};
        ASSERT_TRUE(serving.create(PairID{name}, mac, sha256(asBytes(name)), tokenEnd));
        ASSERT_TRUE(serving.join(PairID{name}, phone).value());
    }

    [[nodiscard]] bool knows(const std::string& name) {
        return serving.find(PairID{name}).value().has_value();
    }
};

} // namespace

TEST_F(StoreUpkeepTest, WritesDownUsesAndForgetsBesideTheServingStore) {
    createJoined("USED");
    createJoined("UNUSED");
    auto upkeep = StoreUpkeep::create(file, [](std::string_view line) { ADD_FAILURE() << line; }).value();
    upkeep->used(PairID{"USED"});
    while (upkeep->step(now + days{1})) {
    }
    while (upkeep->step(now + days{3})) {
    }
    EXPECT_TRUE(knows("USED"));
    EXPECT_FALSE(knows("UNUSED"));
}

TEST_F(StoreUpkeepTest, OnItsOwnThreadTellsThatTheFileIsDamaged) {
    createJoined("OVER", today() - days{3});
    std::vector<std::string> lines;
    auto upkeep = StoreUpkeep::create(file, [&](std::string_view line) { lines.emplace_back(line); }).value();
    // An index whose pages belong to nothing any more.
    auto other = Database::open(file.string()).value();
    ASSERT_TRUE(
        other.execute("PRAGMA writable_schema = ON; DELETE FROM sqlite_schema WHERE name = 'pairsByEnd';"
                      "PRAGMA schema_version = 1000"));
    upkeep->start();
    // It checks first, and goes on.
    while (knows("OVER")) std::this_thread::yield();
    upkeep.reset();
    EXPECT_THAT(lines, testing::ElementsAre(testing::StartsWith("checking the database failed: ")));
}

TEST_F(StoreUpkeepTest, TellsOfADatabaseItCannotUseAndGoesOn) {
    createJoined("PAIR");
    std::vector<std::string> lines;
    auto upkeep = StoreUpkeep::create(file, [&](std::string_view line) { lines.emplace_back(line); }).value();
    auto locker = Database::open(file.string()).value();
    ASSERT_TRUE(locker.execute("DROP TABLE members"));
    upkeep->used(PairID{"PAIR"});
    EXPECT_FALSE(upkeep->step(now));
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines[0], "keeping pairs failed: no such table: members");
}

TEST_F(StoreUpkeepTest, KeepsThePairsThatLogInAtARelay) {
    createJoined("PAIR", today());
    devices.id = PairID{"PAIR"};
    {
        RunningRelay relay{RunningRelay::quickLimits(), PairStore::open(file).value()};
        DeviceSocket phone{relay.port()};
        phone.logIn(devices, devices.phone, false);
    }
    ASSERT_TRUE(serving.sweep(today() + days{179}));
    EXPECT_TRUE(knows("PAIR"));
}
