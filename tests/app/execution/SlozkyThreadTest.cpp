#include "tests/app/execution/SlozkyFixture.h"

#include <functional>
#include <thread>
#include <vector>

namespace morvex {
namespace {

using SlozkyThreadTest = SlozkyFixture;

TEST_F(SlozkyThreadTest, UseOnAnotherThreadEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    auto slozky = load();
    const std::vector<std::function<void()>> uses{
        [&] { (void)slozky->povolene(); },        [&] { (void)slozky->vyzadujiObnoveni(); },
        [&] { (void)slozky->chybaOpravneni(); },  [&] { (void)slozky->snapshot(); },
        [&] { (void)slozky->aliasy(); },          [&] { (void)slozky->slozkaProAlias("a"); },
        [&] { (void)slozky->obsahuje("/a"); },    [&] { ManualExecutor().run(slozky->pridat()); },
        [&] { slozky->odebrat("/a"); },           [&] { (void)slozky->priZmene([] {}); },
        [&] { (void)slozky->question(); },        [&] { slozky->answerQuestion(Slozky::Odpoved::no); },
        [&] { (void)slozky->onQuestion([] {}); },
    };
    for (const auto& use : uses) EXPECT_DEATH(std::thread(use).join(), "off the main thread");
}

} // namespace
} // namespace morvex
