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

/// The seed of the random choices: MORVEX_SEED, or else always `usual`.
inline std::uint64_t seed(std::uint64_t usual) {
    const char* chosen = std::getenv("MORVEX_SEED");
    return chosen ? std::strtoull(chosen, nullptr, 10) : usual;
}

/// Prints one line for the user who runs the tests, and records it with the test's result. Call it at the
/// end: it prints `expected` only if nothing in the test has failed.
inline void tell(const std::string& what, std::size_t casesRun, const std::string& expected) {
    const std::string outcome = testing::Test::HasFailure() ? "FAILED" : expected;
    std::cout << "CASES  " << what << ": " << casesRun << " cases, " << outcome << std::endl;
    testing::Test::RecordProperty("cases", std::to_string(casesRun));
    testing::Test::RecordProperty("outcome", outcome);
}

} // namespace morvex
