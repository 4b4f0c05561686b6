#include "tests/support/ChildProgram.h"
#include "tests/support/Sanitized.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fnmatch.h>
#include <sstream>

namespace {

constexpr const char* alone = "MORVEX_TEST_ALONE";

/// Runs one test as a program of its own. A process has one session bus, which GLib keeps for its whole life.
bool passesAlone(const std::string& program, const std::string& name) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::setenv(alone, "1", 1);
        ::setenv("ASAN_OPTIONS", morvex::wholeStacks().c_str(), 1);
        const std::string filter = "--gtest_filter=" + name;
        ::execl(program.c_str(), program.c_str(), filter.c_str(), "--gtest_brief=1", nullptr);
        ::_exit(127);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    const bool passed = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    std::printf("%s %s\n", passed ? "[  PASSED  ]" : "[  FAILED  ]", name.c_str());
    return passed;
}

/// Patterns with colons between them, as of --gtest_filter.
bool matches(const std::string& name, const std::string& patterns) {
    std::istringstream all(patterns);
    for (std::string each; std::getline(all, each, ':');)
        if (::fnmatch(each.c_str(), name.c_str(), 0) == 0) return true;
    return false;
}

} // namespace

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (std::getenv(alone)) return RUN_ALL_TESTS();
    if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
    const std::string filter = testing::GTEST_FLAG(filter);
    const auto without = std::min(filter.find('-'), filter.size());
    const auto only = without == 0 ? "*" : filter.substr(0, without);
    const auto never = without < filter.size() ? filter.substr(without + 1) : "";
    int failed = 0;
    const auto& all = *testing::UnitTest::GetInstance();
    for (int suite = 0; suite < all.total_test_suite_count(); ++suite) {
        const auto& tests = *all.GetTestSuite(suite);
        for (int each = 0; each < tests.total_test_count(); ++each) {
            const std::string name = std::string(tests.name()) + "." + tests.GetTestInfo(each)->name();
            if (matches(name, only) && !matches(name, never))
                failed += passesAlone(arguments[0], name) ? 0 : 1;
        }
    }
    return failed ? 1 : 0;
}
