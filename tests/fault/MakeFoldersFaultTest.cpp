#include "platform/posix/base/AtomicFile.h"
#include "tests/fault/TracedChild.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace morvex {
namespace {

/// Creates a folder in an empty one while this call fails; returns whether it succeeded.
TracedEnd makeWith(std::size_t call) {
    TemporaryFolder folder;
    auto work = [path = folder.path() / "new"] {
        return [path] { return makePrivateFolders(path).has_value(); };
    };
    return runTraced(work, {SystemFault::Kind::fails, call, EIO});
}

TEST(MakeFoldersFault, AFolderIsMadeOnlyWhenItsNameIsFlushed) {
    // The calls: look at the folder and at its parent, create it, open the parent and flush it.
    constexpr std::size_t needed = 5;
    for (std::size_t call = 0; call < needed; ++call) EXPECT_EQ(makeWith(call).answer, false) << call;
    EXPECT_EQ(makeWith(needed).answer, true) << "closes it";
    EXPECT_FALSE(makeWith(needed + 1).struck);
}

} // namespace
} // namespace morvex
