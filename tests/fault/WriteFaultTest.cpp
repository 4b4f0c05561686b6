#include "app/execution/SouboryBridge.h"
#include "platform/memory/ManualExecutor.h"
#include "shared/base/SystemError.h"
#include "tests/app/execution/FileTree.h"
#include "tests/fault/TracedChild.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace morvex {
namespace {

/// Whether writing a new file fails with this sentence when the given call reports that the file exists.
TracedEnd writeWith(std::size_t call, const std::string& sentence) {
    FileTree tree;
    auto work = [&] {
        return [&] {
            ManualExecutor executor;
            SouboryBridge files(executor);
            const auto written = executor.run(files.zapis("new", "x", {}, tree.allowed())).value();
            return !written && written.error().popis().czech() == sentence;
        };
    };
    return runTraced(work, {SystemFault::Kind::fails, call, EEXIST});
}

TEST(WriteFault, AFileThatAppearsAfterTheLookIsAFailedWrite) {
    const auto failed = "Zápis selhal: " + SystemError{EEXIST}.popis().czech();
    const auto refused = SouboryChyba{SouboryChyba::UzExistuje{"new"}}.popis().czech();
    std::size_t failures = 0;
    std::size_t call = 0;
    for (auto end = writeWith(call, failed); end.struck; end = writeWith(++call, failed)) {
        if (end.answer == true) ++failures;
        EXPECT_EQ(writeWith(call, refused).answer, false) << "nothing was there at the look, call " << call;
    }
    EXPECT_GT(call, 0U);
    EXPECT_GT(failures, 0U);
}

} // namespace
} // namespace morvex
