#pragma once

#include "shared/base/Require.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <string_view>
#include <unistd.h>

namespace morvex {

/// A folder for a target whose input is a file or a path. It is in memory where the system allows that, since
/// a target writes its file, or looks up the path, in each turn. Removed when the program ends.
class MemoryFolder {
  public:
    MemoryFolder() {
        const auto place =
            ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : std::filesystem::temp_directory_path();
        auto pattern = (place / "morvex-fuzz-XXXXXX").string();
        require(::mkdtemp(pattern.data()) != nullptr, "no temporary folder");
        path_ = std::filesystem::canonical(pattern);
    }

    ~MemoryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    MemoryFolder(const MemoryFolder&) = delete;
    MemoryFolder& operator=(const MemoryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// Replaces the content of a file; its folder must exist.
    void write(const char* name, std::string_view bytes) const {
        const int file = ::open((path_ / name).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        require(file >= 0 && ::write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
                "the input cannot be laid out");
        ::close(file);
    }

  private:
    std::filesystem::path path_;
};

} // namespace morvex
