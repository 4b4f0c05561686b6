#pragma once

#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace morvex {

/// A real file tree for a test. Names are relative to its root; missing parent folders are created.
class FolderTree {
  public:
    [[nodiscard]] std::string path(const std::string& name) const {
        return (temporary_.path() / name).string();
    }

    std::string folder(const std::string& name) const {
        std::filesystem::create_directories(path(name));
        return path(name);
    }

    void file(const std::string& name, std::string_view content) const {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        std::ofstream(path(name), std::ios::binary) << content;
    }

    /// `target` is not resolved: it may be relative or lead nowhere.
    void link(const std::string& name, const std::string& target) const {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        std::filesystem::create_symlink(target, path(name));
    }

    [[nodiscard]] std::string content(const std::string& name) const {
        std::ostringstream text;
        text << std::ifstream(path(name), std::ios::binary).rdbuf();
        return text.str();
    }

    /// Removes all permissions of the file or folder, and makes the path to it accessible to everybody, so
    /// that only a superuser gets in.
    void close(const std::string& name) const {
        std::filesystem::permissions(path(""), std::filesystem::perms{0755});
        std::filesystem::permissions(path(name), std::filesystem::perms::none);
    }

    [[nodiscard]] bool exists(const std::string& name) const {
        return std::filesystem::exists(std::filesystem::symlink_status(path(name)));
    }

  private:
    TemporaryFolder temporary_;
};

} // namespace morvex
