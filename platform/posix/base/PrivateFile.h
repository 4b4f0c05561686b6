#pragma once

#include <filesystem>
#include <system_error>

namespace morvex {

/// Makes an empty file for its owner alone (0600) unless there is one.
std::error_code makePrivateFile(const std::filesystem::path& file);

/// Makes a folder for its owner alone (0700) unless there is one.
std::error_code makePrivateFolder(const std::filesystem::path& folder);

} // namespace morvex
