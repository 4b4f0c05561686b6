#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace morvex {

/// How hard the tests of attacks and faults try. `./test` runs few cases of each, `./test --long`, which sets
/// MORVEX_LONG, runs all.
inline bool isLongRun() {
    const char* value = std::getenv("MORVEX_LONG");
    return value && std::string_view(value) == "1";
}

/// How many cases to run now.
inline std::size_t cases(std::size_t fast, std::size_t full) {
    return isLongRun() ? full : fast;
}

/// Where what is drawn by chance begins: at MORVEX_SEED, otherwise where it always does.
inline std::uint64_t seed(std::uint64_t usual) {
    const char* chosen = std::getenv("MORVEX_SEED");
    return chosen ? std::strtoull(chosen, nullptr, 10) : usual;
}

/// Prints one line for the person who runs the tests, and keeps it with the test's result. Called at the end:
/// `expected` is told only when nothing in the test has failed.
inline void tell(const std::string& what, std::size_t casesRun, const std::string& expected) {
    const std::string outcome = testing::Test::HasFailure() ? "FAILED" : expected;
    std::cout << "CASES  " << what << ": " << casesRun << " cases, " << outcome << std::endl;
    testing::Test::RecordProperty("cases", std::to_string(casesRun));
    testing::Test::RecordProperty("outcome", outcome);
}

} // namespace morvex
