#include "tests/model/NotesHistory.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

namespace morvex {
namespace {

constexpr std::uint64_t firstSeed = 20'270'115;
constexpr int histories = 10'000;
constexpr int stepsEach = 20;

TEST(NotesModel, BothSidesEndAlikeAndNoAcknowledgedEditIsLost) {
    // Saves are flushed to the disk, which is cheap on a memory file system.
    const bool hasMemoryFolder = ::access("/dev/shm", W_OK) == 0;
    EnvironmentValue base("TMPDIR",
                          hasMemoryFolder ? "/dev/shm" : std::filesystem::temp_directory_path().string());
    std::size_t acknowledgedOfPhone = 0;
    std::size_t acknowledgedOfMac = 0;
    std::size_t losses = 0;
    for (int i = 0; i < histories; ++i) {
        const auto seed = firstSeed + static_cast<std::uint64_t>(i);
        TemporaryFolder folder;
        NotesHistory history(seed, folder.path());
        history.live(stepsEach);
        history.finish();
        ASSERT_EQ(history.difference(), "") << "seed " << seed;
        ASSERT_EQ(history.lostEdit(), "") << "seed " << seed;
        acknowledgedOfPhone += history.acknowledgedOfPhone();
        acknowledgedOfMac += history.acknowledgedOfMac();
        losses += history.losses();
    }
    RecordProperty("seed", std::to_string(firstSeed));
    for (const auto count : {acknowledgedOfPhone, acknowledgedOfMac, losses})
        EXPECT_GT(count, static_cast<std::size_t>(histories) / 2) << "the histories are about nothing";
}

} // namespace
} // namespace morvex
