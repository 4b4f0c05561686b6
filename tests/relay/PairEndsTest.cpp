#include "relay/PairStore.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestPair.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

using namespace morvex;

namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::seconds;

constexpr Date now{seconds{1'800'000'000}};

/// The schema before pairs had ends, as it was written into files that are still in use.
constexpr const char* earlierSchema =
    "CREATE TABLE pairs (id TEXT PRIMARY KEY, tokenHash BLOB UNIQUE, expiresAt INTEGER NOT NULL,"
    " revokedAt INTEGER) STRICT, WITHOUT ROWID;"
    "CREATE TABLE members (pair TEXT NOT NULL REFERENCES pairs (id) ON DELETE CASCADE, role TEXT NOT NULL,"
    " device TEXT NOT NULL, key BLOB NOT NULL, PRIMARY KEY (pair, role), UNIQUE (pair, device))"
    " STRICT, WITHOUT ROWID;"
    "PRAGMA application_id = 1297504338; PRAGMA user_version = 1;";

struct PairEndsTest : testing::Test {
    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "relay.db";
    TestPair devices;

    PairStore open() { return PairStore::open(file).value(); }

    void create(PairStore& store, const std::string& name) {
        const Member mac{devices.mac.deviceID(), devices.mac.signingKey(), DeviceRole::mac};
        ASSERT_TRUE(store.create(PairID{name}, mac, sha256(asBytes(name)), now));
    }

    void createJoined(PairStore& store, const std::string& name) {
        create(store, name);
        const Member phone{devices.phone.deviceID(), devices.phone.signingKey(), DeviceRole::phone};
        ASSERT_TRUE(store.join(PairID{name}, phone).value());
    }

    static void sweepAll(PairStore& store, Date date) {
        while (store.sweep(date).value()) {
        }
    }

    static bool knows(PairStore& store, const std::string& name) {
        return store.find(PairID{name}).value().has_value();
    }

    /// Of the times at which the pair is known still and no more.
    static void expectEnd(PairStore& store, const std::string& name, Date end) {
        sweepAll(store, end);
        EXPECT_TRUE(knows(store, name));
        sweepAll(store, end + seconds{1});
        EXPECT_FALSE(knows(store, name));
    }

    void layEarlierFile(const std::vector<std::string>& rows) {
        auto database = Database::open(file.string()).value();
        ASSERT_TRUE(database.execute(earlierSchema));
        for (const auto& row : rows) ASSERT_TRUE(database.execute(row)) << row;
    }

    /// A row of each table for every device of the pair.
    static std::vector<std::string> earlierPair(const std::string& name, const std::string& revokedAt,
                                                std::size_t members) {
        std::vector<std::string> rows{"INSERT INTO pairs VALUES ('" + name + "', NULL, 1800000000, " +
                                      revokedAt + ")"};
        for (std::size_t index = 0; index < members; ++index)
            rows.push_back("INSERT INTO members VALUES ('" + name + "', '" + (index == 0 ? "mac" : "phone") +
                           "', 'DEVICE" + std::to_string(index) + "', zeroblob(32))");
        return rows;
    }

    /// All that SQLite knows of the tables and indexes of a file, and the marks of its owner and version.
    static std::vector<std::string> schemaOf(const std::filesystem::path& path) {
        auto database = Database::open(path.string()).value();
        std::vector<std::string> texts;
        for (const char* sql : {"SELECT name || ': ' || ifnull(sql, '') FROM sqlite_schema ORDER BY name",
                                "PRAGMA application_id", "PRAGMA user_version"}) {
            auto rows = database.rows(sql).value();
            while (rows.next().value()) texts.push_back(rows.text(0));
        }
        return texts;
    }

    std::int64_t pages() {
        auto database = Database::open(file.string()).value();
        auto rows = database.rows("PRAGMA page_count").value();
        EXPECT_TRUE(rows.next().value());
        return rows.integer(0);
    }

    /// Puts tens of thousands of pairs into the file, which nobody joins; `ends` are the values of the
    /// columns behind the token's end.
    void createThousands(const std::string& ends) {
        const auto date = std::to_string(wholeSeconds(now));
        auto database = Database::open(file.string()).value();
        ASSERT_TRUE(database.execute(
            "BEGIN; WITH RECURSIVE numbers (n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM numbers LIMIT 20000) "
            "INSERT INTO pairs SELECT hex(randomblob(13)), randomblob(32), " +
            date + ", " + ends +
            " FROM numbers; INSERT INTO members SELECT id, 'mac', hex(randomblob(16)), " +
            "randomblob(32) FROM pairs WHERE tokenHash IS NOT NULL; COMMIT"));
    }
};

} // namespace

TEST_F(PairEndsTest, APairThatNobodyUsesIsForgottenAfterTwoDays) {
    auto store = open();
    createJoined(store, "PAIR");
    expectEnd(store, "PAIR", now + days{2});
}

TEST_F(PairEndsTest, APairIsForgottenWhenNobodyHasLoggedInForHalfAYear) {
    auto store = open();
    createJoined(store, "PAIR");
    const std::vector pairs{PairID{"PAIR"}};
    ASSERT_TRUE(store.keep(pairs, now + days{1}));
    ASSERT_TRUE(store.keep(pairs, now + days{100}));
    expectEnd(store, "PAIR", now + days{280});
}

TEST_F(PairEndsTest, AUseIsWrittenDownOnceADay) {
    auto store = open();
    createJoined(store, "PAIR");
    const std::vector pairs{PairID{"PAIR"}};
    ASSERT_TRUE(store.keep(pairs, now));
    ASSERT_TRUE(store.keep(pairs, now + days{1}));
    expectEnd(store, "PAIR", now + days{180});
}

TEST_F(PairEndsTest, ALoginKeepsNoPairThatIsNotJoinedOrRevoked) {
    auto store = open();
    create(store, "ALONE");
    createJoined(store, "REVOKED");
    ASSERT_TRUE(store.revoke(PairID{"REVOKED"}, now));
    const std::vector pairs{PairID{"ALONE"}, PairID{"REVOKED"}, PairID{"UNKNOWN"}};
    ASSERT_TRUE(store.keep(pairs, now + days{10}));
    expectEnd(store, "ALONE", now + hours{1});
    expectEnd(store, "REVOKED", now + days{180});
}

TEST_F(PairEndsTest, ASecondRevocationDoesNotPutTheEndOff) {
    auto store = open();
    createJoined(store, "PAIR");
    ASSERT_TRUE(store.revoke(PairID{"PAIR"}, now));
    ASSERT_TRUE(store.revoke(PairID{"PAIR"}, now + days{30}));
    expectEnd(store, "PAIR", now + days{180});
}

TEST_F(PairEndsTest, ASweepTakesSmallStepsAndLeavesNothingOfAForgottenPair) {
    auto store = open();
    constexpr auto count = static_cast<int>(PairStore::rowsAtOnce) + 10;
    for (int index = 0; index < count; ++index) create(store, "ALONE" + std::to_string(index));
    createJoined(store, "PAIR");
    const auto left = [&] {
        auto database = Database::open(file.string()).value();
        auto rows = database.rows("SELECT count(*) FROM members").value();
        EXPECT_TRUE(rows.next().value());
        return rows.integer(0);
    };
    EXPECT_TRUE(store.sweep(now + hours{2}).value());
    EXPECT_EQ(left(), 10 + 2);
    EXPECT_FALSE(store.sweep(now + hours{2}).value());
    EXPECT_EQ(left(), 2);
}

TEST_F(PairEndsTest, TheFileGivesBackThePagesOfForgottenPairs) {
    auto store = open();
    createThousands("NULL, 1800003600");
    const auto before = pages();
    ASSERT_GT(before, 2000);
    sweepAll(store, now + hours{2});
    EXPECT_EQ(pages(), before);
    while (store.shrink().value()) {
    }
    EXPECT_LT(pages(), 300);
    EXPECT_TRUE(store.check());
}

TEST_F(PairEndsTest, AnEarlierFileKeepsItsPairsAndGetsEnds) {
    auto rows = earlierPair("JOINED", "NULL", 2);
    std::ranges::copy(earlierPair("REVOKED", "1700000000", 2), std::back_inserter(rows));
    std::ranges::copy(earlierPair("ALONE", "NULL", 1), std::back_inserter(rows));
    std::ranges::copy(earlierPair("UNUSED", "NULL", 2), std::back_inserter(rows));
    std::ranges::copy(earlierPair("REVOKED ALONE", "1700000000", 1), std::back_inserter(rows));
    layEarlierFile(rows);
    auto store = open();
    EXPECT_EQ(store.find(PairID{"JOINED"}).value()->members.size(), 2U);
    EXPECT_TRUE(store.find(PairID{"REVOKED"}).value()->isRevoked);
    sweepAll(store, now);
    expectEnd(store, "ALONE", now + hours{1});
    EXPECT_TRUE(knows(store, "JOINED"));
    ASSERT_TRUE(store.keep(std::vector{PairID{"JOINED"}}, now + days{5}));
    sweepAll(store, now + days{180});
    EXPECT_TRUE(knows(store, "UNUSED"));
    EXPECT_TRUE(knows(store, "REVOKED ALONE"));
    expectEnd(store, "REVOKED", now + days{180});
    EXPECT_FALSE(knows(store, "UNUSED"));
    EXPECT_FALSE(knows(store, "REVOKED ALONE"));
    expectEnd(store, "JOINED", now + days{185});
}

TEST_F(PairEndsTest, AnEarlierFileGetsTheSchemaOfANewOne) {
    layEarlierFile({});
    open();
    const auto fresh = folder.path() / "fresh.db";
    ASSERT_TRUE(PairStore::open(fresh));
    EXPECT_EQ(schemaOf(file), schemaOf(fresh));
}

TEST_F(PairEndsTest, AnEarlierFileThatCannotBeTakenOverStaysAsItWas) {
    layEarlierFile({"CREATE INDEX pairsByToken ON pairs (id)"});
    const auto before = schemaOf(file);
    EXPECT_FALSE(PairStore::open(file));
    EXPECT_EQ(schemaOf(file), before);
}

TEST_F(PairEndsTest, AnEarlierFileLearnsToGivePagesBackWhileItIsInUse) {
    layEarlierFile({});
    createThousands("NULL");
    auto serving = open();
    createJoined(serving, "PAIR");
    ASSERT_GT(pages(), 1500);
    {
        auto upkeep = open();
        sweepAll(upkeep, now + hours{2});
        while (upkeep.shrink().value()) {
        }
    }
    EXPECT_LT(pages(), 300);
    // The store that was open meanwhile writes into the file as it is now.
    for (int count = 0; count < 100; ++count) create(serving, "LATER" + std::to_string(count));
    sweepAll(serving, now + hours{2});
    while (serving.shrink().value()) {
    }
    EXPECT_TRUE(serving.check());
    EXPECT_TRUE(knows(serving, "PAIR"));
}
