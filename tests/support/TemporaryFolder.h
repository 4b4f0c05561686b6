#pragma once

#include "shared/base/Require.h"

#include <cstdlib>
#include <filesystem>

namespace morvex {

/// A new empty folder that is removed with this object.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        auto pattern = (std::filesystem::temp_directory_path() / "morvex-test-XXXXXX").string();
        require(::mkdtemp(pattern.data()) != nullptr, "no temporary folder");
        path_ = std::filesystem::canonical(pattern);
    }

    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

} // namespace morvex
