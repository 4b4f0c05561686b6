#pragma once

#include "app/execution/AllowedFolders.h"
#include "platform/memory/FixedFolders.h"
#include "tests/support/FolderTree.h"

#include <string>
#include <vector>

namespace morvex {

/// A tree with `home`, the allowed folder `home/Projects`, and `outside`.
class FileTree : public FolderTree {
  public:
    FileTree() {
        folder("home/Projects");
        folder("outside");
        standard.homeFolder = path("home");
        standard.homes["eva"] = path("outside");
    }

    [[nodiscard]] AllowedFolders allowed(const std::vector<std::string>& names = {"home/Projects"}) const {
        std::vector<std::string> slozky;
        for (const auto& name : names) slozky.push_back(path(name));
        return {std::move(slozky), standard};
    }

    FixedFolders standard;
};

} // namespace morvex
