#pragma once

#include "tests/support/TemporaryFolder.h"

#include <expected>
#include <memory>
#include <string>

namespace morvex {

/// A program in /usr/bin that exists while this object lives, for this process and the programs it starts.
/// Only in a private network, whose mounts nobody else sees.
class MountedProgram {
  public:
    /// `script` is its text. Gives the system's reason where no file can be laid over the folder.
    static std::expected<std::unique_ptr<MountedProgram>, std::string> create(const std::string& name,
                                                                              const std::string& script);

    ~MountedProgram();
    MountedProgram(const MountedProgram&) = delete;
    MountedProgram& operator=(const MountedProgram&) = delete;

  private:
    MountedProgram() = default;
    [[nodiscard]] bool mountOwnFolder() const;
    [[nodiscard]] bool mountOver() const;

    TemporaryFolder folder_;
    bool isMounted_ = false;
};

} // namespace morvex
