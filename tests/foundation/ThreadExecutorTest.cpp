#include "foundation/ThreadExecutor.h"

#include <gtest/gtest.h>

#include <memory>
#include <semaphore>
#include <thread>

namespace morvex {
namespace {

TEST(ThreadExecutor, MayBeDestroyedAsSoonAsAJobFromAnotherThreadHasRun) {
    for (int i = 0; i < 200; ++i) {
        auto executor = std::make_unique<ThreadExecutor>("short-lived");
        std::binary_semaphore ran(0);
        std::jthread poster([target = executor.get(), &ran] { target->post([&ran] { ran.release(); }); });
        ran.acquire();
        executor.reset();
    }
}

} // namespace
} // namespace morvex
