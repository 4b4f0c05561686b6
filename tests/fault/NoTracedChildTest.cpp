#include <gtest/gtest.h>

namespace {

/// Instead of all tests that bring faults of the system to a save, where they cannot be run.
TEST(SaveFault, NeedsX86) {
    GTEST_SKIP() << "faults are put into the registers of a traced child, which is written for x86-64 alone";
}

} // namespace
