#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace morvex {

/// A file of this program that holds what a user would miss.
struct SavedFile {
    std::string what;
    /// What the user has beforehand, `text` in it.
    void (*lay)(const std::filesystem::path& home, const std::string& text);
    /// Starts the owner of the file; what it gives then saves `text` and tells whether it counts as saved.
    std::function<bool()> (*change)(const std::filesystem::path& home, const std::string& text);
    /// What the user finds at the next start, and every trouble that is told then.
    std::vector<std::string> (*look)(const std::filesystem::path& home);
    /// Those that may stand in the file's folder once another save has worked.
    std::vector<std::string> names;
    /// Bytes of the largest text that the file takes.
    std::size_t largest = 10'000'000;
};

std::vector<SavedFile> savedFiles();

} // namespace morvex
