#pragma once

#include "tests/support/EnvironmentValue.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

namespace morvex {

/// A folder for a target whose input is a file; in memory where the system has such a place, for a target
/// writes and flushes its file at each turn.
class MemoryFolder {
  public:
    [[nodiscard]] const std::filesystem::path& path() const { return folder_.path(); }

    void write(const char* name, std::string_view bytes) const {
        std::filesystem::create_directories((path() / name).parent_path());
        std::ofstream(path() / name, std::ios::binary) << bytes;
    }

  private:
    static std::string place() {
        return ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : std::filesystem::temp_directory_path().string();
    }

    EnvironmentValue temporary_{"TMPDIR", place()};
    TemporaryFolder folder_;
};

} // namespace morvex
