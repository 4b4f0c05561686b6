#include "app/execution/Slozky.h"
#include "platform/memory/FakeFolderPicker.h"
#include "platform/memory/FixedFolders.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryBookmarks.h"
#include "platform/memory/MemoryDefaults.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>
#include <vector>

namespace morvex {
namespace {

TEST(Slozky, UseOnAnotherThreadEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    FixedFolders standard;
    MemoryDefaults defaults;
    MemoryBookmarks bookmarks;
    FakeFolderPicker picker;
    auto slozky = Slozky::create(defaults, bookmarks, picker, standard);
    const std::vector<std::function<void()>> uses{
        [&] { (void)slozky->povolene(); },       [&] { (void)slozky->vyzadujiObnoveni(); },
        [&] { (void)slozky->chybaOpravneni(); }, [&] { (void)slozky->snimek(); },
        [&] { (void)slozky->aliasy(); },         [&] { (void)slozky->slozkaProAlias("a"); },
        [&] { (void)slozky->obsahuje("/a"); },   [&] { ManualExecutor().run(slozky->pridat()); },
        [&] { slozky->odebrat("/a"); },          [&] { slozky->priZmene([] {}); },
    };
    for (const auto& use : uses) EXPECT_DEATH(std::thread(use).join(), "off the main thread");
}

} // namespace
} // namespace morvex
