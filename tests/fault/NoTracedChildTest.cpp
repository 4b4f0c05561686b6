#include <gtest/gtest.h>

namespace {

/// Stands in for the tests that inject system faults into a save, on systems where they cannot run.
TEST(SaveFault, NeedsX86) {
    GTEST_SKIP() << "faults are put into the registers of a traced child, which is written for x86-64 alone";
}

} // namespace
