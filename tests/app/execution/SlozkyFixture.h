#pragma once

#include "app/execution/Slozky.h"
#include "platform/memory/FakeFolderPicker.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryBookmarks.h"
#include "platform/memory/MemoryDefaults.h"
#include "tests/app/execution/FileTree.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace morvex {

/// What the allowed folders stand on, and two folders to allow.
class SlozkyFixture : public testing::Test {
  protected:
    std::unique_ptr<Slozky> load() { return Slozky::create(defaults, bookmarks, picker, tree.standard); }

    FileTree tree;
    std::string a = tree.folder("a");
    std::string b = tree.folder("b");
    MemoryDefaults defaults;
    MemoryBookmarks bookmarks;
    FakeFolderPicker picker;
    ManualExecutor executor;
};

} // namespace morvex
