#include "relay/PairStore.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestPair.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sys/stat.h>

using namespace morvex;

namespace {

constexpr Date now{std::chrono::seconds{1'800'000'000}};
const Digest tokenHash = sha256(asBytes("token"));

Member memberOf(const DeviceIdentity& device, DeviceRole role) {
    return {device.deviceID(), device.signingKey(), role};
}

/// A file with one pair that both devices have joined.
struct StoredFile {
    TemporaryFolder folder;
    std::filesystem::path path = folder.path() / "relay.db";
    TestPair pair;

    PairStore open() { return PairStore::open(path).value(); }

    void fill() {
        auto store = open();
        ASSERT_TRUE(store.create(pair.id, memberOf(pair.mac, DeviceRole::mac), tokenHash, now));
        ASSERT_TRUE(store.join(pair.id, memberOf(pair.phone, DeviceRole::phone)).value());
    }

    std::string refusal() {
        const auto store = PairStore::open(path);
        return store ? "opened" : store.error().popis().czech();
    }
};

void execute(const std::filesystem::path& file, const std::string& sql) {
    auto database = Database::open(file.string());
    ASSERT_TRUE(database);
    ASSERT_TRUE(database->execute(sql));
}

} // namespace

TEST(PairStore, ForgetsNobodyOverARestart) {
    StoredFile file;
    file.fill();
    auto store = file.open();
    const auto found = store.find(file.pair.id).value();
    ASSERT_TRUE(found);
    EXPECT_EQ(found->expiresAt, now);
    EXPECT_FALSE(found->isRevoked);
    ASSERT_TRUE(found->member(file.pair.mac.deviceID()));
    EXPECT_EQ(*found->member(file.pair.mac.deviceID()), memberOf(file.pair.mac, DeviceRole::mac));
    EXPECT_EQ(*found->peerOf(file.pair.mac.deviceID()), memberOf(file.pair.phone, DeviceRole::phone));
    EXPECT_EQ(store.findByToken(tokenHash).value()->id, file.pair.id);
}

TEST(PairStore, RemembersARevokedPairAsRevoked) {
    StoredFile file;
    file.fill();
    ASSERT_TRUE(file.open().revoke(file.pair.id, now));
    EXPECT_TRUE(file.open().find(file.pair.id).value()->isRevoked);
}

TEST(PairStore, LetsOnlyOneSecondDeviceIn) {
    StoredFile file;
    file.fill();
    auto first = file.open();
    auto second = file.open();
    EXPECT_FALSE(first.join(file.pair.id, memberOf(DeviceIdentity::generate(), DeviceRole::phone)).value());
    EXPECT_FALSE(second.join(file.pair.id, memberOf(file.pair.mac, DeviceRole::phone)).value());
    EXPECT_EQ(second.find(file.pair.id).value()->members.size(), 2U);
}

TEST(PairStore, KeepsNothingOfAPairThatItCouldNotCreate) {
    StoredFile file;
    file.fill();
    auto store = file.open();
    EXPECT_FALSE(store.create(PairID{"OTHER"}, memberOf(file.pair.mac, DeviceRole::mac), tokenHash, now));
    EXPECT_FALSE(store.find(PairID{"OTHER"}).value());
    EXPECT_TRUE(store.create(PairID{"OTHER"}, memberOf(file.pair.mac, DeviceRole::mac), Digest{}, now));
}

TEST(PairStore, ForgetsExpiredTokensAndPairsThatNobodyJoined) {
    using std::chrono::hours;
    using std::chrono::seconds;
    StoredFile file;
    file.fill();
    auto store = file.open();
    ASSERT_TRUE(store.create(PairID{"ALONE"}, memberOf(file.pair.mac, DeviceRole::mac), Digest{}, now));

    ASSERT_TRUE(store.sweep(now + hours{1}));
    EXPECT_TRUE(store.find(PairID{"ALONE"}).value());
    EXPECT_TRUE(store.findByToken(tokenHash).value());

    ASSERT_TRUE(store.sweep(now + hours{1} + seconds{1}));
    EXPECT_FALSE(store.find(PairID{"ALONE"}).value());
    EXPECT_FALSE(store.findByToken(tokenHash).value());
    EXPECT_EQ(store.find(file.pair.id).value()->members.size(), 2U);
}

TEST(PairStore, MakesAFileForItsOwnerOnly) {
    StoredFile file;
    file.open();
    struct stat status{};
    ASSERT_EQ(stat(file.path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST(PairStore, RefusesADamagedFileWithClearWords) {
    StoredFile file;
    std::ofstream{file.path}
        << "this was never a database, and it is long enough to be looked at as one by anybody";
    EXPECT_EQ(file.refusal(), "cannot use the database " + file.path.string() + ": file is not a database");
}

TEST(PairStore, RefusesAFileWhosePagesAreDamaged) {
    StoredFile file;
    file.fill();
    std::fstream stream{file.path, std::ios::in | std::ios::out | std::ios::binary};
    stream.seekp(4096);
    stream << std::string(4096, '\x55');
    stream.close();
    EXPECT_THAT(file.refusal(), testing::StartsWith("cannot use the database"));
}

TEST(PairStore, RefusesTheDatabaseOfAnotherProgram) {
    StoredFile file;
    execute(file.path, "CREATE TABLE theirs (value TEXT)");
    EXPECT_THAT(file.refusal(), testing::EndsWith("it belongs to another program"));
}

TEST(PairStore, RefusesTheSchemaOfAnotherVersion) {
    StoredFile file;
    file.fill();
    execute(file.path, "PRAGMA user_version = 3");
    EXPECT_THAT(file.refusal(), testing::EndsWith("it was written by another version of this program"));
}

TEST(PairStore, RefusesAFolderThatIsNotThere) {
    StoredFile file;
    file.path = file.folder.path() / "missing/relay.db";
    EXPECT_THAT(file.refusal(), testing::EndsWith("No such file or directory"));
}

TEST(PairStore, KeepsPairsInMemoryWhenAsked) {
    auto store = PairStore::open(":memory:").value();
    const TestPair pair;
    ASSERT_TRUE(store.create(pair.id, memberOf(pair.mac, DeviceRole::mac), tokenHash, now));
    EXPECT_TRUE(store.find(pair.id).value());
    EXPECT_FALSE(std::filesystem::exists(":memory:"));
}
