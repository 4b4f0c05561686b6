#include "app/agents/SessionId.h"

#include <gtest/gtest.h>

#include <vector>

namespace morvex {
namespace {

TEST(SessionId, IsWhatAnAgentWouldCallASession) {
    const std::vector<std::string> good{
        "s", "0199a213-81c0-7800-8aa1-bbab2a035a53", "relace č. 1", "a-b", "a/b?c#d%", std::string(512, 'x')};
    for (const auto& id : good) EXPECT_EQ(SessionId::usable(id), id);
}

TEST(SessionId, AnythingElseIsNone) {
    const std::vector<std::string> bad{
        "",     std::string(513, 'x'),  "-",     "--dangerous", "a\nb",   "a\tb",
        "a\rb", std::string("a\0b", 3), "\x1b[", "a\x7f",       "\u0085", "a\u202eb",
        "\xff"};
    for (const auto& id : bad) EXPECT_FALSE(SessionId::usable(id)) << id;
    EXPECT_FALSE(SessionId::usable({}));
}

} // namespace
} // namespace morvex
